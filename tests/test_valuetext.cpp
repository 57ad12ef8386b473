// Value text, read back: never further from the value than its last digit allows.
#include <climits>
#include <limits>
#include <memory>
#include <string>

#include "support/members.h"
#include "support/vec.h"

using namespace dorvale::test;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct Format {
    int elements[6];
};

std::ostream& operator<<(std::ostream& out, const Format& format) {
    for (const int element : format.elements) {
        out << element << ' ';
    }
    return out;
}

/// What a call hands out, taken over as a host does: by `delete[]`.
template <typename Call> std::string taken(const Call& call) {
    char* text = nullptr;
    const int status = call(&text);
    const std::unique_ptr<char[]> owned(text);
    return status == 0 ? std::string(text) : "status " + std::to_string(status);
}

std::string lengthText(double value) {
    int length = -1;
    std::string shown =
        taken([&](char** text) { return CDimSymUitity::ValToStr(value, &length, text); });
    EXPECT_EQ(length, value < 0.0 ? -1 : static_cast<int>(shown.size()));
    return shown;
}

/// Without the angle mark.
std::string angleText(double degrees) {
    int length = -1;
    const std::string shown =
        taken([&](char** text) { return CDimSymUitity::AngValToStr(degrees, &length, text); });
    EXPECT_EQ(length, static_cast<int>(shown.size()));
    EXPECT_EQ(shown.substr(shown.size() - 2), "\xA9\x62");
    return shown.substr(0, shown.size() - 2);
}

std::string formatted(double value, Format format) {
    return taken([&](char** text) { return Members::SeStrCre(value, format.elements, text); });
}

TEST(ValueText, Lengths) {
    const std::pair<double, const char*> cases[] = {
        {0.0, "0.00"},
        {0.004, "0.00"},
        {0.004995, "0.01"},
        {0.995, "1.00"},
        {1.004999, "1.01"},
        {2.5, "2.5"},
        {2.05, "2.05"},
        {5.25, "5.25"},
        {12.996, "13.00"},
        {99.99499, "100.00"},
        {1440.0, "1440.00"},
        {100.1, "100.1"},
        {2e9, "2000000000.00"},
        {2e9 + 0.25, "2000000000.25"},
        {2147483646.999, "2147483647.00"},
        {2147483647.9, "2147483647.00"},
        {1e300, "2147483647.00"},
        {kInfinity, "2147483647.00"},
        {kNaN, "0.00"},
        {-0.001, "status -1"},
        {-kInfinity, "status -1"},
    };
    for (const auto& [value, expected] : cases) {
        EXPECT_EQ(lengthText(value), expected) << value;
    }
}

TEST(ValueText, Angles) {
    const std::pair<double, const char*> cases[] = {
        {90.0, "90"},         {89.999, "90"},
        {0.004, "0"},         {30.5, "30.5"},
        {45.256, "45.26"},    {45.254995, "45.26"},
        {120.05, "120.05"},   {-30.0, "30"},
        {1e99, "2147483647"}, {-kInfinity, "2147483647"},
    };
    for (const auto& [value, expected] : cases) {
        EXPECT_EQ(angleText(value), expected) << value;
    }
}

