#include "host/output/dump.h"

#include "host/output/json.h"
#include "host/scene/build.h"
#include "host/system/utf8.h"

namespace host {
namespace {

using nlohmann::ordered_json;

ordered_json toJson(const ANK_MTX32& matrix) {
    ordered_json rows = ordered_json::array();
    for (const auto& row : matrix.m) {
        rows.push_back(numbers(row));
    }
    return rows;
}

ordered_json toJson(const ANK_RGBA32& c) {
    return ordered_json::array({number(c.r), number(c.g), number(c.b), number(c.a)});
}

/// The first `float` and the second of a getter that hands out a pair.
template <class Object>
ordered_json pairOf(const Object& object, void (Object::*get)(float&, float&) const) {
    float pair[2] = {};
    (object.*get)(pair[0], pair[1]);
    return numbers(pair);
}

void addLine(ordered_json& curve, const Ank_Line& line) {
    curve["start"] = numbers(line.GetStartPoint());
    curve["end"] = numbers(line.GetEndPoint());
}

void addPolyline(ordered_json& curve, const Ank_PolyLine& polyline) {
    curve["domain"] = pairOf(polyline, &Ank_PolyLine::GetDomain);
    curve["points"] = ordered_json::array();
    for (const ANK_PNT32& point : polyline.GetPoints()) {
        curve["points"].push_back(numbers(point));
    }
}

void addArc(ordered_json& curve, const Ank_Ellipse& arc) {
    curve["centre"] = numbers(arc.GetCenterPoint());
    curve["normal"] = numbers(arc.GetNormal());
    curve["originDirection"] = numbers(arc.GetOriginDir());
    ANK_DIR32 x;
    ANK_DIR32 y;
    ANK_DIR32 z;
    arc.GetXYZDir(x, y, z);
    curve["axes"] = ordered_json::array({numbers(x), numbers(y), numbers(z)});
    curve["radius"] = pairOf(arc, &Ank_Ellipse::GetRadius);
    curve["parameter"] = pairOf(arc, &Ank_Ellipse::GetParameter);
    curve["domain"] = pairOf(arc, &Ank_Ellipse::GetDomain);
    ANK_PNT32 start;
    ANK_PNT32 end;
    arc.GetCoordinatePnt(start, end);
    curve["ends"] = ordered_json::array({numbers(start), numbers(end)});
}

ordered_json toJson(const Ank_CurveEntity& entity) {
    ordered_json curve;
    curve["curveType"] = entity.GetCurveType();
    curve["usageType"] = entity.GetUsageType();
    curve["displayType"] = entity.GetCurveDispType();
    curve["display"] = entity.GetCurveDispStat();
    if (const auto* line = dynamic_cast<const Ank_Line*>(&entity)) {
        addLine(curve, *line);
    } else if (const auto* polyline = dynamic_cast<const Ank_PolyLine*>(&entity)) {
        addPolyline(curve, *polyline);
    } else if (const auto* arc = dynamic_cast<const Ank_Ellipse*>(&entity)) {
        addArc(curve, *arc);
    }
    return curve;
}

ordered_json toJson(const std::vector<Ank_CurveEntity*>& curves) {
    ordered_json list = ordered_json::array();
    for (const Ank_CurveEntity* curve : curves) {
        list.push_back(toJson(*curve));
    }
    return list;
}

ordered_json toJson(const Ank_Leader& leader) {
    AnkTermTypeEnum type{};
    float size[2] = {};
    ANK_PNT32 location;
    ANK_DIR32 direction;
    leader.GetTerminator(type, size, location, direction);
    ordered_json json;
    json["leaderType"] = leader.GetLeaderType();
    json["stub"] = leader.GetStubDelta();
    json["terminator"] = {{"type", type},
                          {"size", numbers(size)},
                          {"location", numbers(location)},
                          {"direction", numbers(direction)}};
    json["curves"] = toJson(leader.GetAllCurve());
    return json;
}

ordered_json toJson(const Ank_Extensionline& line) {
    ordered_json json;
    json["type"] = line.GetExLineType();
    json["display"] = line.GetDisplay();
    json["curve"] = line.GetCurve() != nullptr ? toJson(*line.GetCurve()) : ordered_json();
    return json;
}

ordered_json toJson(const Ank_SpecialLine& line) {
    ordered_json json;
    json["usage"] = line.GetSpecLinUse();
    json["curves"] = toJson(line.GetCurves());
    return json;
}

ordered_json toJson(const Ank_Text& text) {
    ANK_DIR32 x;
    ANK_DIR32 y;
    text.GetInnerXYAxis(x, y);
    ordered_json json;
    json["text"] = toUtf8(text.GetText());
    json["font"] = toUtf8(text.GetFont());
    json["charWidthHeight"] = pairOf(text, &Ank_Text::GetCharWidthHeight);
    json["charSpacing"] = number(text.GetCharSpacing());
    json["location"] = numbers(text.GetInnerLoc());
    json["axes"] = ordered_json::array({numbers(x), numbers(y)});
    json["usageType"] = text.GetUsageType();
    return json;
}

ordered_json toJson(const Ank_Envelope& envelope) {
    AnkAnchorTypeEnum type{};
    ANK_PNT32 anchor;
    envelope.GetAnchorPoint(type, anchor);
    ordered_json json;
    json["frame"] = envelope.GetFrameFlag();
    json["backgroundColour"] = toJson(envelope.GetBackgroundColor());
    json["frameColour"] = toJson(envelope.GetFrameColor());
    json["anchorType"] = type;
    json["anchor"] = numbers(anchor);
    return json;
}

ordered_json toJson(const Ank_ComText& block) {
    const ANK_BOX32 box = block.GetOuterBox();
    ordered_json json;
    json["outerBox"] = ordered_json::array({numbers(box.first), numbers(box.second)});
    json["envelope"] =
        block.GetEnvelope() != nullptr ? toJson(*block.GetEnvelope()) : ordered_json();
    json["texts"] = ordered_json::array();
    for (const Ank_Text* text : block.GetTexts()) {
        json["texts"].push_back(toJson(*text));
    }
    return json;
}

template <class T> ordered_json listOf(const std::vector<T*>& objects) {
    ordered_json list = ordered_json::array();
    for (const T* object : objects) {
        list.push_back(toJson(*object));
    }
    return list;
}

ordered_json toJson(const Ank_PMI& pmi) {
    ordered_json json;
    json["type"] = pmi.GetType();
    json["dim"] = pmi.GetDim();
    json["display"] = pmi.GetDisplay();
    json["screenParallel"] = pmi.GetParallelScreen();
    json["definitionPlane"] = toJson(pmi.GetDefPlane());
    json["textBlocks"] = listOf(pmi.GetComText());
    json["leaders"] = listOf(pmi.GetLeaders());
    json["extensionLines"] = listOf(pmi.GetExLines());
    json["specialLines"] = listOf(pmi.GetSpecialLines());
    return json;
}

ordered_json toJson(const _ank_locate& locate) {
    return {{"point", numbers(locate.point)}, {"viewMatrix", numbers(locate.viewMatrix)}};
}

// What a call hands back.
ordered_json handedBack(int value) { return value; }
ordered_json handedBack(std::uint32_t color) { return color; }
ordered_json handedBack(const Vec3& p) {
    return ordered_json::array({number(p[0]), number(p[1]), number(p[2])});
}
ordered_json handedBack(const FourPoints& points) {
    ordered_json list = ordered_json::array();
    for (const Vec3& p : points) {
        list.push_back(handedBack(p));
    }
    return list;
}
ordered_json handedBack(const MovedLine& line) {
    return {{"start", numbers(line.start)}, {"end", numbers(line.end)}};
}

ordered_json toJson(const CallResult& call) {
    ordered_json handed = ordered_json::object();
    if (call.status) {
        handed["status"] = *call.status;
    }
    if (call.locate) {
        handed["locate"] = toJson(*call.locate);
    }
    for (const HandedBack& other : call.others) {
        handed[other.name] =
            std::visit([](const auto& value) { return handedBack(value); }, other.value);
    }
    return {{"call", call.call}, {"handedBack", std::move(handed)}};
}

ordered_json toJson(const Measured& measured) {
    return {{"value", number(measured.value)},
            {"kind", measured.quantity == Quantity::Angle ? "angle" : "length"}};
}

ordered_json toJson(const BuiltAnnotation& built) {
    ordered_json json;
    if (!built.name.empty()) {
        json["name"] = built.name;
    }
    json["calls"] = ordered_json::array();
    for (const CallResult& call : built.calls) {
        json["calls"].push_back(toJson(call));
    }
    if (const CallResult* call = built.measuringCall()) {
        json["measured"] = toJson(call->measured);
    }
    json["annotation"] = toJson(built.pmi);
    return json;
}

} // namespace

std::string dumpScene(std::string_view sceneText, const Progress& progress) {
    return dumpScene(Scene(sceneText), progress);
}

std::string dumpScene(const Scene& scene, const Progress& progress) {
    const std::size_t count = scene.annotationCount();
    std::string text = "{\n  \"title\": ";
    appendText(text, scene.title(), 2);
    text += ",\n  \"annotations\": [";
    for (std::size_t i = 0; i < count; ++i) {
        BuiltAnnotation built;
        buildAnnotation(scene, i, built);
        text += i == 0 ? "\n    " : ",\n    ";
        appendText(text, toJson(built), 4);
        if (progress) {
            progress(i + 1, count);
        }
    }
    return text + (count == 0 ? "]\n}\n" : "\n  ]\n}\n");
}

} // namespace host
