#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
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

/// Position of the first record with this id or a greater one in a vector sorted by id; its size if there is none.
///
/// Ids mostly count up with few gaps. While no two records share one, there are at least as many ids as records
/// between the front and the place sought, and from there to the back: that leaves as many places as there are gaps,
/// one if there are none.
template <class Record>
std::size_t LowerBound(const std::vector<Record>& records, int id)
{
    if (records.empty() || id <= records.front().id)
        return 0;
    const std::size_t last = records.size() - 1;
    if (id > records.back().id)
        return last + 1;
    const auto distance = [](int from, int to) { return static_cast<std::size_t>(std::int64_t{to} - from); };
    const auto search = [&](std::size_t low, std::size_t high) {
        const auto at = records.begin() + static_cast<std::ptrdiff_t>(low);
        const auto end = records.begin() + static_cast<std::ptrdiff_t>(high);
        const auto isBefore = [](const Record& r, int key) { return r.id < key; };
        return static_cast<std::size_t>(std::lower_bound(at, end, id, isBefore) - records.begin());
    };
    const std::size_t low = last - std::min(last, distance(id, records.back().id));
    const std::size_t high = std::min(last, distance(records.front().id, id));
    const std::size_t place = low >= high || records[low].id >= id ? low : search(low + 1, high);
    assert(low <= last && high <= last && place <= last);
    const bool isRight = place > 0 && records[place - 1].id < id && records[place].id >= id;
    return isRight ? place : search(0, last);  // some records share an id
}

/// Record with this id in a vector sorted by id, the first of several, or null. The pointer lives as long as the vector
/// is not changed.
template <class Record>
const Record* FindOrNull(const std::vector<Record>& records, int id)
{
    const std::size_t place = LowerBound(records, id);
    return place == records.size() || records[place].id != id ? nullptr : &records[place];
}

/// Record with this id in a vector sorted by id, the first of several.
/// @throws jxException  "error finding <name> <id>", for a reference to nothing is a fault of the model
template <class Record>
const Record& FindById(const std::vector<Record>& records, int id)
{
    const Record* record = FindOrNull(records, id);
    if (record == nullptr)
        ThrowMissingRecord(Record::name(), id);
    return *record;
}

/// 1-based position of the node with this id: what location tables and the id table count by.
/// @throws jxException  "error finding node <id>"
inline int NodePosition(const std::vector<jxNd>& nodes, int id)
{
    return static_cast<int>(&FindById(nodes, id) - nodes.data()) + 1;
}

/// All records with this id in a vector sorted by id, as iterators [first, last), in their order: the loads of one
/// element, of which there may be many.
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
