// What the tests of the generators share: the stage that an annotation is built on, and what its
// drawing must look like.
#pragma once

#include <algorithm>

#include "support/annotation.h"
#include "support/calls.h"

namespace dorvale::test {

inline void ExpectStroke(const Element& line, const Vec& from, const Vec& to, double tolerance) {
    ExpectVec3Near(line.from(), from, tolerance);
    ExpectVec3Near(line.to(), to, tolerance);
}

/// How far an arc leader runs about its normal.
inline double sweepOf(const Element& arc) {
    const Vec centre = arc.vec("point", 2);
    return turnAbout(arc.vec("normal"), arc.from() - centre, arc.to() - centre);
}

inline bool hasStub(const Element& leader) { return leader.numbers("leader")[1] != 0.0; }
inline int headOf(const Element& leader) { return static_cast<int>(leader.numbers("head")[0]); }

/// A leader with an arrow at its start, whose body lies along the leader: on an arc along the first
/// of as many equal chords, three at least, as arrows fit on it.
inline void ExpectArrow(const Element& leader, const Vec& from, const Vec& to, double tolerance) {
    constexpr double arrow = 3.36;
    ExpectStroke(leader, from, to, tolerance);
    EXPECT_EQ(headOf(leader), ANK_TERM_ARROW);
    const Vec tip = leader.vec("at");
    const Vec along = leader.vec("along");
    const double size = leader.numbers("head")[1];
    ExpectVec3Near(tip, leader.from(), tolerance);
    EXPECT_NEAR(leader.numbers("head")[2], size / 3.0, 1e-5);
    if (leader.numbers("curve")[0] != static_cast<double>(ANK_CURVE_ARC)) {
        EXPECT_NEAR(size, arrow, 1e-6);
        ExpectVec3Near(along, unit(leader.to() - leader.from()), tolerance);
        return;
    }
    const Vec centre = leader.vec("point", 2);
    const Vec radius = leader.from() - centre;
    const Vec back = tip + along * size - centre;
    const double chords = std::max(3.0, std::round(length(radius) * sweepOf(leader) / arrow));
    EXPECT_NEAR(length(back), length(radius), tolerance);
    EXPECT_NEAR(turnAbout(leader.vec("normal"), radius, back), sweepOf(leader) / chords, tolerance);
}

/// A frame whose X axis is horizontal: its plane is that of its Y axis and the horizontal across.
inline Rigid slopingFrame(Random& random, double reach = 100.0) {
    Rigid frame = Rigid::random(random, reach);
    frame.axes[0] = unit(cross(frame.axes[2], {0, 0, 1}));
    frame.axes[1] = cross(frame.axes[2], frame.axes[0]);
    return frame;
}

/// A viewer who does not look along the plane of a normal, in front of it or behind.
inline Rigid randomViewer(Random& random, const Vec& normal) {
    Rigid viewer = Rigid::random(random);
    while (std::abs(dot(viewer.axes[2], normal)) < 0.3) {
        viewer = Rigid::random(random);
    }
    return viewer;
}

/// A scene of the XY plane where that has become a frame's, before a viewer. The placement is
/// picked where he sees it, at some depth.
inline Record standing(Record record, const Rigid& frame, const Rigid& viewer, double depth = 0.0) {
    for (double* p :
         {record.center, record.arcEnds[0], record.arcEnds[1], record.lineEnds[0][0],
          record.lineEnds[0][1], record.lineEnds[1][0], record.lineEnds[1][1], record.points[0],
          record.origin, record.xPoint, record.picks[0], record.picks[1], record.place}) {
        set(p, frame.point(Vec(p)));
    }
    set(record.place, Vec(record.place) + viewer.axes[2] * depth);
    for (double* d : {record.normal, record.sectionNormal}) {
        set(d, frame.direction(Vec(d)));
    }
    std::ranges::copy(viewer.view(), record.viewMatrix);
    std::ranges::copy(viewer.view(), record.placeView);
    return record;
}

/// The type that an annotation has before the call, and after a call that sets none.
inline constexpr auto kTypeBefore = static_cast<AnkPMITypeEnum>(99);

/// The number that a call says it measured is what the value text shows: to the text's last digit,
/// and to what single precision leaves of the measured curves.
inline void ExpectShown(const host::Measured& measured, const Ank_PMI& pmi) {
    const std::vector<Ank_ComText*> blocks = pmi.GetComText();
    if (measured.quantity == host::Quantity::None || blocks.empty()) {
        return;
    }
    const double lastDigit = 0.00502;
    const double narrowing = measured.quantity == host::Quantity::Angle ? 1e-3 : 5e-5;
    EXPECT_NEAR(Drawing(pmi).text.number(), measured.value, lastDigit + narrowing);
}

/// A call that has been made.
struct Made : Arguments {
    Made(std::string_view call, const Record& record, bool parallelScreen = false)
        : Arguments(record) {
        pmi.SetType(kTypeBefore);
        pmi.SetParallelScreen(parallelScreen);
        pmi.SetDefPlane({});
        run(call, *this);
        ExpectShown(handed.measured, pmi);
    }
};

/// The record of the placement holds its point in the annotation's plane, and its old view.
inline void ExpectLocated(const Made& made, const Drawing& drawing, const Vec& point) {
    ExpectVec3Near(drawing.plane.point(Vec(made.locate.point)), drawing.frame.point(point), 3e-3);
    EXPECT_TRUE(std::ranges::equal(made.locate.viewMatrix, made.placeView));
}

inline void ExpectFlags(const Made& made, int type, bool parallelScreen, int status = 0) {
    EXPECT_EQ(made.pmi.GetType(), type);
    EXPECT_EQ(made.pmi.GetParallelScreen(), parallelScreen);
    EXPECT_TRUE(made.pmi.GetDisplay());
    EXPECT_EQ(made.pmi.GetDim(), 3U);
    EXPECT_EQ(made.pmi.GetDefPlane().m[3][3], 1.0F);
    EXPECT_EQ(made.status, status);
}

} // namespace dorvale::test
