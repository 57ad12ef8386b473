#include "valuetext/widen.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include "valuetext/valuetext.h"
#endif

namespace dorvale {

#if defined(_WIN32)

WideText widened(const ShortText& text) {
    // Room for every character and the terminator: a code page never makes more characters than
    // there are bytes.
    WideText wide{};
    const int count = MultiByteToWideChar(CP_ACP, 0, text.c_str(), -1, wide.characters.data(),
                                          static_cast<int>(wide.characters.size()));
    wide.size = count > 0 ? static_cast<std::size_t>(count - 1) : 0;
    return wide;
}

#else

WideText widened(const ShortText& text) {
    // The alphabet of value text: ASCII, and the angle mark as the code page 936 reads it.
    constexpr wchar_t kWideAngleMark = L'\u309C';
    const std::string_view narrow = text.view();
    const bool marked = narrow.ends_with(kAngleMark);
    WideText wide{};
    wide.size = narrow.size() - (marked ? kAngleMark.size() : 0);
    std::copy_n(narrow.begin(), wide.size, wide.characters.begin());
    if (marked) {
        wide.characters[wide.size++] = kWideAngleMark;
    }
    return wide;
}

#endif

} // namespace dorvale
