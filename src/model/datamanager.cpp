#include <dorvale/datamanager.h>

#include <algorithm>
#include <utility>

namespace {

/// Deletes every object of a list once, also one that the list names twice.
template <typename T> void deleteAll(std::vector<T*>& objects) {
    if (objects.size() > 2) {
        // In a shorter list equal ones are neighbours as they are. Lists are short: `std::sort`
        // would be a lot of code for them.
        std::make_heap(objects.begin(), objects.end());
        std::sort_heap(objects.begin(), objects.end());
    }
    const auto end = std::unique(objects.begin(), objects.end());
    std::for_each(objects.begin(), end, [](T* object) { delete object; });
}

/// Puts `next` in the place of `owned` and deletes what `next` no longer names. The copy comes
/// first: if it throws, nothing has been taken.
template <typename T> void replaceAll(std::vector<T*>& owned, const std::vector<T*>& next) {
    std::vector<T*> dropped = next;
    dropped.swap(owned);
    if (dropped.empty()) {
        return;
    }
    const auto stillNamed = [&owned](const T* object) {
        return std::find(owned.begin(), owned.end(), object) != owned.end();
    };
    dropped.erase(std::remove_if(dropped.begin(), dropped.end(), stillNamed), dropped.end());
    deleteAll(dropped);
}

/// Owns `object` in place of what was there; setting what is owned already changes nothing.
template <typename T> void replace(std::unique_ptr<T>& owned, T* object) {
    if (owned.get() != object) {
        owned.reset(object);
    }
}

} // namespace

// Ank_CurveEntity

Ank_CurveEntity::Ank_CurveEntity() = default;
Ank_CurveEntity::Ank_CurveEntity(const Ank_CurveEntity&) = default;
Ank_CurveEntity::~Ank_CurveEntity() = default;

void Ank_CurveEntity::SetUsageType(AnkCurveUsageEnum usage) { usage_ = usage; }

ANK_STATUS Ank_CurveEntity::SetCurveDispStat(bool shown) {
    shown_ = shown;
    return ANK_OK;
}

ANK_STATUS Ank_CurveEntity::SetCurveDispType(AnkCurveDispTypeEnum type) {
    dispType_ = type;
    return ANK_OK;
}

AnkCurveUsageEnum Ank_CurveEntity::GetUsageType() const { return usage_; }
bool Ank_CurveEntity::GetCurveDispStat() const { return shown_; }
AnkCurveDispTypeEnum Ank_CurveEntity::GetCurveDispType() const { return dispType_; }

// Ank_Line

Ank_Line::Ank_Line() = default;
Ank_Line::~Ank_Line() = default;

AnkCurveTypeEnum Ank_Line::GetCurveType() const { return ANK_CURVE_LINE; }

void Ank_Line::SetStartPoint(const ANK_PNT32& start) { start_ = start; }
void Ank_Line::SetEndPoint(const ANK_PNT32& end) { end_ = end; }

ANK_PNT32 Ank_Line::GetStartPoint() const { return start_; }
ANK_PNT32 Ank_Line::GetEndPoint() const { return end_; }

// Ank_Ellipse

Ank_Ellipse::Ank_Ellipse() = default;
Ank_Ellipse::Ank_Ellipse(const Ank_Ellipse&) = default;
Ank_Ellipse::~Ank_Ellipse() = default;

AnkCurveTypeEnum Ank_Ellipse::GetCurveType() const { return ANK_CURVE_ARC; }

ANK_STATUS Ank_Ellipse::SetCenterPoint(const ANK_PNT32& center) {
    center_ = center;
    return ANK_OK;
}

void Ank_Ellipse::SetNormal(const ANK_DIR32& normal) { normal_ = normal; }
void Ank_Ellipse::SetOriginDir(const ANK_DIR32& direction) { originDir_ = direction; }

ANK_STATUS Ank_Ellipse::SetXYZDir(const ANK_DIR32& x, const ANK_DIR32& y, const ANK_DIR32& z) {
    xDir_ = x;
    yDir_ = y;
    zDir_ = z;
    return ANK_OK;
}

ANK_STATUS Ank_Ellipse::SetRadius(float first, float second) {
    radius_[0] = first;
    radius_[1] = second;
    return ANK_OK;
}

ANK_STATUS Ank_Ellipse::SetParameter(float start, float end) {
    parameter_[0] = start;
    parameter_[1] = end;
    return ANK_OK;
}

ANK_STATUS Ank_Ellipse::SetDomain(float start, float end) {
    domain_[0] = start;
    domain_[1] = end;
    return ANK_OK;
}

ANK_STATUS Ank_Ellipse::SetCoordiantePnt(const ANK_PNT32& start, const ANK_PNT32& end) {
    start_ = start;
    end_ = end;
    return ANK_OK;
}

ANK_PNT32 Ank_Ellipse::GetCenterPoint() const { return center_; }
ANK_DIR32 Ank_Ellipse::GetNormal() const { return normal_; }
ANK_DIR32 Ank_Ellipse::GetOriginDir() const { return originDir_; }

