#include <dorvale/datamanager.h>

#include <cstdio>
#include <cstdlib>
#include <new>
#include <set>

namespace viewer {

namespace {

int stepsLeft = 0;
std::set<const Object*> objects;

Numbers of(const ANK_PNT32& p) { return {p.x, p.y, p.z}; }
Numbers of(const ANK_DIR32& d) { return {d.x, d.y, d.z}; }
Numbers of(const ANK_RGBA32& c) { return {c.r, c.g, c.b, c.a}; }
Numbers of(const ANK_BOX32& b) {
    return {b.corner[0].x, b.corner[0].y, b.corner[0].z,
            b.corner[1].x, b.corner[1].y, b.corner[1].z};
}
Numbers of(const ANK_MTX32& m) { return {std::begin(m.element), std::end(m.element)}; }
template <typename T> Numbers of(T single) { return {static_cast<double>(single)}; }

/// One after the other.
template <typename... T> Numbers all(const T&... values) {
    Numbers numbers;
    for (const Numbers& part : {of(values)...}) {
        numbers.insert(numbers.end(), part.begin(), part.end());
    }
    return numbers;
}

ANK_PNT32 pointAt(const Numbers& n, std::size_t from) {
    return {static_cast<float>(n.at(from)), static_cast<float>(n.at(from + 1)),
            static_cast<float>(n.at(from + 2))};
}

} // namespace

void failIn(int steps) { stepsLeft = steps; }

void step() {
    if (stepsLeft > 0 && --stepsLeft == 0) {
        throw std::bad_alloc();
    }
}

std::size_t alive() { return objects.size(); }

Object::Object() {
    step();
    objects.insert(this);
}

Object::Object(const Object& other) : told_(other.told_) {
    step();
    objects.insert(this);
}

Object::~Object() {
    if (objects.erase(this) == 0) {
        std::fputs("an object is deleted twice\n", stderr);
        std::abort();
    }
}

Numbers Object::told(const std::string& operation) const {
    const auto found = told_.find(operation);
    return found == told_.end() ? Numbers{} : found->second;
}

ANK_STATUS Object::tell(const char* operation, const Numbers& numbers) {
    told_[operation] = numbers;
    return ANK_STATUS::Taken;
}

} // namespace viewer

using viewer::all;
using viewer::pointAt;

// What an operation is called, and what it is told.
#define TELL(operation, ...) tell(#operation, all(__VA_ARGS__))

void Ank_CurveEntity::SetUsageType(AnkCurveUsageEnum usage) { TELL(SetUsageType, usage); }
ANK_STATUS Ank_CurveEntity::SetCurveDispStat(bool shown) { return TELL(SetCurveDispStat, shown); }
ANK_STATUS Ank_CurveEntity::SetCurveDispType(AnkCurveDispTypeEnum type) {
    return TELL(SetCurveDispType, type);
}

AnkCurveTypeEnum Ank_PolyLine::GetCurveType() const { return ACT_CHAIN; }
ANK_STATUS Ank_PolyLine::SetPoints(const std::vector<ANK_PNT32>& points) {
    points_ = points;
    return ANK_STATUS::Taken;
}
ANK_STATUS Ank_PolyLine::SetDomain(float start, float end) { return TELL(SetDomain, start, end); }

AnkCurveTypeEnum Ank_Line::GetCurveType() const { return ACT_STRAIGHT; }
void Ank_Line::SetStartPoint(const ANK_PNT32& start) { TELL(SetStartPoint, start); }
void Ank_Line::SetEndPoint(const ANK_PNT32& end) { TELL(SetEndPoint, end); }
ANK_PNT32 Ank_Line::GetStartPoint() const { return pointAt(told("SetStartPoint"), 0); }
ANK_PNT32 Ank_Line::GetEndPoint() const { return pointAt(told("SetEndPoint"), 0); }

