#include "host/scene/mesh.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace host {
namespace {

/// The digit's value, or -1.
int base64Digit(char c) {
    if (c >= 'A' && c <= 'Z') {
        return c - 'A';
    }
    if (c >= 'a' && c <= 'z') {
        return c - 'a' + 26;
    }
    if (c >= '0' && c <= '9') {
        return c - '0' + 52;
    }
    return c == '+' ? 62 : c == '/' ? 63 : -1;
}

/// What a text in base64 holds: groups of 4 digits, the last one padded.
std::vector<std::uint8_t> bytesOf(const Value& value) {
    std::string_view digits = value.text();
    if (digits.size() % 4 != 0) {
        value.fail("expected base64 in groups of 4 characters, got " +
                   std::to_string(digits.size()));
    }
    for (int padding = 0; padding < 2 && digits.ends_with('='); ++padding) {
        digits.remove_suffix(1);
    }
    std::vector<std::uint8_t> bytes;
    bytes.reserve(digits.size() / 4 * 3 + 2);
    std::uint32_t bits = 0;
    int count = 0;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        const int digit = base64Digit(digits[i]);
        if (digit < 0) {
            value.fail("expected base64, got another character at " + std::to_string(i + 1));
        }
        bits = bits << 6 | static_cast<std::uint32_t>(digit);
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes.push_back(static_cast<std::uint8_t>(bits >> count & 0xFF));
        }
    }
    return bytes;
}

/// Numbers of 4 bytes, the lowest first, in groups of `N`.
template <std::size_t N> class Groups {
public:
    explicit Groups(const Value& value) : bytes_(bytesOf(value)) {
        if (bytes_.size() % kBytes != 0) {
            value.fail("expected " + std::to_string(kBytes) + " bytes of each " +
                       std::to_string(N) + " numbers, got " + std::to_string(bytes_.size()));
        }
    }

    std::size_t size() const { return bytes_.size() / kBytes; }

    std::array<std::uint32_t, N> operator[](std::size_t index) const {
        std::array<std::uint32_t, N> numbers{};
        for (std::size_t i = 0; i < kBytes; ++i) {
            numbers[i / 4] |= std::uint32_t{bytes_[kBytes * index + i]} << 8 * (i % 4);
        }
        return numbers;
    }

private:
    static constexpr std::size_t kBytes = 4 * N;
    std::vector<std::uint8_t> bytes_;
};

/// The number of vertices.
std::size_t checkPositions(const Value& value) {
    constexpr float kLargestNumber = 1e9F;
    const Groups<3> vertices(value);
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        for (const std::uint32_t bits : vertices[i]) {
            float number = 0;
            std::memcpy(&number, &bits, sizeof number);
            if (!(std::abs(number) <= kLargestNumber)) {
                value.fail("vertex " + std::to_string(i) +
                           ": expected numbers of at most 1e9 in size");
            }
        }
    }
    return vertices.size();
}

/// The number of triangles, or of pieces of curves: of groups of `N` vertices.
template <std::size_t N>
std::size_t checkIndices(const Value& value, std::size_t vertexCount, const char* group) {
    const Groups<N> groups(value);
    for (std::size_t i = 0; i < groups.size(); ++i) {
        for (const std::uint32_t vertex : groups[i]) {
            if (vertex >= vertexCount) {
                value.fail(std::string(group) + ' ' + std::to_string(i) + ": expected one of " +
                           std::to_string(vertexCount) + " vertices, got vertex " +
                           std::to_string(vertex));
            }
        }
    }
    return groups.size();
}

void checkFaces(const Value& value, std::size_t triangleCount) {
    std::size_t sum = 0;
    for (const Value& face : value.items()) {
        const int count = face.integer();
        if (count < 1) {
            face.fail("expected at least 1 triangle, got " + std::to_string(count));
        }
        sum += static_cast<std::size_t>(count);
    }
    if (sum != triangleCount) {
        value.fail("expected " + std::to_string(triangleCount) + " triangles in all, got " +
                   std::to_string(sum));
    }
}

} // namespace

void checkMesh(const Value& value) {
    Object members(value);
    const std::size_t vertexCount = checkPositions(members.at("positions"));
    const std::size_t triangleCount =
        checkIndices<3>(members.at("triangles"), vertexCount, "triangle");
    checkFaces(members.at("faces"), triangleCount);
    if (const auto curves = members.find("curves")) {
        checkIndices<2>(*curves, vertexCount, "piece");
    }
    members.refuseOthers();
}

} // namespace host
