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
struct ExtrudeNodesArguments
{
    std::vector<int> nodes;
    std::vector<double> steps;
    jxPoint direction;
    int nodeIncrement = 0;
    int memberIncrement = 0;
};
struct ExtrudeBeamsArguments
{
    std::vector<int> nodes;
    std::vector<int> beams;
    std::vector<double> steps;
    jxPoint direction;
    int nodeIncrement = 0;
    int beamIncrement = 0;
    int shellIncrement = 0;
};
struct ExtrudeShellsArguments
{
    std::vector<int> nodes;
    std::vector<int> shells;
    std::vector<double> steps;
    jxPoint direction;
    int nodeIncrement = 0;
    int shellIncrement = 0;
    int brickIncrement = 0;
};
struct RevolveBeamsArguments
{
    std::vector<int> nodes;
    std::vector<int> beams;
    double startAngle = 0;
    double endAngle = 0;
    int copies = 0;
    int nodeIncrement = 0;
    int beamIncrement = 0;
    int shellIncrement = 0;
};
struct RevolveShellsArguments
{
    std::vector<int> nodes;
    std::vector<int> shells;
    double startAngle = 0;
    double endAngle = 0;
    int copies = 0;
    int nodeIncrement = 0;
    int shellIncrement = 0;
    int brickIncrement = 0;
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
struct FieldsOf<ExtrudeNodesArguments>
{
    using R = ExtrudeNodesArguments;
    static constexpr auto list = RecordFields(
        Always("nodes", &R::nodes, "ids of the pattern", rule::kNode),
        Always("steps", &R::steps, "distances between copies"),
        Always("direction", &R::direction, "unit vector"),
        Always("nodeIncrement", &R::nodeIncrement, "of ids from copy to copy"),
        Always("memberIncrement", &R::memberIncrement, "id of the first new member"));
};

template <>
struct FieldsOf<ExtrudeBeamsArguments>
{
    using R = ExtrudeBeamsArguments;
    static constexpr auto list = RecordFields(
        Always("nodes", &R::nodes, "ids of the pattern", rule::kNode),
        Always("beams", &R::beams, "ids of the pattern", rule::kMember),
        Always("steps", &R::steps, "distances between copies"),
        Always("direction", &R::direction, "unit vector"),
        Always("nodeIncrement", &R::nodeIncrement, "of ids from copy to copy"),
        Always("beamIncrement", &R::beamIncrement, "of ids from copy to copy"),
        Always("shellIncrement", &R::shellIncrement, "id of the first new shell"));
};

template <>
struct FieldsOf<ExtrudeShellsArguments>
{
    using R = ExtrudeShellsArguments;
    static constexpr auto list = RecordFields(
        Always("nodes", &R::nodes, "ids of the pattern", rule::kNode),
        Always("shells", &R::shells, "ids of the pattern", rule::kShell4),
        Always("steps", &R::steps, "distances between copies"),
        Always("direction", &R::direction, "unit vector"),
        Always("nodeIncrement", &R::nodeIncrement, "of ids from copy to copy"),
        Always("shellIncrement", &R::shellIncrement, "of ids from copy to copy"),
        Always("brickIncrement", &R::brickIncrement, "id of the first new brick"));
};

template <>
struct FieldsOf<RevolveBeamsArguments>
{
    using R = RevolveBeamsArguments;
    static constexpr auto list = RecordFields(
        Always("nodes", &R::nodes, "ids of the pattern", rule::kNode),
        Always("beams", &R::beams, "ids of the pattern", rule::kMember),
        Always("startAngle", &R::startAngle, "degrees"),
        Always("endAngle", &R::endAngle, "degrees, of the last copy"),
        Always("copies", &R::copies, "", {.least = 0}),
        Always("nodeIncrement", &R::nodeIncrement, "of ids from copy to copy"),
        Always("beamIncrement", &R::beamIncrement, "of ids from copy to copy"),
        Always("shellIncrement", &R::shellIncrement, "id of the first new shell"));
};

template <>
struct FieldsOf<RevolveShellsArguments>
{
    using R = RevolveShellsArguments;
    static constexpr auto list = RecordFields(
        Always("nodes", &R::nodes, "ids of the pattern", rule::kNode),
        Always("shells", &R::shells, "ids of the pattern", rule::kShell4),
        Always("startAngle", &R::startAngle, "degrees"),
        Always("endAngle", &R::endAngle, "degrees, of the last copy"),
        Always("copies", &R::copies, "", {.least = 0}),
        Always("nodeIncrement", &R::nodeIncrement, "of ids from copy to copy"),
        Always("shellIncrement", &R::shellIncrement, "of ids from copy to copy"),
        Always("brickIncrement", &R::brickIncrement, "id of the first new brick"));
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
