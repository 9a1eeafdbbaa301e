#include "files/model_edits.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <stdexcept>

#include <fmt/format.h>

#include "files/edit_arguments.h"
#include "files/model_changes.h"
#include "files/model_references.h"
#include "model/find_record.h"
#include "model/run_context.h"
#include "operations/area_load_picture.h"
#include "operations/selection_bits.h"
#include "platform/cstring.h"

namespace qvx {
namespace {

// What an operation gets besides its model.
struct Request
{
    std::string_view arguments;
    bool wantsPicture = false;
};

using Operation = void (*)(CjxStruct& model, const Request& request, ModelEdit& edit);

// Positions of the records named, in the order of the model.
template <class Record>
std::vector<std::size_t> PositionsOf(const std::vector<Record>& records, const std::vector<int>& ids, const char* key)
{
    std::vector<std::size_t> positions;
    const JsonPath list{nullptr, key, -1};
    for (std::size_t i = 0; i < ids.size(); ++i) {
        const Record* record = FindOrNull(records, ids[i]);
        if (record == nullptr)
            throw JsonFault(list.Element(i), fmt::format("there is no {} {}", ToUtf8(Record::name()), ids[i]));
        positions.push_back(static_cast<std::size_t>(record - records.data()));
    }
    std::sort(positions.begin(), positions.end());
    positions.erase(std::unique(positions.begin(), positions.end()), positions.end());
    return positions;
}

template <class Record>
void Select(std::vector<Record>& records, const std::vector<int>& ids, const char* key)
{
    for (const std::size_t position : PositionsOf(records, ids, key))
        records[position].bSelected |= kSelectedBit;
}

// Selects these members alone.
void SelectBeams(CjxStruct& model, const std::vector<int>& ids)
{
    model.SelectAll(0, 0);
    Select(model.beams, ids, "beams");
}

void MergeAll(CjxStruct& model, const Request& request, ModelEdit& edit)
{
    ReadArguments<NoArguments>(request.arguments);
    const jxMergedInfo merged = model.Merge(0);
    const auto tell = [&edit](const char* kind, const std::vector<std::pair<int, int>>& pairs) {
        for (const auto& [old, survivor] : pairs)
            edit.lines.push_back(fmt::format("{} {} is now {}", kind, old, survivor));
    };
    tell("node", merged.nodes);
    tell("member", merged.members);
    tell("shell4", merged.shell4s);
    tell("brick", merged.bricks);
}

void RemoveOrphans(CjxStruct& model, const Request& request, ModelEdit& edit)
{
    ReadArguments<NoArguments>(request.arguments);
    const std::vector<int> removed = model.RemoveOrphanedNodes();
    edit.lines.push_back(fmt::format("{} orphaned nodes removed", removed.size()));
}

void RemoveInvalid(CjxStruct& model, const Request& request, ModelEdit& edit)
{
    ReadArguments<NoArguments>(request.arguments);
    int nMembers = 0;
    int nShells = 0;
    int nBricks = 0;
    model.RemoveInvalidElements(nMembers, nShells, nBricks);
    edit.lines.push_back(
        fmt::format("{} members deleted, {} shell4 deleted, {} bricks deleted", nMembers, nShells, nBricks));
}

void RenumberByMap(CjxStruct& model, const Request& request, ModelEdit&)
{
    const auto arguments = ReadArguments<RenumberArguments>(request.arguments);
    for (jxNd& node : model.nodes)
        node.no = node.id;
    const JsonPath map{nullptr, "map", -1};
    for (std::size_t i = 0; i < arguments.map.size(); ++i) {
        const std::vector<int>& pair = arguments.map[i];
        if (pair.size() != 2)
            throw JsonFault(map.Element(i), "expected an id and its new id");
        const std::size_t position = LowerBound(model.nodes, pair[0]);
        if (position == model.nodes.size() || model.nodes[position].id != pair[0])
            throw JsonFault(map.Element(i), fmt::format("there is no node {}", pair[0]));
        model.nodes[position].no = pair[1];
    }
    model.RenumberNodes();
}

void ConvertAreas(CjxStruct& model, const Request& request, ModelEdit& edit)
{
    const auto arguments = ReadArguments<AreaLoadArguments>(request.arguments);
    const int nCases = static_cast<int>(std::min(model.loadCases.size(), model.caseLoads.size()));
    if (arguments.loadCase >= nCases)
        throw JsonFault(JsonPath{nullptr, "loadCase", -1}, fmt::format("there is no load case {}", arguments.loadCase));
    if (arguments.mergeFirst)
        model.Merge();
    std::vector<AreaLoadOutcome> outcomes;
    const int first = arguments.loadCase < 0 ? 0 : arguments.loadCase;
    const int last = arguments.loadCase < 0 ? nCases : arguments.loadCase + 1;
    for (int loadCase = first; loadCase < last; ++loadCase) {
        if (request.wantsPicture)
            std::ranges::move(ConvertedAreaLoads(model, loadCase), std::back_inserter(outcomes));
        model.ConvertAreaLoads(loadCase, arguments.removeAreaLoads, false);
    }
    if (request.wantsPicture)
        edit.picture = AreaLoadPicture(outcomes, model.units);
}

void Explode(CjxStruct& model, const Request& request, ModelEdit&)
{
    auto arguments = ReadArguments<ExplodeArguments>(request.arguments);
    SelectBeams(model, arguments.beams);
    model.ExplodeBeam(arguments.pieces, arguments.equal);
    model.SelectAll(0, 0);
}

void CutRigidOffsets(CjxStruct& model, const Request& request, ModelEdit&)
{
    const auto arguments = ReadArguments<RigidOffsetArguments>(request.arguments);
    SelectBeams(model, arguments.beams);
    model.CreateBeamRigidOffset(arguments.start, arguments.end, arguments.section);
    model.SelectAll(0, 0);
}

void ExplodeAtNodes(CjxStruct& model, const Request& request, ModelEdit& edit)
{
    const auto arguments = ReadArguments<BeamArguments>(request.arguments);
    PositionsOf(model.beams, arguments.beams, "beams");
    for (const int id : model.ClearSelectionAndExplodeBeamsAtNodesForSpecifiedBeams(arguments.beams))
        if (const auto [first, last] = RecordsOf(model.beamSprings, id); first != last)
            edit.lines.push_back(fmt::format("the springs along member {} stay on its first piece", id));
    model.SelectAll(0, 0);
}

void Intersect(CjxStruct& model, const Request& request, ModelEdit& edit)
{
    const auto arguments = ReadArguments<BeamArguments>(request.arguments);
    PositionsOf(model.beams, arguments.beams, "beams");
    for (const jxIntersectionNode& crossing : model.InsertNodesAtBeamIntersectionsForBeams(arguments.beams))
        edit.lines.push_back(
            fmt::format("node {} where members {} and {} cross", crossing.node, crossing.member1, crossing.member2));
}

void Reverse(CjxStruct& model, const Request& request, ModelEdit&)
{
    const auto arguments = ReadArguments<ReverseArguments>(request.arguments);
    model.SelectAll(0, 0);
    Select(model.beams, arguments.beams, "beams");
    Select(model.shell4s, arguments.shells, "shells");
    Select(model.bricks, arguments.bricks, "bricks");
    model.ReverseNodeOrder();
}

void GlobalizeLoads(CjxStruct& model, const Request& request, ModelEdit&)
{
    ReadArguments<NoArguments>(request.arguments);
    model.ConvertAllLocalLoadsToGlobalLoads();
}

void ChangeUnits(CjxStruct& model, const Request& request, ModelEdit&)
{
    const auto arguments = ReadArguments(request.arguments, UnitArguments{.units = model.units});
    model.Context().convertUnits(model.units, arguments.units);
    std::copy(std::begin(arguments.units.unit), std::end(arguments.units.unit), model.units.unit);
}

struct NamedOperation
{
    std::string_view name;
    Operation run;
};

constexpr NamedOperation kOperations[] = {
    {"merge", MergeAll},
    {"remove-orphans", RemoveOrphans},
    {"remove-invalid", RemoveInvalid},
    {"renumber-nodes", RenumberByMap},
    {"area-loads", ConvertAreas},
    {"explode", Explode},
    {"rigid-offsets", CutRigidOffsets},
    {"explode-at-nodes", ExplodeAtNodes},
    {"intersect", Intersect},
    {"reverse", Reverse},
    {"local-to-global-loads", GlobalizeLoads},
    {"convert-units", ChangeUnits},
};

// Puts the input of a model back unless the edit came to its end.
class Undo
{
public:
    explicit Undo(CjxStruct& model) : model_(model) { before_.copy_input(model); }
    ~Undo()
    {
        if (!isKept_)
            model_.copy_input(before_);
    }
    Undo(const Undo&) = delete;
    Undo& operator=(const Undo&) = delete;

