#pragma once

#include <set>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "files/json_writer.h"
#include "model/fields/record_fields.h"
#include "platform/cstring.h"
#include "tools/jx_point.h"

// Writing of single values and of whole records by the lists of fields that reading goes by.

namespace qvx {

inline void WriteValue(JsonWriter& out, int value)
{
    out.Number(value);
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
inline void WriteValue(JsonWriter& out, const jxPoint& value)
{
    const double coordinates[3] = {value.x, value.y, value.z};
    out.Numbers(coordinates, 3);
}
inline void WriteValue(JsonWriter& out, const std::pair<double, double>& value)
{
    const double numbers[2] = {value.first, value.second};
    out.Numbers(numbers, 2);
}

template <Described Record>
void WriteValue(JsonWriter& out, const Record& record);

template <std::size_t N>
void WriteValue(JsonWriter& out, const wchar_t (&value)[N])
{
    out.Text(std::wstring_view(value));
}

template <class Element, std::size_t N>
void WriteValue(JsonWriter& out, const Element (&values)[N])
{
    out.BeginArray(Layout::Line);
    for (const Element& value : values)
        WriteValue(out, value);
    out.EndArray();
}

template <class Element>
void WriteValue(JsonWriter& out, const std::vector<Element>& values)
{
    out.BeginArray(Described<Element> ? Layout::Lines : Layout::Line);
    for (const Element& value : values)
        WriteValue(out, value);
    out.EndArray();
}

template <class Element, class Less>
void WriteValue(JsonWriter& out, const std::set<Element, Less>& values)
{
    out.BeginArray(Layout::Line);
    for (const Element& value : values)
        WriteValue(out, value);
    out.EndArray();
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

/// The members of an object: fields that are always written, and those that differ from the default record.
template <class Record, class List>
void WriteMembers(JsonWriter& out, const Record& record, const Record& defaults, const List& list)
{
    ForEachField(list, [&](const auto& field) {
        if constexpr (std::remove_cvref_t<decltype(field)>::presence == Presence::WhenUnusual) {
            if (IsSame(record.*field.member, defaults.*field.member))
                return;
        }
        out.Key(field.key);
        WriteValue(out, record.*field.member);
    });
}

template <Described Record>
void WriteValue(JsonWriter& out, const Record& record)
{
    static const Record defaults{};
    // A record stands in one line, unless it holds lists of records itself.
    constexpr bool hasLists = std::apply(
        [](const auto&... field) { return (Described<typename std::remove_cvref_t<decltype(field)>::Element> || ...); },
        FieldsOf<Record>::list);
    out.BeginObject(hasLists ? Layout::Lines : Layout::Line);
    WriteMembers(out, record, defaults, FieldsOf<Record>::list);
    out.EndObject();
}

}  // namespace qvx