TEST(ValueText, Formats) {
    const struct {
        double value;
        Format format;
        const char* expected;
    } cases[] = {
        // decimals: kept, dropped, none
        {25.4, {{1, 1, 1, 1, 2, 0}}, "25.40"},
        {25.4, {{1, 2, 1, 1, -3, 0}}, "0.025"},
        {1440.0, {{1, 1, 1, 1, -2, 0}}, "1440"},
        {1440.0, {{1, 1, 1, 1, 3, 0}}, "1440.000"},
        {1.004995, {{1, 1, 1, 1, 2, 0}}, "1.01"},
        {-7.25, {{1, 1, 1, 1, 9, 0}}, "7.250000000"},
        {0.05, {{1, 1, 1, 1, -3, 0}}, "0.05"},
        {2.5, {{1, 1, 1, 1, 0, 0}}, "3"},
        {2.9, {{1, 1, 1, 0, 2, 8}}, "2"},
        {30.0, {{2, 0, 2, 1, 2, 0}}, "2.50"},
        {30.0, {{2, 2, 1, 1, -1, 0}}, "30"},
        // feet and inches
        {30.25, {{2, 0, 3, 1, 2, 0}}, "2' 6.25\""},
        {11.996, {{2, 0, 3, 1, 2, 0}}, "1' 0.00\""},
        {23.7, {{2, 0, 3, 1, 0, 0}}, "2' 0\""},
        {30.9, {{2, 0, 3, 0, 0, 0}}, "2' 6\""},
        {30.5, {{2, 0, 3, 2, 0, 8}}, "2' 6 4/8\""},
        {30.97, {{2, 0, 3, 2, 0, 8}}, "2' 7\""},
        {11.97, {{2, 0, 3, 2, 0, 8}}, "1' 0\""},
        {24.5, {{2, 0, 3, 2, 0, 8}}, "2'  4/8\""},
        {6.5, {{2, 0, 3, 2, 0, 8}}, "0' 6 4/8\""},
        {30.9, {{2, 0, 3, 2, 0, 1}}, "2' 6\""},
        // split, but without marks
        {30.5, {{3, 0, 3, 2, 0, 8}}, "2 4/8"},
        {6.5, {{3, 0, 3, 2, 0, 8}}, "4/8"},
        // fractions
        {0.5, {{2, 0, 1, 2, 0, 4}}, "2/4"},
        {3.5, {{1, 1, 1, 2, 0, 4}}, "3 2/4"},
        {3.03, {{1, 1, 1, 2, 0, 16}}, "3"},
        {3.96875, {{1, 1, 1, 2, 0, 16}}, "4"},
        {0.03125, {{1, 1, 1, 2, 0, 16}}, "1/16"},
        {3.9, {{1, 1, 1, 2, 0, 1}}, "3"},
        {3.9, {{1, 1, 1, 2, 0, 0}}, "3"},
        // refused, and saturated
        {1.0, {{1, 1, 1, 1, 10, 0}}, "status -973"},
        {1.0, {{2, 0, 3, 2, -10, 8}}, "status -973"},
        {1.0, {{1, 1, 1, 1, INT_MIN, 0}}, "status -973"},
        {1e300, {{1, 1, 1, 1, 2, 0}}, "2147483647.00"},
        {2e9 + 0.5, {{1, 1, 1, 2, 0, 2}}, "2000000000 1/2"},
        {3e9, {{1, 1, 1, 2, 0, 1}}, "2147483647"},
        {kNaN, {{2, 0, 3, 2, 0, 8}}, "0' 0\""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(formatted(c.value, c.format), c.expected) << c.value << " as " << c.format;
    }
}

/// The number that a text shows, in inches where it has marks. Checks its form.
double shown(std::string text) {
    double whole = 0.0;
    const std::size_t mark = text.find("' ");
    if (mark != std::string::npos) {
        whole = 12.0 * std::stod(text);
        EXPECT_EQ(text.back(), '"');
        text = text.substr(mark + 2, text.size() - mark - 3);
    }
    double numerator = 0.0;
    double denominator = 1.0;
    if (const std::size_t bar = text.find('/'); bar != std::string::npos) {
        const std::size_t blank = text.rfind(' ');
        const std::size_t from = blank == std::string::npos ? 0 : blank + 1;
        numerator = std::stod(text.substr(from));
        denominator = std::stod(text.substr(bar + 1));
        text.resize(from);
        EXPECT_LT(numerator, denominator);
    }
    const double last = text.empty() || text == " " ? 0.0 : std::stod(text);
    if (mark != std::string::npos) {
        EXPECT_LT(last, 12.0);
    }
    return whole + last + numerator / denominator;
}

/// Over a rising sweep the shown numbers never fall, and are never further from the value than
/// `reach`, rounding of the value itself apart.
template <typename Text> void sweep(double reach, double unit, double scale, const Text& text) {
    double before = 0.0;
    for (int i = 0; i < 1000; ++i) {
        // Steps that go through the digits unevenly, each followed by a half unit.
        const double at = unit * std::floor(i * 1.37 * std::pow(1.01, i));
        for (const double value : {at, at + 0.4985 * unit, at + 0.4995 * unit, at + 0.5 * unit}) {
            const double number = shown(text(value * scale));
            ASSERT_NEAR(number, value, reach + 1e-15 * (value + 1.0)) << text(value * scale);
            ASSERT_GE(number, before) << text(value * scale);
            before = number;
        }
    }
}

TEST(ValueText, DecimalsStayWithinTheirLastDigit) {
    const double hundredth = 0.01;
    sweep(0.501 * hundredth, hundredth, 1.0, lengthText);
    sweep(0.501 * hundredth, hundredth, 1.0, angleText);
    for (int precision = -6; precision <= 6; ++precision) {
        const double unit = std::pow(10.0, -std::abs(precision));
        const std::pair<Format, double> forms[] = {
            {{{1, 1, 1, 1, precision, 0}}, 1.0}, {{{1, 2, 1, 1, precision, 0}}, 1000.0},
            {{{2, 0, 1, 1, precision, 0}}, 1.0}, {{{2, 0, 0, 1, precision, 0}}, 12.0},
            {{{2, 0, 3, 1, precision, 0}}, 1.0},
        };
        for (const auto& [format, scale] : forms) {
            SCOPED_TRACE(format);
            sweep(0.501 * unit, unit, scale,
                  [f = format](double value) { return formatted(value, f); });
        }
    }
}

TEST(ValueText, FractionsStayWithinHalfAUnit) {
    for (int denominator = 2; denominator <= 50; ++denominator) {
        const double unit = 1.0 / denominator;
        for (const Format& format :
             {Format{{1, 1, 1, 2, 0, denominator}}, Format{{2, 0, 1, 2, 0, denominator}},
              Format{{2, 0, 3, 2, 0, denominator}}}) {
            SCOPED_TRACE(format);
            sweep(0.5 * unit, unit, 1.0, [&](double value) { return formatted(value, format); });
        }
    }
}

TEST(ValueText, PiecesAppendToTheBuffer) {
    char text[100] = "";
    Members::SeStritoa(INT_MIN, text);
    EXPECT_STREQ(text, "2147483648");
    Members::SeStritoa(-42, text);
    Members::SeStrdec(0.5, 3, text);
    Members::SeStrdec(0.0004, -3, text);
    Members::SeStrdec(0.0004, 3, text);
    Members::SeStrdec(0.05, -3, text);
    Members::SeStrdec(0.9, 0, text);
    EXPECT_STREQ(text, "42.500.000.05");
    Members::SeStrfrc(0.03, 16, 0, text);
    Members::SeStrfrc(0.5, 4, 0, text);
    Members::SeStrfrc(0.5, 8, 1, text);
    Members::SeStrfrc(0.9, 0, 0, text);
    EXPECT_STREQ(text, "42.500.000.05 2/44/8");
    EXPECT_EQ(Members::BuToFract(nullptr, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(Members::CheckAngDim(1.0, nullptr, nullptr), 0);
}

TEST(ValueText, ArcLengthIsRadiusTimesSweep) {
    Random random(7);
    for (int i = 0; i < 200; ++i) {
        SCOPED_TRACE(random);
        const Vec x = random.direction();
        const Vec normal = unit(cross(x, random.direction()));
        Vec center = random.point();
        const double radius = random.number(0.1, 200.0);
        const double angle = random.number(0.001, 6.28);
        const Vec start = center + x * radius;
        const Vec end =
            center + (x * std::cos(angle) + cross(normal, x) * std::sin(angle)) * radius;
        double ends[2][3] = {{start.x, start.y, start.z}, {end.x, end.y, end.z}};
        double length = 0.0;
        const std::string written = taken([&](char** text) {
            return CDimSymUitity::ArcValToStr(center.array().data(), radius, ends,
                                              normal.array().data(), &length, text);
        });
        EXPECT_NEAR(length, radius * angle, 1e-9);
        EXPECT_NEAR(std::stod(written), length, 0.00502);
        EXPECT_TRUE(written.find('.') == std::string::npos || written.back() != '0') << written;
    }
    double center[3] = {1.0, 2.0, 3.0};
    double ends[2][3] = {{1.0, 2.0, 3.0}, {5.0, 2.0, 3.0}};
    double normal[3] = {0.0, 0.0, 1.0};
    double length = -1.0;
    char* text = nullptr;
    EXPECT_EQ(CDimSymUitity::ArcValToStr(center, 4.0, ends, normal, &length, &text), -920);
    EXPECT_EQ(length, -1.0);
    EXPECT_EQ(text, nullptr);
}

} // namespace
