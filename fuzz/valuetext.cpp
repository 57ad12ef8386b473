// Value text reads back as the value within its last digit, in the room that it is promised.
#include <climits>

#include "support/valuetext.h"

#include "target.h"

using namespace dorvale::test;

namespace {

constexpr std::string_view kDigits = "0123456789.";

bool madeOf(std::string_view text, std::string_view alphabet) {
    return text.find_first_not_of(alphabet) == std::string_view::npos;
}

/// Values past the range of int are cut off there, and NaN counts as 0.
void requireNear(const std::string& text, double value, double reach) {
    require(!(std::abs(value) <= INT_MAX) || shows(text, std::abs(value), reach));
}

void checkLength(double value) {
    const std::string text = lengthText(value);
    if (value < 0.0) {
        require(text == "status -1");
        return;
    }
    require(madeOf(text, kDigits));
    requireNear(text, value, 0.00502);
}

void checkAngle(double value) {
    const std::string text = angleText(value);
    require(text.ends_with(kAngleMark));
    require(text.find_first_not_of(kDigits) == text.size() - kAngleMark.size());
    // The bias goes upwards: below 0 it comes off twice.
    requireNear(text, value, value < 0.0 ? 0.01502 : 0.00502);
}

void checkFormat(double value, const std::array<int, 6>& format) {
    const auto [system, metricUnit, imperialForm, form, precision, denominator] = format;
    const std::string text = formatted(value, format);
    if (precision < -9 || precision > 9) {
        require(text == "status -973");
        return;
    }
    require(text.size() < 100 && madeOf(text, "0123456789./'\" "));
    if (system == 1 ? metricUnit == 2 : imperialForm != 1) {
        return;
    }
    if (form == 1) {
        requireNear(text, value, 0.502 * std::pow(10.0, -std::abs(precision)));
    } else if (form == 2 && denominator > 1) {
        requireNear(text, value, std::max(0.501 / denominator, 0.011));
    }
}

/// In destinations of exactly the size that the parts of a text need.
void checkParts(double value, int number, int denominator, int noBlank) {
    const double fraction = std::abs(value) < 1.0 ? std::abs(value) : 0.0;
    const auto decimals = std::make_unique<char[]>(11);
    Members::SeStrdec(fraction, number, decimals.get());
    require(madeOf(decimals.get(), kDigits));
    const auto part = std::make_unique<char[]>(23);
    Members::SeStrfrc(fraction, denominator, noBlank, part.get());
    require(madeOf(part.get(), "0123456789/ "));
    const auto digits = std::make_unique<char[]>(11);
    Members::SeStritoa(number, digits.get());
    require(std::strtoll(digits.get(), nullptr, 10) == std::abs(static_cast<long long>(number)));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const auto value = input.take<double>();
    const auto number = input.take<int>();
    const auto denominator = input.take<int>();
    std::array<int, 6> format{};
    for (int& choice : format) {
        choice = input.take<std::uint8_t>() - 128;
    }
    checkLength(value);
    checkAngle(value);
    checkFormat(value, format);
    checkParts(value, number, denominator, format[0]);
    return 0;
}
