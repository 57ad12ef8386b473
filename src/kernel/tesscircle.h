// Tessellation of circular arcs, as far as the arrow heads of arc leaders need it.
#pragma once

#include <vector>

#include <dorvale/datamanager.h>

namespace dorvale {

/// The length of a straight leader's arrow, and of the chords of an arc: so an arrow on a long arc,
/// which is as long as a chord, looks like it.
inline constexpr double kArrowLength = 3.36;

/// A point's angle about a centre in x and y, in radians. All of it is single precision.
float angleAt(const ANK_PNT32& center, const ANK_PNT32& point);

/// The points of a circular arc by their parameter, which is their angle; all at the centre's z.
struct CircleFrame {
    ANK_PNT32 center;
    float radiusX = 0.0F;
    float radiusY = 0.0F;

    explicit CircleFrame(const Ank_Ellipse& arc);
    ANK_PNT32 at(double parameter) const;
    double largerRadius() const;
};

class CTessCircle {
public:
    /// A part of an arc as `count` points, spread evenly from the start to the end parameter.
    struct Drawn {
        CircleFrame frame;
        double start = 0.0;
        double end = 0.0;
        int count = 0;

        ANK_PNT32 point(int i) const;
    };

    /// The leader's curve if it is an arc, else null; so for a null leader.
    static const Ank_Ellipse* arcOf(const Ank_Leader* leader);
    /// From the angle of the arc's start to that of its end, which is brought by whole turns to the
    /// side of the first that the arc's direction asks for; equal angles stay equal. The points
    /// are one more than the chords: one chord per arrow length, at least 3 and at most 1000.
    static Drawn drawnPart(const Ank_Ellipse& arc);

    /// The drawn part of each leader's arc, zeros for a leader without one; `value` receives the
    /// largest radius. False where no leader has an arc.
    static bool GetCircleDrawData(std::vector<Ank_Leader*> leaders, std::vector<double>& starts,
                                  std::vector<double>& ends, double& value,
                                  std::vector<int>& counts);
    /// Appends `count` points of the arc between two parameters.
    static bool GetCircleDiscretization(const Ank_Ellipse* arc, double start, double end,
                                        double value, int count, std::vector<ANK_PNT32>& points);
    /// The whole arc; a count of 0 asks for the number of points of its drawn part.
    static bool GetCircleDiscretization(const Ank_Ellipse* arc, int count,
                                        std::vector<ANK_PNT32>& points);
};

} // namespace dorvale
