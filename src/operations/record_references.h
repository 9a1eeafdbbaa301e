#pragma once

#include <algorithm>
#include <cassert>
#include <type_traits>
#include <utility>
#include <vector>

#include "model/struct_fields.h"

// Which record refers to what, read off the catalogue of fields: what removes or renumbers nodes and elements carries
// the change through here and knows no record by name.

namespace qvx {

/// New ids of what was renumbered or joined; every other id stays.
class IdMap
{
public:
    using Pairs = std::vector<std::pair<int, int>>;

    /// @param pairs  (old id, new id), ascending by old id, each old id once
    explicit IdMap(Pairs pairs) : pairs_(std::move(pairs)) { assert(std::is_sorted(pairs_.begin(), pairs_.end())); }

    /// New id of an id.
    int operator()(int id) const
    {
        const auto at = std::lower_bound(pairs_.begin(), pairs_.end(), id,
                                         [](const std::pair<int, int>& pair, int key) { return pair.first < key; });
        return at == pairs_.end() || at->first != id ? id : at->second;
    }

private:
    Pairs pairs_;
};

/// (id, no) of records: no holds the id that takes the place of id.
template <class Record>
IdMap::Pairs NewIdsOf(const std::vector<Record>& records)
{
    IdMap::Pairs pairs;
    pairs.reserve(records.size());
    for (const Record& record : records)
        pairs.emplace_back(record.id, record.no);
    return pairs;
}

/// How a record holds a reference.
enum class Hold {
    Owner,  ///< its id: it belongs to that node or element, as a support or a load does
    Part,   ///< it is made of it, as an element or a constraint of its nodes
    InSet,  ///< one of many in a list of ids
};

/// Records of the model itself that take no part in the list of their own kind's references.
template <class Record>
inline constexpr bool IsElement = std::is_same_v<Record, jxBm> || std::is_same_v<Record, jxShell3> ||
                                  std::is_same_v<Record, jxShell4> || std::is_same_v<Record, jxBrick>;

template <class Value>
inline constexpr bool IsRecordList = false;
template <Described Record>
inline constexpr bool IsRecordList<std::vector<Record>> = true;

/// Whether records of this type hold lists of records.
template <Described Record>
inline constexpr bool HoldsLists = std::apply(
    [](const auto&... field) { return (IsRecordList<typename std::remove_cvref_t<decltype(field)>::Value> || ...); },
    FieldsOf<Record>::list);

/// Calls visit(records, rule) for a list of records and for every list inside its records.
template <class Records, class Visit>
void VisitList(Records& records, const ValueRule& rule, Visit& visit)
{
    using Record = typename std::remove_const_t<Records>::value_type;
    visit(records, rule);
    if constexpr (HoldsLists<Record>)
        for (auto& record : records)
            ForEachField(FieldsOf<Record>::list, [&](const auto& field) {
                if constexpr (IsRecordList<typename std::remove_cvref_t<decltype(field)>::Value>)
                    VisitList(record.*field.member, field.rule, visit);
            });
}

/// Calls visit(records, rule) for every list of records that a model's input consists of, loads of all cases included;
/// and for derived masses and diaphragm links, which are made of nodes too.
template <class Model, class Visit>
void ForEachRecordList(Model& model, Visit visit)
{
    ForEachField(kModelLists, [&](const auto& field) { VisitList(model.*field.member, field.rule, visit); });
    VisitList(model.derivedMasses, ValueRule{.mayRepeatIds = true}, visit);
    VisitList(model.links, ValueRule{.isSortedById = false}, visit);
}

/// Calls visit(id, reference, hold) for the ids in the value of one field.
template <class Value, class Visit>
void VisitIds(Value& value, Reference names, [[maybe_unused]] bool isOwn, Visit& visit)
{
    using Plain = std::remove_const_t<Value>;
    const auto visitOne = [&](auto& id, Hold hold) {
        if (names != Reference::NodeOrNone)
            visit(id, names, hold);
        else if (id != 0)
            visit(id, Reference::Node, hold);
    };
    if constexpr (std::is_same_v<Plain, int>)
        visitOne(value, isOwn ? Hold::Owner : Hold::Part);
    else if constexpr (std::is_array_v<Plain> && std::is_same_v<std::remove_extent_t<Plain>, int>)
        for (auto& id : value)
            visitOne(id, Hold::Part);
    else if constexpr (std::is_same_v<Plain, std::vector<int>>)
        for (auto& id : value)
            visitOne(id, Hold::InSet);
}

/// Calls visit(id, reference, hold) for every reference of a record.
/// @param list  rule of the list in which it stands: it says what the ids are of where the record leaves it open
template <class Record, class Visit>
void VisitReferences(Record& record, const ValueRule& list, Visit&& visit)
{
    ForEachField(FieldsOf<std::remove_const_t<Record>>::list, [&](const auto& field) {
        const bool isOwn = field.key == "id";
        const Reference names = isOwn && list.idRefersTo != Reference::None ? list.idRefersTo : field.rule.refersTo;
        if (names != Reference::None)
            VisitIds(record.*field.member, names, isOwn, visit);
    });
}

/// Sorts records by id, equal ones in their order; a list in order is left alone.
template <class Record>
void SortById(std::vector<Record>& records)
{
    if (!std::is_sorted(records.begin(), records.end()))
        std::stable_sort(records.begin(), records.end());
}

/// Of runs of records side by side with one id only the first stays.
template <class Record>
void KeepFirstOfRuns(std::vector<Record>& records)
{
    const auto isSame = [](const Record& a, const Record& b) { return a.id == b.id; };
    records.erase(std::unique(records.begin(), records.end(), isSame), records.end());
}

/// Writes new ids into every reference to records of one kind; in lists of ids what comes to stand twice side by side
/// stands once. Lists of records keep their order: SortLists puts them right.
void RewriteReferences(CjxStruct& model, Reference kind, const IdMap& newIds);

/// Drops every record that refers to one of these records, and their ids from lists of ids.
/// @param removed  ids, ascending
void DropReferences(CjxStruct& model, Reference kind, const std::vector<int>& removed);

/// Puts every list that is kept by id into that order, equal ids in the order in which they stand.
void SortLists(CjxStruct& model);

/// Largest id of a list sorted by id; 0 when it is empty.
template <class Record>
int LargestId(const std::vector<Record>& records)
{
    return records.empty() ? 0 : std::max(0, records.back().id);
}

}  // namespace qvx
