#include "host/step/write/verify.h"

#include <cmath>

#include "host/scene/build.h"
#include "host/step/write/write.h"

namespace host::step {

std::optional<double> measuredByLibrary(const Annotation& annotation, const Sheet& sheet,
                                        const Model& model) {
    Sheet alone = sheet;
    alone.annotations = {annotation};
    try {
        const Scene scene(sceneOf(alone, {}, model).dump());
        BuiltAnnotation built;
        buildAnnotation(scene, 0, built);
        const CallResult* call = built.measuringCall();
        if (call == nullptr || !std::isfinite(call->measured.value)) {
            return std::nullopt;
        }
        if (call->measured.quantity == Quantity::Angle) {
            return call->measured.value;
        }
        return call->measured.value / model.dimensions[annotation.dimension].unitSize;
    } catch (const SceneError&) {
        return std::nullopt;
    }
}

} // namespace host::step
