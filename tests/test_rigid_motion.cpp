// A scene that is moved and turned as a whole has the same annotation, moved and turned.
#include <gtest/gtest.h>

#include "drawing.h"

namespace dorvale::test {
namespace {

/// Where a scene stands, its main plane being the frame's XY plane, and who looks at it.
struct Stage {
    Rigid frame;
    Rigid viewer;
    bool seen;
};

/// A scene made of random numbers, and the annotation that a call makes of it.
class Scene {
public:
    Scene(const Stage& stage, const Random& random)
        : stage_(stage), random_(random), view_(stage.viewer.view()) {}

    Ank_PMI pmi;
    int kind = 900001;
    int status = 7;
    _ank_locate placed{};

    double* view() { return stage_.seen ? view_.data() : nullptr; }
    /// A placement off the main plane.
    _ank_locate* place() {
        const Vec picked{number(-20, 20), number(-20, 20), number(-9, 9)};
        placed = locate(stage_.frame.point(picked), stage_.viewer.view());
        return &placed;
    }
    Ank_Line* edge(const Vec& from, const Vec& to) {
        return keep(line(stage_.frame.point(from), stage_.frame.point(to)));
    }
    /// An edge at a fair angle to the one before it, so that the two cross within sight.
    Ank_Line* edge() {
        angle_ += number(0.5, 2.6);
        const Vec start{number(-20, 20), number(-20, 20), 0.0};
        return edge(start, start + Vec{std::cos(angle_), std::sin(angle_), 0} * number(3, 25));
    }
    Ank_Ellipse* arc() {
        const double from = number(0.0, 6.0);
        return keep(test::arc(stage_.frame, number(3, 15), from, from + number(0.5, 6.0)));
    }
    double* normal() { return keep(stage_.frame.axes[2]); }
    double* point() { return keep(stage_.frame.point({number(-20, 20), number(-20, 20), 0})); }

private:
    double number(double from, double to) { return random_.number(from, to); }
    template <class Curve> Curve* keep(std::unique_ptr<Curve> curve) {
        Curve* made = curve.get();
        curves_.push_back(std::move(curve));
        return made;
    }
    double* keep(const Vec& v) {
        vectors_.push_back(std::make_unique<Vec>(v));
        return &vectors_.back()->x;
    }