void Ank_Ellipse::GetXYZDir(ANK_DIR32& x, ANK_DIR32& y, ANK_DIR32& z) const {
    x = xDir_;
    y = yDir_;
    z = zDir_;
}

void Ank_Ellipse::GetRadius(float& first, float& second) const {
    first = radius_[0];
    second = radius_[1];
}

void Ank_Ellipse::GetParameter(float& start, float& end) const {
    start = parameter_[0];
    end = parameter_[1];
}

void Ank_Ellipse::GetDomain(float& start, float& end) const {
    start = domain_[0];
    end = domain_[1];
}

void Ank_Ellipse::GetCoordinatePnt(ANK_PNT32& start, ANK_PNT32& end) const {
    start = start_;
    end = end_;
}

// Ank_PolyLine

Ank_PolyLine::Ank_PolyLine() = default;
Ank_PolyLine::~Ank_PolyLine() = default;

AnkCurveTypeEnum Ank_PolyLine::GetCurveType() const { return ANK_CURVE_POLYLINE; }

ANK_STATUS Ank_PolyLine::SetPoints(const std::vector<ANK_PNT32>& points) {
    points_ = points;
    return ANK_OK;
}

ANK_STATUS Ank_PolyLine::SetDomain(float start, float end) {
    domain_[0] = start;
    domain_[1] = end;
    return ANK_OK;
}

const std::vector<ANK_PNT32>& Ank_PolyLine::GetPoints() const { return points_; }

void Ank_PolyLine::GetDomain(float& start, float& end) const {
    start = domain_[0];
    end = domain_[1];
}

// Ank_Leader

Ank_Leader::Ank_Leader() = default;
Ank_Leader::~Ank_Leader() = default;

ANK_STATUS Ank_Leader::SetCurve(Ank_CurveEntity* curve) {
    replace(curve_, curve);
    return ANK_OK;
}

void Ank_Leader::SetLeaderType(AnkLeaderTypeEnum type) { type_ = type; }

ANK_STATUS Ank_Leader::SetTerminator(AnkTermTypeEnum type, float size[2], const ANK_PNT32& location,
                                     const ANK_DIR32& direction) {
    termType_ = type;
    termSize_[0] = size[0];
    termSize_[1] = size[1];
    termLocation_ = location;
    termDirection_ = direction;
    return ANK_OK;
}

void Ank_Leader::SetStubDelta(bool stub) { stub_ = stub; }

std::vector<Ank_CurveEntity*> Ank_Leader::GetAllCurve() const {
    return curve_ ? std::vector<Ank_CurveEntity*>{curve_.get()} : std::vector<Ank_CurveEntity*>{};
}

AnkLeaderTypeEnum Ank_Leader::GetLeaderType() const { return type_; }

void Ank_Leader::GetTerminator(AnkTermTypeEnum& type, float size[2], ANK_PNT32& location,
                               ANK_DIR32& direction) const {
    type = termType_;
    size[0] = termSize_[0];
    size[1] = termSize_[1];
    location = termLocation_;
    direction = termDirection_;
}

bool Ank_Leader::GetStubDelta() const { return stub_; }

// Ank_Extensionline

Ank_Extensionline::Ank_Extensionline() = default;
Ank_Extensionline::~Ank_Extensionline() = default;

void Ank_Extensionline::SetExLineType(AnkExtensTypeEnum type) { type_ = type; }
void Ank_Extensionline::SetCurve(Ank_CurveEntity* curve) { replace(curve_, curve); }
void Ank_Extensionline::SetDisplay(bool display) { display_ = display; }

AnkExtensTypeEnum Ank_Extensionline::GetExLineType() const { return type_; }
Ank_CurveEntity* Ank_Extensionline::GetCurve() const { return curve_.get(); }
bool Ank_Extensionline::GetDisplay() const { return display_; }

// Ank_SpecialLine

Ank_SpecialLine::Ank_SpecialLine() = default;
Ank_SpecialLine::~Ank_SpecialLine() { deleteAll(curves_); }

void Ank_SpecialLine::SetSpecLinUse(AnkSpecLineUsageEnum usage) { usage_ = usage; }
void Ank_SpecialLine::AddCurve(Ank_CurveEntity* curve) { curves_.push_back(curve); }

AnkSpecLineUsageEnum Ank_SpecialLine::GetSpecLinUse() const { return usage_; }
std::vector<Ank_CurveEntity*> Ank_SpecialLine::GetCurves() const { return curves_; }

// Ank_Text

Ank_Text::Ank_Text() = default;
Ank_Text::~Ank_Text() = default;

void Ank_Text::SetText(std::wstring text) { text_ = std::move(text); }

void Ank_Text::SetFont(wchar_t* font) {
    if (font == nullptr || *font == L'\0') {
        font_.clear();
    } else {
        font_ = font;
    }
}

void Ank_Text::SetCharWidthHeight(const float& width, const float& height) {
    charWidth_ = width;
    charHeight_ = height;
}

