/// @file
/// The annotation object model: what a finished annotation is made of.
///
/// An `Ank_PMI` is one annotation (a dimension or a note). It owns text blocks, leaders, extension
/// lines and special lines; each line owns one or more curves:
///
///     Ank_PMI ─┬─ Ank_ComText ─┬─ Ank_Text ...        one block of text lines
///              │               └─ Ank_Envelope        its frame and background, if any
///              ├─ Ank_Leader ──── Ank_CurveEntity     dimension line, with its arrow head
///              ├─ Ank_Extensionline ─ Ank_PolyLine    from the part to the dimension line
///              └─ Ank_SpecialLine ─── Ank_CurveEntity other lines of a dimension
///
/// Rules that hold for every class:
///  - Coordinates are single precision, in the annotation's plane, in model units; angles are in
///    radians.
///  - A setter *takes ownership* where its comment says so: the receiver deletes the object, which
///    must have been made with `new`. Setting again deletes what was there before; setting what
///    the receiver owns already changes nothing. An object that is added twice, or stands twice in
///    a list, is listed twice and deleted once. It must never have two owners.
///  - Getters hand out views: what they return stays owned by the object asked.
///  - A setter fails in one way only, by `std::bad_alloc`; it has then taken nothing.
///  - Objects are not copyable, `Ank_Ellipse` apart.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <dorvale/export.h>

/// A point, in model units.
struct ANK_PNT32 {
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;
};

/// A direction of unit length.
struct ANK_DIR32 {
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;
};

/// A placement frame. Points are row vectors: rows 0 to 3 hold the X axis, the Y axis, the normal
/// and the origin of a plane in model coordinates.
struct ANK_MTX32 {
    float m[4][4] = {};
};

/// Two corners of a text block's outer box.
struct ANK_BOX32 {
    ANK_PNT32 first;
    ANK_PNT32 second;
};

/// A colour, each channel from 0 to 1.
struct ANK_RGBA32 {
    float r = 0.0F;
    float g = 0.0F;
    float b = 0.0F;
    float a = 0.0F;
};

/// Result of most setters.
enum ANK_STATUS : int { ANK_OK = 0 };

enum AnkCurveTypeEnum : int {
    ANK_CURVE_POLYLINE = 1,
    ANK_CURVE_ARC = 2,
    ANK_CURVE_LINE = 3,
};

enum AnkCurveUsageEnum : int {
    ANK_CURVE_USAGE_UNSET = 0,
    ANK_CURVE_USAGE_LEADER = 1,
    ANK_CURVE_USAGE_EXTENSION_LINE = 3,
    ANK_CURVE_USAGE_SPECIAL_LINE = 5,
};

enum AnkCurveDispTypeEnum : int {
    ANK_CURVE_DISP_UNSET = 0,
    /// Special lines made from points.
    ANK_CURVE_DISP_SPECIAL_LINE = 1,
    /// Arc leaders, extension lines and special lines made from arcs.
    ANK_CURVE_DISP_DIMENSION = 2,
};

enum AnkLeaderTypeEnum : int {
    ANK_LEADER_UNSET = 0,
    ANK_LEADER_STRAIGHT = 1,
    ANK_LEADER_ARC = 2,
};

enum AnkTermTypeEnum : int {
    ANK_TERM_NONE = 0,
    ANK_TERM_ARROW = 4,
};

enum AnkExtensTypeEnum : int {
    ANK_EXTENSION_UNSET = 0,
    ANK_EXTENSION_LINE = 1,
};

enum AnkSpecLineUsageEnum : int {
    ANK_SPECIAL_LINE_UNSET = -1,
    ANK_SPECIAL_LINE_POINTS = 0,
};

enum AnkAnchorTypeEnum : int {
    ANK_ANCHOR_UNSET = 0,
    ANK_ANCHOR_LOCATION = 6,
};

enum AnkTextTypeEnum : int {
    ANK_TEXT_UNSET = 0,
    ANK_TEXT_NOTE_EXTRA = 7,
    ANK_TEXT_NOTE_MARKED = 26,
};

enum AnkPMITypeEnum : int {
    ANK_PMI_UNSET = 0,
    ANK_PMI_PARALLEL = 1,
    ANK_PMI_ANGLE = 2,
    ANK_PMI_DIAMETER = 4,
    ANK_PMI_RADIUS = 6,
    ANK_PMI_LINEAR = 10,
    ANK_PMI_CLIP_ARC = 28,
};

/// Base of the three curve classes.
class DATAMANAGER_API Ank_CurveEntity {
public:
    virtual ~Ank_CurveEntity();
    Ank_CurveEntity& operator=(const Ank_CurveEntity&) = delete;

