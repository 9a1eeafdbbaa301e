#include "operations/record_references.h"

namespace qvx {
namespace {

bool IsAmong(const std::vector<int>& ids, int id)
{
    return std::binary_search(ids.begin(), ids.end(), id);
}

// A record in a set of ids outlives what it names: only the id goes.
template <class Record>
void DropFromSets(Record& record, Reference kind, const std::vector<int>& removed)
{
    ForEachField(FieldsOf<Record>::list, [&](const auto& field) {
        if constexpr (std::is_same_v<typename std::remove_cvref_t<decltype(field)>::Value, std::vector<int>>)
            if (field.rule.refersTo == kind)
                std::erase_if(record.*field.member, [&](int id) { return IsAmong(removed, id); });
    });
}

template <class Record>
void MakeSetsUnique(Record& record, Reference kind)
{
    ForEachField(FieldsOf<Record>::list, [&](const auto& field) {
        if constexpr (std::is_same_v<typename std::remove_cvref_t<decltype(field)>::Value, std::vector<int>>) {
            std::vector<int>& ids = record.*field.member;
            if (field.rule.refersTo == kind)
                ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
        }
    });
}

}  // namespace

void RewriteReferences(CjxStruct& model, Reference kind, const IdMap& newIds)
{
    ForEachRecordList(model, [&](auto& records, const ValueRule& rule) {
        for (auto& record : records) {
            VisitReferences(record, rule, [&](int& id, Reference names, Hold) {
                if (names == kind)
                    id = newIds(id);
            });
            MakeSetsUnique(record, kind);
        }
    });
}

void DropReferences(CjxStruct& model, Reference kind, const std::vector<int>& removed)
{
    assert(std::is_sorted(removed.begin(), removed.end()));
    if (removed.empty())
        return;
    ForEachRecordList(model, [&](auto& records, const ValueRule& rule) {
        std::erase_if(records, [&](const auto& record) {
            bool isLost = false;
            VisitReferences(record, rule, [&](const int& id, Reference names, Hold hold) {
                isLost = isLost || (names == kind && hold != Hold::InSet && IsAmong(removed, id));
            });
            return isLost;
        });
        for (auto& record : records)
            DropFromSets(record, kind, removed);
    });
}

void SortLists(CjxStruct& model)
{
    ForEachRecordList(model, [](auto& records, const ValueRule& rule) {
        if constexpr (requires { records.front().id; })
            if (rule.isSortedById)
                SortById(records);
    });
}

}  // namespace qvx
