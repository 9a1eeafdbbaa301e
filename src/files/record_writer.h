#pragma once

#include <algorithm>
#include <array>
#include <cassert>
#include <set>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "files/json_writer.h"
#include "model/fields/record_fields.h"
#include "platform/cstring.h"

// Writing of single values and of whole records by the lists of fields that reading goes by.

namespace qvx {

inline void WriteValue(JsonWriter& out, int value)
{
    out.Number(value);
}
inline void WriteValue(JsonWriter& out, bool value)
{
    out.Bool(value);
}
inline void WriteValue(JsonWriter& out, unsigned char value)
{
    out.Number(static_cast<int>(value));
}
inline void WriteValue(JsonWriter& out, double value)
{
    out.Number(value);
}
inline void WriteValue(JsonWriter& out, wchar_t value)
{
    out.Text(std::wstring_view(&value, 1));
}
inline void WriteValue(JsonWriter& out, const std::wstring& value)
{
    out.Text(std::wstring_view(value));
}
inline void WriteValue(JsonWriter& out, const CString& value)
{
    out.Text(std::wstring_view(value.Text()));
}
inline void WriteValue(JsonWriter& out, const std::pair<double, double>& value)
{
    const double numbers[2] = {value.first, value.second};
    out.Numbers(numbers, 2);
}

template <Described Record>
void WriteValue(JsonWriter& out, const Record& record);

/// Whether records of this type stand on lines of their own.
template <class Record>
inline constexpr bool kTakesLines = Described<Record> && !RowRecord<Record>;

template <class Element>
inline constexpr Layout kLayoutOfList = kTakesLines<typename ElementOf<Element>::Type> ? Layout::Lines : Layout::Line;

template <std::size_t N>
void WriteValue(JsonWriter& out, const wchar_t (&value)[N])
{
    out.Text(std::wstring_view(value));
}

template <std::size_t N>
void WriteValue(JsonWriter& out, const double (&values)[N])
{
    out.Numbers(values, N);
}

template <std::size_t N>
void WriteValue(JsonWriter& out, const int (&values)[N])
{
    out.Numbers(values, N);
}

inline void WriteValue(JsonWriter& out, const std::vector<double>& values)
{
    out.Numbers(values.data(), static_cast<int>(values.size()));
}

/// The elements of an array, a vector or a set.
template <class List>
void WriteElements(JsonWriter& out, const List& values, Layout layout)
{
    out.BeginArray(layout);
    for (const auto& value : values)
        WriteValue(out, value);
    out.EndArray();
}

template <class Element, std::size_t N>
void WriteValue(JsonWriter& out, const Element (&values)[N])
{
    WriteElements(out, values, kLayoutOfList<Element>);
}

template <class Element>
void WriteValue(JsonWriter& out, const std::vector<Element>& values)
{
    WriteElements(out, values, kLayoutOfList<Element>);
}

template <class Element, class Less>
void WriteValue(JsonWriter& out, const std::set<Element, Less>& values)
{
    WriteElements(out, values, Layout::Line);
}

/// Whether two fields hold the same, whatever their type.
template <class Value>
bool IsSame(const Value& a, const Value& b)
{
    return a == b;
}
template <class Element, std::size_t N>
bool IsSame(const Element (&a)[N], const Element (&b)[N])
{
    for (std::size_t i = 0; i < N; ++i)
        if (!IsSame(a[i], b[i]))
            return false;
    return true;
}

/// A record as a row of its numbers, or the columns of it that a rule names.
template <RowRecord Record>
void WriteRow(JsonWriter& out, const Record& record, const ValueRule& rule)
{
    const auto numbers =
        std::apply([&](const auto&... field) { return std::array{record.*field.member...}; }, FieldsOf<Record>::list);
    const int nColumns = static_cast<int>(numbers.size());
    assert(rule.firstColumn < nColumns);
    out.Numbers(numbers.data() + rule.firstColumn, std::min(rule.nColumns, nColumns - rule.firstColumn));
}

template <class Field>
void WriteMember(JsonWriter& out, const Field& field, const typename Field::Record& record)
{
    out.Key(field.key);
    if constexpr (RowRecord<typename Field::Value>)
        WriteRow(out, record.*field.member, field.rule);
    else
        WriteValue(out, record.*field.member);
}

/// The members of an object: fields that are always written, and those that differ from the default record.
template <class Record, class List>
void WriteMembers(JsonWriter& out, const Record& record, const Record& defaults, const List& list)
{
    ForEachField(list, [&](const auto& field) {
        constexpr Presence presence = std::remove_cvref_t<decltype(field)>::presence;
        if constexpr (presence == Presence::Always) {
            WriteMember(out, field, record);
        } else if constexpr (presence == Presence::WhenUnusual) {
            if (!IsSame(record.*field.member, defaults.*field.member))
                WriteMember(out, field, record);
        }
    });
}

/// A record stands in one line. One without an id that holds lists of records gives each of its members a line.
template <class Record>
constexpr Layout LayoutOfRecord()
{
    constexpr bool hasLists = std::apply(
        [](const auto&... field) {
            return (kTakesLines<typename std::remove_cvref_t<decltype(field)>::Element> || ...);
        },
        FieldsOf<Record>::list);
    return hasLists && !requires(Record record)
    {
        record.id;
    }
    ? Layout::Lines : Layout::Line;
}

template <Described Record>
void WriteValue(JsonWriter& out, const Record& record)
{
    if constexpr (RowRecord<Record>) {
        WriteRow(out, record, {});
    } else {
        static const Record defaults{};
        out.BeginObject(LayoutOfRecord<Record>());
        WriteMembers(out, record, defaults, FieldsOf<Record>::list);
        out.EndObject();
    }
}

}  // namespace qvx