void Ank_Text::SetCharSpacing(const float& spacing) { charSpacing_ = spacing; }
void Ank_Text::SetInnerLoc(const ANK_PNT32& location) { location_ = location; }

void Ank_Text::SetInnerXYAxis(const ANK_DIR32& x, const ANK_DIR32& y) {
    xAxis_ = x;
    yAxis_ = y;
}

void Ank_Text::SetUsageType(AnkTextTypeEnum usage) { usage_ = usage; }

const std::wstring& Ank_Text::GetText() const { return text_; }
const std::wstring& Ank_Text::GetFont() const { return font_; }

void Ank_Text::GetCharWidthHeight(float& width, float& height) const {
    width = charWidth_;
    height = charHeight_;
}

float Ank_Text::GetCharSpacing() const { return charSpacing_; }
ANK_PNT32 Ank_Text::GetInnerLoc() const { return location_; }

void Ank_Text::GetInnerXYAxis(ANK_DIR32& x, ANK_DIR32& y) const {
    x = xAxis_;
    y = yAxis_;
}

AnkTextTypeEnum Ank_Text::GetUsageType() const { return usage_; }

// Ank_Envelope

Ank_Envelope::Ank_Envelope() = default;
Ank_Envelope::~Ank_Envelope() = default;

void Ank_Envelope::SetFrameFlag(bool drawn) { frame_ = drawn; }
void Ank_Envelope::SetBackgroundColor(ANK_RGBA32 color) { backgroundColor_ = color; }
void Ank_Envelope::SetFrameColor(ANK_RGBA32 color) { frameColor_ = color; }

void Ank_Envelope::SetAnchorPoint(AnkAnchorTypeEnum type, ANK_PNT32 point) {
    anchorType_ = type;
    anchorPoint_ = point;
}

bool Ank_Envelope::GetFrameFlag() const { return frame_; }
ANK_RGBA32 Ank_Envelope::GetBackgroundColor() const { return backgroundColor_; }
ANK_RGBA32 Ank_Envelope::GetFrameColor() const { return frameColor_; }

void Ank_Envelope::GetAnchorPoint(AnkAnchorTypeEnum& type, ANK_PNT32& point) const {
    type = anchorType_;
    point = anchorPoint_;
}

// Ank_ComText

Ank_ComText::Ank_ComText() = default;
Ank_ComText::~Ank_ComText() { deleteAll(texts_); }

void Ank_ComText::SetTexts(const std::vector<Ank_Text*>& texts) { replaceAll(texts_, texts); }
void Ank_ComText::SetOuterBox(const ANK_BOX32& box) { outerBox_ = box; }
void Ank_ComText::SetEnvelope(Ank_Envelope* envelope) { replace(envelope_, envelope); }

std::vector<Ank_Text*> Ank_ComText::GetTexts() const { return texts_; }
ANK_BOX32 Ank_ComText::GetOuterBox() const { return outerBox_; }
Ank_Envelope* Ank_ComText::GetEnvelope() const { return envelope_.get(); }

// Ank_PMI

Ank_PMI::Ank_PMI() = default;

Ank_PMI::~Ank_PMI() {
    deleteAll(comTexts_);
    deleteAll(leaders_);
    deleteAll(exLines_);
    deleteAll(specialLines_);
}

void Ank_PMI::SetDefPlane(const ANK_MTX32& plane) { defPlane_ = plane; }
void Ank_PMI::AddComText(Ank_ComText* block) { comTexts_.push_back(block); }
void Ank_PMI::SetLeaders(const std::vector<Ank_Leader*>& leaders) { replaceAll(leaders_, leaders); }

void Ank_PMI::SetExLines(const std::vector<Ank_Extensionline*>& lines) {
    replaceAll(exLines_, lines);
}

void Ank_PMI::AddSpecialLine(Ank_SpecialLine* line) { specialLines_.push_back(line); }
void Ank_PMI::SetType(AnkPMITypeEnum type) { type_ = type; }
void Ank_PMI::SetDim(unsigned int dim) { dim_ = dim; }
void Ank_PMI::SetDisplay(bool display) { display_ = display; }
void Ank_PMI::SetParallelScreen(bool parallel) { parallelScreen_ = parallel; }

const ANK_MTX32& Ank_PMI::GetDefPlane() const { return defPlane_; }
const std::vector<Ank_ComText*>& Ank_PMI::GetComText() const { return comTexts_; }
const std::vector<Ank_Leader*>& Ank_PMI::GetLeaders() const { return leaders_; }
const std::vector<Ank_Extensionline*>& Ank_PMI::GetExLines() const { return exLines_; }
const std::vector<Ank_SpecialLine*>& Ank_PMI::GetSpecialLines() const { return specialLines_; }
AnkPMITypeEnum Ank_PMI::GetType() const { return type_; }
unsigned int Ank_PMI::GetDim() const { return dim_; }
bool Ank_PMI::GetDisplay() const { return display_; }
bool Ank_PMI::GetParallelScreen() const { return parallelScreen_; }
