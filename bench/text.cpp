// Value text beside an integer split that copies its text into a new array, and beside the C
// library's formatting.
#include <benchmark/benchmark.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>

#include <dorvale/dorvale.h>

namespace {

/// Opens what a host reaches by deriving.
struct Dim : CDimSymUitity {
    using CDimSymUitity::SeStrCre;
};

constexpr std::array<double, 8> kValues{0.004,   5.0,      12.996,   150.0,
                                        174.253, 1440.005, 99999.99, 1234567.891};

/// Releases each text as a caller does; `write` returns it.
template <typename Write> void writeValues(benchmark::State& state, Write write) {
    std::size_t i = 0;
    while (state.KeepRunning()) {
        char* text = write(kValues[i++ % kValues.size()]);
        benchmark::DoNotOptimize(text);
        delete[] text;
    }
}

char* copyOf(const char* text, std::size_t length) {
    char* copy = new char[length + 1];
    std::memcpy(copy, text, length + 1);
    return copy;
}

char* bySplit(double value) {
    const auto hundredths = static_cast<long long>(value * 100.0 + 0.501);
    std::array<char, 32> text{};
    char* end = std::to_chars(text.data(), text.data() + 24, hundredths / 100).ptr;
    const auto rest = static_cast<char>(hundredths % 100);
    *end++ = '.';
    *end++ = static_cast<char>('0' + rest / 10);
    *end++ = static_cast<char>('0' + rest % 10);
    *end = '\0';
    return copyOf(text.data(), static_cast<std::size_t>(end - text.data()));
}

char* bySnprintf(double value) {
    std::array<char, 64> text{};
    auto length = static_cast<std::size_t>(std::snprintf(text.data(), text.size(), "%.2f", value));
    while (text[length - 1] == '0') {
        text[--length] = '\0';
    }
    return copyOf(text.data(), length);
}

char* length(double value) {
    int size = 0;
    char* text = nullptr;
    CDimSymUitity::ValToStr(value, &size, &text);
    return text;
}

char* angle(double value) {
    int size = 0;
    char* text = nullptr;
    CDimSymUitity::AngValToStr(value, &size, &text);
    return text;
}

struct Form {
    const char* name;
    std::array<int, 6> format;
};

constexpr Form kForms[] = {
    {"text/SeStrCre/decimal", {1, 1, 1, 1, 2, 0}},
    {"text/SeStrCre/stripped", {1, 1, 1, 1, -2, 4}},
    {"text/SeStrCre/thousandth", {1, 2, 1, 1, -3, 0}},
    {"text/SeStrCre/whole", {1, 1, 1, 0, 0, 0}},
    {"text/SeStrCre/fraction", {2, 1, 1, 2, 0, 16}},
    {"text/SeStrCre/decimal_feet", {2, 1, 2, 1, 3, 0}},
    {"text/SeStrCre/feet_and_inches", {2, 1, 3, 2, 0, 8}},
};

void formatted(benchmark::State& state, const Form& form) {
    std::array<int, 6> format = form.format;
    writeValues(state, [&](double value) {
        char* text = nullptr;
        Dim::SeStrCre(value, format.data(), &text);
        return text;
    });
}

void arc(benchmark::State& state) {
    double center[3] = {0, 0, 0};
    double normal[3] = {0, 0, 1};
    writeValues(state, [&](double radius) {
        double ends[2][3] = {{radius, 0, 0}, {0, radius, 0}};
        double arcLength = 0.0;
        char* text = nullptr;
        CDimSymUitity::ArcValToStr(center, radius, ends, normal, &arcLength, &text);
        return text;
    });
}

BENCHMARK_CAPTURE(writeValues, floor, bySplit)->Name("text/floor");
BENCHMARK_CAPTURE(writeValues, snprintf, bySnprintf)->Name("text/snprintf");
BENCHMARK_CAPTURE(writeValues, length, length)->Name("text/ValToStr");
BENCHMARK_CAPTURE(writeValues, angle, angle)->Name("text/AngValToStr");
BENCHMARK(arc)->Name("text/ArcValToStr");

const bool kRegistered = [] {
    for (const Form& form : kForms) {
        benchmark::RegisterBenchmark(form.name, formatted, form);
    }
    return true;
}();

} // namespace
