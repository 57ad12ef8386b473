/// @file
/// The library's entry points: one function per kind of annotation, the services that they build
/// on, and the builders and the value text that a host may call itself.
///
/// Conventions:
///  - A point or vector is 3 `double`, x, y, z, in model units; `double (*)[3]` is an array of
///    points. Directions need not be unit length.
///  - A view matrix is 16 `double`, row by row, for row vectors: p' = [x y z 1] * M. Its columns
///    are the view's axes: elements 0, 4, 8 point to the right of the screen, 1, 5, 9 upwards and
///    2, 6, 10 towards the viewer; elements 12 to 14 are the translation. Where one may be null, a
///    null stands for a matrix of zeros, which turns nothing towards the viewer.
///  - A text height is the height of the value text in model units; one that is not positive counts
///    as 3.5, unless the function says otherwise.
///  - The annotation, the curves and the placement record are the caller's. What a function puts
///    into the annotation belongs to the annotation from then on.
///  - A generator writes 0 to its status once the annotation is filled, unless it says otherwise;
///    the caller sets the status beforehand. What a generator does not set (the annotation's type,
///    its screen-parallel flag) stays as the caller gave it.
///  - Degenerate geometry (zero lengths, parallel edges, numbers that are not finite) is never an
///    error: the annotation can always be read and destroyed. The only exception that leaves the
///    library is `std::bad_alloc`.
///  - The library keeps no state. Threads may build different annotations at once.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <dorvale/datamanager.h>
#include <dorvale/export.h>

/// Where the user placed an annotation.
struct _ank_locate {
    /// In model coordinates. A generator leaves the located point in plane coordinates here.
    double point[3];
    /// The viewing transformation at that moment.
    double viewMatrix[16];
};

/// A picked edge of an angle dimension.
struct _ank_element {
    Ank_Line* line;
    /// The point at which the edge was picked, in model coordinates.
    double pickPoint[3];
};

/// One line of a note.
struct PMITextLine {
    /// 1 marks a line that gets the usage type 26.
    int kind;
    /// An empty text makes no line.
    std::wstring text;
};

/// The frame of an annotation's text blocks.
struct Envelope {
    bool frameFlag;
    /// Colours: red in the lowest byte, then green, then blue; the fourth byte is ignored.
    std::uint32_t backgroundColour;
    std::uint32_t frameColour;
};

/// @name Distances that the host has measured
///
/// `points` are six points P0 to P5 in model space, `textPoint` is the place of the value and the
/// common far end of both leaders. The annotation's plane is the model's own XY plane. Sets the
/// display and screen-parallel flags and the dimension 3, leaves the type alone. The last argument
/// is never read.
///
///                         value      leaders start at   extension lines
///     PMICreateAxToAx     |P5 - P2|  P2, P5             P1 to P2, P4 to P5
///     PMICreateCntToCnt   |P2 - P0|  P1, P3             P0 to P1, P2 to P3
///     PMICreatePLNTOPLN   |P5 - P2|  P2, P5             middle of P0 P1 to P2, of P3 P4 to P5
///     PMICreatePntToFace  |P5 - P2|  P2, P5             P1 to P2, P4 to P5
/// @{

/// Distance of two axes.
DORVALE_API void PMICreateAxToAx(double (*const points)[3], double* const textPoint,
                                 double textHeight, Ank_PMI* pmi, int* status, double*);
/// Distance of two centres.
DORVALE_API void PMICreateCntToCnt(double (*const points)[3], double* const textPoint,
                                   double textHeight, Ank_PMI* pmi, int* status, double*);
/// Distance of two planes.
DORVALE_API void PMICreatePLNTOPLN(double (*const points)[3], double* const textPoint,
                                   double textHeight, Ank_PMI* pmi, int* status, double*);
/// Distance of a point and a face.
DORVALE_API void PMICreatePntToFace(double (*const points)[3], double* const textPoint,
                                    double textHeight, Ank_PMI* pmi, int* status, double*);

/// Rebuilds a distance dimension for two points that have moved: two arrow leaders from the points
/// to their midpoint (in place of the annotation's leaders) and one more text block with the
/// distance, of height 3.5. The third point is never read.
DORVALE_API void PMIUpdateDimesion(Ank_PMI* pmi, double* const p1, double* const p2,
                                   double* const p3, int* status);

/// @}

/// @name Linear dimensions
///
/// The distance of two measured points A and B, drawn parallel to AB through the
/// placement point, with the value centred there. The value is the distance in the annotation's
/// plane. Sets the type 10 (the first clip form none), the display flag and the dimension 3; leaves
/// the screen-parallel flag alone.
/// @{