AnkCurveTypeEnum Ank_Ellipse::GetCurveType() const { return ACT_ROUND; }
ANK_STATUS Ank_Ellipse::SetCenterPoint(const ANK_PNT32& center) {
    return TELL(SetCenterPoint, center);
}
void Ank_Ellipse::SetNormal(const ANK_DIR32& normal) { TELL(SetNormal, normal); }
void Ank_Ellipse::SetOriginDir(const ANK_DIR32& direction) { TELL(SetOriginDir, direction); }
ANK_STATUS Ank_Ellipse::SetXYZDir(const ANK_DIR32& x, const ANK_DIR32& y, const ANK_DIR32& z) {
    return TELL(SetXYZDir, x, y, z);
}
ANK_STATUS Ank_Ellipse::SetRadius(float first, float second) {
    return TELL(SetRadius, first, second);
}
ANK_STATUS Ank_Ellipse::SetParameter(float start, float end) {
    return TELL(SetParameter, start, end);
}
ANK_STATUS Ank_Ellipse::SetDomain(float start, float end) { return TELL(SetDomain, start, end); }
ANK_STATUS Ank_Ellipse::SetCoordiantePnt(const ANK_PNT32& start, const ANK_PNT32& end) {
    return TELL(SetCoordiantePnt, start, end);
}
ANK_PNT32 Ank_Ellipse::GetCenterPoint() const { return pointAt(told("SetCenterPoint"), 0); }
ANK_DIR32 Ank_Ellipse::GetNormal() const {
    const ANK_PNT32 told32 = pointAt(told("SetNormal"), 0);
    ANK_DIR32 normal;
    normal.x = told32.x;
    normal.y = told32.y;
    normal.z = told32.z;
    return normal;
}
void Ank_Ellipse::GetRadius(float& first, float& second) const {
    first = static_cast<float>(told("SetRadius").at(0));
    second = static_cast<float>(told("SetRadius").at(1));
}
void Ank_Ellipse::GetCoordinatePnt(ANK_PNT32& start, ANK_PNT32& end) const {
    start = pointAt(told("SetCoordiantePnt"), 0);
    end = pointAt(told("SetCoordiantePnt"), 3);
}

void Ank_Text::SetText(std::wstring text) { text_ = std::move(text); }
void Ank_Text::SetFont(wchar_t* font) { TELL(SetFont, *font); }
void Ank_Text::SetCharWidthHeight(const float& width, const float& height) {
    TELL(SetCharWidthHeight, width, height);
}
void Ank_Text::SetCharSpacing(const float& spacing) { TELL(SetCharSpacing, spacing); }
void Ank_Text::SetInnerLoc(const ANK_PNT32& location) { TELL(SetInnerLoc, location); }
void Ank_Text::SetInnerXYAxis(const ANK_DIR32& x, const ANK_DIR32& y) {
    TELL(SetInnerXYAxis, x, y);
}
void Ank_Text::SetUsageType(AnkTextTypeEnum usage) { TELL(SetUsageType, usage); }
ANK_PNT32 Ank_Text::GetInnerLoc() const { return pointAt(told("SetInnerLoc"), 0); }

void Ank_Envelope::SetFrameFlag(bool drawn) { TELL(SetFrameFlag, drawn); }
void Ank_Envelope::SetBackgroundColor(ANK_RGBA32 color) { TELL(SetBackgroundColor, color); }
void Ank_Envelope::SetFrameColor(ANK_RGBA32 color) { TELL(SetFrameColor, color); }
void Ank_Envelope::SetAnchorPoint(AnkAnchorTypeEnum type, ANK_PNT32 point) {
    TELL(SetAnchorPoint, type, point);
}

void Ank_ComText::SetOuterBox(const ANK_BOX32& box) { TELL(SetOuterBox, box); }

void Ank_SpecialLine::SetSpecLinUse(AnkSpecLineUsageEnum usage) { TELL(SetSpecLinUse, usage); }

void Ank_Extensionline::SetExLineType(AnkExtensTypeEnum type) { TELL(SetExLineType, type); }
void Ank_Extensionline::SetDisplay(bool display) { TELL(SetDisplay, display); }

ANK_STATUS Ank_Leader::SetCurve(Ank_CurveEntity* curve) {
    curve_.set({curve});
    return ANK_STATUS::Taken;
}
void Ank_Leader::SetLeaderType(AnkLeaderTypeEnum type) { TELL(SetLeaderType, type); }
ANK_STATUS Ank_Leader::SetTerminator(AnkTermTypeEnum type, float size[2], const ANK_PNT32& location,
                                     const ANK_DIR32& direction) {
    return TELL(SetTerminator, type, size[0], size[1], location, direction);
}
void Ank_Leader::SetStubDelta(bool stub) { TELL(SetStubDelta, stub); }

void Ank_PMI::SetDefPlane(const ANK_MTX32& plane) { TELL(SetDefPlane, plane); }
void Ank_PMI::SetType(AnkPMITypeEnum type) { TELL(SetType, type); }
void Ank_PMI::SetDim(unsigned int dim) { TELL(SetDim, dim); }
void Ank_PMI::SetDisplay(bool display) { TELL(SetDisplay, display); }
void Ank_PMI::SetParallelScreen(bool parallel) { TELL(SetParallelScreen, parallel); }
