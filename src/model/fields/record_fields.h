#pragma once

#include <climits>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "model/fields/measure.h"

// The one catalogue of fields: what a record holds, for everything that walks records. Files, their schema and tables,
// unit conversion, copies of the input and checks of references know no field by name.

namespace qvx {

/// What an integer or a text names, when it stands for another record of the model.
enum class Reference {
    None,
    Node,
    NodeOrNone,  ///< 0 names none
    Material,
    Section,
    Thickness,
    // Those below may name nothing: such records are kept without effect, or refused by the run that needs them.
    Member,
    Shell3,
    Shell4,
    Brick,
    MemberCriterion,  ///< of the beam or the column criteria, by the member's designType
    PlateCriterion,
    SteelCriterion,
    LoadCaseLabel,
    LoadCaseIndex,
    CombinationIndex,
    BarIndex,  ///< into the bars of the current table
};

/// What a value must be and means, beyond its type.
struct ValueRule
{
    int least = INT_MIN;               ///< of an integer
    int most = INT_MAX;                ///< of an integer
    const wchar_t* letters = nullptr;  ///< of a text of codes: the letters that may stand in it
    Reference refersTo = Reference::None;
    Measure measure = {};
    bool isDefaultOpen = false;  ///< a file or a preference says the default: none is told
    // Of lists of records
    bool isSortedById = true;                ///< else the order of the file stays
    bool mayRepeatIds = false;               ///< effects of records with one id add
    Reference idRefersTo = Reference::None;  ///< what the ids of the records name, where the record leaves it open
    // Of records that are written as a row of numbers: the columns that this field shows
    int firstColumn = 0;
    int nColumns = INT_MAX;
};

/// Where a field stands in a file.
enum class Presence {
    Always,       ///< in every record
    WhenUnusual,  ///< only where it differs from the record's default
    Never,        ///< in memory alone
};

template <class Value>
struct ElementOf
{
    using Type = Value;
};
template <class Element_>
struct ElementOf<std::vector<Element_>>
{
    using Type = Element_;
};
template <class Element_, std::size_t N>
struct ElementOf<Element_[N]>
{
    using Type = typename ElementOf<Element_>::Type;
};

/// One field of a record.
template <class Record_, class Value_, Presence kPresence>
struct Field
{
    static constexpr Presence presence = kPresence;
    using Record = Record_;
    using Value = Value_;
    using Element = typename ElementOf<Value>::Type;  ///< of a vector or an array, else the value itself

    std::string_view key;
    Value Record::*member;
    std::string_view meaning;  ///< one line
    ValueRule rule;
};

template <class Record, class Value>
constexpr Field<Record, Value, Presence::Always> Always(std::string_view key, Value Record::*member,
                                                        std::string_view meaning, ValueRule rule = {})
{
    return {key, member, meaning, rule};
}

template <class Record, class Value>
constexpr Field<Record, Value, Presence::WhenUnusual> WhenUnusual(std::string_view key, Value Record::*member,
                                                                  std::string_view meaning, ValueRule rule = {})
{
    return {key, member, meaning, rule};
}

template <class Record, class Value>
constexpr Field<Record, Value, Presence::Never> InMemory(std::string_view key, Value Record::*member,
                                                         std::string_view meaning, ValueRule rule = {})
{
    return {key, member, meaning, rule};
}

/// The rule of a number with a unit.
constexpr ValueRule In(const Measure& measure)
{
    return {.measure = measure};
}
constexpr ValueRule In(Quantity quantity, int power = 1)
{
    return {.measure = measure::Of(quantity, power)};
}

/// The fields of a record: specialized with `static constexpr auto list = RecordFields(Always(...), ...)`, and with
/// `static constexpr bool isRow = true` where files show the record as a row of its numbers.
template <class Record>
struct FieldsOf;

/// Whether records of this type have a list of fields.
template <class Record>
concept Described = requires
{
    FieldsOf<Record>::list;
};

/// Whether files show records of this type as a row of numbers.
template <class Record>
concept RowRecord = Described<Record> && requires
{
    FieldsOf<Record>::isRow;
};

/// A list of fields, followed by the position and the selection bits where the record has them.
template <class Record, class... Values, Presence... kPresences>
constexpr auto RecordFields(Field<Record, Values, kPresences>... fields)
{
    if constexpr (requires(Record record) { record.no; }) {
        return std::make_tuple(
            fields...,
            WhenUnusual("bSelected", &Record::bSelected, "selection bits of the host", {.least = 0, .most = 255}),
            InMemory("no", &Record::no, "position from 1, by the run"));
    } else {
        return std::make_tuple(fields...);
    }
}

/// Calls visit(field) for every field of a list.
template <class List, class Visitor>
constexpr void ForEachField(const List& list, Visitor&& visit)
{
    std::apply([&](const auto&... field) { (visit(field), ...); }, list);
}

/// Whether a field has a key in files.
template <class Field>
constexpr bool IsInFiles = std::remove_cvref_t<Field>::presence != Presence::Never;

/// Calls visit(field) for the field with this key; false when the list has none.
template <class List, class Visitor>
bool VisitField(const List& list, std::string_view key, Visitor&& visit)
{
    const auto take = [&](const auto& field) {
        if constexpr (IsInFiles<decltype(field)>) {
            if (field.key == key) {
                visit(field);
                return true;
            }
        }
        return false;
    };
    return std::apply([&](const auto&... field) { return (take(field) || ...); }, list);
}

}  // namespace qvx