/// Distance of two parallel edges (`Ank_Line`). The last argument is never read.
DORVALE_API void PMICreateLinDistDim3D(Ank_CurveEntity* edge1, Ank_CurveEntity* edge2,
                                       _ank_locate* locate, double textHeight, Ank_PMI* pmi,
                                       int* status, double* viewMatrix, Ank_Line*);
/// Distance of a point to an edge (`Ank_Line`). The point is an arc's centre, a line's start or a
/// polyline's first point.
DORVALE_API void PMICreateLinDotDim3D(Ank_CurveEntity* edge, Ank_CurveEntity* point,
                                      _ank_locate* locate, double textHeight, Ank_PMI* pmi,
                                      int* status, double* viewMatrix);
/// Distance of two points. Each line runs from a measured point to its end of the dimension line;
/// the value stands in the middle of that. It is the distance in the model.
DORVALE_API void PMICreateDotDistDim3D(Ank_Line* line1, Ank_Line* line2, double textHeight,
                                       Ank_PMI* pmi, int* status, double* viewMatrix);
/// Distance of two points in a section plane.
/// @param normal the section plane's normal
/// @param pointA the first measured point, and the plane's origin
/// @param pointB the second measured point; from A to B runs the plane's X axis
DORVALE_API void PMICreateClipDim3D(double* normal, double* pointA, double* pointB,
                                    _ank_locate* locate, double textHeight, Ank_PMI* pmi,
                                    int* status, double* viewMatrix);
/// Distance of a point to an edge in a section plane.
/// @param normal the section plane's normal
/// @param origin the plane's origin
/// @param xPoint from the origin to this point runs the plane's X axis
DORVALE_API void PMICreateClipLinDotDim3D(double* normal, double* origin, double* xPoint,
                                          Ank_CurveEntity* edge, Ank_CurveEntity* point,
                                          _ank_locate* locate, double textHeight, Ank_PMI* pmi,
                                          int* status, double* viewMatrix);

/// @}

/// @name Lengths
/// @{

/// Length of a straight edge, with a dimension line parallel to it through the placement point. The
/// text takes the plane's own axes and is never turned. Sets the type 1, the display flag and the
/// dimension 3; never writes the status.
/// @param kindCode the generator works only when this points at 900001
/// @param reference a line that the annotation's plane takes its direction from
/// @param edge the measured edge, an `Ank_Line`
DORVALE_API void PMICreateParallelDim3D(int* kindCode, int*, Ank_CurveEntity* reference,
                                        Ank_CurveEntity* edge, Ank_CurveEntity*,
                                        _ank_locate* locate, double textHeight, Ank_PMI* pmi,
                                        int* status, double* viewMatrix);

/// Length of a circular arc, with a concentric dimension arc through the placement point; or length
/// of a straight edge. Sets the display and screen-parallel flags and the dimension 3, leaves the
/// type alone.
/// @param curve an `Ank_Ellipse` or an `Ank_Line`
/// @param textHeight one that is not positive counts as 3.5, except in the estimate of the width by
///        which the text of an arc is turned: that takes the height as it is given
/// @param line1 with line2: two lines whose plane orients the sweep of an arc
DORVALE_API void PMICreateArcDim3D(int*, Ank_CurveEntity* curve, _ank_locate* locate,
                                   double textHeight, Ank_PMI* pmi, int* status, double* viewMatrix,
                                   Ank_Line* line1, Ank_Line* line2);
/// Like `PMICreateArcDim3D`, in a section plane. Leaves the screen-parallel flag alone and sets the
/// type 28 for an arc.
/// @param normal the section plane's normal
/// @param origin the plane's origin
/// @param xPoint from the origin to this point runs the plane's X axis
DORVALE_API void PMICreateClipArcDim3D(int*, double* normal, double* origin, double* xPoint,
                                       Ank_CurveEntity* curve, _ank_locate* locate,
                                       double textHeight, Ank_PMI* pmi, int* status,
                                       double* viewMatrix, Ank_Line* line1, Ank_Line* line2);

/// @}

/// @name Circles
/// @{

/// Diameter of a circle, after the sign U+2300. Sets the type 4, the display and screen-parallel
/// flags and the dimension 3; never writes the status.
/// @param kindCode the generator works only when this points at 900001
/// @param circle an `Ank_Ellipse`; its first radius counts
DORVALE_API void PMICreateDiameterDim3D(int* kindCode, Ank_CurveEntity* circle, _ank_locate* locate,
                                        int*, double textHeight, Ank_PMI* pmi, int* status,
                                        double* viewMatrix);
