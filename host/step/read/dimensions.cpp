#include "host/step/read/dimensions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numbers>
#include <set>

#include <Interface_EntityIterator.hxx>
#include <StepAP242_DraughtingModelItemAssociation.hxx>
#include <StepAP242_ItemIdentifiedRepresentationUsage.hxx>
#include <StepRepr_CompositeShapeAspect.hxx>
#include <StepRepr_HArray1OfRepresentationItem.hxx>
#include <StepRepr_ShapeAspect.hxx>
#include <StepRepr_ShapeAspectRelationship.hxx>
#include <StepShape_AngularLocation.hxx>
#include <StepShape_AngularSize.hxx>
#include <StepShape_DimensionalCharacteristicRepresentation.hxx>
#include <StepShape_DimensionalLocation.hxx>
#include <StepShape_DimensionalSize.hxx>
#include <StepShape_HArray1OfShapeDimensionRepresentationItem.hxx>
#include <StepShape_LimitsAndFits.hxx>
#include <StepShape_PlusMinusTolerance.hxx>
#include <StepShape_ShapeDimensionRepresentation.hxx>
#include <StepShape_ToleranceValue.hxx>
#include <StepVisual_TessellatedItem.hxx>
#include <TransferBRep.hxx>

#include "host/step/read/values.h"

namespace host::step {
namespace {

using Entity = Handle(Standard_Transient);
using Aspect = Handle(StepRepr_ShapeAspect);

/// `GEOMETRIC_CURVE_SET` of `StepShape_GeometricCurveSet`.
std::string kindOf(const Entity& entity) {
    const std::string name = entity->DynamicType()->Name();
    return name.substr(name.find('_') + 1);
}

class DimensionReader {
public:
    DimensionReader(const Source& source, const Places& places) : source_(source), places_(places) {
        collect();
    }

    std::vector<Dimension> all() const;

private:
    void collect();
    int numberOf(const Entity& entity) const { return source_.entities->IdentLabel(entity); }
    void readValue(const Entity& entity, Dimension& dimension) const;
    void readItems(const Entity& representation, Dimension& dimension) const;
    void readTolerance(const Entity& entity, Dimension& dimension) const;
    void readAspect(const Aspect& aspect, Feature& feature, std::set<int>& seen) const;
    void addItem(const Entity& item, Feature& feature) const;
    Feature featureOf(const Aspect& aspect) const;