    const CjxStruct& Before() const { return before_; }
    void Keep() { isKept_ = true; }

private:
    CjxStruct& model_;
    CjxStruct before_;
    bool isKept_ = false;
};

}  // namespace

std::vector<std::string> EditOperations()
{
    std::vector<std::string> names;
    for (const NamedOperation& operation : kOperations)
        names.emplace_back(operation.name);
    return names;
}

ModelEdit EditModel(CjxStruct& model, std::string_view operation, std::string_view arguments, bool wantsPicture)
{
    const auto* found = std::ranges::find(kOperations, operation, &NamedOperation::name);
    if (found == std::end(kOperations))
        throw FileError("", "", fmt::format("there is no operation {}", operation));
    Undo undo(model);
    ModelEdit edit;
    try {
        found->run(model, {.arguments = arguments, .wantsPicture = wantsPicture}, edit);
    } catch (const JsonFault& fault) {
        throw FileError("--args", fault.Place(), fault.what());
    }
    try {
        CheckModelReferences(model);
    } catch (const JsonFault& fault) {
        throw FileError("the edited model", fault.Place(), fault.what());
    }
    std::ranges::move(ChangeLines(undo.Before(), model), std::back_inserter(edit.lines));
    undo.Keep();
    return edit;
}

}  // namespace qvx
