#pragma once

#include "model/fields/record_fields.h"
#include "model/records/element.h"
#include "model/records/host_data.h"
#include "model/records/node.h"
#include "model/records/property.h"
#include "model/records/spring.h"

// Properties, nodes, elements, springs and host data: one line per field.

namespace qvx {

namespace rule {

inline constexpr ValueRule kId = {.least = 1};
inline constexpr ValueRule kLooseId = {.least = 0};  ///< of records that nothing refers to
inline constexpr ValueRule kFlag = {.least = 0};
inline constexpr ValueRule kIndex = {.least = 0};
inline constexpr ValueRule kDof = {.least = 0, .most = 5};
inline constexpr ValueRule kAxis = {.least = 0, .most = 2};
inline constexpr ValueRule kNode = {.least = 1, .refersTo = Reference::Node};
inline constexpr ValueRule kNodeOrNone = {.least = 0, .refersTo = Reference::NodeOrNone};
inline constexpr ValueRule kMaterial = {.least = 1, .refersTo = Reference::Material};
inline constexpr ValueRule kSection = {.least = 1, .refersTo = Reference::Section};
inline constexpr ValueRule kThickness = {.least = 1, .refersTo = Reference::Thickness};
inline constexpr ValueRule kMember = {.least = 1, .refersTo = Reference::Member};
inline constexpr ValueRule kShell3 = {.least = 1, .refersTo = Reference::Shell3};
inline constexpr ValueRule kShell4 = {.least = 1, .refersTo = Reference::Shell4};
inline constexpr ValueRule kBrick = {.least = 1, .refersTo = Reference::Brick};
inline constexpr ValueRule kMemberCriterion = {.least = 0, .refersTo = Reference::MemberCriterion};
inline constexpr ValueRule kPlateCriterion = {.least = 0, .refersTo = Reference::PlateCriterion};
inline constexpr ValueRule kSteelCriterion = {.least = 0, .refersTo = Reference::SteelCriterion};
inline constexpr ValueRule kOneWayFlag = {.letters = L"012"};
inline constexpr ValueRule kReleaseFlag = {.letters = L"01"};
inline constexpr ValueRule kState = {.least = 0, .most = 1};

}  // namespace rule

// clang-format off

template <>
struct FieldsOf<jxPoint>
{
    using R = jxPoint;
    static constexpr bool isRow = true;
    static constexpr auto list = RecordFields(
        Always("x", &R::x, "", In(measure::kOfTheList)),
        Always("y", &R::y, "", In(measure::kOfTheList)),
        Always("z", &R::z, "", In(measure::kOfTheList)));
};

template <>
struct FieldsOf<jxMat>
{
    using R = jxMat;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kId),
        Always("label", &R::label, ""),
        Always("E", &R::E, "Young's modulus", In(kModulus)),
        Always("nu", &R::nu, "Poisson's ratio"),
        Always("Wc", &R::Wc, "weight density", In(kWeightDensity)),
        Always("Tc", &R::Tc, "thermal expansion per degree", In(measure::Of({.per = kTemperature}))),
        Always("fc", &R::fc, "concrete strength", In(kModulus)),
        Always("fy", &R::fy, "yield strength", In(kModulus)),
        Always("fys", &R::fys, "yield strength of stirrups", In(kModulus)));
};

template <>
struct FieldsOf<jxSect>
{
    using R = jxSect;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kId),
        Always("label", &R::label, "RIGID_LINK is reserved: its numbers are set by the engine"),
        Always("A", &R::A, "area", In(kDimension, 2)),
        Always("Ay", &R::Ay, "shear area for bending in the local x-y plane; 0 leaves shear out", In(kDimension, 2)),
        Always("Az", &R::Az, "shear area for bending in the local x-z plane; 0 leaves shear out", In(kDimension, 2)),
        Always("Iz", &R::Iz, "second moment for bending in the local x-y plane", In(kDimension, 4)),
        Always("Iy", &R::Iy, "second moment for bending in the local x-z plane", In(kDimension, 4)),
        Always("J", &R::J, "torsion constant", In(kDimension, 4)),
        Always("Cw", &R::Cw, "warping constant", In(kDimension, 6)),
        Always("dim", &R::dim, "shape dimensions; the leading word of the label names the shape: Rect, Round, Tee", In(kDimension)));
};

template <>
struct FieldsOf<jxThick>
{
    using R = jxThick;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kId),
        Always("label", &R::label, ""),
        Always("t", &R::t, "", In(measure::kOfTheList)));
};

