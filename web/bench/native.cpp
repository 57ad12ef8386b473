// The module's own calls, compiled for this machine: what JavaScript's are compared with. Prints
// for each row of the file the nanoseconds of one annotation, and of the bare entry point's share.
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "web/binding/build.h"
#include "web/binding/memory.h"

// The module keeps its memory; here the system's allocator does what it does for any host.
namespace web {
void* takeForGood(std::size_t bytes) { return std::calloc(1, bytes); }
void freeAll() {}
Scope::Scope() = default;
Scope::~Scope() {
    static_cast<void>(chunk_);
    static_cast<void>(top_);
}
} // namespace web

namespace {

using Clock = std::chrono::steady_clock;

template <class T> std::vector<T> readList(std::istream& file) {
    std::size_t count = 0;
    file >> count;
    std::vector<T> list(count);
    for (T& item : list) {
        file >> item;
    }
    return list;
}

/// The least time of many short passes: a shared machine is slow for seconds at a time.
template <class Work> double nanoseconds(int calls, Work work) {
    double least = 1e18;
    for (int pass = 0; pass < (calls > 1 ? 100 : 6); ++pass) {
        const auto start = Clock::now();
        for (int i = 0; i < calls; ++i) {
            work();
        }
        const std::chrono::duration<double, std::nano> taken = Clock::now() - start;
        least = std::min(least, taken.count() / calls);
    }
    return least;
}

} // namespace

int main(int, char** arguments) {
    std::ifstream file(arguments[1]);
    std::string name;
    while (file >> name) {
        std::size_t count = 0;
        file >> count;
        const auto numbers = readList<double>(file);
        const auto integers = readList<int>(file);
        web::Input input;
        double* const block = input.reserve(numbers.size(), integers.size(), 0);
        std::memcpy(block, numbers.data(), 8 * numbers.size());
        std::memcpy(block + numbers.size(), integers.data(), 4 * integers.size());
        web::Words words;
        const double time = nanoseconds(count > 1 ? 1 : 100, [&] {
            web::Recipes recipes(input);
            words.clear();
            for (std::size_t i = 0; i < count; ++i) {
                web::build(recipes, words);
            }
        });
        std::cout << name << ' ' << time / static_cast<double>(count) << '\n';
    }
}
