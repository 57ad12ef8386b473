// A finished annotation as it stands in the model, and the stage that it is built on.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "support/annotation.h"
#include "support/scene.h"

namespace dorvale::test {

inline constexpr double kHalfTurn = std::numbers::pi;

/// The angle from one direction to another, counter-clockwise about a normal, from 0 up to a turn.
inline double turnAbout(const Vec& normal, const Vec& from, const Vec& to) {
    const double angle = std::atan2(dot(normal, cross(from, to)), dot(from, to));
    return angle < 0.0 ? angle + 2.0 * kHalfTurn : angle;
}

struct Stroke {
    Vec from;
    Vec to;
};

struct DrawnLeader : Stroke {
    bool isArc = false;
    Vec centre;
    Vec normal;
    AnkTermTypeEnum head{};
    Vec tip;
    Vec along;
    float size[2] = {};
    bool stub = false;

    double sweep() const { return turnAbout(normal, from - centre, to - centre); }
};

/// The first line of the first block.
struct DrawnText {
    std::wstring line;
    Vec at;
    Vec x;
    Vec y;
    float height = 0.0F;
    /// The outer box's corner along the line.
    Vec boxEnd;

    /// The number after the line's sign.
    double number() const { return std::stod(line.substr(line.find_first_of(L"0123456789"))); }
};

/// An annotation carried through its plane into a frame of the model.
class Drawing {
public:
    explicit Drawing(const Ank_PMI& pmi, const Rigid& in = {}) : frame(in) {
        const auto& rows = pmi.GetDefPlane().m;
        for (std::size_t i = 0; i < 3; ++i) {
            plane.axes[i] = {rows[i][0], rows[i][1], rows[i][2]};
        }
        plane.origin = {rows[3][0], rows[3][1], rows[3][2]};
        for (const Ank_Leader* leader : pmi.GetLeaders()) {
            addLeader(*leader);
        }
        for (const Ank_Extensionline* line : pmi.GetExLines()) {
            extensions.push_back(stroke(*line->GetCurve()));
        }
        for (const Ank_SpecialLine* line : pmi.GetSpecialLines()) {
            specials.push_back(stroke(*line->GetCurves().at(0)));
        }
        if (!pmi.GetComText().empty()) {
            setText(*pmi.GetComText()[0]);
        }
    }

    Rigid frame;
    /// The definition plane, in the model. All else stands in the frame.
    Rigid plane;
    std::vector<DrawnLeader> leaders;
    std::vector<Stroke> extensions;
    std::vector<Stroke> specials;
    DrawnText text;

private:
    Vec point(const Vec& p) const { return frame.pointBack(plane.point(p)); }
    Vec direction(const Vec& v) const { return frame.directionBack(plane.direction(v)); }
    Stroke stroke(const Ank_CurveEntity& curve) const {
        const std::vector<Vec> points = pointsOf(curve);
        return {point(points.at(0)), point(points.at(1))};
    }
    void addLeader(const Ank_Leader& leader) {
        const Ank_CurveEntity& curve = *leader.GetAllCurve().at(0);
        DrawnLeader& drawn = leaders.emplace_back();
        static_cast<Stroke&>(drawn) = stroke(curve);
        drawn.isArc = curve.GetCurveType() == ANK_CURVE_ARC;
        if (drawn.isArc) {
            drawn.centre = point(pointsOf(curve)[2]);
            drawn.normal = direction(static_cast<const Ank_Ellipse&>(curve).GetNormal());
        }
        ANK_PNT32 tip;
        ANK_DIR32 along;
        leader.GetTerminator(drawn.head, drawn.size, tip, along);
        drawn.tip = point(tip);
        drawn.along = direction(along);
        drawn.stub = leader.GetStubDelta();
    }
    void setText(const Ank_ComText& block) {
        const Ank_Text& line = *block.GetTexts().at(0);
        ANK_DIR32 x;
        ANK_DIR32 y;
        float width = 0.0F;
        line.GetInnerXYAxis(x, y);
        line.GetCharWidthHeight(width, text.height);
        text.line = line.GetText();
        text.at = point(line.GetInnerLoc());
        text.x = direction(x);
        text.y = direction(y);
        text.boxEnd = point(block.GetOuterBox().second);
    }
};

inline void ExpectStroke(const Stroke& stroke, const Vec& from, const Vec& to, double tolerance) {
    ExpectVec3Near(stroke.from, from, tolerance);
    ExpectVec3Near(stroke.to, to, tolerance);
}

/// An arrow at the leader's start, its body along the leader. On an arc it takes a third of the
/// leader at the most.
inline void ExpectArrow(const DrawnLeader& leader, double tolerance) {
    EXPECT_EQ(leader.head, ANK_TERM_ARROW);
    ExpectVec3Near(leader.tip, leader.from, tolerance);
    EXPECT_NEAR(leader.size[1], leader.size[0] / 3.0F, 1e-5);
    if (!leader.isArc) {
        EXPECT_FLOAT_EQ(leader.size[0], 3.36F);
        ExpectVec3Near(leader.along, unit(leader.to - leader.from), tolerance);
        return;
    }
    const Vec radius = leader.from - leader.centre;
    const Vec back = leader.tip + leader.along * leader.size[0] - leader.centre;
    EXPECT_NEAR(length(back), length(radius), tolerance);
    EXPECT_LE(turnAbout(leader.normal, radius, back), leader.sweep() / 3.0 + tolerance);
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

/// A placement that the viewer sees at a point, picked before it or behind.
inline _ank_locate placedAt(Random& random, const Vec& point, const Rigid& viewer) {
    return locate(point + viewer.axes[2] * random.number(-50.0, 50.0), viewer.view());
}

/// The record holds the frame's point in the annotation's plane, and its old view.
inline void ExpectLocated(const _ank_locate& record, const Drawing& drawing, const Vec& point,
                          const Rigid& viewer) {
    ExpectVec3Near(drawing.plane.point(Vec(record.point)), drawing.frame.point(point), 3e-3);
    EXPECT_TRUE(std::ranges::equal(record.viewMatrix, viewer.view()));
}

inline void ExpectFlags(const Ank_PMI& pmi, int type, bool parallelScreen) {
    EXPECT_EQ(pmi.GetType(), type);
    EXPECT_EQ(pmi.GetParallelScreen(), parallelScreen);
    EXPECT_TRUE(pmi.GetDisplay());
    EXPECT_EQ(pmi.GetDim(), 3U);
}

} // namespace dorvale::test