    const Source& source_;
    const Places& places_;
    std::map<int, Entity> byNumber_;
    std::vector<Entity> dimensions_;
    /// By the entity that they belong to.
    std::map<int, std::vector<Entity>> representations_;
    std::map<int, std::vector<Handle(StepShape_PlusMinusTolerance)>> tolerances_;
    std::map<int, std::vector<Aspect>> components_;
    std::map<int, std::vector<Entity>> items_;
    std::map<int, std::vector<int>> wrapped_;
};

void DimensionReader::collect() {
    const int count = source_.entities->NbEntities();
    for (int i = 1; i <= count; ++i) {
        const Entity entity = source_.entities->Value(i);
        byNumber_[numberOf(entity)] = entity;
        if (entity->IsKind(STANDARD_TYPE(StepShape_DimensionalSize)) ||
            entity->IsKind(STANDARD_TYPE(StepShape_DimensionalLocation))) {
            dimensions_.push_back(entity);
        } else if (const auto relation = Handle(StepRepr_ShapeAspectRelationship)::DownCast(entity);
                   !relation.IsNull()) {
            if (!relation->RelatingShapeAspect().IsNull() &&
                !relation->RelatedShapeAspect().IsNull()) {
                components_[numberOf(relation->RelatingShapeAspect())].push_back(
                    relation->RelatedShapeAspect());
            }
        } else if (const auto characteristic =
                       Handle(StepShape_DimensionalCharacteristicRepresentation)::DownCast(entity);
                   !characteristic.IsNull()) {
            if (!characteristic->Dimension().IsNull()) {
                representations_[numberOf(characteristic->Dimension().Value())].push_back(
                    characteristic->Representation());
            }
        } else if (const auto tolerance = Handle(StepShape_PlusMinusTolerance)::DownCast(entity);
                   !tolerance.IsNull()) {
            if (!tolerance->TolerancedDimension().IsNull()) {
                tolerances_[numberOf(tolerance->TolerancedDimension().Value())].push_back(
                    tolerance);
            }
        } else if (const auto usage =
                       Handle(StepAP242_ItemIdentifiedRepresentationUsage)::DownCast(entity);
                   !usage.IsNull()) {
            // What draws an aspect is no part of it.
            if (usage->Definition().IsNull() ||
                entity->IsKind(STANDARD_TYPE(StepAP242_DraughtingModelItemAssociation))) {
                continue;
            }
            for (int item = 1; item <= usage->NbIdentifiedItem(); ++item) {
                items_[numberOf(usage->Definition().Value())].push_back(
                    usage->IdentifiedItemValue(item));
            }
        }
    }
    for (const WrappedList& list : source_.wrapped) {
        // Of a usage the definition comes first; of a compound item nothing does.
        const int owner = list.references.empty() ? list.entity : list.references.front();
        auto& items = wrapped_[owner];
        items.insert(items.end(), list.items.begin(), list.items.end());
    }
}

std::vector<Dimension> DimensionReader::all() const {
    std::vector<Dimension> dimensions;
    for (const Entity& entity : dimensions_) {
        Dimension& dimension = dimensions.emplace_back();
        dimension.entity = numberOf(entity);
        if (const auto size = Handle(StepShape_DimensionalSize)::DownCast(entity); !size.IsNull()) {
            const bool angular = entity->IsKind(STANDARD_TYPE(StepShape_AngularSize));
            dimension.kind = angular ? DimensionKind::AngularSize : DimensionKind::Size;
            dimension.name = textOf(size->Name());
            dimension.first = featureOf(size->AppliesTo());
        } else {
            const auto location = Handle(StepShape_DimensionalLocation)::DownCast(entity);
            const bool angular = entity->IsKind(STANDARD_TYPE(StepShape_AngularLocation));
            dimension.kind = angular ? DimensionKind::AngularLocation : DimensionKind::Location;
            dimension.name = textOf(location->Name());
            dimension.first = featureOf(location->RelatingShapeAspect());
            dimension.second = featureOf(location->RelatedShapeAspect());
        }
        readValue(entity, dimension);
    }
    std::sort(dimensions.begin(), dimensions.end(),
              [](const Dimension& a, const Dimension& b) { return a.entity < b.entity; });
    return dimensions;
}

void DimensionReader::readValue(const Entity& entity, Dimension& dimension) const {
    const int number = numberOf(entity);
    if (const auto found = representations_.find(number); found != representations_.end()) {
        for (const Entity& representation : found->second) {
            readItems(representation, dimension);
        }
    }
    settleLimits(dimension);
    readTolerance(entity, dimension);
}

void DimensionReader::readItems(const Entity& representation, Dimension& dimension) const {
    const auto shown = Handle(StepShape_ShapeDimensionRepresentation)::DownCast(representation);
    if (shown.IsNull()) {
        return;
    }
    std::vector<Entity> items;
    if (const auto list = shown->ItemsAP242(); !list.IsNull()) {
        for (int i = list->Lower(); i <= list->Upper(); ++i) {
            items.push_back(list->Value(i).Value());
        }
    } else if (const auto plain = shown->Items(); !plain.IsNull()) {
        for (int i = plain->Lower(); i <= plain->Upper(); ++i) {
            items.push_back(plain->Value(i));
        }
    }
    // The list grows: what a compound item holds comes behind it.
    for (std::size_t i = 0; i < items.size() && items.size() < 1000; ++i) {
        if (items[i].IsNull()) {
            continue;
        }
        if (const auto wrapped = wrapped_.find(numberOf(items[i])); wrapped != wrapped_.end()) {
            for (const int number : wrapped->second) {
                if (const auto inner = byNumber_.find(number); inner != byNumber_.end()) {
                    items.push_back(inner->second);
                }
            }
        }
        for (const Entity& inner : elementsOf(items[i])) {
            items.push_back(inner);
        }
        readItem(items[i], dimension);
    }
}

void DimensionReader::readTolerance(const Entity& entity, Dimension& dimension) const {
    const auto found = tolerances_.find(numberOf(entity));
    if (found == tolerances_.end()) {
        return;
    }
    for (const Handle(StepShape_PlusMinusTolerance) & tolerance : found->second) {
        if (tolerance->Range().IsNull()) {
            continue;
        }
        const Entity range = tolerance->Range().Value();
        if (const auto fits = Handle(StepShape_LimitsAndFits)::DownCast(range); !fits.IsNull()) {
            dimension.fit = textOf(fits->FormVariance()) + textOf(fits->Grade());
        } else if (const auto value = Handle(StepShape_ToleranceValue)::DownCast(range);
                   !value.IsNull()) {
            setTolerance(value->LowerBound(), value->UpperBound(), dimension);
        }
    }
}

Feature DimensionReader::featureOf(const Aspect& aspect) const {
    Feature feature;
    std::set<int> seen;
    if (!aspect.IsNull()) {
        readAspect(aspect, feature, seen);
    }
    return feature;
}

/// An aspect's own items, and those of the aspects that it is composed of.
void DimensionReader::readAspect(const Aspect& aspect, Feature& feature,
                                 std::set<int>& seen) const {
    constexpr std::size_t kMost = 10000;
    const int number = numberOf(aspect);
    if (seen.size() > kMost || !seen.insert(number).second) {
        return;
    }
    if (const auto own = items_.find(number); own != items_.end()) {
        for (const Entity& item : own->second) {
            addItem(item, feature);
        }
    }
    if (const auto wrapped = wrapped_.find(number); wrapped != wrapped_.end()) {
        for (const int item : wrapped->second) {
            if (const auto found = byNumber_.find(item); found != byNumber_.end()) {
                addItem(found->second, feature);
            }
        }
    }
    if (!feature.empty() && !aspect->IsKind(STANDARD_TYPE(StepRepr_CompositeShapeAspect))) {
        return;
    }
    if (const auto parts = components_.find(number); parts != components_.end()) {
        for (const Aspect& part : parts->second) {
            readAspect(part, feature, seen);
        }
    }
}

void DimensionReader::addItem(const Entity& item, Feature& feature) const {
    if (item.IsNull()) {
        return;
    }
    const TopoDS_Shape shape = TransferBRep::ShapeResult(source_.transfer, item);
    if (shape.IsNull()) {
        feature.others.push_back(kindOf(item));
    } else {
        places_.addTo(feature, shape, numberOf(item));
    }
}

} // namespace

std::vector<Dimension> readDimensions(const Source& source, const Places& places) {
    return DimensionReader(source, places).all();
}

} // namespace host::step