    virtual AnkCurveTypeEnum GetCurveType() const = 0;

    void SetUsageType(AnkCurveUsageEnum usage);
    /// Whether the curve is shown.
    ANK_STATUS SetCurveDispStat(bool shown);
    ANK_STATUS SetCurveDispType(AnkCurveDispTypeEnum type);

    AnkCurveUsageEnum GetUsageType() const;
    bool GetCurveDispStat() const;
    AnkCurveDispTypeEnum GetCurveDispType() const;

protected:
    Ank_CurveEntity();
    Ank_CurveEntity(const Ank_CurveEntity&);

private:
    AnkCurveUsageEnum usage_ = ANK_CURVE_USAGE_UNSET;
    AnkCurveDispTypeEnum dispType_ = ANK_CURVE_DISP_UNSET;
    bool shown_ = false;
};

/// A straight segment.
class DATAMANAGER_API Ank_Line : public Ank_CurveEntity {
public:
    Ank_Line();
    ~Ank_Line() override;
    Ank_Line(const Ank_Line&) = delete;
    Ank_Line& operator=(const Ank_Line&) = delete;

    AnkCurveTypeEnum GetCurveType() const override;

    void SetStartPoint(const ANK_PNT32& start);
    void SetEndPoint(const ANK_PNT32& end);

    ANK_PNT32 GetStartPoint() const;
    ANK_PNT32 GetEndPoint() const;

private:
    ANK_PNT32 start_;
    ANK_PNT32 end_;
};

/// A circular or elliptic arc. It runs counter-clockwise about its normal from the start to the end
/// parameter, which are angles in the arc's own plane; with a normal whose z is negative the
/// parameter falls from start to end.
class DATAMANAGER_API Ank_Ellipse : public Ank_CurveEntity {
public:
    Ank_Ellipse();
    ~Ank_Ellipse() override;
    /// The copy carries everything.
    Ank_Ellipse(const Ank_Ellipse&);
    Ank_Ellipse& operator=(const Ank_Ellipse&) = delete;

    AnkCurveTypeEnum GetCurveType() const override;

    ANK_STATUS SetCenterPoint(const ANK_PNT32& center);
    void SetNormal(const ANK_DIR32& normal);
    void SetOriginDir(const ANK_DIR32& direction);
    ANK_STATUS SetXYZDir(const ANK_DIR32& x, const ANK_DIR32& y, const ANK_DIR32& z);
    ANK_STATUS SetRadius(float first, float second);
    /// Start and end angle, in radians.
    ANK_STATUS SetParameter(float start, float end);
    ANK_STATUS SetDomain(float start, float end);
    /// The arc's two end points.
    ANK_STATUS SetCoordiantePnt(const ANK_PNT32& start, const ANK_PNT32& end);

    ANK_PNT32 GetCenterPoint() const;
    ANK_DIR32 GetNormal() const;
    ANK_DIR32 GetOriginDir() const;
    void GetXYZDir(ANK_DIR32& x, ANK_DIR32& y, ANK_DIR32& z) const;
    void GetRadius(float& first, float& second) const;
    void GetParameter(float& start, float& end) const;
    void GetDomain(float& start, float& end) const;
    void GetCoordinatePnt(ANK_PNT32& start, ANK_PNT32& end) const;

private:
    ANK_PNT32 center_;
    ANK_DIR32 normal_{0.0F, 0.0F, 1.0F};
    ANK_DIR32 originDir_;
    ANK_DIR32 xDir_{1.0F, 0.0F, 0.0F};
    ANK_DIR32 yDir_{0.0F, 1.0F, 0.0F};
    ANK_DIR32 zDir_{0.0F, 0.0F, 1.0F};
    float radius_[2] = {};
    float parameter_[2] = {};
    float domain_[2] = {};
    ANK_PNT32 start_;
    ANK_PNT32 end_;
};

/// A chain of straight segments.
class DATAMANAGER_API Ank_PolyLine : public Ank_CurveEntity {
public:
    Ank_PolyLine();
    ~Ank_PolyLine() override;
    Ank_PolyLine(const Ank_PolyLine&) = delete;
    Ank_PolyLine& operator=(const Ank_PolyLine&) = delete;

    AnkCurveTypeEnum GetCurveType() const override;

    /// Copies the points.
    ANK_STATUS SetPoints(const std::vector<ANK_PNT32>& points);
    ANK_STATUS SetDomain(float start, float end);

    const std::vector<ANK_PNT32>& GetPoints() const;
    void GetDomain(float& start, float& end) const;

private:
    std::vector<ANK_PNT32> points_;
    float domain_[2] = {};
};

