// The value text under the code pages that Windows widens it by.
#include <memory>
#include <string>

#include <windows.h>

#include <dorvale/dorvale.h>
#include <gtest/gtest.h>

namespace {

/// All that value text is made of, but the angle mark.
constexpr const char* kNarrow = "0123456789.'\"/ ";
constexpr const wchar_t* kWide = L"0123456789.'\"/ ";

/// Narrow text as a host widens it.
std::wstring widened(const char* text) {
    wchar_t wide[32] = {};
    MultiByteToWideChar(CP_ACP, 0, text, -1, wide, 32);
    return wide;
}

std::wstring angleText(double degrees) {
    int length = 0;
    char* text = nullptr;
    CDimSymUitity::AngValToStr(degrees, &length, &text);
    const std::unique_ptr<char[]> owner(text);
    return widened(text);
}

/// The text of a finished dimension: an angle of 5 degrees, the shortest with a mark.
std::wstring angleDimension() {
    Ank_Line edge1;
    edge1.SetEndPoint({100.0F, 0.0F, 0.0F});
    Ank_Line edge2;
    edge2.SetEndPoint({99.6194698F, 8.71557427F, 0.0F});
    _ank_locate locate{{50, 2, 0}, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
    double specialLines[4][3] = {};
    int angleMode = 0;
    int status = -1;
    int count = 0;
    const auto pmi = std::make_unique<Ank_PMI>();
    PMICreateAngleDim(&angleMode, &edge1, &edge2, &locate, 3.5, pmi.get(), &status, count,
                      specialLines, locate.viewMatrix);
    return pmi->GetComText().at(0)->GetTexts().at(0)->GetText();
}

TEST(CodePage, SimplifiedChineseHasTheAngleMark) {
    ASSERT_EQ(GetACP(), 936U);
    EXPECT_EQ(widened(kNarrow), kWide);
    EXPECT_EQ(angleText(5.0), L"5\u309C");
    EXPECT_EQ(angleDimension(), L"5\u00B0");
}

TEST(CodePage, WesternReadsTheMarkAsTwoCharacters) {
    ASSERT_EQ(GetACP(), 1252U);
    EXPECT_EQ(widened(kNarrow), kWide);
    EXPECT_EQ(angleText(5.0), L"5\u00A9b");
    EXPECT_EQ(angleDimension(), L"5\u00B0");
}

} // namespace
