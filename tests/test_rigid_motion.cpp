// A scene that is moved and turned as a whole has the same annotation, moved and turned.
#include "drawing.h"
#include "host/calls/description.h"

namespace dorvale::test {
namespace {

struct Generator {
    const char* call;
    /// As in `Integers::curves`.
    int curve = 0;
    /// The plane is that of a line and the horizontal: only a turn about the vertical keeps it.
    bool isHorizontal = false;
    /// The text may stand along the plane's own axes, which come from the world's.
    bool hasTextOnAxes = false;

    friend std::ostream& operator<<(std::ostream& out, const Generator& generator) {
        return out << generator.call;
    }
};

/// What is measured: the first line along Y, the second one at a fair angle to it, so that they
/// cross within sight.
Record randomRecord(Random& random) {
    Record record;
    const auto inPlane = [&random] {
        return Vec{random.number(-20, 20), random.number(-20, 20), 0.0};
    };
    for (double* p : {record.points[0], record.origin, record.xPoint, record.center}) {
        set(p, inPlane());
    }
    record.radii[0] = random.number(3.0, 15.0);
    double angle = 0.0;
    for (double* end : record.arcEnds) {
        angle += random.number(0.5, 3.0);
        set(end, Vec(record.center) + towards(angle) * record.radii[0]);
    }
    for (std::size_t i = 0; i < 2; ++i) {
        const Vec start = inPlane();
        const double direction = kHalfTurn * (i == 0 ? 0.5 : random.number(0.65, 1.35));
        set(record.lineEnds[i], start, start + towards(direction) * random.number(5.0, 25.0));
        set(record.picks[i], start);
    }
    set(record.place, inPlane());
    return record;
}

class RigidMotionTest : public testing::TestWithParam<Generator> {
protected:
    static Annotation seen(const Rigid& from, const Record& record) {
        Annotation annotation = seenFrom(from, Made(GetParam().call, record).pmi);
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
        const double depth = random.number(-9.0, 9.0);
        const Annotation still = seen({}, standing(record, frame, viewer, depth));
        const Annotation moved =
            seen(motion, standing(record, frame.moved(motion), viewer.moved(motion), depth));
        EXPECT_EQ(difference(moved, still, 5e-3), "");
    }
}

/// Every call that is drawn in a plane of its own; one that measures a curve, for an edge too.
std::vector<Generator> generators() {
    std::vector<Generator> all;
    for (const host::Call& call : host::calls()) {
        const std::vector<host::Member> members = host::describe(call).members;
        const auto has = [&members](std::string_view name) {
            return std::ranges::find(members, name, &host::Member::name) != members.end();
        };
        const std::string_view name = call.name;
        if (has("view")) {
            all.push_back({call.name, 0, name == "PMICreateParallelDim3D",
                           has("circle") || name == "PMICreateParallelDim3D"});
        }
        if (has("curve")) {
            all.push_back({call.name, 2, name == "PMICreateArcDim3D"});
        }
    }
    return all;
}

INSTANTIATE_TEST_SUITE_P(Calls, RigidMotionTest, testing::ValuesIn(generators()),
                         [](const auto& generator) {
                             return std::string(generator.param.call) +
                                    (generator.param.curve == 2 ? "_Edge" : "");
                         });

} // namespace
} // namespace dorvale::test
