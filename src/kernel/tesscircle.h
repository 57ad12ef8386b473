// Tessellation of circular arcs.
#pragma once

#include <vector>

#include <dorvale/datamanager.h>

namespace dorvale {

class CTessCircle {
public:
    /// The drawn part of each leader's arc, from start to end angle, zeros for a leader without
    /// one; `value` receives the largest radius. False where no leader has an arc.
    static bool GetCircleDrawData(std::vector<Ank_Leader*> leaders, std::vector<double>& starts,
                                  std::vector<double>& ends, double& value,
                                  std::vector<int>& counts);
    /// Appends `count` points of the arc between two angles, spread evenly.
    static bool GetCircleDiscretization(const Ank_Ellipse* arc, double start, double end,
                                        double value, int count, std::vector<ANK_PNT32>& points);
    /// The whole arc; a count of 0 asks for the number of points of its drawn part.
    static bool GetCircleDiscretization(const Ank_Ellipse* arc, int count,
                                        std::vector<ANK_PNT32>& points);
};

} // namespace dorvale
