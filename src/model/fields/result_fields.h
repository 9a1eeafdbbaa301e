#pragma once

#include "model/fields/load_fields.h"
#include "model/records/comb_result.h"
#include "model/records/element_stress.h"
#include "model/records/envelope.h"
#include "model/records/result.h"

// Results of the static and of the frequency run: one line per field.

namespace qvx {

// clang-format off

template <>
struct FieldsOf<jxResult6Val>
{
    using R = jxResult6Val;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, ""),
        Always("value", &R::value, "X, Y, Z, OX, OY, OZ", In(measure::kOfTheList)));
};

template <>
struct FieldsOf<jxMultiDofConstraintForce>
{
    using R = jxMultiDofConstraintForce;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, ""),
        Always("node", &R::node, "", rule::kNode),
        Always("dof", &R::dof, "", rule::kDof),
        Always("force", &R::force, "on the two ends", In(measure::ByDof(kForce, kMoment))));
};

template <>
struct FieldsOf<jxVMD>
{
    using R = jxVMD;
    static constexpr bool isRow = true;
    static constexpr auto list = RecordFields(
        Always("x", &R::x, "fraction of the length"),
        Always("Fx", &R::Fx, "axial force, tension positive", In(kForce)),
        Always("Fy", &R::Fy, "shear", In(kForce)),
        Always("Fz", &R::Fz, "shear", In(kForce)),
        Always("Mx", &R::Mx, "torsion", In(kMoment)),
        Always("My", &R::My, "bending", In(kMoment)),
        Always("Mz", &R::Mz, "bending", In(kMoment)),
        Always("Dy", &R::Dy, "from the chord through the deflected ends", In(kTranslationalDisplacement)),
        Always("Dz", &R::Dz, "from the chord through the deflected ends", In(kTranslationalDisplacement)));
};

template <>
struct FieldsOf<jxBmVMD>
{
    using R = jxBmVMD;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "member"),
        Always("stations", &R::vmd, "from start to end"));
};

template <>
struct FieldsOf<jxBmEndVMD>
{
    using R = jxBmEndVMD;
    static constexpr ValueRule kSixForces = {.firstColumn = 1, .nColumns = 6};
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "member"),
        Always("start", &R::start, "what the node exerts on the member, local axes", kSixForces),
        Always("end", &R::end, "what the node exerts on the member, local axes", kSixForces));
};

template <>
struct FieldsOf<jxBmLoadVector>
{
    using R = jxBmLoadVector;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "member"),
        Always("value", &R::value, "nodal actions equivalent to the loads, local axes", In(measure::kForces)));
};

template <>
struct FieldsOf<jxSectionStress>
{
    using R = jxSectionStress;
    static constexpr auto list = RecordFields(
        Always("x", &R::x, "fraction of the length"),
        Always("values", &R::values, "at the section's stress points", In(kStress)),
        Always("minNegative", &R::minNegative, "", In(kStress)),
        Always("maxPositive", &R::maxPositive, "", In(kStress)));
};

template <>
struct FieldsOf<jxBmStress>
{
    using R = jxBmStress;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "member"),
        Always("stations", &R::stress, "from start to end"));
};

template <>
struct FieldsOf<jxShellDerived>
{
    using R = jxShellDerived;
    static constexpr auto list = RecordFields(
        Always("Fmax", &R::Fmax, "principal membrane force", In(kLinearForce)),
        Always("Fmin", &R::Fmin, "principal membrane force", In(kLinearForce)),
        Always("angle", &R::angle, "of Fmax from local x [rad]"),
        Always("Mmax", &R::Mmax, "principal moment", In(kLinearMoment)),
        Always("Mmin", &R::Mmin, "principal moment", In(kLinearMoment)),
        Always("angleM", &R::angleM, "[rad]"),
        Always("Vmax", &R::Vmax, "resultant transverse shear", In(kLinearForce)),
        Always("angleV", &R::angleV, "[rad]"),
        Always("Sxx", &R::Sxx, "per face", In(kStress)),
        Always("Syy", &R::Syy, "per face", In(kStress)),
        Always("Szz", &R::Szz, "per face", In(kStress)),
        Always("Sxy", &R::Sxy, "per face", In(kStress)),
        Always("Syz", &R::Syz, "per face", In(kStress)),
        Always("Sxz", &R::Sxz, "per face", In(kStress)),
        Always("S1", &R::S1, "per face", In(kStress)),
        Always("S2", &R::S2, "per face", In(kStress)),
        Always("vonMises", &R::vonMises, "per face", In(kStress)));
};

