// The exported builders and value text: each member calls the internal function that does the work.
#include <cstring>
#include <new>

#include <dorvale/dorvale.h>

#include "builders/envelopes.h"
#include "builders/leaders.h"
#include "builders/lines.h"
#include "builders/ownership.h"
#include "builders/text.h"
#include "geometry/projection.h"
#include "valuetext/valuetext.h"

using namespace dorvale;

CDimSymUitity::CDimSymUitity() = default;
CDimSymUitity::CDimSymUitity(const CDimSymUitity&) = default;
CDimSymUitity& CDimSymUitity::operator=(const CDimSymUitity&) = default;
CDimSymUitity::~CDimSymUitity() = default;

namespace {

constexpr int kBuilt = 0;
constexpr int kNoCurve = -1;

constexpr int kNegativeLength = -1;
constexpr int kNoMemoryForLength = -2;
constexpr int kNoArcLength = -920;
constexpr int kTooPrecise = -973;
constexpr int kNoMemoryForFormat = -976;

/// Copies a text into the buffer that a caller receives, unless that is null.
char* copyInto(char* buffer, const ShortText& text) {
    if (buffer != nullptr) {
        std::memcpy(buffer, text.c_str(), text.size() + 1);
    }
    return buffer;
}

/// Hands a formatted value to the caller in a full working buffer.
int handOut(const std::optional<ShortText>& written, char** text) {
    if (!written) {
        return kTooPrecise;
    }
    char* copy = copyInto(new (std::nothrow) char[ShortText::kCapacity], *written);
    if (copy == nullptr) {
        return kNoMemoryForFormat;
    }
    *text = copy;
    return 0;
}

/// Appends to the text that a caller's buffer holds already.
void appendTo(char* buffer, const ShortText& text) {
    std::memcpy(buffer + std::strlen(buffer), text.c_str(), text.size() + 1);
}

/// A normal that the caller may leave out.
std::optional<Vec3> optionalVec3(const double* v) {
    return v == nullptr ? std::nullopt : std::optional(fromArray(v));
}

/// An arc whose normal the caller gets back where he has room for it.
std::unique_ptr<Ank_Ellipse> arcWritingBack(const ArcShape& shape, double* normal) {
    MadeArc arc = makeArc(shape, optionalVec3(normal));
    if (normal != nullptr) {
        writeTo(normal, widen(arc.normal));
    }
    return std::move(arc.curve);
}

template <typename T> int appendOrRefuse(std::vector<T*>& list, std::unique_ptr<T> object) {
    if (!object) {
        return kNoCurve;
    }
    append(list, std::move(object));
    return kBuilt;
}

TextAxes axesOf(const ANK_DIR32* axes) { return {axes[0], axes[1]}; }

} // namespace

// Value text

int CDimSymUitity::ValToStr(const double& value, int* length, char** text) {
    if (value < 0.0) {
        return kNegativeLength;
    }
    const ShortText written = lengthText(value);
    char* copy = copyInto(new (std::nothrow) char[written.size() + 1], written);
    if (copy == nullptr) {
        return kNoMemoryForLength;
    }
    *length = static_cast<int>(written.size());
    *text = copy;
    return 0;
}

int CDimSymUitity::AngValToStr(double angle, int* length, char** text) {
    const ShortText written = angleText(angle);
    *text = copyInto(new char[ShortText::kCapacity], written);
    *length = static_cast<int>(written.size());
    return 0;
}

int CDimSymUitity::ArcValToStr(double* const center, double radius, double (*const endPoints)[3],
                               double* const normal, double* arcLength, char** text) {
    const Vec3 middle = fromArray(center);
    const Vec3 toStart = (fromArray(endPoints[0]) - middle) / radius;
    const Vec3 toEnd = (fromArray(endPoints[1]) - middle) / radius;
    const std::optional<double> sweep = angleAbout(fromArray(normal), toStart, toEnd);
    if (!sweep) {
        return kNoArcLength;
    }
    *arcLength = *sweep * radius;
    return handOut(formattedText(*arcLength, kArcLengthFormat), text) == 0 ? 0 : kNoArcLength;
}

int CDimSymUitity::SeStrCre(double value, int* const format, char** text) {
    return handOut(
        formattedText(value, {format[0], format[1], format[2], format[3], format[4], format[5]}),
        text);
}

int CDimSymUitity::SeStrdec(double fraction, int precision, char* text) {
    ShortText decimals;
    appendDecimals(decimals, fraction, precision);
    appendTo(text, decimals);
    return 0;
}

int CDimSymUitity::SeStrfrc(double fraction, int denominator, int noBlank, char* text) {
    ShortText written;
    appendFraction(written, fraction, denominator, noBlank == 0);
    appendTo(text, written);
    return 0;
}

int CDimSymUitity::SeStritoa(int number, char* text) {
    ShortText digits;
    digits.appendDigits(number);
    std::memcpy(text, digits.c_str(), digits.size() + 1);
    return 0;
}

int CDimSymUitity::BuToFract(const double* /*value*/, int* /*whole*/, int* /*numerator*/,
                             int* /*denominator*/) {
    return 0;
}

int CDimSymUitity::CheckAngDim(const double& /*angle*/, int* const /*format*/, int* /*result*/) {
    return 0;
}

// Curves

void CDimSymUitity::ConvertToAnkCurve(std::vector<ANK_PNT32>& points, const AnkCurveTypeEnum& type,
                                      Ank_CurveEntity** curve) {
    if (type == kPolylineCurve) {
        polyLinFun(points, curve);
    } else {
        *curve = type == kLineCurve ? makeSegment(points).release() : nullptr;
    }
}

