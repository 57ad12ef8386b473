// A scene that is moved and turned as a whole has the same annotation, moved and turned.
#include <gtest/gtest.h>

#include "drawing.h"

namespace dorvale::test {
namespace {

/// Where a scene stands: its main plane is the XY plane of the frame.
struct Stage {
    Rigid frame;
    Rigid viewer;
    bool seen;

    Stage moved(const Rigid& motion) const {
        return {frame.moved(motion), viewer.moved(motion), seen};
    }
};

/// A scene that is made of random numbers alone, and the call that annotates it.
class Scene {
public:
    Scene(const Stage& stage, const Random& random)
        : stage_(stage), random_(random), view_(stage.viewer.view()) {}

    Ank_PMI pmi;
    int kind = 900001;
    int status = 7;

    double* view() { return stage_.seen ? view_.data() : nullptr; }
    double number(double from, double to) { return random_.number(from, to); }
    const Rigid& frame() const { return stage_.frame; }
    Vec point() { return frame().point({number(-20, 20), number(-20, 20), 0.0}); }
    /// An edge that makes a fair angle with the one before it, so that they cross within sight.
    Ank_Line* edge() {
        direction_ += number(0.5, 2.6);
        const Vec start{number(-20, 20), number(-20, 20), 0.0};
        const Vec along{std::cos(direction_), std::sin(direction_), 0.0};
        return edge(start, start + along * number(3.0, 25.0));
    }
    Ank_Line* edge(const Vec& from, const Vec& to) {
        return keep(line(frame().point(from), frame().point(to)));
    }
    Ank_Ellipse* arc() {
        const double from = number(0.0, 6.0);
        return keep(test::arc(frame(), number(3.0, 15.0), from, from + number(0.5, 6.0)));
    }
    /// A placement off the main plane.
    _ank_locate* place() {
        place_ = locate(frame().point({number(-20, 20), number(-20, 20), number(-9, 9)}),
                        stage_.viewer.view());
        return &place_;
    }
    const double* located() const { return place_.point; }
    double* normal() { return keep(frame().axes[2]); }
    double* modelPoint() { return keep(point()); }

private:
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
    _ank_locate place_{};
    double direction_ = 0.0;
    std::vector<std::unique_ptr<Ank_CurveEntity>> curves_;
    std::vector<std::unique_ptr<Vec>> vectors_;
};

struct Annotated {
    const char* name;
    void (*annotate)(Scene&);
    /// The plane is that of a line and the horizontal across it: only a turn about the vertical
    /// keeps it.
    bool hasHorizontal = false;
    /// The text may take the plane's own axes, which come from the world's.
    bool textOnAxes = false;
};

void parallel(Scene& s) {
    Ank_Line* reference = s.edge({0, 0, 0}, {0, 9, 0});
    PMICreateParallelDim3D(&s.kind, nullptr, reference, s.edge(), nullptr, s.place(), 3.5, &s.pmi,
                           &s.status, s.view());
}
template <auto create> void circle(Scene& s) {
    create(&s.kind, s.arc(), s.place(), nullptr, 3.5, &s.pmi, &s.status, s.view());
}
void arcLength(Scene& s) {
    PMICreateArcDim3D(nullptr, s.arc(), s.place(), 3.5, &s.pmi, &s.status, s.view(), s.edge(),
                      s.edge());
}
void edgeLength(Scene& s) {
    PMICreateArcDim3D(nullptr, s.edge({3, -9, 0}, {3, 8, 0}), s.place(), 3.5, &s.pmi, &s.status,
                      s.view(), nullptr, nullptr);
}
void sectionArcLength(Scene& s) {
    PMICreateClipArcDim3D(nullptr, s.normal(), s.modelPoint(), s.modelPoint(), s.arc(), s.place(),
                          3.5, &s.pmi, &s.status, s.view(), s.edge(), s.edge());
}
void sectionEdgeLength(Scene& s) {
    PMICreateClipArcDim3D(nullptr, s.normal(), s.modelPoint(), s.modelPoint(), s.edge(), s.place(),
                          3.5, &s.pmi, &s.status, s.view(), nullptr, nullptr);
}
void angle(Scene& s) {
    int mode = 0;
    int count = 0;
    double specials[4][3];
    PMICreateAngleDim(&mode, s.edge(), s.edge(), s.place(), 3.5, &s.pmi, &s.status, count, specials,
                      s.view());
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
    Ank_Line* edge1 = s.edge({2, 1, 0}, {2, 15, 0});
    PMICreateLinDistDim3D(edge1, s.edge({-7, -3, 0}, {-7, 6, 0}), s.place(), 3.5, &s.pmi, &s.status,
                          s.view(), nullptr);
}
void edgeToPoint(Scene& s) {
    PMICreateLinDotDim3D(s.edge(), s.edge(), s.place(), 3.5, &s.pmi, &s.status, s.view());
}
void pointToPoint(Scene& s) {
    PMICreateDotDistDim3D(s.edge(), s.edge(), 3.5, &s.pmi, &s.status, s.view());
}
void section(Scene& s) {
    PMICreateClipDim3D(s.normal(), s.modelPoint(), s.modelPoint(), s.place(), 3.5, &s.pmi,
                       &s.status, s.view());
}
void edgeToPointInSection(Scene& s) {
    PMICreateClipLinDotDim3D(s.normal(), s.modelPoint(), s.modelPoint(), s.edge(), s.edge(),
                             s.place(), 3.5, &s.pmi, &s.status, s.view());
}

class RigidMotionTest : public testing::TestWithParam<Annotated> {};

Annotation withoutText(Annotation annotation) {
    std::erase_if(annotation.fields, [](const Field& field) {
        return field.name == "x" || field.name == "y" || field.name == "box";
    });
    return annotation;
}

TEST_P(RigidMotionTest, MovesTheAnnotation) {
    Random random(8);
    for (int i = 0; i < 100; ++i) {
        SCOPED_TRACE(random);
        Stage stage{slopingFrame(random, 20.0), {}, i % 4 != 0};
        stage.viewer = randomViewer(random, stage.frame.axes[2]);
        Rigid motion = Rigid::random(random, 20.0);
        if (GetParam().hasHorizontal) {
            motion.axes[2] = {0, 0, 1};
            motion.axes[0] = unit(cross(motion.axes[0], motion.axes[2]));
            motion.axes[1] = cross(motion.axes[2], motion.axes[0]);
        }
        Scene still(stage, random);
        Scene moved(stage.moved(motion), random);
        GetParam().annotate(still);
        GetParam().annotate(moved);
        random.number(0, 1);

        Annotation expected = test::moved(inModel(still.pmi), motion);
        Annotation actual = inModel(moved.pmi);
        if (GetParam().textOnAxes) {
            expected = withoutText(expected);
            actual = withoutText(actual);
        }
        ExpectAnnotationNear(actual, expected, 5e-3);
        EXPECT_EQ(moved.status, still.status);
        const Vec located = Drawing(still.pmi, {}).plane.point(Vec(still.located()));
        ExpectVec3Near(Drawing(moved.pmi, {}).plane.point(Vec(moved.located())),
                       motion.point(located), 5e-3);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Generators, RigidMotionTest,
    testing::Values(Annotated{"Radius", circle<PMICreateRadiusDim3D>, false, true},
                    Annotated{"Diameter", circle<PMICreateDiameterDim3D>, false, true},
                    Annotated{"Parallel", parallel, true, true}, Annotated{"ArcLength", arcLength},
                    Annotated{"EdgeLength", edgeLength, true},
                    Annotated{"SectionArcLength", sectionArcLength},
                    Annotated{"SectionEdgeLength", sectionEdgeLength}, Annotated{"Angle", angle},
                    Annotated{"PickedAngle", pickedAngle}, Annotated{"EdgeToEdge", edgeToEdge},
                    Annotated{"EdgeToPoint", edgeToPoint}, Annotated{"PointToPoint", pointToPoint},
                    Annotated{"Section", section},
                    Annotated{"EdgeToPointInSection", edgeToPointInSection}),
    [](const auto& annotated) { return annotated.param.name; });

} // namespace
} // namespace dorvale::test