template <>
struct FieldsOf<jxShellStress>
{
    using R = jxShellStress;
    static constexpr Measure kMomentsAndShears = {
        .rule = UnitRule::Periodic, .units = {{{.of = kLinearMoment}, {.of = kLinearForce}}}, .period = 5, .nFirst = 3};
    static constexpr Measure kForceAndTwoMoments = {
        .rule = UnitRule::Periodic, .units = {{{.of = kForce}, {.of = kMoment}}}, .period = 3, .nFirst = 1};
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "shell"),
        Always("F", &R::F, "centre and four corners of Fxx, Fyy, Fxy", In(kLinearForce)),
        Always("P", &R::P, "centre and four corners of Mxx, Myy, Mxy, Vxx, Vyy", In(kMomentsAndShears)),
        Always("fm", &R::fm, "nodal forces of the membrane: ux, uy per node", In(kForce)),
        Always("fp", &R::fp, "nodal forces of the plate: force and two moments per node", In(kForceAndTwoMoments)),
        InMemory("derived", &R::derived, "principal values and face stresses"));
};

template <>
struct FieldsOf<jxBrickStress>
{
    using R = jxBrickStress;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "solid"),
        Always("S", &R::S, "centre and eight nodes of Sxx, Syy, Szz, Sxy, Syz, Sxz", In(kStress)),
        Always("f", &R::f, "nodal forces", In(kForce)));
};

/// Families of a combination up to the member curves; stresses along members follow in files, which a run does not keep.
inline constexpr auto kNodeAndMemberFamilies = RecordFields(
    Always("displacements", &jxCombResult::displacements, "of nodes", In(measure::kDisplacements)),
    Always("supportReactions", &jxCombResult::supportReactions, "of nodes", In(measure::kForces)),
    Always("multiDofConstraintForces", &jxCombResult::multiDofConstraintForces, "of constraints"),
    Always("nodalSpringReactions", &jxCombResult::nodalSpringReactions, "of nodes", In(measure::kForces)),
    Always("coupledSpringReactions", &jxCombResult::coupledSpringReactions, "of nodes", In(measure::kForces)),
    Always("beamSpringReactions", &jxCombResult::beamSpringReactions, "of members, per length", In(measure::SixByDof({.of = kLinearForce}, measure::kPlain))),
    Always("shell4SpringReactions", &jxCombResult::shell4SpringReactions, "of shells, per area", In(measure::SixByDof({.of = kSurfacePressure}, measure::kPlain))),
    Always("beamEndForces", &jxCombResult::beamEndForces, "of members"),
    Always("beamCurves", &jxCombResult::beamCurves, "forces and deflections along members"));

inline constexpr auto kElementFamilies = RecordFields(
    Always("shell4Stresses", &jxCombResult::shell4Stresses, "forces of shells"),
    Always("brickStresses", &jxCombResult::brickStresses, "stresses of solids"));

template <>
struct FieldsOf<jxCombResult>
{
    using R = jxCombResult;
    static constexpr auto list = std::tuple_cat(kNodeAndMemberFamilies, kElementFamilies, RecordFields(
        InMemory("shell3SpringReactions", &R::shell3SpringReactions, "empty", In(measure::SixByDof({.of = kSurfacePressure}, measure::kPlain))),
        InMemory("shell3Stresses", &R::shell3Stresses, "empty"),
        InMemory("beamLoadVectors", &R::beamLoadVectors, "nodal actions equivalent to member loads")));
};

template <>
struct FieldsOf<jxMaxVMD>
{
    using R = jxMaxVMD;
    static constexpr auto list = RecordFields(
        Always("x", &R::x, "fraction of the length"),
        Always("max", &R::max, "axial force, V2, V3, torsion, M2, M3", In(measure::kForces)),
        Always("min", &R::min, "axial force, V2, V3, torsion, M2, M3", In(measure::kForces)),
        Always("maxComb", &R::maxComb, "combinations by index, -1 for none", {.least = -1, .refersTo = Reference::CombinationIndex}),
        Always("minComb", &R::minComb, "combinations by index, -1 for none", {.least = -1, .refersTo = Reference::CombinationIndex}));
};