template <>
struct FieldsOf<jxNd>
{
    using R = jxNd;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kId),
        Always("x", &R::x, "", In(kLength)),
        Always("y", &R::y, "", In(kLength)),
        Always("z", &R::z, "", In(kLength)));
};

template <>
struct FieldsOf<jxSupt>
{
    using R = jxSupt;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kNode),
        Always("flag", &R::flag, "per DOF: 0 free, 1 held or moved by value, 2 taken out of the system", rule::kOneWayFlag),
        Always("value", &R::value, "prescribed displacements", In(measure::kDisplacements)));
};

template <>
struct FieldsOf<jxBm>
{
    using R = jxBm;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kId),
        Always("node1", &R::node1, "start", rule::kNode),
        Always("node2", &R::node2, "end", rule::kNode),
        Always("material", &R::material, "", rule::kMaterial),
        Always("section", &R::section, "", rule::kSection),
        Always("angle", &R::angle, "rotation of the local y and z axes about local x [rad]"),
        WhenUnusual("cracking", &R::cracking, "factor on the bending stiffness, above 0 and at most 1"),
        WhenUnusual("nonlinear", &R::nonlinear, "0 linear, 1 tension only, 2 compression only", {.least = 0, .most = kCompressionOnly}),
        WhenUnusual("excluded", &R::excluded, "out of the analysis", rule::kFlag),
        WhenUnusual("selfWeight", &R::selfWeight, "1 leaves the self weight out", rule::kFlag),
        WhenUnusual("f_Iz", &R::f_Iz, "stiffness modification factor"),
        WhenUnusual("f_Iy", &R::f_Iy, "stiffness modification factor"),
        WhenUnusual("f_J", &R::f_J, "stiffness modification factor"),
        WhenUnusual("f_A", &R::f_A, "stiffness modification factor"),
        WhenUnusual("f_Ay", &R::f_Ay, "stiffness modification factor"),
        WhenUnusual("f_Az", &R::f_Az, "stiffness modification factor"),
        WhenUnusual("designType", &R::designType, "B beam, C column; the concrete design refuses others"),
        WhenUnusual("rcCriterion", &R::rcCriterion, "by designType", rule::kMemberCriterion),
        WhenUnusual("bConcreteSkip", &R::bConcreteSkip, "no concrete design", rule::kFlag),
        WhenUnusual("steelCriterion", &R::steelCriterion, "", rule::kSteelCriterion),
        WhenUnusual("bSteelSkip", &R::bSteelSkip, "no steel design", rule::kFlag),
        WhenUnusual("axialForce", &R::axialForce, "state of the last iteration, tension positive", In(kForce)),
        WhenUnusual("failed", &R::failed, "state of the last iteration: off", rule::kFlag));
};

template <>
struct FieldsOf<jxShell4>
{
    using R = jxShell4;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kId),
        Always("node", &R::node, "corners, around the shell", rule::kNode),
        Always("material", &R::material, "", rule::kMaterial),
        Always("thickness", &R::thickness, "", rule::kThickness),
        Always("angle", &R::angle, "rotation of the user axes about the normal [rad]"),
        WhenUnusual("cracking", &R::cracking, "factor on the bending rigidities, above 0 and at most 1"),
        WhenUnusual("excluded", &R::excluded, "out of the analysis", rule::kFlag),
        WhenUnusual("selfWeight", &R::selfWeight, "1 leaves the self weight out", rule::kFlag),
        WhenUnusual("f_Fxx", &R::f_Fxx, "stiffness modification factor"),
        WhenUnusual("f_Fyy", &R::f_Fyy, "stiffness modification factor"),
        WhenUnusual("f_Fxy", &R::f_Fxy, "stiffness modification factor"),
        WhenUnusual("f_Mxx", &R::f_Mxx, "stiffness modification factor"),
        WhenUnusual("f_Myy", &R::f_Myy, "stiffness modification factor"),
        WhenUnusual("f_Mxy", &R::f_Mxy, "stiffness modification factor"),
        WhenUnusual("f_Vxx", &R::f_Vxx, "stiffness modification factor"),
        WhenUnusual("f_Vyy", &R::f_Vyy, "stiffness modification factor"),
        WhenUnusual("rcCriterion", &R::rcCriterion, "", rule::kPlateCriterion),
        WhenUnusual("bConcreteSkip", &R::bConcreteSkip, "no concrete design", rule::kFlag));
};

