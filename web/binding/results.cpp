#include "web/binding/results.h"

#include <algorithm>
#include <array>

namespace web {
namespace {

// What objects of the model are as words. Flags and enumerations are integers.

struct PackedCurve {
    int type;
    int usage;
    int displayType;
    int display;
};

struct PackedLine {
    std::uint32_t count{};
    ANK_PNT32 start;
    ANK_PNT32 end;
};

struct PackedArc {
    ANK_PNT32 center;
    ANK_DIR32 normal;
    ANK_PNT32 start;
    ANK_PNT32 end;
    ANK_DIR32 originDirection;
    ANK_DIR32 axes[3];
    float radii[2]{};
    float parameter[2]{};
    float domain[2]{};
};

struct PackedLeader {
    int type{};
    int stub{};
    AnkTermTypeEnum terminator{};
    float size[2]{};
    ANK_PNT32 tip;
    ANK_DIR32 direction;
};

struct PackedText {
    ANK_PNT32 location;
    ANK_DIR32 axes[2];
    float size[2]{};
    float spacing{};
    int usage{};
};

struct PackedEnvelope {
    int frame{};
    ANK_RGBA32 background;
    ANK_RGBA32 frameColor;
    AnkAnchorTypeEnum anchorType{};
    ANK_PNT32 anchor;
};

struct PackedAnnotation {
    ANK_MTX32 plane;
    int type{};
    std::uint32_t dim{};
    int display{};
    int screenParallel{};
};

// One overload for each kind of object.
void add(Words& words, const Ank_CurveEntity& curve);
void add(Words& words, const Ank_Leader& leader);
void add(Words& words, const Ank_Extensionline& line);
void add(Words& words, const Ank_SpecialLine& line);
void add(Words& words, const Ank_Text& text);
void add(Words& words, const Ank_ComText& block);

template <class T> void addList(Words& words, const std::vector<T*>& objects) {
    words.addCount(objects.size());
    for (const T* object : objects) {
        add(words, *object);
    }
}

void addLine(Words& words, const Ank_Line& line) {
    auto& packed = words.next<PackedLine>();
    packed.count = 2;
    packed.start = line.GetStartPoint();
    packed.end = line.GetEndPoint();
}

void addPolyline(Words& words, const Ank_PolyLine& polyline) {
    words.addCount(polyline.GetPoints().size());
    for (const ANK_PNT32& point : polyline.GetPoints()) {
        words.next<ANK_PNT32>() = point;
    }
    auto& domain = words.next<std::array<float, 2>>();
    polyline.GetDomain(domain[0], domain[1]);
}

void addArc(Words& words, const Ank_Ellipse& arc) {
    auto& packed = words.next<PackedArc>();
    packed.center = arc.GetCenterPoint();
    packed.normal = arc.GetNormal();
    arc.GetCoordinatePnt(packed.start, packed.end);
    packed.originDirection = arc.GetOriginDir();
    arc.GetXYZDir(packed.axes[0], packed.axes[1], packed.axes[2]);
    arc.GetRadius(packed.radii[0], packed.radii[1]);
    arc.GetParameter(packed.parameter[0], packed.parameter[1]);
    arc.GetDomain(packed.domain[0], packed.domain[1]);
}

void add(Words& words, const Ank_CurveEntity& curve) {
    auto& packed = words.next<PackedCurve>();
    packed.type = curve.GetCurveType();
    packed.usage = curve.GetUsageType();
    packed.displayType = curve.GetCurveDispType();
    packed.display = curve.GetCurveDispStat() ? 1 : 0;
    switch (curve.GetCurveType()) {
    case ANK_CURVE_LINE:
        return addLine(words, static_cast<const Ank_Line&>(curve));
    case ANK_CURVE_POLYLINE:
        return addPolyline(words, static_cast<const Ank_PolyLine&>(curve));
    case ANK_CURVE_ARC:
        return addArc(words, static_cast<const Ank_Ellipse&>(curve));
    }
}

/// A curve that may be missing: its type is 0 then.
void addCurve(Words& words, const Ank_CurveEntity* curve) {
    if (curve == nullptr) {
        words.add(0);
    } else {
        add(words, *curve);
    }
}

void add(Words& words, const Ank_Leader& leader) {
    auto& packed = words.next<PackedLeader>();
    packed.type = leader.GetLeaderType();
    packed.stub = leader.GetStubDelta() ? 1 : 0;
    leader.GetTerminator(packed.terminator, packed.size, packed.tip, packed.direction);
    const std::vector<Ank_CurveEntity*> curves = leader.GetAllCurve();
    addCurve(words, curves.empty() ? nullptr : curves.front());
}

void add(Words& words, const Ank_Extensionline& line) {
    words.add(line.GetExLineType());
    words.add(line.GetDisplay());
    addCurve(words, line.GetCurve());
}

void add(Words& words, const Ank_SpecialLine& line) {
    words.add(line.GetSpecLinUse());
    addList(words, line.GetCurves());
}

void add(Words& words, const Ank_Text& text) {
    words.add(text.GetText());
    words.add(text.GetFont());
    auto& packed = words.next<PackedText>();
    packed.location = text.GetInnerLoc();
    text.GetInnerXYAxis(packed.axes[0], packed.axes[1]);
    text.GetCharWidthHeight(packed.size[0], packed.size[1]);
    packed.spacing = text.GetCharSpacing();
    packed.usage = text.GetUsageType();
}

void add(Words& words, const Ank_ComText& block) {
    words.next<ANK_BOX32>() = block.GetOuterBox();
    const Ank_Envelope* envelope = block.GetEnvelope();
    words.add(envelope != nullptr);
    if (envelope != nullptr) {
        auto& packed = words.next<PackedEnvelope>();
        packed.frame = envelope->GetFrameFlag() ? 1 : 0;
        packed.background = envelope->GetBackgroundColor();
        packed.frameColor = envelope->GetFrameColor();
        envelope->GetAnchorPoint(packed.anchorType, packed.anchor);
    }
    addList(words, block.GetTexts());
}

// What a call hands back, in the order of `HandedBack::Value`.
struct AddValue {
    Words& words;

