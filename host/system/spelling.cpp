#include "host/system/spelling.h"

#include <algorithm>
#include <cstddef>

namespace host {
namespace {

constexpr std::size_t kLongest = 64;

/// How many letters one name is off the other.
std::size_t distance(std::string_view a, std::string_view b) {
    // Rows of the table of distances between the beginnings of both.
    std::vector<std::size_t> beforeLast(b.size() + 1);
    std::vector<std::size_t> last(b.size() + 1);
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) {
        row[j] = j;
    }
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::swap(beforeLast, last);
        std::swap(last, row);
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row[j] = std::min({replaced, last[j] + 1, row[j - 1] + 1});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
            }
        }
    }
    return row[b.size()];
}

} // namespace

std::string nearestName(std::string_view name, const std::vector<std::string>& others) {
    std::string nearest;
    std::size_t least = name.size() <= 4 ? 2 : 3;
    for (const std::string& other : others) {
        if (name.size() > kLongest || other.size() > kLongest) {
            continue;
        }
        const std::size_t off = distance(name, other);
        if (off < least) {
            least = off;
            nearest = other;
        }
    }
    return nearest;
}

std::string hint(std::string_view name, const std::vector<std::string>& others) {
    const std::string nearest = nearestName(name, others);
    return nearest.empty() ? nearest : "; \"" + nearest + "\" may be meant";
}

} // namespace host
