#pragma once

#include <algorithm>
#include <cstddef>
#include <type_traits>
#include <vector>

#include "model/records/node.h"
#include "platform/cstring.h"
#include "tools/jx_exception.h"

namespace qvx {

/// Throws jxException "error finding <name> <id>".
[[noreturn]] inline void ThrowMissingRecord(const wchar_t* name, int id)
{
    CString text;
    text.Format(L"error finding %s %ld", name, id);
    throw jxException(text);
}

/// Record with this id in a vector sorted by id, the first of several, or null. Ids mostly count up without gaps, so the
/// place where id would then stand is looked at before the search.
template <class Record>
const Record* FindOrNull(const std::vector<Record>& records, int id)
{
    if (records.empty() || id < records.front().id)
        return nullptr;
    const std::size_t guess = static_cast<std::size_t>(id) - static_cast<std::size_t>(records.front().id);
    if (guess < records.size() && records[guess].id == id && (guess == 0 || records[guess - 1].id != id))
        return &records[guess];
    const auto it =
        std::lower_bound(records.begin(), records.end(), id, [](const Record& r, int key) { return r.id < key; });
    return it == records.end() || it->id != id ? nullptr : &*it;
}

/// Record with this id in a vector sorted by id; throws jxException "error finding <name> <id>".
template <class Record>
const Record& FindById(const std::vector<Record>& records, int id)
{
    const Record* record = FindOrNull(records, id);
    if (record == nullptr)
        ThrowMissingRecord(Record::name(), id);
    return *record;
}

/// 1-based position of the node with this id; throws jxException "error finding node <id>".
inline int NodePosition(const std::vector<jxNd>& nodes, int id)
{
    return static_cast<int>(&FindById(nodes, id) - nodes.data()) + 1;
}

/// All records with this id in a vector sorted by id, as iterators [first, last).
template <class Records>
auto RecordsOf(Records& records, int id)
{
    using Record = typename std::remove_cvref_t<Records>::value_type;
    struct ById
    {
        bool operator()(const Record& r, int key) const { return r.id < key; }
        bool operator()(int key, const Record& r) const { return key < r.id; }
    };
    return std::equal_range(records.begin(), records.end(), id, ById{});
}

}  // namespace qvx
