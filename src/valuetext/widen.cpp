#include "valuetext/widen.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include "valuetext/valuetext.h"
#endif

namespace dorvale {

#if defined(_WIN32)

void appendWidened(std::wstring& line, const ShortText& text) {
    // Room for every character and the terminator: a code page never makes more characters than
    // there are bytes.
    std::array<wchar_t, ShortText::kCapacity> wide{};
    const int count = MultiByteToWideChar(CP_ACP, 0, text.c_str(), -1, wide.data(),
                                          static_cast<int>(wide.size()));
    line.append(wide.data(), count > 0 ? static_cast<std::size_t>(count - 1) : 0);
}

#else

void appendWidened(std::wstring& line, const ShortText& text) {
    // The alphabet of value text: ASCII, and the angle mark as the code page 936 reads it.
    constexpr wchar_t kWideAngleMark = L'\u309C';
    std::string_view ascii = text.view();
    const bool marked = ascii.ends_with(kAngleMark);
    if (marked) {
        ascii.remove_suffix(kAngleMark.size());
    }
    const std::size_t before = line.size();
    line.resize(before + ascii.size());
    std::copy(ascii.begin(), ascii.end(), &line[before]);
    if (marked) {
        line += kWideAngleMark;
    }
}

#endif

} // namespace dorvale
