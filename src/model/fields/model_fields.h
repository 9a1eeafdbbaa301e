#pragma once

#include "model/fields/record_fields.h"
#include "model/records/design_criteria.h"
#include "model/records/element.h"
#include "model/records/host_data.h"
#include "model/records/load.h"
#include "model/records/node.h"
#include "model/records/property.h"
#include "model/records/spring.h"

// The model file, record by record: one line per key. docs/file-formats.md holds the same lists with units and meaning.

namespace qvx {

namespace rule {

inline constexpr ValueRule kAny = {};
inline constexpr ValueRule kId = {.least = 1};
inline constexpr ValueRule kLooseId = {.least = 0};  ///< of records that nothing refers to
inline constexpr ValueRule kIndex = {.least = 0};
inline constexpr ValueRule kFlag = {.least = 0};
inline constexpr ValueRule kDof = {.least = 0, .most = 5};
inline constexpr ValueRule kAxis = {.least = 0, .most = 2};
inline constexpr ValueRule kCoordSys = {.least = 0, .most = kProjected};
inline constexpr ValueRule kSelection = {.least = 0, .most = 255};
inline constexpr ValueRule kNode = {.least = 1, .refersTo = Reference::Node};
inline constexpr ValueRule kNodeOrNone = {.least = 0, .refersTo = Reference::NodeOrNone};
inline constexpr ValueRule kMaterial = {.least = 1, .refersTo = Reference::Material};
inline constexpr ValueRule kSection = {.least = 1, .refersTo = Reference::Section};
inline constexpr ValueRule kThickness = {.least = 1, .refersTo = Reference::Thickness};
inline constexpr ValueRule kSupportFlag = {.letters = L"012"};
inline constexpr ValueRule kSpringFlag = {.letters = L"012"};
inline constexpr ValueRule kReleaseFlag = {.letters = L"01"};

}  // namespace rule

template <>
struct FieldsOf<jxMat>
{
    using R = jxMat;
    static constexpr auto list = std::make_tuple(
        Always("id", &R::id, rule::kId), Always("label", &R::label), Always("E", &R::E), Always("nu", &R::nu),
        Always("Wc", &R::Wc), Always("Tc", &R::Tc), Always("fc", &R::fc), Always("fy", &R::fy), Always("fys", &R::fys),
        WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxSect>
{
    using R = jxSect;
    static constexpr auto list = std::make_tuple(
        Always("id", &R::id, rule::kId), Always("label", &R::label), Always("A", &R::A), Always("Ay", &R::Ay),
        Always("Az", &R::Az), Always("Iz", &R::Iz), Always("Iy", &R::Iy), Always("J", &R::J), Always("Cw", &R::Cw),
        Always("dim", &R::dim), WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxThick>
{
    using R = jxThick;
    static constexpr auto list =
        std::make_tuple(Always("id", &R::id, rule::kId), Always("label", &R::label), Always("t", &R::t),
                        WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxNd>
{
    using R = jxNd;
    static constexpr auto list =
        std::make_tuple(Always("id", &R::id, rule::kId), Always("x", &R::x), Always("y", &R::y), Always("z", &R::z),
                        WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxSupt>
{
    using R = jxSupt;
    static constexpr auto list =
        std::make_tuple(Always("id", &R::id, rule::kNode), Always("flag", &R::flag, rule::kSupportFlag),
                        Always("value", &R::value), WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxBm>
{
    using R = jxBm;
    static constexpr auto list = std::make_tuple(
        Always("id", &R::id, rule::kId), Always("node1", &R::node1, rule::kNode),
        Always("node2", &R::node2, rule::kNode), Always("material", &R::material, rule::kMaterial),
        Always("section", &R::section, rule::kSection), Always("angle", &R::angle),
        WhenUnusual("cracking", &R::cracking), WhenUnusual("nonlinear", &R::nonlinear, {.least = 0, .most = 2}),
        WhenUnusual("excluded", &R::excluded, rule::kFlag), WhenUnusual("selfWeight", &R::selfWeight, rule::kFlag),
        WhenUnusual("f_Iz", &R::f_Iz), WhenUnusual("f_Iy", &R::f_Iy), WhenUnusual("f_J", &R::f_J),
        WhenUnusual("f_A", &R::f_A), WhenUnusual("f_Ay", &R::f_Ay), WhenUnusual("f_Az", &R::f_Az),
        WhenUnusual("designType", &R::designType, {.letters = L"BC"}),
        WhenUnusual("rcCriterion", &R::rcCriterion, rule::kIndex),
        WhenUnusual("bConcreteSkip", &R::bConcreteSkip, rule::kFlag),
        WhenUnusual("steelCriterion", &R::steelCriterion, rule::kIndex),
        WhenUnusual("bSteelSkip", &R::bSteelSkip, rule::kFlag), WhenUnusual("axialForce", &R::axialForce),
        WhenUnusual("failed", &R::failed, rule::kFlag), WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxShell4>
{
    using R = jxShell4;
    static constexpr auto list = std::make_tuple(
        Always("id", &R::id, rule::kId), Always("node", &R::node, rule::kNode),
        Always("material", &R::material, rule::kMaterial), Always("thickness", &R::thickness, rule::kThickness),
        Always("angle", &R::angle), WhenUnusual("cracking", &R::cracking),
        WhenUnusual("excluded", &R::excluded, rule::kFlag), WhenUnusual("selfWeight", &R::selfWeight, rule::kFlag),
        WhenUnusual("f_Fxx", &R::f_Fxx), WhenUnusual("f_Fyy", &R::f_Fyy), WhenUnusual("f_Fxy", &R::f_Fxy),
        WhenUnusual("f_Mxx", &R::f_Mxx), WhenUnusual("f_Myy", &R::f_Myy), WhenUnusual("f_Mxy", &R::f_Mxy),
        WhenUnusual("f_Vxx", &R::f_Vxx), WhenUnusual("f_Vyy", &R::f_Vyy),
        WhenUnusual("rcCriterion", &R::rcCriterion, rule::kIndex),
        WhenUnusual("bConcreteSkip", &R::bConcreteSkip, rule::kFlag),
        WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxShell3>
{
    using R = jxShell3;
    static constexpr auto list = std::make_tuple(
        Always("id", &R::id, rule::kId), Always("node", &R::node, rule::kNode),
        Always("material", &R::material, rule::kMaterial), Always("thickness", &R::thickness, rule::kThickness),
        Always("angle", &R::angle), WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxBrick>
{
    using R = jxBrick;
    static constexpr auto list = std::make_tuple(Always("id", &R::id, rule::kId), Always("node", &R::node, rule::kNode),
                                                 Always("material", &R::material, rule::kMaterial),
                                                 WhenUnusual("excluded", &R::excluded, rule::kFlag),
                                                 WhenUnusual("selfWeight", &R::selfWeight, rule::kFlag),
                                                 WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxRels>
{
    using R = jxRels;
    static constexpr auto list =
        std::make_tuple(Always("id", &R::id, rule::kId), Always("start", &R::start, rule::kReleaseFlag),
                        Always("end", &R::end, rule::kReleaseFlag), WhenUnusual("partial", &R::partial),
                        WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxSpring>
{
    using R = jxSpring;
    static constexpr auto list =
        std::make_tuple(Always("id", &R::id, rule::kId), Always("flag", &R::flag, rule::kSpringFlag),
                        Always("k", &R::k), WhenUnusual("bFailed", &R::bFailed, {.least = 0, .most = 1}),
                        WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxCoupledSpring>
{
    using R = jxCoupledSpring;
    static constexpr auto list = std::make_tuple(Always("id", &R::id, rule::kNode), Always("k", &R::k),
                                                 WhenUnusual("bFailed", &R::bFailed, {.least = 0, .most = 1}),
                                                 WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxDiaphragm>
{
    using R = jxDiaphragm;
    static constexpr auto list =
        std::make_tuple(Always("id", &R::id, rule::kLooseId), Always("type", &R::type, {.least = 0, .most = 3}),
                        Always("node", &R::node, rule::kNodeOrNone), WhenUnusual("reserved", &R::reserved),
                        WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxMultiDofConstraint>
{
    using R = jxMultiDofConstraint;
    static constexpr auto list = std::make_tuple(
        Always("id", &R::id, rule::kLooseId), Always("node", &R::node, rule::kNode), Always("dof", &R::dof, rule::kDof),
        Always("factor", &R::factor), WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxMasterSlave>
{
    using R = jxMasterSlave;
    static constexpr auto list = std::make_tuple(
        Always("id", &R::id, rule::kNode), Always("slave", &R::slave, rule::kNode),
        Always("flag", &R::flag, rule::kReleaseFlag), WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxNamedSelection>
{
    using R = jxNamedSelection;
    static constexpr auto list =
        std::make_tuple(Always("label", &R::label), WhenUnusual("nodes", &R::nodes, rule::kId),
                        WhenUnusual("beams", &R::beams, rule::kId), WhenUnusual("shell3s", &R::shell3s, rule::kId),
                        WhenUnusual("shell4s", &R::shell4s, rule::kId), WhenUnusual("bricks", &R::bricks, rule::kId));
};

template <>
struct FieldsOf<jxMesh>
{
    using R = jxMesh;
    static constexpr auto list = std::make_tuple(Always("type", &R::type), Always("size", &R::size));
};

template <>
struct FieldsOf<jxSpectrum>
{
    using R = jxSpectrum;
    static constexpr auto list =
        std::make_tuple(Always("name", &R::name), Always("type", &R::type), Always("points", &R::points));
};

}  // namespace qvx
