// Every entry point and builder, each called by its name with arguments from one plain record.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <dorvale/dorvale.h>

#include "host/calls/calls.h"
#include "support/vec.h"

namespace dorvale::test {

/// What was read, to be compared.
using Bits = std::vector<std::byte>;

/// Every number that a call is given: a small part, its placement and the view.
struct Numbers {
    double points[6][3] = {{0, 0, 0}, {0, 10, 0}, {0, 20, 0}, {90, 0, 0}, {90, 10, 0}, {90, 20, 0}};
    double lineEnds[2][2][3] = {{{10, 0, 0}, {100, 0, 0}}, {{8, 10, 0}, {60, 75, 0}}};
    double center[3] = {50, 50, 0};
    double normal[3] = {0, 0, 1};
    double radii[2] = {30, 30};
    double arcEnds[2][3] = {{80, 50, 0}, {50, 80, 0}};
    double sectionNormal[3] = {0, 0, 2};
    double origin[3] = {1, 2, 0};
    double xPoint[3] = {40, 2, 0};
    double picks[2][3] = {{80, 0, 0}, {40, 50, 0}};
    double place[3] = {70, 30, 12};
    double placeView[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1};
    double viewMatrix[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1};
    double text[3] = {50, 30, 0};
    double axes[2][3] = {{1, 0, 0}, {0, 1, 0}};
    double charSize[2] = {2.5, 3.5};
    double tolerances[2] = {0.01, 0.00026};
    double height = 3.5;
    double value = 1234.567;
    double angle = 0.625;
};
inline constexpr std::size_t kNumbers = sizeof(Numbers) / sizeof(double);

struct Integers {
    int format[6] = {2, 1, 3, 2, -3, 8};
    int planeKind = 6;
    int mode = 1;
    int kindCode = 900001;
    int curves[2] = {0, 0}; // 0 what fits the call; 1 an arc, 2 a line, 3 a polyline, others null
    int curveType = 1;
    int pointsFrom = 0;
    int noView = 0;
    int flags = 31;
    int colors[2] = {0x00FFFF, 0x2040E0};
};
inline constexpr std::size_t kIntegers = sizeof(Integers) / sizeof(int);

/// What a call is made of.
struct Record : Numbers, Integers {
    std::wstring line = L"M8 x 1.25, on 4 sides";

    void setNumber(std::size_t i, double to);
    void setInteger(std::size_t i, int to);
};

inline void set(double* to, const Vec& v) { std::ranges::copy(v.array(), to); }
inline void set(double (&line)[2][3], const Vec& start, const Vec& end) {
    set(line[0], start);
    set(line[1], end);
}

/// A plain record with other edges.
inline Record edges(const Vec& start1, const Vec& end1, const Vec& start2, const Vec& end2) {
    Record record;
    set(record.lineEnds[0], start1, end1);
    set(record.lineEnds[1], start2, end2);
    return record;
}

/// A plain record, parallel edges, a placement near the vertex, one far out of a major arc, zeros.
std::span<const Record> records();

/// What no host means to send.
std::span<const double> hostileNumbers();

/// What stands in a status, a code or a count before the call: no call sets it.
inline constexpr int kStatusBefore = -7;

/// The caller's side of a call: all that is handed over and handed back.
struct Arguments : Record {
    explicit Arguments(const Record& record);
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;
    ~Arguments() { gather(); }

    /// What the call handed back under a name.
    template <typename T> const T& handedBack(std::string_view name) const {
        return std::get<T>(std::ranges::find(handed.others, name, &host::HandedBack::name)->value);
    }
    bool flag(int i) const { return (flags >> i & 1) != 0; }
    Ank_CurveEntity* curve(int i, Ank_CurveEntity& fitting);
    Ank_Line* line(int i) { return curve(i, lines[i]) == nullptr ? nullptr : &lines[i]; }
    double* view() { return noView == 0 ? viewMatrix : nullptr; }
    /// Puts the elements that builders made into an annotation of their own.
    void gather();
    /// Everything that the caller can read, to the last bit.
    Bits bits();

    Ank_Line lines[2];
    Ank_Ellipse arc;
    Ank_PolyLine polyline;
    ANK_PNT32 places[6];
    ANK_DIR32 directions[2];
    float number;
    std::vector<ANK_PNT32> shape;
    std::vector<PMITextLine> noteLines;
    std::vector<std::wstring> textLines;
    std::wstring extraLine;
    Envelope envelope;
    _ank_locate locate{};

    Ank_PMI pmi;
    int code = kStatusBefore;
    int status = kStatusBefore;
    int count = kStatusBefore;
    double result[16] = {};
    char buffer[64] = {};
    /// Of an entry point that makes or changes an annotation.
    host::CallResult handed;
    std::vector<ANK_PNT32> pointsOut;
    std::vector<Ank_Leader*> leaders;
    std::vector<Ank_Extensionline*> exLines;
    std::unique_ptr<Ank_SpecialLine> lineOut;
    std::unique_ptr<Ank_ComText> blockOut;
    std::unique_ptr<Ank_CurveEntity> curveOut;
    std::unique_ptr<char[]> textOut;
    Ank_PMI built;
};

class Call {
public:
    const char* name;
    /// The code that it returns out of memory; 0 where it throws `std::bad_alloc`.
    int noMemory = 0;

    /// A service or a builder.
    /// @param fills the call that makes the annotation it works on, if it works on one
    constexpr Call(const char* builder, void (*make)(Arguments&), int code = 0,
                   const char* fills = nullptr)
        : name(builder), noMemory(code), builder_(make), filledBy_(fills) {}
    /// A call that makes or changes an annotation.
    Call(const host::Call& entry);

    void run(Arguments& arguments) const;
    /// Fills the annotation that the call works on.
    void prepare(Arguments& arguments) const;

    friend std::ostream& operator<<(std::ostream& out, const Call& call) {
        return out << call.name;
    }

private:
    void (*builder_)(Arguments&) = nullptr;
    const host::Call* entry_ = nullptr;
    const char* filledBy_ = nullptr;
};
/// Every call of the host's table, then the services and builders.
std::span<const Call> calls();

/// Null where there is none.
const Call* findCall(std::string_view name);
/// Makes the call of a name. Throws `std::invalid_argument` where there is none.
void run(std::string_view call, Arguments& arguments);

/// What a call with arguments of its own gives.
Bits resultOf(const Call& call, const Record& record);

} // namespace dorvale::test