void CDimSymUitity::ConvertToAnkCurve(const ANK_PNT32& center, const ANK_PNT32& start,
                                      const ANK_PNT32& end, const float& radius,
                                      Ank_CurveEntity** curve, double* normal) {
    *curve = arcWritingBack({center, start, end, radius}, normal).release();
}

void CDimSymUitity::polyLinFun(std::vector<ANK_PNT32>& points, Ank_CurveEntity** curve) {
    std::unique_ptr<Ank_PolyLine> polyline = makePolyline(points);
    if (polyline) {
        *curve = polyline.release();
    }
}

// Leaders

int CDimSymUitity::FillLeaderData(std::vector<ANK_PNT32>& points, const ANK_PNT32& termPoint,
                                  std::vector<Ank_Leader*>& leaders, bool arrow, bool stub) {
    std::unique_ptr<Ank_Leader> leader =
        makeLeader(points, termPoint, arrow ? kArrow : kNoTerminator);
    if (leader && stub) {
        leader->SetStubDelta(true);
    }
    return appendOrRefuse(leaders, std::move(leader));
}

int CDimSymUitity::FillLeaderData(const AnkTermTypeEnum& termType, std::vector<ANK_PNT32>& points,
                                  const ANK_PNT32& termPoint, std::vector<Ank_Leader*>& leaders,
                                  bool useType) {
    return appendOrRefuse(leaders,
                          makeLeader(points, termPoint, useType ? termType : kNoTerminator));
}

int CDimSymUitity::FillLeaderData(const ANK_PNT32& center, const ANK_PNT32& start,
                                  const ANK_PNT32& end, const float& radius,
                                  std::vector<Ank_Leader*>& leaders, double* normal) {
    append(leaders, makeArcLeader(arcWritingBack({center, start, end, radius}, normal)));
    return kBuilt;
}

void CDimSymUitity::SetTerminator(std::vector<Ank_Leader*>& leaders) { setArcTerminators(leaders); }

// Extension lines and special lines

void CDimSymUitity::FillExlineData(std::vector<ANK_PNT32>& points,
                                   std::vector<Ank_Extensionline*>& exLines, bool display) {
    append(exLines, makeExtensionLine(points, display));
}

void CDimSymUitity::FillExlineData(std::vector<ANK_PNT32>& points,
                                   std::vector<Ank_Extensionline*>& exLines,
                                   AnkCurveDispTypeEnum dispType, bool display) {
    append(exLines, makeExtensionLine(points, display, dispType));
}

Ank_SpecialLine* CDimSymUitity::FillSpecLinData(std::vector<ANK_PNT32>& points) {
    return makeSpecialLine(points).release();
}

int CDimSymUitity::FillSpecLinData(const ANK_PNT32& center, const ANK_PNT32& start,
                                   const ANK_PNT32& end, const float& radius,
                                   Ank_SpecialLine** line) {
    *line = makeArcSpecialLine({center, start, end, radius}).release();
    return kBuilt;
}

// Text

void CDimSymUitity::FillTextData(const std::vector<std::wstring>& lines, ANK_PNT32& location,
                                 ANK_DIR32* const axes, double height, Ank_ComText** block) {
    if (!lines.empty()) {
        *block = makeStackedText(lines, location, axesOf(axes), height).release();
    }
}

void CDimSymUitity::FillTextData(const std::vector<std::wstring>& lines, ANK_PNT32* const locations,
                                 ANK_DIR32* const axes, double height, Ank_ComText** block) {
    if (!lines.empty()) {
        *block = makePlacedText(lines, {locations, lines.size()}, axesOf(axes), height).release();
    }
}

int CDimSymUitity::ComputeTxtFrame(std::vector<std::wstring> lines, double* const size,
                                   ANK_PNT32& location, ANK_DIR32* const axes,
                                   double* const corner1, double* const corner2) {
    if (lines.empty()) {
        return 0;
    }
    const TextFrame frame =
        textFrame(lines, {size[0], size[1]}, widen(location), widen(axes[0]), widen(axes[1]));
    writeTo(corner1, frame.corner1);
    writeTo(corner2, frame.corner2);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        location.y = static_cast<float>(location.y + size[1]);
    }
    return 0;
}

void CDimSymUitity::FillEnvelope(Ank_PMI* pmi, bool frame, unsigned long& backgroundColour,
                                 unsigned long& frameColour) {
    frameFirstBlock(*pmi, {frame, static_cast<std::uint32_t>(backgroundColour),
                           static_cast<std::uint32_t>(frameColour)});
}

// Geometry

ANK_DIR32 CDimSymUitity::GetNoraml(const ANK_PNT32& p0, const ANK_PNT32& p1, const ANK_PNT32& p2,
                                   ANK_DIR32& /*x*/, ANK_DIR32& /*y*/, ANK_DIR32& /*z*/) {
    return toDirection32(orZero(normalOf(widen(p0), widen(p1), widen(p2))));
}

void CDimSymUitity::GetNoraml(double* p0, double* p1, double* p2, double* normal) {
    const std::optional<Vec3> found = normalOf(fromArray(p0), fromArray(p1), fromArray(p2));
    if (found) {
        writeTo(normal, *found);
    }
}

ANK_PNT32 CDimSymUitity::ComputeVecByAngle(const ANK_DIR32& axis, const ANK_DIR32& direction,
                                           const float& angle, const ANK_PNT32& base,
                                           const ANK_PNT32& /*other*/, const float& distance) {
    return toPoint32(pointByAngle(widen(axis), widen(direction), angle, widen(base), distance));
}
