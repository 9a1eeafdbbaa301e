#include "files/model_references.h"

#include <algorithm>
#include <cassert>
#include <utility>
#include <vector>

#include "files/json_document.h"
#include "model/struct_fields.h"

namespace qvx {
namespace {

// Ids in ascending order.
using Ids = std::vector<int>;

template <class Record>
Ids IdsOf(const std::vector<Record>& records)
{
    Ids ids;
    // Sorted copies: the records themselves still stand in the order of the file, for the paths of the messages.
    ids.reserve(records.size());
    for (const Record& record : records)
        ids.push_back(record.id);
    std::sort(ids.begin(), ids.end());
    assert(ids.size() == records.size() && "ids may repeat and are told apart later");
    return ids;
}

// Ids of the lists that a file may not refer to in vain. Names of criteria, load cases and bars may name nothing: the
// input check warns of them.
struct ModelIds
{
    Ids nodes;
    Ids materials;
    Ids sections;
    Ids thicknesses;
};

// O(log n) for each reference: a model of a million elements has ten million references.
void Require(const Ids& ids, int id, const char* what, const JsonPath& path)
{
    if (!std::binary_search(ids.begin(), ids.end(), id))
        throw JsonFault(path, "there is no " + std::string(what) + " " + std::to_string(id));
}

void CheckValue(int id, Reference reference, const ModelIds& ids, const JsonPath& path)
{
    if (reference == Reference::NodeOrNone && id == 0)
        return;
    switch (reference) {
    case Reference::Node:
    case Reference::NodeOrNone:
        return Require(ids.nodes, id, "node", path);
    case Reference::Material:
        return Require(ids.materials, id, "material", path);
    case Reference::Section:
        return Require(ids.sections, id, "section", path);
    case Reference::Thickness:
        return Require(ids.thicknesses, id, "thickness", path);
    default:
        return;  // may name nothing
    }
}

template <Described Record>
void CheckRecord(const Record& record, const ModelIds& ids, const JsonPath& path);

// Values that are no ids need no check.
template <class Value>
void CheckField(const Value&, Reference, const ModelIds&, const JsonPath&)
{
}
void CheckField(int id, Reference reference, const ModelIds& ids, const JsonPath& path)
{
    CheckValue(id, reference, ids, path);
}
// Nodes of an element: the message names the corner.
template <std::size_t N>
void CheckField(const int (&values)[N], Reference reference, const ModelIds& ids, const JsonPath& path)
{
    for (std::size_t i = 0; i < N; ++i)
        CheckValue(values[i], reference, ids, path.Element(i));
}
// Records within records (factors of a combination, loads of a case) refer as their lists do.
template <Described Record>
void CheckField(const std::vector<Record>& records, Reference, const ModelIds& ids, const JsonPath& path)
{
    for (std::size_t i = 0; i < records.size(); ++i)
        CheckRecord(records[i], ids, path.Element(i));
}

template <Described Record>
void CheckRecord(const Record& record, const ModelIds& ids, const JsonPath& path)
{
    ForEachField(FieldsOf<Record>::list, [&](const auto& field) {
        CheckField(record.*field.member, field.rule.refersTo, ids, path.Member(field.key));
    });
}

// The first record, in the order of the file, whose id stands before it already.
template <class Record>
void CheckUnique(const std::vector<Record>& records, const JsonPath& list)
{
    // Sorted and not hashed: the answer must be the first of the file and the same in every run.
    std::vector<std::pair<int, std::size_t>> positions;
    positions.reserve(records.size());
    for (std::size_t i = 0; i < records.size(); ++i)
        positions.emplace_back(records[i].id, i);
    // By id, then by place: of equal ids each but the first is a repetition, and the earliest of them is told.
    std::sort(positions.begin(), positions.end());
    std::size_t first = records.size();
    for (std::size_t i = 1; i < positions.size(); ++i)
        if (positions[i].first == positions[i - 1].first)
            first = std::min(first, positions[i].second);
    assert(positions.size() == records.size() && "each record by its id and its place");
    if (first < records.size())
        throw JsonFault(list.Element(first).Member("id"),
                        "the id " + std::to_string(records[first].id) + " is taken already");
}

template <class List>
void CheckList(const CjxStruct& model, const List& list, const ModelIds& ids)
{
    const JsonPath path{nullptr, list.key, -1};
    const auto& records = model.*list.member;
    if constexpr (requires { records.front().id; }) {
        if (!list.rule.mayRepeatIds)
            CheckUnique(records, path);
        for (std::size_t i = 0; i < records.size(); ++i) {
            const JsonPath place = path.Element(i);
            CheckField(records[i].id, list.rule.idRefersTo, ids, place.Member("id"));
        }
    }
    CheckField(records, Reference::None, ids, path);
}

}  // namespace

void CheckModelReferences(const CjxStruct& model)
{
    const ModelIds ids{.nodes = IdsOf(model.nodes),
                       .materials = IdsOf(model.materials),
                       .sections = IdsOf(model.sections),
                       .thicknesses = IdsOf(model.thicknesses)};
    ForEachField(kModelLists, [&](const auto& list) { CheckList(model, list, ids); });
}

}  // namespace qvx