/// Radius of a circle, after an R. Sets the type 6, otherwise like `PMICreateDiameterDim3D`. A
/// placement point exactly on the circle gives a text without a leader.
DORVALE_API void PMICreateRadiusDim3D(int* kindCode, Ank_CurveEntity* circle, _ank_locate* locate,
                                      int*, double textHeight, Ank_PMI* pmi, int* status,
                                      double* viewMatrix);

/// @}

/// @name Angles
///
/// Angles between two edges, in degrees, with an arc through the placement point. Both set the type
/// 2, the display and screen-parallel flags and the dimension 3.
/// @{

/// The angle on whose side the placement point lies. Parallel edges give 0 and an arc of radius 0.
/// @param angleMode 1 shows a reflex angle as 360 degrees less it
/// @param specialLineCount receives the number of lines that bridge a gap to the vertex, 0 to 2
/// @param specialLines receives their ends, 4 points in model coordinates: points 2i and 2i + 1 are
///        one line. They are not added to the annotation. Unused ones are the plane's origin.
DORVALE_API void PMICreateAngleDim(int* angleMode, Ank_Line* edge1, Ank_Line* edge2,
                                   _ank_locate* locate, double textHeight, Ank_PMI* pmi,
                                   int* status, int& specialLineCount,
                                   double (*const specialLines)[3], double* viewMatrix);
/// The angle between the sides at which two edges were picked. Moves edge 2 into the plane that
/// holds edge 1 and both directions. Writes the status 3 when the angle is exactly 0: the
/// annotation has its plane then and nothing else.
/// @param angleMode 1 shows a reflex angle as 360 degrees less it
/// @param flag1 set to 1
/// @param flag2 set to 1
DORVALE_API void PMICreateAngleDim3D(int* angleMode, int* flag1, int* flag2, _ank_element* edge1,
                                     _ank_element* edge2, _ank_locate* locate, int*, double*,
                                     double textHeight, Ank_PMI* pmi, int* status,
                                     double* viewMatrix);

/// @}

/// @name Notes and frames
/// @{

/// A note of several lines that run downwards from the text point, with a leader from the target to
/// it on request. Sets no plane, type, flag or status. The character width is left to the font (0).
/// @param extraLine one more line, of usage type 7, that is not placed; empty for none
/// @param height one that is not positive counts as 14
DORVALE_API void PMICreateNote3D(std::vector<PMITextLine>& lines, double* target, double* textPoint,
                                 const int&, bool withLeader, std::wstring extraLine, double height,
                                 Ank_PMI* pmi, int* status);
/// Frames every text block of an annotation, anchored at the far end of the first leader's curve
/// (at the origin where there is no leader), and sets that leader's stub flag. Does nothing unless
/// `mode` is 1, `apply` is true and `pmi` is not null, nor where the first leader has no curve with
/// such an end.
DORVALE_API void PMISetEnvelope(int mode, bool apply, bool stub, bool withEnvelope,
                                Envelope& envelope, Ank_PMI* pmi);

/// @}

/// @name Services
/// @{

/// Moves a placement point along its own viewing direction into a plane, and leaves it where that
/// direction runs in the plane.
/// @param tolerances distance tolerance, which has no effect, then angular tolerance in radians
/// @param located receives 3 doubles and no more; may be `locate` itself
/// @return 0
DORVALE_API int CnvViewLocate(_ank_locate* locate, double* const origin, double* const xAxis,
                              double* const yAxis, double* const tolerances, _ank_locate* located);
/// The definition plane of an annotation: origin, and unit axes X and Y. Its normal X x Y is turned
/// towards the viewer.
/// @param kind what defines it: 2 two lines (the first gives the origin; the second lies in the
///        plane, as does the horizontal across it); 4 and 5 an arc; 6 and 11 two lines and their
///        crossing; 7 a line or an arc; any other gives the world's XY plane, and
///        one below 2 or above 11 reads nothing else
/// @param tolerances distance tolerance, which has no effect, then angular tolerance in radians;
///        null counts as 0.01 and 0.00026
/// @param viewMatrix 16 doubles, or null
/// @return 0, or 900 when the two lines of kind 6 or 11 are parallel (the axes hold them; the
///         origin is (0, 0, 0) then)
DORVALE_API int PMI3DPlnDef(int kind, Ank_CurveEntity* first, Ank_CurveEntity* second, _ank_locate*,
                            double* const tolerances, double* const origin, double* const xAxis,
                            double* const yAxis, double* viewMatrix);

/// @}

