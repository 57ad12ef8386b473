#include <StepDimTol_CommonDatum.hxx>
#include <StepDimTol_Datum.hxx>
#include <StepDimTol_DatumFeature.hxx>
#include <StepDimTol_DatumTarget.hxx>
#include <StepDimTol_GeoTolAndGeoTolWthDatRef.hxx>
#include <StepDimTol_GeoTolAndGeoTolWthDatRefAndGeoTolWthMod.hxx>
#include <StepDimTol_GeoTolAndGeoTolWthDatRefAndModGeoTolAndPosTol.hxx>
#include <StepDimTol_GeoTolAndGeoTolWthMod.hxx>
#include <StepDimTol_GeometricTolerance.hxx>

#include "host/step/read/dimensions.h"

namespace host::step {
namespace {

constexpr std::string_view kClassEnd = "Tolerance";

/// `SurfaceProfile` of `StepDimTol_SurfaceProfileTolerance`, as words.
std::string wordsOf(std::string_view className) {
    className.remove_prefix(className.find('_') + 1);
    if (className.ends_with(kClassEnd)) {
        className.remove_suffix(kClassEnd.size());
    }
    std::string words;
    for (const char c : className) {
        const bool capital = c >= 'A' && c <= 'Z';
        if (capital && !words.empty()) {
            words += ' ';
        }
        words += capital ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return words;
}

/// What the classes for entities of several types know about the type that counts.
std::string wordsOf(StepDimTol_GeometricToleranceType type) {
    constexpr const char* kNames[] = {
        "angularity", "circular runout", "coaxiality",      "concentricity",    "cylindricity",
        "flatness",   "line profile",    "parallelism",     "perpendicularity", "position",
        "roundness",  "straightness",    "surface profile", "symmetry",         "total runout"};
    const auto index = static_cast<std::size_t>(type);
    return index < std::size(kNames) ? kNames[index] : "geometric";
}

template <class Combined>
bool takeType(const Handle(Standard_Transient) & entity, std::string& kind) {
    const auto combined = Handle(Combined)::DownCast(entity);
    if (combined.IsNull()) {
        return false;
    }
    kind = wordsOf(combined->GetToleranceType());
    return true;
}

std::string toleranceKind(const Handle(Standard_Transient) & entity) {
    std::string kind;
    if (entity->IsKind(STANDARD_TYPE(StepDimTol_GeoTolAndGeoTolWthDatRefAndModGeoTolAndPosTol))) {
        return "position";
    }
    if (takeType<StepDimTol_GeoTolAndGeoTolWthDatRef>(entity, kind) ||
        takeType<StepDimTol_GeoTolAndGeoTolWthDatRefAndGeoTolWthMod>(entity, kind) ||
        takeType<StepDimTol_GeoTolAndGeoTolWthMod>(entity, kind)) {
        return kind;
    }
    return wordsOf(entity->DynamicType()->Name());
}

} // namespace

std::map<std::string, int> countTolerances(const StepData_StepModel& entities) {
    std::map<std::string, int> counts;
    for (int i = 1; i <= entities.NbEntities(); ++i) {
        const Handle(Standard_Transient)& entity = entities.Value(i);
        if (entity->IsKind(STANDARD_TYPE(StepDimTol_GeometricTolerance))) {
            ++counts[toleranceKind(entity)];
        }
    }
    return counts;
}

std::map<std::string, int> countDatums(const StepData_StepModel& entities) {
    std::map<std::string, int> counts;
    for (int i = 1; i <= entities.NbEntities(); ++i) {
        const Handle(Standard_Transient)& entity = entities.Value(i);
        if (entity->IsKind(STANDARD_TYPE(StepDimTol_DatumTarget))) {
            ++counts["datum target"];
        } else if (entity->IsKind(STANDARD_TYPE(StepDimTol_Datum)) &&
                   !entity->IsKind(STANDARD_TYPE(StepDimTol_CommonDatum))) {
            ++counts["datum"];
        }
    }
    return counts;
}

} // namespace host::step
