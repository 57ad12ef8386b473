// Distances, perpendiculars, intersections, and the geometry of an angle dimension.
#pragma once

#include "kernel/arrays.h"

namespace dorvale {

/// Points are arrays of n doubles, n being 2 or 3. Each routine returns 0, or a non-zero status for
/// input that has no result; it then writes nothing. tolAng is in radians; tolDist, in model units,
/// counts in zxln00 alone.
class CMathGeolib {
public:
    /// out = from + distance * direction; `out` may be `from`.
    static int movPnt(int n, const double* direction, const double* from, double distance,
                      double* out) {
        store(n, moved(load(n, from), load(n, direction), distance), out);
        return 0;
    }

    /// Distance of two points.
    static int znpp00(int n, const double* p, const double* q, double* distance) {
        *distance = dorvale::distance(load(n, p), load(n, q));
        return 0;
    }

    /// Perpendicular from a point to the infinite line through a and b: its foot, the foot's
    /// distance from a along the line, and the point's distance from the line.
    static int zhpl01(int nPoint, const double* p, int nLine, const double* a, const double* b,
                      double tolDist, double tolAng, double* foot, double* param, double* distance);
    /// Intersection of a line with a plane, and its signed distance along the line. Fails where the
    /// line's angle to the plane is within tolAng.
    static int zxli00(const double* linePoint, const double* lineDirection,
                      const double* planePoint, const double* planeNormal, double tolDist,
                      double tolAng, double* out, double* param);
    /// Intersection of two lines with unit directions.
    /// @param out receives 8 doubles: the point on line A, its distance from A's point along A, the
    ///        point on line B, its distance along B
    /// @return 0; 1 for lines whose angle is within tolAng, 2 for lines that miss each other by
    /// more
    ///         than tolDist, -1 for a direction without a length
    static int zxln00(int n, int nA, const double* pointA, const double* directionA, int nB,
                      const double* pointB, const double* directionB, double tolDist, double tolAng,
                      double* out);
    /// The geometry of an angle dimension in its plane; z is dropped. The angle is the one on whose
    /// side the text point lies, counter-clockwise from the first edge's ray to the second one's.
    /// @param flag receives the extension lines asked for: 0 none, 1 the first, 2 the second,
    ///        3 both
    /// @param points receives 4 points: 2i and 2i + 1 are extension line i, the latter being arc
    ///        end i
    /// @param angle receives the angle in radians, 0 up to but without 2 pi
    /// @param vertex receives the arc's centre
    static int GetAngleDimData(const double (*edge1)[3], const double (*edge2)[3],
                               const double* text, int& flag, double (*points)[3], double& angle,
                               double* vertex);
    /// The lines that bridge the gaps between the edges and their crossing.
    /// @param count receives their number, 0 to 2
    /// @param points receives 4 points: 2i and 2i + 1 are line i; unused ones are zero
    static int GetAngleDimSpecialLineData(const double (*edge1)[3], const double (*edge2)[3],
                                          int& count, double (*points)[3]);
};

} // namespace dorvale
