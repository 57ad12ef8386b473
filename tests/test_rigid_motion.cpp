// A scene that is moved and turned as a whole has the same annotation, moved and turned.
#include <gtest/gtest.h>

#include "drawing.h"
#include "robustness/calls.h"

namespace dorvale::test {
namespace {

struct Generator {
    const char* name;
    const char* call;
    /// As in `Integers::curves`.
    int curve = 0;
    /// The plane is that of a line and the horizontal: only a turn about the vertical keeps it.
    bool isHorizontal = false;
    /// The text may stand along the plane's own axes, which come from the world's.
    bool hasTextOnAxes = false;
};

std::ostream& operator<<(std::ostream& out, const Generator& generator) {
    return out << generator.call;
}

void set(double* to, const Vec& v) { std::ranges::copy(v.array(), to); }

/// What is measured stands in the world's XY plane: the first line along Y, the second one at a
/// fair angle to it, so that they cross within sight.
Record randomRecord(Random& random) {
    Record record;
    const auto inPlane = [&random] {
        return Vec{random.number(-20, 20), random.number(-20, 20), 0.0};
    };
    const auto towards = [](double angle, double distance) {
        return Vec{std::cos(angle), std::sin(angle), 0.0} * distance;
    };
    for (double* p : {record.points[0], record.origin, record.xPoint, record.center}) {
        set(p, inPlane());
    }
    record.radii[0] = random.number(3.0, 15.0);
    double angle = 0.0;
    for (double* end : record.arcEnds) {
        angle += random.number(0.5, 3.0);
        set(end, Vec(record.center) + towards(angle, record.radii[0]));
    }
    for (std::size_t i = 0; i < 2; ++i) {
        const Vec start = inPlane();
        const double direction = kHalfTurn * (i == 0 ? 0.5 : random.number(0.65, 1.35));
        set(record.lineEnds[i][0], start);
        set(record.lineEnds[i][1], start + towards(direction, random.number(5.0, 25.0)));
        set(record.picks[i], start);
    }
    set(record.place, inPlane() + Vec{0.0, 0.0, random.number(-9.0, 9.0)});
    record.pointsFrom = 0;
    return record;
}

/// The same where the world's frame has become another, before a viewer.
Record standing(Record record, const Rigid& frame, const Rigid& viewer) {
    for (double* p :
         {record.points[0], record.origin, record.xPoint, record.center, record.arcEnds[0],
          record.arcEnds[1], record.lineEnds[0][0], record.lineEnds[0][1], record.lineEnds[1][0],
          record.lineEnds[1][1], record.picks[0], record.picks[1], record.place}) {
        set(p, frame.point(Vec(p)));
    }
    for (double* d : {record.normal, record.sectionNormal}) {
        set(d, frame.direction(Vec(d)));
    }
    std::ranges::copy(viewer.view(), record.viewMatrix);
    std::ranges::copy(viewer.view(), record.placeView);
    return record;
}

class RigidMotionTest : public testing::TestWithParam<Generator> {
protected:
    /// The annotation, carried into the model.
    static Annotation annotated(const Record& record) {
        Arguments arguments(record);
        std::ranges::find(calls(), std::string_view(GetParam().call), &Call::name)->run(arguments);
        return inModel(arguments.pmi);
    }
    static Annotation comparable(Annotation annotation) {
        std::erase_if(annotation.fields, [](const Field& field) {
            const bool ofText = field.name == "x" || field.name == "y" || field.name == "box";
            return ofText && GetParam().hasTextOnAxes;
        });
        return annotation;
    }
};

TEST_P(RigidMotionTest, MovesTheAnnotation) {
    Random random(8);
    for (int i = 0; i < 100; ++i) {
        SCOPED_TRACE(random);
        const Rigid frame = slopingFrame(random, 20.0);
        const Rigid viewer = randomViewer(random, frame.axes[2]);
        Rigid motion = Rigid::random(random, 20.0);
        if (GetParam().isHorizontal) {
            motion.axes[2] = {0, 0, 1};
            motion.axes[0] = unit(cross(motion.axes[0], motion.axes[2]));
            motion.axes[1] = cross(motion.axes[2], motion.axes[0]);
        }
        Record record = randomRecord(random);
        record.curves[0] = GetParam().curve;
        record.mode = i % 2;
        record.noView = i % 4 == 0 ? 1 : 0;
        const Annotation still = annotated(standing(record, frame, viewer));
        const Annotation moved =
            annotated(standing(record, frame.moved(motion), viewer.moved(motion)));
        ExpectAnnotationNear(comparable(moved), comparable(test::moved(still, motion)), 5e-3);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Generators, RigidMotionTest,
    testing::Values(Generator{"Radius", "PMICreateRadiusDim3D", 0, false, true},
                    Generator{"Diameter", "PMICreateDiameterDim3D", 0, false, true},
                    Generator{"Parallel", "PMICreateParallelDim3D", 0, true, true},
                    Generator{"ArcLength", "PMICreateArcDim3D"},
                    Generator{"EdgeLength", "PMICreateArcDim3D", 2, true},
                    Generator{"ArcLengthInSection", "PMICreateClipArcDim3D"},
                    Generator{"EdgeLengthInSection", "PMICreateClipArcDim3D", 2},
                    Generator{"Angle", "PMICreateAngleDim"},
                    Generator{"PickedAngle", "PMICreateAngleDim3D"},
                    Generator{"EdgeToEdge", "PMICreateLinDistDim3D"},
                    Generator{"EdgeToPoint", "PMICreateLinDotDim3D"},
                    Generator{"PointToPoint", "PMICreateDotDistDim3D"},
                    Generator{"PointsInSection", "PMICreateClipDim3D"},
                    Generator{"EdgeToPointInSection", "PMICreateClipLinDotDim3D"}),
    [](const auto& generator) { return generator.param.name; });

} // namespace
} // namespace dorvale::test
