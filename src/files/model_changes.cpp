#include "files/model_changes.h"

#include <algorithm>
#include <numeric>
#include <type_traits>
#include <utility>

#include <fmt/format.h>

#include "files/id_ranges.h"
#include "model/struct_fields.h"
#include "model/units.h"
#include "platform/cstring.h"

namespace qvx {
namespace {

template <class Value>
bool IsSame(const Value& a, const Value& b)
{
    if constexpr (std::is_array_v<Value>) {
        return std::equal(std::begin(a), std::end(a), std::begin(b),
                          [](const auto& x, const auto& y) { return IsSame(x, y); });
    } else if constexpr (Described<Value>) {
        bool isSame = true;
        ForEachField(FieldsOf<Value>::list, [&](const auto& field) {
            isSame = isSame && (field.key == "no" || IsSame(a.*field.member, b.*field.member));
        });
        return isSame;
    } else if constexpr (Described<typename ElementOf<Value>::Type>) {
        return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                          [](const auto& x, const auto& y) { return IsSame(x, y); });
    } else {
        return a == b;
    }
}

struct Differences
{
    std::vector<int> added;
    std::vector<int> removed;
    std::vector<int> changed;

    std::string Text() const
    {
        std::string text;
        const auto append = [&text](const std::vector<int>& ids, const char* what) {
            if (!ids.empty())
                text += fmt::format("{}{} {} ({})", text.empty() ? "" : ", ", ids.size(), what, IdRanges(ids));
        };
        append(added, "added");
        append(removed, "removed");
        append(changed, "changed");
        return text;
    }
};

template <class Record>
std::vector<const Record*> InOrderOfIds(const std::vector<Record>& records)
{
    std::vector<const Record*> ordered;
    ordered.reserve(records.size());
    for (const Record& record : records)
        ordered.push_back(&record);
    std::stable_sort(ordered.begin(), ordered.end(), [](const Record* a, const Record* b) { return a->id < b->id; });
    return ordered;
}

// Records of one id on both sides: those without a partner came or went, the others are as they were or changed.
template <class At>
void ComparePair(Differences& out, int id, At before, At beforeEnd, At after, At afterEnd)
{
    for (; before != beforeEnd && after != afterEnd; ++before, ++after)
        if (!IsSame(**before, **after))
            out.changed.push_back(id);
    out.removed.insert(out.removed.end(), static_cast<std::size_t>(beforeEnd - before), id);
    out.added.insert(out.added.end(), static_cast<std::size_t>(afterEnd - after), id);
}

template <class Record>
Differences CompareById(const std::vector<Record>& before, const std::vector<Record>& after)
{
    Differences out;
    const auto was = InOrderOfIds(before);
    const auto is = InOrderOfIds(after);
    for (auto b = was.begin(), a = is.begin(); b != was.end() || a != is.end();) {
        const bool takesBefore = b != was.end() && (a == is.end() || (*b)->id <= (*a)->id);
        const int id = takesBefore ? (*b)->id : (*a)->id;
        const auto isOther = [id](const Record* r) { return r->id != id; };
        const auto bEnd = std::find_if(b, was.end(), isOther);
        const auto aEnd = std::find_if(a, is.end(), isOther);
        ComparePair(out, id, b, bEnd, a, aEnd);
        b = bEnd;
        a = aEnd;
    }
    return out;
}

template <class Record>
void CompareLists(std::vector<std::string>& lines, const std::string& name, const std::vector<Record>& before,
                  const std::vector<Record>& after)
{
    if constexpr (requires(const Record& record) { record.id; }) {
        if (const std::string text = CompareById(before, after).Text(); !text.empty())
            lines.push_back(name + ": " + text);
    } else if (!IsSame(before, after)) {
        lines.push_back(name + ": changed");
    }
}

void CompareLoads(std::vector<std::string>& lines, const CjxStruct& before, const CjxStruct& after)
{
    const jxCaseLoad none;
    for (std::size_t c = 0; c < std::max(before.caseLoads.size(), after.caseLoads.size()); ++c) {
        const jxCaseLoad& was = c < before.caseLoads.size() ? before.caseLoads[c] : none;
        const jxCaseLoad& is = c < after.caseLoads.size() ? after.caseLoads[c] : none;
        const std::string label = c < after.loadCases.size() ? ToUtf8(after.loadCases[c].label) : std::to_string(c);
        ForEachField(FieldsOf<jxCaseLoad>::list, [&](const auto& list) {
            CompareLists(lines, fmt::format("{} of {}", list.key, label), was.*list.member, is.*list.member);
        });
    }
}

void CompareUnits(std::vector<std::string>& lines, const jxUnit& before, const jxUnit& after)
{
    for (int q = 0; q < kQuantityCount; ++q)
        if (before.unit[q] != after.unit[q])
            lines.push_back(fmt::format("units: {} {} -> {}", ToUtf8(QuantityLabel(static_cast<Quantity>(q))),
                                        ToUtf8(UnitName(before.unit[q])), ToUtf8(UnitName(after.unit[q]))));
}

}  // namespace

std::vector<std::string> ChangeLines(const CjxStruct& before, const CjxStruct& after)
{
    std::vector<std::string> lines;
    CompareUnits(lines, before.units, after.units);
    ForEachField(kModelLists, [&](const auto& list) {
        if constexpr (std::is_same_v<typename std::remove_cvref_t<decltype(list)>::Element, jxCaseLoad>)
            CompareLoads(lines, before, after);
        else
            CompareLists(lines, std::string(list.key), before.*list.member, after.*list.member);
    });
    return lines;
}

}  // namespace qvx