/// A dimension line (or one half of it), or the line from a note to its target.
class DATAMANAGER_API Ank_Leader {
public:
    Ank_Leader();
    ~Ank_Leader();
    Ank_Leader(const Ank_Leader&) = delete;
    Ank_Leader& operator=(const Ank_Leader&) = delete;

    /// Takes ownership.
    ANK_STATUS SetCurve(Ank_CurveEntity* curve);
    void SetLeaderType(AnkLeaderTypeEnum type);
    /// The arrow head: its tip stands at `location`, its body extends along `direction`.
    /// @param size length along the direction, then width
    ANK_STATUS SetTerminator(AnkTermTypeEnum type, float size[2], const ANK_PNT32& location,
                             const ANK_DIR32& direction);
    void SetStubDelta(bool stub);

    /// The leader's curves: one, or none before `SetCurve`.
    std::vector<Ank_CurveEntity*> GetAllCurve() const;
    AnkLeaderTypeEnum GetLeaderType() const;
    void GetTerminator(AnkTermTypeEnum& type, float size[2], ANK_PNT32& location,
                       ANK_DIR32& direction) const;
    bool GetStubDelta() const;

private:
    std::unique_ptr<Ank_CurveEntity> curve_;
    AnkLeaderTypeEnum type_ = ANK_LEADER_UNSET;
    AnkTermTypeEnum termType_ = ANK_TERM_NONE;
    float termSize_[2] = {};
    ANK_PNT32 termLocation_;
    ANK_DIR32 termDirection_;
    bool stub_ = false;
};

/// A line from the measured geometry to the dimension line.
class DATAMANAGER_API Ank_Extensionline {
public:
    Ank_Extensionline();
    ~Ank_Extensionline();
    Ank_Extensionline(const Ank_Extensionline&) = delete;
    Ank_Extensionline& operator=(const Ank_Extensionline&) = delete;

    void SetExLineType(AnkExtensTypeEnum type);
    /// Takes ownership.
    void SetCurve(Ank_CurveEntity* curve);
    void SetDisplay(bool display);

    AnkExtensTypeEnum GetExLineType() const;
    /// Null before `SetCurve`.
    Ank_CurveEntity* GetCurve() const;
    bool GetDisplay() const;

private:
    std::unique_ptr<Ank_CurveEntity> curve_;
    AnkExtensTypeEnum type_ = ANK_EXTENSION_UNSET;
    bool display_ = false;
};

/// A line of a dimension that is neither leader nor extension line.
class DATAMANAGER_API Ank_SpecialLine {
public:
    Ank_SpecialLine();
    ~Ank_SpecialLine();
    Ank_SpecialLine(const Ank_SpecialLine&) = delete;
    Ank_SpecialLine& operator=(const Ank_SpecialLine&) = delete;

    void SetSpecLinUse(AnkSpecLineUsageEnum usage);
    /// Appends; takes ownership.
    void AddCurve(Ank_CurveEntity* curve);

    AnkSpecLineUsageEnum GetSpecLinUse() const;
    std::vector<Ank_CurveEntity*> GetCurves() const;

private:
    std::vector<Ank_CurveEntity*> curves_;
    AnkSpecLineUsageEnum usage_ = ANK_SPECIAL_LINE_UNSET;
};

/// One line of text.
class DATAMANAGER_API Ank_Text {
public:
    Ank_Text();
    ~Ank_Text();
    Ank_Text(const Ank_Text&) = delete;
    Ank_Text& operator=(const Ank_Text&) = delete;

    void SetText(std::wstring text);
    /// Copies the name; null counts as an empty one, which means the viewer's own font.
    void SetFont(wchar_t* font);
    /// A width of 0 means the font's own proportion.
    void SetCharWidthHeight(const float& width, const float& height);
    void SetCharSpacing(const float& spacing);
    /// The insertion point: where the line starts, on its base line.
    void SetInnerLoc(const ANK_PNT32& location);
    /// Writing direction and up direction.
    void SetInnerXYAxis(const ANK_DIR32& x, const ANK_DIR32& y);
    void SetUsageType(AnkTextTypeEnum usage);

    const std::wstring& GetText() const;
    const std::wstring& GetFont() const;
    void GetCharWidthHeight(float& width, float& height) const;
    float GetCharSpacing() const;
    ANK_PNT32 GetInnerLoc() const;
    void GetInnerXYAxis(ANK_DIR32& x, ANK_DIR32& y) const;
    AnkTextTypeEnum GetUsageType() const;

private:
    std::wstring text_;
    std::wstring font_;
    float charWidth_ = 0.0F;
    float charHeight_ = 0.0F;
    float charSpacing_ = 0.0F;
    ANK_PNT32 location_;
    ANK_DIR32 xAxis_{1.0F, 0.0F, 0.0F};
    ANK_DIR32 yAxis_{0.0F, 1.0F, 0.0F};
    AnkTextTypeEnum usage_ = ANK_TEXT_UNSET;
};