/// Projection of curves between the model and a plane.
class DORVALE_API CArithmeticOfPMI {
public:
    CArithmeticOfPMI();
    CArithmeticOfPMI(const CArithmeticOfPMI&);
    CArithmeticOfPMI& operator=(const CArithmeticOfPMI&);
    virtual ~CArithmeticOfPMI();

    /// The same arc in the coordinates of its own plane, its centre at (0, 0, 0).
    /// @param curve an `Ank_Ellipse`
    /// @param matrix receives the plane-to-model matrix, 16 doubles
    /// @return a new `Ank_Ellipse` that the caller deletes; null, with nothing written, for a curve
    ///         that is null, not an arc, or of a radius that is not positive
    static Ank_CurveEntity* Project3DTo2D(Ank_CurveEntity* curve, double* matrix);
    /// Transforms points by a matrix of 16 doubles and appends them to `result`.
    /// @return the number of points
    static int Project2DTo3D(const std::vector<ANK_PNT32>& points, double* matrix,
                             std::vector<ANK_PNT32>& result);
};

/// Element builders and value text.
///
/// Value text is narrow text in the system's code page, allocated with `new[]`; the caller releases
/// it with `delete[]`. Values are rounded with a bias: 0.501 units of the last kept digit are
/// added, then the rest is cut off. A whole part past the range of `int` shows the largest `int`.
///
/// The format of `SeStrCre` is six `int`:
///
///     0  unit system           1 metric, 2 imperial
///     1  metric unit           2 divides by 1000 (metric alone)
///     2  imperial form         1 inches, 3 feet and inches, any other decimal feet
///     3  number form           1 decimal, 2 fraction, any other whole number, cut off
///     4  decimal precision     places, -9 to 9; negative drops trailing zeros
///     5  fraction denominator  0 and 1 show the whole number
class DORVALE_API CDimSymUitity {
public:
    CDimSymUitity();
    CDimSymUitity(const CDimSymUitity&);
    CDimSymUitity& operator=(const CDimSymUitity&);
    virtual ~CDimSymUitity();

    /// Text of a length with at most two decimals: 5 gives `5.00`, 5.1 gives `5.1`.
    /// @param length receives the number of characters
    /// @return 0, -1 for a negative value, -2 out of memory; with nothing written
    static int ValToStr(const double& value, int* length, char** text);
    /// Text of an angle in degrees with at most two decimals and no sign, followed by the angle
    /// mark, the two bytes 0xA9 0x62.
    /// @param length receives the number of bytes
    /// @return 0
    static int AngValToStr(double angle, int* length, char** text);
    /// Length of an arc, from its first to its second end point counter-clockwise about the normal,
    /// and its text with at most two decimals.
    /// @return 0, or -920 when the angle cannot be formed or out of memory
    static int ArcValToStr(double* const center, double radius, double (*const endPoints)[3],
                           double* const normal, double* arcLength, char** text);

    /// Appends a leader along the points.
    /// @param termPoint the arrow's tip; the arrow points from the first point to the second
    /// @param arrow false sets the terminator point alone
    /// @return 0, or -1 with nothing appended for fewer than two points or two equal ones
    static int FillLeaderData(std::vector<ANK_PNT32>& points, const ANK_PNT32& termPoint,
                              std::vector<Ank_Leader*>& leaders, bool arrow, bool stub);
    /// The same with a terminator type, which counts when `useType` is set.
    static int FillLeaderData(const AnkTermTypeEnum& termType, std::vector<ANK_PNT32>& points,
                              const ANK_PNT32& termPoint, std::vector<Ank_Leader*>& leaders,
                              bool useType);
    /// Appends a leader along an arc, without an arrow.
    /// @param normal 3 doubles or null. One whose components add up to 0 counts as absent; the
    ///        normal is then that of the three points, and is written back.
    /// @return 0
    static int FillLeaderData(const ANK_PNT32& center, const ANK_PNT32& start, const ANK_PNT32& end,
                              const float& radius, std::vector<Ank_Leader*>& leaders,
                              double* normal);
    /// Puts an arrow on the start of every arc leader, as long as the first chord of its
    /// tessellation; stops at the first arc whose parameters are equal. An arc has one chord per
    /// 3.36 of its length, at least 3 and at most 1000.
    static void SetTerminator(std::vector<Ank_Leader*>& leaders);

