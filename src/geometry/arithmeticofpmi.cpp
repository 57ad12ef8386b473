// The exported projection class.
#include <dorvale/dorvale.h>

#include "geometry/matrix.h"
#include "geometry/projection.h"

using namespace dorvale;

CArithmeticOfPMI::CArithmeticOfPMI() = default;
CArithmeticOfPMI::CArithmeticOfPMI(const CArithmeticOfPMI&) = default;
CArithmeticOfPMI& CArithmeticOfPMI::operator=(const CArithmeticOfPMI&) = default;
CArithmeticOfPMI::~CArithmeticOfPMI() = default;

Ank_CurveEntity* CArithmeticOfPMI::Project3DTo2D(Ank_CurveEntity* curve, double* matrix) {
    const Ank_Ellipse* arc = asEllipse(curve);
    return arc == nullptr ? nullptr : arcInItsPlane(*arc, matrix).release();
}

int CArithmeticOfPMI::Project2DTo3D(const std::vector<ANK_PNT32>& points, double* matrix,
                                    std::vector<ANK_PNT32>& result) {
    const std::size_t count = points.size();
    if (count == 0) {
        return 0;
    }
    result.reserve(result.size() + count);
    const Matrix toModel = matrixFrom(matrix);
    for (std::size_t i = 0; i < count; ++i) {
        result.push_back(toPoint32(transformed(widen(points[i]), toModel)));
    }
    return static_cast<int>(count);
}