template <>
struct FieldsOf<jxShell3>
{
    using R = jxShell3;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kId),
        Always("node", &R::node, "corners", rule::kNode),
        Always("material", &R::material, "", rule::kMaterial),
        Always("thickness", &R::thickness, "", rule::kThickness),
        Always("angle", &R::angle, "[rad]"));
};

template <>
struct FieldsOf<jxBrick>
{
    using R = jxBrick;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kId),
        Always("node", &R::node, "bottom face around, then top face around", rule::kNode),
        Always("material", &R::material, "", rule::kMaterial),
        WhenUnusual("excluded", &R::excluded, "out of the analysis", rule::kFlag),
        WhenUnusual("selfWeight", &R::selfWeight, "1 leaves the self weight out", rule::kFlag));
};

template <>
struct FieldsOf<jxRels>
{
    using R = jxRels;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kMember),
        Always("start", &R::start, "per local DOF: 1 released", rule::kReleaseFlag),
        Always("end", &R::end, "per local DOF: 1 released", rule::kReleaseFlag),
        WhenUnusual("partial", &R::partial, "kept, without effect"));
};

template <>
struct FieldsOf<jxSpring>
{
    using R = jxSpring;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kId),
        Always("flag", &R::flag, "per DOF: 0 linear, 1 fails under positive, 2 under negative displacement", rule::kOneWayFlag),
        Always("k", &R::k, "per DOF; along members and under shells the first three", In(measure::kOfTheList)),
        WhenUnusual("bFailed", &R::bFailed, "state of the last iteration per DOF", rule::kState));
};

template <>
struct FieldsOf<jxCoupledSpring>
{
    using R = jxCoupledSpring;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kNode),
        Always("k", &R::k, "upper triangle row by row in DOF order", In(measure::kCoupledSpring)),
        WhenUnusual("bFailed", &R::bFailed, "state of the last iteration per DOF", rule::kState));
};

template <>
struct FieldsOf<jxDiaphragm>
{
    using R = jxDiaphragm;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kLooseId),
        Always("type", &R::type, "0 generic, 1 XZ, 2 YZ, 3 XY plane", {.least = 0, .most = 3}),
        Always("node", &R::node, "corners (generic), or the reference node first; 0 for none", rule::kNodeOrNone),
        WhenUnusual("reserved", &R::reserved, "kept for the host"));
};

template <>
struct FieldsOf<jxLink>
{
    using R = jxLink;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, ""),
        Always("node1", &R::node1, "", rule::kNode),
        Always("node2", &R::node2, "", rule::kNode),
        Always("normal", &R::normal, "normal of the diaphragm's plane"));
};

template <>
struct FieldsOf<jxMultiDofConstraint>
{
    using R = jxMultiDofConstraint;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kLooseId),
        Always("node", &R::node, "", rule::kNode),
        Always("dof", &R::dof, "", rule::kDof),
        Always("factor", &R::factor, "factor[0] u[0] = factor[1] u[1]"));
};

template <>
struct FieldsOf<jxMasterSlave>
{
    using R = jxMasterSlave;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "master", rule::kNode),
        Always("slave", &R::slave, "", rule::kNode),
        Always("flag", &R::flag, "per DOF", rule::kReleaseFlag));
};

template <>
struct FieldsOf<jxNamedSelection>
{
    using R = jxNamedSelection;
    static constexpr auto list = RecordFields(
        Always("label", &R::label, ""),
        WhenUnusual("nodes", &R::nodes, "ids", rule::kNode),
        WhenUnusual("beams", &R::beams, "ids", rule::kMember),
        WhenUnusual("shell3s", &R::shell3s, "ids", rule::kShell3),
        WhenUnusual("shell4s", &R::shell4s, "ids", rule::kShell4),
        WhenUnusual("bricks", &R::bricks, "ids", rule::kBrick));
};

template <>
struct FieldsOf<jxMesh>
{
    using R = jxMesh;
    static constexpr auto list = RecordFields(
        Always("type", &R::type, "-1 not set"),
        Always("size", &R::size, "of elements", In(kLength)));
};

// Seconds and g: no unit set changes them.
template <>
struct FieldsOf<jxSpectrum>
{
    using R = jxSpectrum;
    static constexpr auto list = RecordFields(
        Always("name", &R::name, ""),
        Always("type", &R::type, ""),
        Always("points", &R::points, "period [s], acceleration [g]"));
};

// clang-format on

}  // namespace qvx