    /// Appends an extension line along the points, whatever they are.
    static void FillExlineData(std::vector<ANK_PNT32>& points,
                               std::vector<Ank_Extensionline*>& exLines, bool display);
    /// The same with the curve's display type.
    static void FillExlineData(std::vector<ANK_PNT32>& points,
                               std::vector<Ank_Extensionline*>& exLines,
                               AnkCurveDispTypeEnum dispType, bool display);
    /// A special line along the points, which the caller owns.
    /// @return null for fewer than two points or two equal ones
    static Ank_SpecialLine* FillSpecLinData(std::vector<ANK_PNT32>& points);
    /// A special line along an arc, which the caller owns. Its usage stays unset.
    /// @return 0
    static int FillSpecLinData(const ANK_PNT32& center, const ANK_PNT32& start,
                               const ANK_PNT32& end, const float& radius, Ank_SpecialLine** line);

    /// A block of the non-empty lines, which the caller owns. The first line stands at the
    /// location, each next one a height above it in y; the location is moved past the last one.
    /// @param axes writing direction and up direction, 2 of them
    /// @param block receives the block, null when all lines are empty; left alone without lines
    static void FillTextData(const std::vector<std::wstring>& lines, ANK_PNT32& location,
                             ANK_DIR32* const axes, double height, Ank_ComText** block);
    /// The same with one location for each line, empty ones included.
    static void FillTextData(const std::vector<std::wstring>& lines, ANK_PNT32* const locations,
                             ANK_DIR32* const axes, double height, Ank_ComText** block);
    /// The outer box of text lines: a character width up from the location, and the widest line's
    /// estimated width along it. Raises the location's y by a height for each line.
    /// @param size character width and height
    /// @param corner1 receives 3 doubles, as does `corner2`; both are left alone without lines
    /// @return 0
    static int ComputeTxtFrame(std::vector<std::wstring> lines, double* const size,
                               ANK_PNT32& location, ANK_DIR32* const axes, double* const corner1,
                               double* const corner2);

    /// Frames the first text block of an annotation, anchored at its first line. Colours as in
    /// `Envelope`.
    static void FillEnvelope(Ank_PMI* pmi, bool frame, unsigned long& backgroundColour,
                             unsigned long& frameColour);

    /// Unit normal of the plane through three points; (0, 0, 0) where they lie on one line or
    /// coincide. The last three arguments are not touched.
    static ANK_DIR32 GetNoraml(const ANK_PNT32& p0, const ANK_PNT32& p1, const ANK_PNT32& p2,
                               ANK_DIR32&, ANK_DIR32&, ANK_DIR32&);
    /// The same in double precision: 3 doubles each. `normal` is left alone where there is none.
    static void GetNoraml(double* p0, double* p1, double* p2, double* normal);
    /// The point at a distance from `base` along a direction that is turned by an angle (radians,
    /// right-hand rule) about an axis. The fifth argument is not read.
    static ANK_PNT32 ComputeVecByAngle(const ANK_DIR32& axis, const ANK_DIR32& direction,
                                       const float& angle, const ANK_PNT32& base, const ANK_PNT32&,
                                       const float& distance);

protected:
    /// Text of a value in a format of six `int`, without its sign.
    /// @return 0, -973 for a precision past 9, -976 out of memory; with nothing written
    static int SeStrCre(double value, int* const format, char** text);
    /// Appends the decimals of a fraction (0 <= fraction < 1). A precision above 0 keeps trailing
    /// zeros; its magnitude counts up to 9.
    static int SeStrdec(double fraction, int precision, char* text);
    /// Appends a fraction rounded to units of 1 / denominator, unreduced, after a blank unless
    /// `noBlank`; nothing where it rounds to 0.
    static int SeStrfrc(double fraction, int denominator, int noBlank, char* text);
    /// Writes the decimal digits of a number without its sign: 11 bytes at the most.
    static int SeStritoa(int number, char* text);
    /// Does nothing; returns 0.
    static int BuToFract(const double*, int*, int*, int*);
    /// Does nothing; returns 0.
    static int CheckAngDim(const double&, int* const, int*);

    /// The curve of a point list: a polyline (type 1), a segment between the first two points
    /// (type 3), or null.
    static void ConvertToAnkCurve(std::vector<ANK_PNT32>& points, const AnkCurveTypeEnum& type,
                                  Ank_CurveEntity** curve);
    /// An arc. The normal is taken and written back as in the arc form of `FillLeaderData`.
    static void ConvertToAnkCurve(const ANK_PNT32& center, const ANK_PNT32& start,
                                  const ANK_PNT32& end, const float& radius,
                                  Ank_CurveEntity** curve, double* normal);
    /// A polyline; leaves `curve` alone for fewer than two points or two equal ones.
    static void polyLinFun(std::vector<ANK_PNT32>& points, Ank_CurveEntity** curve);
};