    Stage stage_;
    Random random_;
    ViewMatrix view_;
    double angle_ = 0.0;
    std::vector<std::unique_ptr<Ank_CurveEntity>> curves_;
    std::vector<std::unique_ptr<Vec>> vectors_;
};

template <auto create> void circle(Scene& s) {
    create(&s.kind, s.arc(), s.place(), nullptr, 3.5, &s.pmi, &s.status, s.view());
}
void parallel(Scene& s) {
    Ank_Line* along = s.edge({0, 0, 0}, {0, 9, 0});
    PMICreateParallelDim3D(&s.kind, nullptr, along, s.edge(), nullptr, s.place(), 3.5, &s.pmi,
                           &s.status, s.view());
}
void arcLength(Scene& s) {
    Ank_Line* lines[] = {s.edge(), s.edge()};
    PMICreateArcDim3D(nullptr, s.arc(), s.place(), 3.5, &s.pmi, &s.status, s.view(), lines[0],
                      lines[1]);
}
void edgeLength(Scene& s) {
    Ank_Line* measured = s.edge({3, -9, 0}, {3, 8, 0});
    PMICreateArcDim3D(nullptr, measured, s.place(), 3.5, &s.pmi, &s.status, s.view(), nullptr,
                      nullptr);
}
template <auto curve> void inSection(Scene& s) {
    Ank_Line* lines[] = {s.edge(), s.edge()};
    double* points[] = {s.point(), s.point()};
    PMICreateClipArcDim3D(nullptr, s.normal(), points[0], points[1], (s.*curve)(), s.place(), 3.5,
                          &s.pmi, &s.status, s.view(), lines[0], lines[1]);
}
void angle(Scene& s) {
    Ank_Line* edges[] = {s.edge(), s.edge()};
    int numbers[2] = {};
    double specials[4][3];
    PMICreateAngleDim(&numbers[0], edges[0], edges[1], s.place(), 3.5, &s.pmi, &s.status,
                      numbers[1], specials, s.view());
}
void pickedAngle(Scene& s) {
    int flags[3] = {};
    _ank_element picked[2] = {};
    for (_ank_element& element : picked) {
        element.line = s.edge();
        std::ranges::copy(Vec(element.line->GetStartPoint()).array(), element.pickPoint);
    }
    PMICreateAngleDim3D(&flags[0], &flags[1], &flags[2], &picked[0], &picked[1], s.place(), nullptr,
                        nullptr, 3.5, &s.pmi, &s.status, s.view());
}
void edgeToEdge(Scene& s) {
    Ank_Line* edges[] = {s.edge({2, 1, 0}, {2, 15, 0}), s.edge({-7, -3, 0}, {-7, 6, 0})};
    PMICreateLinDistDim3D(edges[0], edges[1], s.place(), 3.5, &s.pmi, &s.status, s.view(), nullptr);
}
void edgeToPoint(Scene& s) {
    Ank_Line* edges[] = {s.edge(), s.edge()};
    PMICreateLinDotDim3D(edges[0], edges[1], s.place(), 3.5, &s.pmi, &s.status, s.view());
}
void pointToPoint(Scene& s) {
    Ank_Line* edges[] = {s.edge(), s.edge()};
    PMICreateDotDistDim3D(edges[0], edges[1], 3.5, &s.pmi, &s.status, s.view());
}
void pointsInSection(Scene& s) {
    double* points[] = {s.point(), s.point()};
    PMICreateClipDim3D(s.normal(), points[0], points[1], s.place(), 3.5, &s.pmi, &s.status,
                       s.view());
}
void edgeToPointInSection(Scene& s) {
    double* points[] = {s.point(), s.point()};
    Ank_Line* edges[] = {s.edge(), s.edge()};
    PMICreateClipLinDotDim3D(s.normal(), points[0], points[1], edges[0], edges[1], s.place(), 3.5,
                             &s.pmi, &s.status, s.view());
}

struct Generator {
    const char* name;
    void (*annotate)(Scene&);
    /// The plane is that of a line and the horizontal: only a turn about the vertical keeps it.
    bool isHorizontal = false;
    /// The text may stand along the plane's own axes, which come from the world's.
    bool hasTextOnAxes = false;
};

class RigidMotionTest : public testing::TestWithParam<Generator> {
protected:
    static Annotation comparable(Annotation annotation) {
        std::erase_if(annotation.fields, [](const Field& field) {
            const bool ofText = field.name == "x" || field.name == "y" || field.name == "box";
            return ofText && GetParam().hasTextOnAxes;
        });
        return annotation;
    }
    static Vec located(const Scene& scene) {
        return Drawing(scene.pmi).plane.point(Vec(scene.placed.point));
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
        Scene still({frame, viewer, i % 4 != 0}, random);
        Scene moved({frame.moved(motion), viewer.moved(motion), i % 4 != 0}, random);
        GetParam().annotate(still);
        GetParam().annotate(moved);
        ExpectAnnotationNear(comparable(inModel(moved.pmi)),
                             comparable(test::moved(inModel(still.pmi), motion)), 5e-3);
        EXPECT_EQ(moved.status, still.status);
        ExpectVec3Near(located(moved), motion.point(located(still)), 5e-3);
    }
}

using Lines = Ank_Line* (Scene::*)();

INSTANTIATE_TEST_SUITE_P(
    Generators, RigidMotionTest,
    testing::Values(Generator{"Radius", circle<PMICreateRadiusDim3D>, false, true},
                    Generator{"Diameter", circle<PMICreateDiameterDim3D>, false, true},
                    Generator{"Parallel", parallel, true, true}, Generator{"ArcLength", arcLength},
                    Generator{"EdgeLength", edgeLength, true},
                    Generator{"ArcLengthInSection", inSection<&Scene::arc>},
                    Generator{"EdgeLengthInSection", inSection<static_cast<Lines>(&Scene::edge)>},
                    Generator{"Angle", angle}, Generator{"PickedAngle", pickedAngle},
                    Generator{"EdgeToEdge", edgeToEdge}, Generator{"EdgeToPoint", edgeToPoint},
                    Generator{"PointToPoint", pointToPoint},
                    Generator{"PointsInSection", pointsInSection},
                    Generator{"EdgeToPointInSection", edgeToPointInSection}),
    [](const auto& generator) { return generator.param.name; });

} // namespace
} // namespace dorvale::test