    void operator()(int value) const { words.add(value); }
    void operator()(std::uint32_t value) const { words.add(value); }
    void operator()(const host::Vec3& p) const { words.add(std::span<const double>(p)); }
    void operator()(const host::FourPoints& points) const {
        words.addCount(points.size());
        std::for_each(points.begin(), points.end(), *this);
    }
    void operator()(const host::MovedLine& line) const { words.next<host::MovedLine>() = line; }
};

void add(Words& words, const MadeCall& call) {
    const host::CallResult& result = call.result;
    words.addCount(call.place);
    if (result.status) {
        words.add(*result.status);
    }
    if (result.locate) {
        words.add(std::span<const double>(result.locate->point));
        words.add(std::span<const double>(result.locate->viewMatrix));
    }
    for (const host::HandedBack& other : result.others) {
        std::visit(AddValue{words}, other.value);
    }
    words.add(static_cast<int>(result.measured.quantity));
    words.add(std::span<const double>(&result.measured.value, 1));
    words.addCount(result.callerLines.size());
    for (const host::LineEdge& line : result.callerLines) {
        words.add(std::span<const double>(line.start));
        words.add(std::span<const double>(line.end));
    }
}

} // namespace

void Words::add(std::span<const double> values) {
    if (size_ % 2 != 0) {
        add(0);
    }
    std::memcpy(more(2 * values.size()), values.data(), values.size_bytes());
}

void Words::add(std::wstring_view text) {
    // A character is a unit, or two beyond U+FFFF.
    const std::size_t start = size_;
    auto* const first = reinterpret_cast<std::uint16_t*>(more(1 + text.size()) + 1);
    std::uint16_t* end = first;
    for (const wchar_t c : text) {
        auto code = static_cast<char32_t>(c);
        if (code >= 0x10000) {
            code -= 0x10000;
            *end++ = static_cast<std::uint16_t>(0xD800 + (code >> 10U));
            code = 0xDC00 + (code & 0x3FFU);
        }
        *end++ = static_cast<std::uint16_t>(code);
    }
    const auto units = static_cast<std::size_t>(end - first);
    set(start, units);
    size_ = start + 1 + (units + 1) / 2;
}

void addAnnotation(Words& words, const Ank_PMI& pmi, std::span<const MadeCall> calls) {
    auto& packed = words.next<PackedAnnotation>();
    packed.plane = pmi.GetDefPlane();
    packed.type = pmi.GetType();
    packed.dim = pmi.GetDim();
    packed.display = pmi.GetDisplay() ? 1 : 0;
    packed.screenParallel = pmi.GetParallelScreen() ? 1 : 0;
    addList(words, pmi.GetLeaders());
    addList(words, pmi.GetExLines());
    addList(words, pmi.GetSpecialLines());
    addList(words, pmi.GetComText());
    words.addCount(calls.size());
    for (const MadeCall& call : calls) {
        add(words, call);
    }
}

} // namespace web
