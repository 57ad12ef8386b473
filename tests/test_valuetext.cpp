// Value text, read back: never further from the value than its last digit allows.
#include <climits>

#include "support/calls.h"
#include "support/rigid.h"
#include "support/valuetext.h"

namespace dorvale::test {
namespace {

using Format = std::array<int, 6>;

TEST(ValueText, Lengths) {
    const std::pair<double, const char*> cases[] = {
        {0.0, "0.00"},
        {0.004, "0.00"},
        {0.004995, "0.01"},
        {2.5, "2.5"},
        {2.05, "2.05"},
        {99.99499, "100.00"},
        {1440.0, "1440.00"},
        {2000000000.25, "2000000000.25"},
        {2147483646.999, "2147483647.00"},
        {INFINITY, "2147483647.00"},
        {NAN, "0.00"},
        {-0.001, "status -1"},
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
        {1e99, "2147483647"}, {-INFINITY, "2147483647"},
    };
    for (const auto& [value, expected] : cases) {
        EXPECT_EQ(angleText(value), std::string(expected) += kAngleMark) << value;
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
        {-7.25, {{1, 1, 1, 1, 9, 0}}, "7.250000000"},
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
        {30.9, {{2, 0, 3, 2, 0, 1}}, "2' 6\""},
        // split, but without marks
        {30.5, {{3, 0, 3, 2, 0, 8}}, "2 4/8"},
        {6.5, {{3, 0, 3, 2, 0, 8}}, "4/8"},
        // fractions
        {0.5, {{2, 0, 1, 2, 0, 4}}, "2/4"},
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
        {NAN, {{2, 0, 3, 2, 0, 8}}, "0' 0\""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(formatted(c.value, c.format), c.expected)
            << c.value << " as " << testing::PrintToString(c.format);
    }
}

/// Over a rising sweep the shown numbers never fall, and are never further from the value than
/// `reach`.
template <typename Text> void sweep(double reach, double unit, double scale, const Text& text) {
    double before = 0.0;
    for (int i = 0; i < 1000; ++i) {
        // Steps that go through the digits unevenly, each followed by a half unit.
        const double at = unit * std::floor(i * 1.37 * std::pow(1.01, i));
        for (const double value : {at, at + 0.4985 * unit, at + 0.4995 * unit, at + 0.5 * unit}) {
            const std::string written = text(value * scale);
            ASSERT_TRUE(shows(written, value, reach)) << written << " for " << value * scale;
            ASSERT_GE(shown(written), before) << written;
            before = shown(written);
        }
    }
}

void sweepFormat(double reach, double unit, double scale, const Format& format) {
    SCOPED_TRACE(testing::PrintToString(format));
    sweep(reach, unit, scale, [&](double value) { return formatted(value, format); });
}

TEST(ValueText, DecimalsStayWithinTheirLastDigit) {
    const double hundredth = 0.01;
    sweep(0.501 * hundredth, hundredth, 1.0, lengthText);
    sweep(0.501 * hundredth, hundredth, 1.0, angleText);
    for (int precision = -6; precision <= 6; ++precision) {
        const double unit = std::pow(10.0, -std::abs(precision));
        sweepFormat(0.501 * unit, unit, 1.0, {{1, 1, 1, 1, precision, 0}});
        sweepFormat(0.501 * unit, unit, 1000.0, {{1, 2, 1, 1, precision, 0}});
        sweepFormat(0.501 * unit, unit, 1.0, {{2, 0, 1, 1, precision, 0}});
        sweepFormat(0.501 * unit, unit, 12.0, {{2, 0, 0, 1, precision, 0}});
        sweepFormat(0.501 * unit, unit, 1.0, {{2, 0, 3, 1, precision, 0}});
    }
}

TEST(ValueText, LastDecimalGoesUpFromTheHalfOn) {
    double unit = 1.0;
    for (int precision = 1; precision <= 9; ++precision) {
        unit /= 10.0;
        const std::string zeros(static_cast<std::size_t>(precision - 1), '0');
        const std::pair<double, std::string> cases[] = {
            {2.0 + 0.4985 * unit, "2." + zeros + "0"},
            {2.0 + 0.4995 * unit, "2." + zeros + "1"},
            {2.0 + 0.5 * unit, "2." + zeros + "1"},
        };
        for (const auto& [value, expected] : cases) {
            EXPECT_EQ(formatted(value, {{1, 1, 1, 1, precision, 0}}), expected);
            EXPECT_EQ(formatted(12.0 * value, {{2, 0, 2, 1, precision, 0}}), expected);
        }
    }
}

TEST(ValueText, FractionsStayWithinHalfAUnit) {
    for (int denominator = 2; denominator <= 50; ++denominator) {
        const double unit = 1.0 / denominator;
        sweepFormat(0.5 * unit, unit, 1.0, {{1, 1, 1, 2, 0, denominator}});
        sweepFormat(0.5 * unit, unit, 1.0, {{2, 0, 1, 2, 0, denominator}});
        sweepFormat(0.5 * unit, unit, 1.0, {{2, 0, 3, 2, 0, denominator}});
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
}

TEST(ValueText, ArcLengthIsRadiusTimesSweep) {
    Random random(7);
    for (int i = 0; i < 200; ++i) {
        SCOPED_TRACE(random);
        const Rigid frame = Rigid::random(random);
        const double radius = random.number(0.1, 200.0);
        const double angle = random.number(0.001, 6.28);
        Record record;
        set(record.center, frame.origin);
        set(record.normal, frame.axes[2]);
        set(record.arcEnds, frame.point({radius, 0, 0}), frame.point(towards(angle) * radius));
        record.radii[0] = radius;
        Arguments made(record);
        run("ArcValToStr", made);
        EXPECT_NEAR(made.result[0], radius * angle, 1e-9);
        const std::string written = made.textOut.get();
        EXPECT_TRUE(shows(written, radius * angle, 0.00501)) << written;
        EXPECT_TRUE(written.find('.') == std::string::npos || written.back() != '0') << written;
    }
    Arguments pointless({});
    set(pointless.arcEnds[0], Vec(pointless.center));
    run("ArcValToStr", pointless);
    EXPECT_EQ(pointless.code, -920);
    EXPECT_EQ(pointless.result[0], 0.0);
    EXPECT_EQ(pointless.textOut, nullptr);
}

} // namespace
} // namespace dorvale::test