/// Frame and background of a text block.
class DATAMANAGER_API Ank_Envelope {
public:
    Ank_Envelope();
    ~Ank_Envelope();
    Ank_Envelope(const Ank_Envelope&) = delete;
    Ank_Envelope& operator=(const Ank_Envelope&) = delete;

    void SetFrameFlag(bool drawn);
    void SetBackgroundColor(ANK_RGBA32 color);
    void SetFrameColor(ANK_RGBA32 color);
    void SetAnchorPoint(AnkAnchorTypeEnum type, ANK_PNT32 point);

    bool GetFrameFlag() const;
    ANK_RGBA32 GetBackgroundColor() const;
    ANK_RGBA32 GetFrameColor() const;
    void GetAnchorPoint(AnkAnchorTypeEnum& type, ANK_PNT32& point) const;

private:
    bool frame_ = false;
    ANK_RGBA32 backgroundColor_;
    ANK_RGBA32 frameColor_;
    AnkAnchorTypeEnum anchorType_ = ANK_ANCHOR_UNSET;
    ANK_PNT32 anchorPoint_;
};

/// A block of text lines.
class DATAMANAGER_API Ank_ComText {
public:
    Ank_ComText();
    ~Ank_ComText();
    Ank_ComText(const Ank_ComText&) = delete;
    Ank_ComText& operator=(const Ank_ComText&) = delete;

    /// Takes ownership of the texts and deletes those that the list no longer names.
    void SetTexts(const std::vector<Ank_Text*>& texts);
    void SetOuterBox(const ANK_BOX32& box);
    /// Takes ownership.
    void SetEnvelope(Ank_Envelope* envelope);

    std::vector<Ank_Text*> GetTexts() const;
    ANK_BOX32 GetOuterBox() const;
    /// Null before `SetEnvelope`.
    Ank_Envelope* GetEnvelope() const;

private:
    std::vector<Ank_Text*> texts_;
    ANK_BOX32 outerBox_;
    std::unique_ptr<Ank_Envelope> envelope_;
};

/// One annotation: a dimension or a note. The host creates it and hands it to a generator, which
/// fills it.
class DATAMANAGER_API Ank_PMI {
public:
    Ank_PMI();
    ~Ank_PMI();
    Ank_PMI(const Ank_PMI&) = delete;
    Ank_PMI& operator=(const Ank_PMI&) = delete;

    /// The plane that the annotation's coordinates are given in.
    void SetDefPlane(const ANK_MTX32& plane);
    /// Appends; takes ownership.
    void AddComText(Ank_ComText* block);
    /// Takes ownership of the leaders; keeps what stands in both the old list and the new one, and
    /// deletes what the new list no longer names.
    void SetLeaders(const std::vector<Ank_Leader*>& leaders);
    /// Like `SetLeaders`.
    void SetExLines(const std::vector<Ank_Extensionline*>& lines);
    /// Appends; takes ownership.
    void AddSpecialLine(Ank_SpecialLine* line);
    void SetType(AnkPMITypeEnum type);
    /// The number of dimensions of the annotation's space.
    void SetDim(unsigned int dim);
    void SetDisplay(bool display);
    /// Whether the viewer keeps the annotation's text parallel to the screen.
    void SetParallelScreen(bool parallel);

    const ANK_MTX32& GetDefPlane() const;
    const std::vector<Ank_ComText*>& GetComText() const;
    const std::vector<Ank_Leader*>& GetLeaders() const;
    const std::vector<Ank_Extensionline*>& GetExLines() const;
    const std::vector<Ank_SpecialLine*>& GetSpecialLines() const;
    AnkPMITypeEnum GetType() const;
    unsigned int GetDim() const;
    bool GetDisplay() const;
    bool GetParallelScreen() const;

private:
    ANK_MTX32 defPlane_{{{1.0F, 0.0F, 0.0F, 0.0F},
                         {0.0F, 1.0F, 0.0F, 0.0F},
                         {0.0F, 0.0F, 1.0F, 0.0F},
                         {0.0F, 0.0F, 0.0F, 1.0F}}};
    std::vector<Ank_ComText*> comTexts_;
    std::vector<Ank_Leader*> leaders_;
    std::vector<Ank_Extensionline*> exLines_;
    std::vector<Ank_SpecialLine*> specialLines_;
    AnkPMITypeEnum type_ = ANK_PMI_UNSET;
    unsigned int dim_ = 0;
    bool display_ = false;
    bool parallelScreen_ = false;
};
