#pragma once

#include <vector>

#include "model/fields/model_fields.h"
#include "model/records/element.h"
#include "model/records/node.h"
#include "tools/jx_point.h"

// Arguments of the generators (operations/generators.h) as a JSON object holds them, by the names of the parameters.

namespace qvx {

/// Of GenerateFrame.
struct FrameArguments
{
    std::vector<double> xSteps;
    std::vector<double> ySteps;
    std::vector<double> zSteps;
    bool makeMembers = true;
    bool makeSupports = true;
};

/// Of both forms of GenerateShell: lines make the loft, else there is a grid.
struct ShellArguments
{
    std::vector<double> xSteps;
    std::vector<double> ySteps;
    int kind = 4;
    std::vector<std::vector<jxPoint>> lines;
    bool wrapJ = false;
};

/// Of GenerateArcBeam.
struct ArcArguments
{
    double startAngle = 0;
    double endAngle = 0;
    double radius = 0;
    int segments = 1;
};

/// Of GenerateCircularFrame.
struct CircularFrameArguments
{
    std::vector<double> radialSteps;
    std::vector<double> angleSteps;
    std::vector<double> heightSteps;
    bool makeMembers = true;
    bool makeSupports = true;
};

/// Of submesh_shell4. A shell that names no nodes has the corners.
struct SubmeshArguments
{
    jxNd corners[4];
    jxShell4 shell{.id = 1};
    int nx = 1;
    int ny = 1;
    int firstNode = 1;
    int firstShell = 1;
};

// clang-format off

template <>
struct FieldsOf<FrameArguments>
{
    using R = FrameArguments;
    static constexpr auto list = RecordFields(
        Always("xSteps", &R::xSteps, "distances along X", In(kLength)),
        Always("ySteps", &R::ySteps, "distances along Y", In(kLength)),
        Always("zSteps", &R::zSteps, "distances along Z", In(kLength)),
        Always("makeMembers", &R::makeMembers, "else nodes and supports alone"),
        Always("makeSupports", &R::makeSupports, "nodes with y = 0 are held"));
};

template <>
struct FieldsOf<ShellArguments>
{
    using R = ShellArguments;
    static constexpr auto list = RecordFields(
        Always("xSteps", &R::xSteps, "of a grid: distances along X", In(kLength)),
        Always("ySteps", &R::ySteps, "of a grid: distances along Y", In(kLength)),
        Always("kind", &R::kind, "of a grid: 4 four-node shells, else two three-node shells per cell"),
        Always("lines", &R::lines, "of a loft: lists of points [x, y, z], equally many in each", In(kLength)),
        Always("wrapJ", &R::wrapJ, "of a loft: the last point of a line is joined to its first"));
};

template <>
struct FieldsOf<ArcArguments>
{
    using R = ArcArguments;
    static constexpr auto list = RecordFields(
        Always("startAngle", &R::startAngle, "degrees from +X towards +Y"),
        Always("endAngle", &R::endAngle, "degrees; 360 beyond the start closes the arc"),
        Always("radius", &R::radius, "", In(kLength)),
        Always("segments", &R::segments, "number of members", {.least = 1}));
};

template <>
struct FieldsOf<CircularFrameArguments>
{
    using R = CircularFrameArguments;
    static constexpr auto list = RecordFields(
        Always("radialSteps", &R::radialSteps, "distances outwards, the first from the axis", In(kLength)),
        Always("angleSteps", &R::angleSteps, "degrees between lines, the first from +X; a first 0 and a sum of 360 close the rings"),
        Always("heightSteps", &R::heightSteps, "distances along Y, the first from y = 0", In(kLength)),
        Always("makeMembers", &R::makeMembers, "else nodes and supports alone"),
        Always("makeSupports", &R::makeSupports, "nodes with y = 0 are held"));
};

template <>
struct FieldsOf<SubmeshArguments>
{
    using R = SubmeshArguments;
    static constexpr auto list = RecordFields(
        Always("corners", &R::corners, "four nodes as in a model file"),
        Always("shell", &R::shell, "the shell as in a model file, its nodes the corners"),
        Always("nx", &R::nx, "parts from the first corner to the second", {.least = 1}),
        Always("ny", &R::ny, "parts from the first corner to the fourth", {.least = 1}),
        Always("firstNode", &R::firstNode, "id of the first new node", {.least = 1}),
        Always("firstShell", &R::firstShell, "id of the first new shell", {.least = 1}));
};

// clang-format on

}  // namespace qvx
