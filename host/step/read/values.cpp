#include "host/step/read/values.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>
#include <utility>

#include <StepBasic_ConversionBasedUnit.hxx>
#include <StepBasic_MeasureWithUnit.hxx>
#include <StepBasic_NamedUnit.hxx>
#include <StepBasic_SiUnit.hxx>
#include <StepRepr_CompoundRepresentationItem.hxx>
#include <StepRepr_DescriptiveRepresentationItem.hxx>
#include <StepRepr_MeasureRepresentationItem.hxx>
#include <StepRepr_ReprItemAndMeasureWithUnit.hxx>
#include <StepRepr_ReprItemAndMeasureWithUnitAndQRI.hxx>
#include <StepShape_MeasureRepresentationItemAndQualifiedRepresentationItem.hxx>
#include <StepShape_QualifiedRepresentationItem.hxx>
#include <StepShape_TypeQualifier.hxx>
#include <StepShape_ValueFormatTypeQualifier.hxx>

#include "host/system/utf8.h"

namespace host::step {
namespace {

using Entity = Handle(Standard_Transient);
using Measure = Handle(StepBasic_MeasureWithUnit);

struct Unit {
    std::string name;
    /// Millimetres or radians.
    double size = 1;
    bool angle = false;
};

/// How many of an SI unit one with a prefix has.
double prefixFactor(const Handle(StepBasic_SiUnit) & unit) {
    constexpr int kPowers[] = {18, 15, 12, 9, 6, 3, 2, 1, -1, -2, -3, -6, -9, -12, -15, -18};
    return unit->HasPrefix() ? std::pow(10, kPowers[unit->Prefix()]) : 1;
}

/// The usual name of a unit of length.
std::string lengthName(double millimetres, const std::string& own) {
    const auto is = [millimetres](double size) {
        return std::abs(millimetres - size) <= 1e-6 * size;
    };
    for (const auto& [name, size] :
         {std::pair{"mm", 1.0}, {"in", 25.4}, {"cm", 10.0}, {"m", 1000.0}, {"ft", 304.8}}) {
        if (is(size)) {
            return name;
        }
    }
    return own;
}

Unit unitOf(const Handle(StepBasic_NamedUnit) & named, int depth = 0) {
    constexpr int kDeepest = 8;
    constexpr double kMillimetresInMetre = 1000;
    Unit unit;
    if (const auto si = Handle(StepBasic_SiUnit)::DownCast(named); !si.IsNull()) {
        unit.angle = si->Name() == StepBasic_sunRadian;
        unit.size = prefixFactor(si) * (unit.angle ? 1 : kMillimetresInMetre);
    } else if (const auto based = Handle(StepBasic_ConversionBasedUnit)::DownCast(named);
               !based.IsNull() && !based->ConversionFactor().IsNull() && depth < kDeepest) {
        const Measure factor = based->ConversionFactor();
        unit = unitOf(factor->UnitComponent().NamedUnit(), depth + 1);
        unit.size *= factor->ValueComponent();
        unit.name = textOf(based->Name());
    }
    unit.name = unit.angle ? "deg" : lengthName(unit.size, unit.name);
    return unit;
}

/// A number with its unit; angles in degrees.
struct Quantity {
    double value = 0;
    Unit unit;
};

std::optional<Quantity> quantityOf(const Measure& measure) {
    if (measure.IsNull() || measure->ValueComponentMember().IsNull()) {
        return std::nullopt;
    }
    Quantity quantity{measure->ValueComponent(), unitOf(measure->UnitComponent().NamedUnit())};
    if (quantity.unit.angle) {
        constexpr double kDegree = std::numbers::pi / 180;
        quantity.value *= quantity.unit.size / kDegree;
        quantity.unit.size = kDegree;
    }
    return quantity;
}

/// The measure of an item, whichever class it is of.
Measure measureOf(const Entity& item) {
    if (auto plain = Measure::DownCast(item); !plain.IsNull()) {
        return plain;
    }
    if (const auto both = Handle(StepRepr_ReprItemAndMeasureWithUnit)::DownCast(item);
        !both.IsNull()) {
        return both->GetMeasureWithUnit();
    }
    if (const auto named = Handle(StepRepr_MeasureRepresentationItem)::DownCast(item);
        !named.IsNull()) {
        return named->Measure();
    }
    if (const auto qualified = Handle(
            StepShape_MeasureRepresentationItemAndQualifiedRepresentationItem)::DownCast(item);
        !qualified.IsNull()) {
        return qualified->Measure();
    }
    return {};
}

Handle(StepShape_HArray1OfValueQualifier) qualifiersOf(const Entity& item) {
    if (const auto both = Handle(StepRepr_ReprItemAndMeasureWithUnitAndQRI)::DownCast(item);
        !both.IsNull() && !both->GetQualifiedRepresentationItem().IsNull()) {
        return both->GetQualifiedRepresentationItem()->Qualifiers();
    }
    if (const auto qualified = Handle(
            StepShape_MeasureRepresentationItemAndQualifiedRepresentationItem)::DownCast(item);
        !qualified.IsNull()) {
        return qualified->Qualifiers();
    }
    return {};
}

/// `NR2 2.3` has 3 digits behind the point.
std::optional<int> decimalsOf(const std::string& format) {
    constexpr int kMost = 9;
    const std::size_t point = format.rfind('.');
    int decimals = 0;
    if (point == std::string::npos) {
        return std::nullopt;
    }
    const char* first = format.data() + point + 1;
    if (std::from_chars(first, format.data() + format.size(), decimals).ec != std::errc()) {
        return std::nullopt;
    }
    return std::clamp(decimals, 0, kMost);
}

/// Words of the file that change how a number is written.
void readRemark(const std::string& remark, Dimension& dimension) {
    if (remark.empty()) {
        return;
    }
    if (remark == "auxiliary" || remark == "reference") {
        dimension.modifier = Modifier::Reference;
    } else if (remark == "theoretical" || remark == "basic") {
        dimension.modifier = Modifier::Basic;
    } else {
        dimension.remarks.push_back(remark);
    }
}

void readQualifiers(const Entity& item, Dimension& dimension) {
    const Handle(StepShape_HArray1OfValueQualifier) qualifiers = qualifiersOf(item);
    if (qualifiers.IsNull()) {
        return;
    }
    for (int i = qualifiers->Lower(); i <= qualifiers->Upper(); ++i) {
        const Entity qualifier = qualifiers->Value(i).Value();
        if (const auto format = Handle(StepShape_ValueFormatTypeQualifier)::DownCast(qualifier);
            !format.IsNull() && !format->FormatType().IsNull()) {
            dimension.decimals = decimalsOf(textOf(format->FormatType()));
        } else if (const auto type = Handle(StepShape_TypeQualifier)::DownCast(qualifier);
                   !type.IsNull()) {
            readRemark(textOf(type->Name()), dimension);
        }
    }
}

/// Bytes that are not UTF-8 become question marks.
std::string validUtf8(std::string text) {
    while (const auto invalid = findInvalidUtf8(text)) {
        text[*invalid] = '?';
    }
    return text;
}

std::string nameOf(const Entity& item) {
    const auto named = Handle(StepRepr_RepresentationItem)::DownCast(item);
    if (named.IsNull()) {
        return {};
    }
    if (!named->Name().IsNull()) {
        return textOf(named->Name());
    }
    const auto both = Handle(StepRepr_ReprItemAndMeasureWithUnit)::DownCast(item);
    return both.IsNull() || both->GetRepresentationItem().IsNull()
               ? std::string()
               : textOf(both->GetRepresentationItem()->Name());
}

void takeUnit(const Quantity& quantity, Dimension& dimension) {
    dimension.unit = quantity.unit.name;
    dimension.unitSize = quantity.unit.size;
}

/// In the dimension's own unit.
std::optional<double> valueIn(const Dimension& dimension, const Entity& item) {
    const auto quantity = quantityOf(measureOf(item));
    if (!quantity || !std::isfinite(quantity->value)) {
        return std::nullopt;
    }
    return quantity->unit.size == dimension.unitSize
               ? quantity->value
               : quantity->value * quantity->unit.size / dimension.unitSize;
}

} // namespace

std::string textOf(const Handle(TCollection_HAsciiString) & text) {
    if (text.IsNull()) {
        return {};
    }
    std::string line = validUtf8(text->ToCString());
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
    return line;
}

std::vector<Entity> elementsOf(const Entity& item) {
    std::vector<Entity> elements;
    const auto compound = Handle(StepRepr_CompoundRepresentationItem)::DownCast(item);
    if (!compound.IsNull() && !compound->ItemElement().IsNull()) {
        for (int i = 1; i <= compound->NbItemElement(); ++i) {
            elements.push_back(compound->ItemElementValue(i));
        }
    }
    return elements;
}

void readItem(const Entity& item, Dimension& dimension) {
    if (const auto note = Handle(StepRepr_DescriptiveRepresentationItem)::DownCast(item);
        !note.IsNull()) {
        readRemark(textOf(note->Description()), dimension);
        return;
    }
    const auto quantity = quantityOf(measureOf(item));
    if (!quantity || !std::isfinite(quantity->value)) {
        return;
    }
    if (dimension.unit.empty()) {
        takeUnit(*quantity, dimension);
    }
    const std::string name = nameOf(item);
    const std::optional<double> value = valueIn(dimension, item);
    if (name == "upper limit" || name == "upper bound") {
        dimension.upper = value;
    } else if (name == "lower limit" || name == "lower bound") {
        dimension.lower = value;
    } else if (!dimension.nominal || name == "nominal value") {
        dimension.nominal = value;
    }
    readQualifiers(item, dimension);
}

void settleLimits(Dimension& dimension) {
    if (!dimension.upper && !dimension.lower) {
        return;
    }
    dimension.limits = dimension.upper && dimension.lower;
    if (!dimension.nominal) {
        const double one = dimension.upper.value_or(dimension.lower.value_or(0));
        const double other = dimension.lower.value_or(one);
        dimension.nominal = (one + other) / 2;
    }
    for (std::optional<double>* limit : {&dimension.upper, &dimension.lower}) {
        if (*limit) {
            **limit -= *dimension.nominal;
        }
    }
}

void setTolerance(const Entity& lower, const Entity& upper, Dimension& dimension) {
    if (const auto value = valueIn(dimension, upper)) {
        dimension.upper = value;
    }
    if (const auto value = valueIn(dimension, lower)) {
        dimension.lower = value;
    }
}

} // namespace host::step