template <>
struct FieldsOf<jxMaxBmVMD>
{
    using R = jxMaxBmVMD;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "member"),
        Always("stations", &R::vmd, "from start to end"));
};

template <>
struct FieldsOf<jxEnvelopeValue6>
{
    using R = jxEnvelopeValue6;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "node"),
        Always("max", &R::max, "X, Y, Z, OX, OY, OZ", In(measure::kOfTheList)),
        Always("min", &R::min, "X, Y, Z, OX, OY, OZ", In(measure::kOfTheList)),
        Always("maxComb", &R::maxComb, "combinations by index, -1 for none", {.least = -1, .refersTo = Reference::CombinationIndex}),
        Always("minComb", &R::minComb, "combinations by index, -1 for none", {.least = -1, .refersTo = Reference::CombinationIndex}));
};

template <>
struct FieldsOf<jxEnvelopeVMD>
{
    using R = jxEnvelopeVMD;
    static constexpr Measure kOfAStation = {
        .rule = UnitRule::PerPosition,
        .units = {{{.of = kForce}, {.of = kForce}, {.of = kForce}, {.of = kMoment}, {.of = kMoment}, {.of = kMoment},
                   {.of = kTranslationalDisplacement}, {.of = kTranslationalDisplacement}}}};
    static constexpr auto list = RecordFields(
        Always("x", &R::x, "fraction of the length"),
        Always("max", &R::max, "axial force, V2, V3, torsion, M2, M3, Dy, Dz", In(kOfAStation)),
        Always("min", &R::min, "axial force, V2, V3, torsion, M2, M3, Dy, Dz", In(kOfAStation)),
        Always("maxComb", &R::maxComb, "combinations by index, -1 for none", {.least = -1, .refersTo = Reference::CombinationIndex}),
        Always("minComb", &R::minComb, "combinations by index, -1 for none", {.least = -1, .refersTo = Reference::CombinationIndex}));
};

template <>
struct FieldsOf<jxEnvelopeBmVMD>
{
    using R = jxEnvelopeBmVMD;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "member"),
        Always("stations", &R::vmd, "from start to end"));
};

template <>
struct FieldsOf<jxEnvelopeReport>
{
    using R = jxEnvelopeReport;
    static constexpr auto list = RecordFields(
        Always("selection", &R::selection, "per combination: 1 chosen"),
        Always("displacements", &R::displacements, "of nodes", In(measure::kDisplacements)),
        Always("supportReactions", &R::supportReactions, "of nodes", In(measure::kForces)),
        Always("beamEnvelopes", &R::beamEnvelopes, "of members"),
        Always("beamCurves", &R::beamCurves, "the extremes of larger magnitude"));
};

template <>
struct FieldsOf<jxWoodArmer>
{
    using R = jxWoodArmer;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "shell"),
        Always("moments", &R::moments, "centre and four corners of top x, top y, bottom x, bottom y", In(kLinearMoment)),
        Always("combs", &R::combs, "their combinations by index", {.refersTo = Reference::CombinationIndex}));
};

// A mode shape has no unit: its length is free.
template <>
struct FieldsOf<jxEigenResult>
{
    using R = jxEigenResult;
    static constexpr auto list = RecordFields(
        Always("eigenvalue", &R::eigenvalue, "[rad^2/s^2]"),
        Always("errorMeasure", &R::errorMeasure, ""),
        Always("shape", &R::shape, "of nodes"));
};

template <>
struct FieldsOf<jxResponseSpectrumResult>
{
    using R = jxResponseSpectrumResult;
    static constexpr auto list = RecordFields(
        Always("eigenvalue", &R::eigenvalue, "[rad^2/s^2]"),
        Always("participation", &R::participation, "of X, Y, Z"),
        Always("displacements", &R::displacements, "of nodes, one list per direction", In(measure::kDisplacements)),
        Always("forces", &R::forces, "of nodes, one list per direction", In(measure::kForces)));
};

// clang-format on

}  // namespace qvx
