// Value text reads back as the value within its last digit, in the room that it is promised.
#include <climits>
#include <cmath>
#include <memory>
#include <string>

#include <dorvale/dorvale.h>

#include "target.h"

namespace {

/// Opens what a host reaches by deriving.
struct Formats : CDimSymUitity {
    using CDimSymUitity::SeStrCre;
    using CDimSymUitity::SeStrdec;
    using CDimSymUitity::SeStrfrc;
    using CDimSymUitity::SeStritoa;
};

constexpr std::string_view kDigits = "0123456789.";
constexpr std::string_view kAngleMark = "\xA9\x62";

/// Takes over a text that belongs to the caller.
std::string taken(char* text) {
    const std::unique_ptr<char[]> owner(text);
    return text;
}

bool madeOf(std::string_view text, std::string_view alphabet) {
    return text.find_first_not_of(alphabet) == std::string_view::npos;
}

/// Reads `5`, `5.25`, `5 2/8` or `2/8`; nothing is 0.
double parsed(const std::string& text) {
    const std::size_t slash = text.find('/');
    if (slash == std::string::npos) {
        return std::strtod(text.c_str(), nullptr);
    }
    const std::size_t blank = text.find(' ');
    const std::size_t numerator = blank == std::string::npos ? 0 : blank + 1;
    return (numerator == 0 ? 0.0 : std::strtod(text.c_str(), nullptr)) +
           std::strtod(&text[numerator], nullptr) / std::strtod(&text[slash + 1], nullptr);
}

/// Values past the range of int are cut off there, and NaN counts as 0.
void requireNear(const std::string& text, double value, double tolerance) {
    if (std::abs(value) <= INT_MAX) {
        require(std::abs(parsed(text) - std::abs(value)) <= tolerance + 1e-15 * std::abs(value));
    }
}

void checkLength(double value) {
    int length = -1;
    char* text = nullptr;
    const int code = CDimSymUitity::ValToStr(value, &length, &text);
    require(code == (value < 0.0 ? -1 : 0));
    if (code != 0) {
        require(length == -1 && text == nullptr);
        return;
    }
    const std::string written = taken(text);
    require(static_cast<int>(written.size()) == length && madeOf(written, kDigits));
    requireNear(written, value, 0.00502);
}

void checkAngle(double value) {
    int length = -1;
    char* text = nullptr;
    require(CDimSymUitity::AngValToStr(value, &length, &text) == 0);
    const std::string written = taken(text);
    require(static_cast<int>(written.size()) == length && written.ends_with(kAngleMark));
    const std::string number = written.substr(0, written.size() - kAngleMark.size());
    require(madeOf(number, kDigits));
    // The bias goes upwards: below 0 it comes off twice.
    requireNear(number, value, value < 0.0 ? 0.01502 : 0.00502);
}

void checkFormat(double value, int (&format)[6]) {
    const auto [system, metricUnit, imperialForm, form, precision, denominator] = format;
    char* text = nullptr;
    const int code = Formats::SeStrCre(value, format, &text);
    require(code == (precision < -9 || precision > 9 ? -973 : 0));
    if (code != 0) {
        require(text == nullptr);
        return;
    }
    const std::string written = taken(text);
    require(written.size() < 100 && madeOf(written, "0123456789./'\" "));
    if (system == 1 ? metricUnit == 2 : imperialForm != 1) {
        return;
    }
    if (form == 1) {
        requireNear(written, value, 0.502 * std::pow(10.0, -std::abs(precision)));
    } else if (form == 2 && denominator > 1) {
        requireNear(written, value, std::max(0.501 / denominator, 0.011));
    }
}

/// In destinations of exactly the size that the parts of a text need.
void checkParts(double value, int number, int denominator, int noBlank) {
    const double fraction = std::abs(value) < 1.0 ? std::abs(value) : 0.0;
    const auto decimals = std::make_unique<char[]>(11);
    Formats::SeStrdec(fraction, number, decimals.get());
    require(madeOf(decimals.get(), kDigits));
    const auto part = std::make_unique<char[]>(23);
    Formats::SeStrfrc(fraction, denominator, noBlank, part.get());
    require(madeOf(part.get(), "0123456789/ "));
    const auto digits = std::make_unique<char[]>(11);
    Formats::SeStritoa(number, digits.get());
    require(std::strtoll(digits.get(), nullptr, 10) == std::abs(static_cast<long long>(number)));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const auto value = input.take<double>();
    const auto number = input.take<int>();
    const auto denominator = input.take<int>();
    int format[6] = {};
    for (int& choice : format) {
        choice = input.take<std::uint8_t>() - 128;
    }
    checkLength(value);
    checkAngle(value);
    checkFormat(value, format);
    checkParts(value, number, denominator, format[0]);
    return 0;
}
