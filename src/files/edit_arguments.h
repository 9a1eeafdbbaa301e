#pragma once

#include <vector>

#include "files/arguments_reader.h"
#include "files/units_reader.h"
#include "model/fields/model_fields.h"

// Arguments of the operations of EditModel, each by its list of fields.

namespace qvx {

/// Units by ReadUnits.
void ReadValue(const Json& value, const JsonPath& path, const ValueRule& rule, jxUnit& out);

struct NoArguments
{
};
struct RenumberArguments
{
    std::vector<std::vector<int>> map;
};
struct AreaLoadArguments
{
    int loadCase = 0;
    bool removeAreaLoads = true;
    bool mergeFirst = false;
};
struct ExplodeArguments
{
    std::vector<int> beams;
    std::vector<double> pieces;
    int equal = 0;
};
struct RigidOffsetArguments
{
    std::vector<int> beams;
    double start = 0;
    double end = 0;
    int section = 1;
};
struct BeamArguments
{
    std::vector<int> beams;
};
struct ReverseArguments
{
    std::vector<int> beams;
    std::vector<int> shells;
    std::vector<int> bricks;
};
struct UnitArguments
{
    jxUnit units;
};

// clang-format off

template <>
struct FieldsOf<NoArguments>
{
    static constexpr auto list = RecordFields<NoArguments>();
};

template <>
struct FieldsOf<RenumberArguments>
{
    using R = RenumberArguments;
    static constexpr auto list = RecordFields(Always("map", &R::map, "pairs of an id and its new id", rule::kId));
};

template <>
struct FieldsOf<AreaLoadArguments>
{
    using R = AreaLoadArguments;
    static constexpr auto list = RecordFields(
        Always("loadCase", &R::loadCase, "index; -1 for all", {.least = -1}),
        Always("removeAreaLoads", &R::removeAreaLoads, ""),
        Always("mergeFirst", &R::mergeFirst, ""));
};

template <>
struct FieldsOf<ExplodeArguments>
{
    using R = ExplodeArguments;
    static constexpr auto list = RecordFields(
        Always("beams", &R::beams, "ids", rule::kMember),
        Always("pieces", &R::pieces, "lengths from the start"),
        Always("equal", &R::equal, "1: as many equal pieces", rule::kFlag));
};

template <>
struct FieldsOf<RigidOffsetArguments>
{
    using R = RigidOffsetArguments;
    static constexpr auto list = RecordFields(
        Always("beams", &R::beams, "ids", rule::kMember),
        Always("start", &R::start, ""),
        Always("end", &R::end, ""),
        Always("section", &R::section, "of the stiff ends", rule::kSection));
};

template <>
struct FieldsOf<BeamArguments>
{
    using R = BeamArguments;
    static constexpr auto list = RecordFields(Always("beams", &R::beams, "ids", rule::kMember));
};

template <>
struct FieldsOf<ReverseArguments>
{
    using R = ReverseArguments;
    static constexpr auto list = RecordFields(
        Always("beams", &R::beams, "ids", rule::kMember),
        Always("shells", &R::shells, "ids", rule::kShell4),
        Always("bricks", &R::bricks, "ids", rule::kBrick));
};

template <>
struct FieldsOf<UnitArguments>
{
    using R = UnitArguments;
    static constexpr auto list = RecordFields(Always("units", &R::units, ""));
};

// clang-format on

}  // namespace qvx
