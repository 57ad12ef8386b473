// The layout of the records that a host shares with the libraries, on every 64-bit system. Hosts
// are compiled apart from the libraries and reach into these by offset: a size or an offset that
// changes here breaks every host that was built before.
#include <cstddef>
#include <string>
#include <type_traits>

#include <dorvale/dorvale.h>

namespace {

// What the records are made of. `long` is not among it: it has 4 bytes on Windows, 8 elsewhere.
static_assert(sizeof(float) == 4 && sizeof(double) == 8 && sizeof(int) == 4 && sizeof(bool) == 1);
static_assert(sizeof(void*) == 8);

// What offsets mean something in, and what may be copied byte by byte.
template <typename T>
constexpr bool kIsRecord =
    std::conjunction_v<std::is_standard_layout<T>, std::is_trivially_copyable<T>>;

static_assert(kIsRecord<ANK_PNT32> && sizeof(ANK_PNT32) == 12 && alignof(ANK_PNT32) == 4);
static_assert(offsetof(ANK_PNT32, x) == 0);
static_assert(offsetof(ANK_PNT32, y) == 4);
static_assert(offsetof(ANK_PNT32, z) == 8);

static_assert(kIsRecord<ANK_DIR32> && sizeof(ANK_DIR32) == 12 && alignof(ANK_DIR32) == 4);
static_assert(offsetof(ANK_DIR32, x) == 0);
static_assert(offsetof(ANK_DIR32, y) == 4);
static_assert(offsetof(ANK_DIR32, z) == 8);

static_assert(kIsRecord<ANK_MTX32> && sizeof(ANK_MTX32) == 64 && alignof(ANK_MTX32) == 4);
static_assert(offsetof(ANK_MTX32, m) == 0);
static_assert(std::is_same_v<decltype(ANK_MTX32::m), float[4][4]>);

static_assert(kIsRecord<ANK_BOX32> && sizeof(ANK_BOX32) == 24 && alignof(ANK_BOX32) == 4);
static_assert(offsetof(ANK_BOX32, first) == 0);
static_assert(offsetof(ANK_BOX32, second) == 12);

static_assert(kIsRecord<ANK_RGBA32> && sizeof(ANK_RGBA32) == 16 && alignof(ANK_RGBA32) == 4);
static_assert(offsetof(ANK_RGBA32, r) == 0);
static_assert(offsetof(ANK_RGBA32, g) == 4);
static_assert(offsetof(ANK_RGBA32, b) == 8);
static_assert(offsetof(ANK_RGBA32, a) == 12);

static_assert(kIsRecord<_ank_locate> && sizeof(_ank_locate) == 152 && alignof(_ank_locate) == 8);
static_assert(offsetof(_ank_locate, point) == 0);
static_assert(offsetof(_ank_locate, viewMatrix) == 24);

static_assert(kIsRecord<_ank_element> && sizeof(_ank_element) == 32 && alignof(_ank_element) == 8);
static_assert(offsetof(_ank_element, line) == 0);
static_assert(offsetof(_ank_element, pickPoint) == 8);

// The text has the size that the standard library gives it. The library gets to see this record in
// a vector alone; what is compared of its interface does not reach in there.
static_assert(std::is_same_v<decltype(PMITextLine::kind), int>);
static_assert(std::is_same_v<decltype(PMITextLine::text), std::wstring>);
static_assert(sizeof(PMITextLine) == 8 + sizeof(std::wstring));
static_assert(offsetof(PMITextLine, kind) == 0);
static_assert(offsetof(PMITextLine, text) == 8);

static_assert(kIsRecord<Envelope> && sizeof(Envelope) == 12 && alignof(Envelope) == 4);
static_assert(offsetof(Envelope, frameFlag) == 0);
static_assert(offsetof(Envelope, backgroundColour) == 4);
static_assert(offsetof(Envelope, frameColour) == 8);

// An enumeration is passed, and stands in a class, as an `int`.
template <typename... Enumerations>
constexpr bool kAreInts = (std::is_same_v<std::underlying_type_t<Enumerations>, int> && ...);

static_assert(kAreInts<ANK_STATUS, AnkAnchorTypeEnum, AnkCurveDispTypeEnum, AnkCurveTypeEnum,
                       AnkCurveUsageEnum, AnkExtensTypeEnum, AnkLeaderTypeEnum, AnkPMITypeEnum,
                       AnkSpecLineUsageEnum, AnkTermTypeEnum, AnkTextTypeEnum>);

// The two classes of static functions hold a virtual table and nothing else.
static_assert(std::has_virtual_destructor_v<CArithmeticOfPMI> && sizeof(CArithmeticOfPMI) == 8);
static_assert(std::has_virtual_destructor_v<CDimSymUitity> && sizeof(CDimSymUitity) == 8);

} // namespace
