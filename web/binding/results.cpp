#include "web/binding/results.h"

#include <algorithm>

namespace web {
namespace {

template <class E> void addEnum(Words& words, E value) { words.add(static_cast<int>(value)); }

/// The two numbers of a getter that hands out a pair.
template <class Object>
void addPair(Words& words, const Object& object, void (Object::*get)(float&, float&) const) {
    float pair[2] = {};
    (object.*get)(pair[0], pair[1]);
    words.add(std::span<const float>(pair));
}

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
    words.addCount(2);
    words.add(line.GetStartPoint());
    words.add(line.GetEndPoint());
}

void addPolyline(Words& words, const Ank_PolyLine& polyline) {
    words.addCount(polyline.GetPoints().size());
    for (const ANK_PNT32& point : polyline.GetPoints()) {
        words.add(point);
    }
    addPair(words, polyline, &Ank_PolyLine::GetDomain);
}

void addArc(Words& words, const Ank_Ellipse& arc) {
    ANK_PNT32 start;
    ANK_PNT32 end;
    arc.GetCoordinatePnt(start, end);
    ANK_DIR32 x;
    ANK_DIR32 y;
    ANK_DIR32 z;
    arc.GetXYZDir(x, y, z);
    words.add(arc.GetCenterPoint());
    words.add(arc.GetNormal());
    words.add(start);
    words.add(end);
    words.add(arc.GetOriginDir());
    words.add(x);
    words.add(y);
    words.add(z);
    addPair(words, arc, &Ank_Ellipse::GetRadius);
    addPair(words, arc, &Ank_Ellipse::GetParameter);
    addPair(words, arc, &Ank_Ellipse::GetDomain);
}

void add(Words& words, const Ank_CurveEntity& curve) {
    addEnum(words, curve.GetCurveType());
    addEnum(words, curve.GetUsageType());
    addEnum(words, curve.GetCurveDispType());
    words.add(curve.GetCurveDispStat());
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
    AnkTermTypeEnum type{};
    float size[2] = {};
    ANK_PNT32 tip;
    ANK_DIR32 direction;
    leader.GetTerminator(type, size, tip, direction);
    addEnum(words, leader.GetLeaderType());
    words.add(leader.GetStubDelta());
    addEnum(words, type);
    words.add(std::span<const float>(size));
    words.add(tip);
    words.add(direction);
    const std::vector<Ank_CurveEntity*> curves = leader.GetAllCurve();
    addCurve(words, curves.empty() ? nullptr : curves.front());
}

void add(Words& words, const Ank_Extensionline& line) {
    addEnum(words, line.GetExLineType());
    words.add(line.GetDisplay());
    addCurve(words, line.GetCurve());
}

void add(Words& words, const Ank_SpecialLine& line) {
    addEnum(words, line.GetSpecLinUse());
    addList(words, line.GetCurves());
}

void add(Words& words, const Ank_Text& text) {
    ANK_DIR32 x;
    ANK_DIR32 y;
    text.GetInnerXYAxis(x, y);
    words.add(text.GetText());
    words.add(text.GetFont());
    words.add(text.GetInnerLoc());
    words.add(x);
    words.add(y);
    addPair(words, text, &Ank_Text::GetCharWidthHeight);
    words.add(text.GetCharSpacing());
    addEnum(words, text.GetUsageType());
}

void add(Words& words, const ANK_RGBA32& color) {
    words.add(color.r);
    words.add(color.g);
    words.add(color.b);
    words.add(color.a);
}

void add(Words& words, const Ank_ComText& block) {
    const ANK_BOX32 box = block.GetOuterBox();
    words.add(box.first);
    words.add(box.second);
    const Ank_Envelope* envelope = block.GetEnvelope();
    words.add(envelope != nullptr);
    if (envelope != nullptr) {
        AnkAnchorTypeEnum type{};
        ANK_PNT32 anchor;
        envelope->GetAnchorPoint(type, anchor);
        words.add(envelope->GetFrameFlag());
        add(words, envelope->GetBackgroundColor());
        add(words, envelope->GetFrameColor());
        addEnum(words, type);
        words.add(anchor);
    }
    addList(words, block.GetTexts());
}

// What a call hands back, in the order of `HandedBack::Value`.
struct AddValue {
    Words& words;

    void operator()(int value) const { words.add(value); }
    void operator()(std::uint32_t value) const { words.add(value); }
    void operator()(const host::Vec3& p) const { words.add(std::span<const double>(p)); }
    void operator()(const std::vector<host::Vec3>& points) const {
        words.addCount(points.size());
        std::for_each(points.begin(), points.end(), *this);
    }
    void operator()(const host::MovedLine& line) const {
        words.add(line.start);
        words.add(line.end);
    }
};

void add(Words& words, const host::CallResult& result) {
    words.addCount(static_cast<std::size_t>(host::findCall(result.call) - host::calls().data()));
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
    addEnum(words, result.measured.quantity);
    words.add(result.measured.value);
    words.addCount(result.callerLines.size());
    for (const host::LineEdge& line : result.callerLines) {
        words.add(std::span<const double>(line.start));
        words.add(std::span<const double>(line.end));
    }
}

} // namespace

void Words::add(double value) { add(std::span<const double>(&value, 1)); }

void Words::add(std::span<const double> values) {
    if (size() % 2 != 0) {
        add(0);
    }
    addBytes(values.data(), 2 * values.size());
}

void Words::add(std::wstring_view text) {
    const std::size_t count = size();
    add(0);
    std::size_t units = 0;
    const auto addUnit = [&](std::uint32_t unit) {
        if (units++ % 2 == 0) {
            add(unit);
        } else {
            words_.data()[size_ - 1] |= unit << 16U;
        }
    };
    for (const wchar_t c : text) {
        auto code = static_cast<std::uint32_t>(c);
        if (code >= 0x10000) {
            code -= 0x10000;
            addUnit(0xD800 + (code >> 10U));
            code = 0xDC00 + (code & 0x3FFU);
        }
        addUnit(code);
    }
    set(count, units);
}

void addAnnotation(Words& words, const Ank_PMI& pmi, std::span<const host::CallResult> calls) {
    for (const auto& row : pmi.GetDefPlane().m) {
        words.add(std::span<const float>(row));
    }
    addEnum(words, pmi.GetType());
    words.add(pmi.GetDim());
    words.add(pmi.GetDisplay());
    words.add(pmi.GetParallelScreen());
    addList(words, pmi.GetLeaders());
    addList(words, pmi.GetExLines());
    addList(words, pmi.GetSpecialLines());
    addList(words, pmi.GetComText());
    words.addCount(calls.size());
    for (const host::CallResult& call : calls) {
        add(words, call);
    }
}

} // namespace web
