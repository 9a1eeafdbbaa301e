#pragma once

#include <array>

#include "model/records/unit.h"

namespace qvx {

/// Unit of a number in terms of the quantities whose units a model chooses: of^power times / per, and a power of seconds,
/// which no unit set changes. Without a quantity it is a plain number.
struct QuantityUnit
{
    Quantity of = kQuantityCount;  ///< kQuantityCount: none
    int power = 1;
    Quantity times = kQuantityCount;
    Quantity per = kQuantityCount;
    int seconds = 0;

    constexpr bool IsPlain() const { return of == kQuantityCount && per == kQuantityCount; }
    constexpr bool operator==(const QuantityUnit&) const = default;
};

/// How the numbers of one field get their units.
enum class UnitRule {
    Plain,         ///< none has a unit
    Same,          ///< each has units[0]
    Periodic,      ///< of every `period` numbers the first nFirst have units[0], the others units[1]
    ByDof,         ///< units[0] where the record's own dof or dir is 0 to 2, else units[1]
    OfAbsolute,    ///< units[0] where the record's bAbsoluteDistance is set, else a fraction of the length
    SpringMatrix,  ///< upper triangle over six DOF: units[0] between translations, [1] between rotations, [2] mixed
    PerPosition,   ///< number i has units[i]
    ListText,      ///< a text "count@value,..." whose values have units[0]
    OfTheList,     ///< of records that stand in several lists: the rule of the list
};

/// The units of a field's numbers, counted through all its dimensions.
struct Measure
{
    UnitRule rule = UnitRule::Plain;
    std::array<QuantityUnit, 8> units = {};
    int period = 6;
    int nFirst = 3;

    constexpr bool operator==(const Measure&) const = default;
};

namespace measure {

constexpr Measure Of(QuantityUnit unit)
{
    return {.rule = UnitRule::Same, .units = {unit}};
}
constexpr Measure Of(Quantity quantity, int power = 1)
{
    return Of({.of = quantity, .power = power});
}
/// Six values in DOF order, once or several times: three of translation kind, three of rotation kind.
constexpr Measure SixByDof(QuantityUnit translation, QuantityUnit rotation)
{
    return {.rule = UnitRule::Periodic, .units = {translation, rotation}};
}
constexpr Measure SixByDof(Quantity translation, Quantity rotation)
{
    return SixByDof(QuantityUnit{.of = translation}, QuantityUnit{.of = rotation});
}
constexpr Measure ByDof(QuantityUnit translation, QuantityUnit rotation)
{
    return {.rule = UnitRule::ByDof, .units = {translation, rotation}};
}
constexpr Measure ByDof(Quantity translation, Quantity rotation)
{
    return ByDof(QuantityUnit{.of = translation}, QuantityUnit{.of = rotation});
}

inline constexpr QuantityUnit kPlain = {};
inline constexpr Measure kOfTheList = {.rule = UnitRule::OfTheList};
/// A fraction of the member's length, or a length from its start.
inline constexpr Measure kDistance = {.rule = UnitRule::OfAbsolute, .units = {{{.of = kLength}}}};
inline constexpr Measure kGridList = {.rule = UnitRule::ListText, .units = {{{.of = kLength}}}};
inline constexpr Measure kDisplacements = SixByDof(kTranslationalDisplacement, kRotationalDisplacement);
inline constexpr Measure kForces = SixByDof(kForce, kMoment);
/// A mass is a weight over the acceleration of gravity.
inline constexpr QuantityUnit kMass = {.of = kForce, .per = kLength, .seconds = 2};
inline constexpr QuantityUnit kRotationalMass = {.of = kForce, .times = kLength, .seconds = 2};
/// The energy of a spring is k u v / 2: force per translation, moment per rotation, and force per rotation (which is
/// moment per translation) where the two meet.
inline constexpr Measure kCoupledSpring = {.rule = UnitRule::SpringMatrix,
                                           .units = {{{.of = kNodalTranslationalSpring},
                                                      {.of = kNodalRotationalSpring},
                                                      {.of = kForce, .per = kRotationalDisplacement}}}};
/// Area of bars per length along which they are spread.
inline constexpr QuantityUnit kSteelPerLength = {.of = kReinforcementArea, .per = kDimension};

}  // namespace measure
}  // namespace qvx
