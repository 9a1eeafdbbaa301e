#pragma once

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "files/json_document.h"
#include "model/fields/record_fields.h"
#include "platform/cstring.h"

// Reading of single values and of whole records by their lists of fields. Every function throws JsonFault with the
// path of the value that is not what it should be.

namespace qvx {

void ReadValue(const Json& value, const JsonPath& path, const ValueRule& rule, int& out);
void ReadValue(const Json& value, const JsonPath& path, const ValueRule& rule, unsigned char& out);
void ReadValue(const Json& value, const JsonPath& path, const ValueRule& rule, double& out);
/// true or false, or 1 or 0.
void ReadValue(const Json& value, const JsonPath& path, const ValueRule& rule, bool& out);
void ReadValue(const Json& value, const JsonPath& path, const ValueRule& rule, std::wstring& out);
void ReadValue(const Json& value, const JsonPath& path, const ValueRule& rule, CString& out);
/// A code of one letter.
void ReadValue(const Json& value, const JsonPath& path, const ValueRule& rule, wchar_t& out);
/// Abscissa and ordinate, [x, y].
void ReadValue(const Json& value, const JsonPath& path, const ValueRule& rule, std::pair<double, double>& out);

/// Text into an array of `capacity` characters, the terminating zero included. With letters in the rule the text is a
/// string of codes: it fills the array and consists of these letters.
void ReadTextField(const Json& value, const JsonPath& path, const ValueRule& rule, wchar_t* out, std::size_t capacity);

/// Refuses anything but an array; with a size of 0 or more, any other number of elements.
void ExpectArray(const Json& value, const JsonPath& path, std::ptrdiff_t size = -1);
void ExpectObject(const Json& value, const JsonPath& path);
[[noreturn]] void ThrowUnknownKey(const JsonPath& path);

template <Described Record>
void ReadValue(const Json& value, const JsonPath& path, const ValueRule& rule, Record& out);

template <std::size_t N>
void ReadValue(const Json& value, const JsonPath& path, const ValueRule& rule, wchar_t (&out)[N])
{
    ReadTextField(value, path, rule, out, N);
}

template <class Element, std::size_t N>
void ReadValue(const Json& value, const JsonPath& path, const ValueRule& rule, Element (&out)[N])
{
    ExpectArray(value, path, N);
    for (std::size_t i = 0; i < N; ++i)
        ReadValue(value[i], path.Element(i), rule, out[i]);
}

template <class Element>
void ReadValue(const Json& value, const JsonPath& path, const ValueRule& rule, std::vector<Element>& out)
{
    ExpectArray(value, path);
    out.clear();
    out.reserve(value.size());
    for (std::size_t i = 0; i < value.size(); ++i)
        ReadValue(value[i], path.Element(i), rule, out.emplace_back());
}

template <class Element, class Less>
void ReadValue(const Json& value, const JsonPath& path, const ValueRule& rule, std::set<Element, Less>& out)
{
    ExpectArray(value, path);
    out.clear();
    for (std::size_t i = 0; i < value.size(); ++i) {
        Element element;
        ReadValue(value[i], path.Element(i), rule, element);
        if (!out.insert(std::move(element)).second)
            throw JsonFault(path.Element(i), "stands twice in the list");
    }
}

/// Reads the member into the field of this key; false when the list has no such key.
template <class Record, class List>
bool ReadMember(const std::string& key, const Json& value, const JsonPath& path, const List& list, Record& out)
{
    return VisitField(list, key, [&](const auto& field) { ReadValue(value, path, field.rule, out.*field.member); });
}

/// A record from its row of numbers.
template <RowRecord Record>
void ReadRow(const Json& value, const JsonPath& path, Record& out)
{
    ExpectArray(value, path, std::tuple_size_v<decltype(FieldsOf<Record>::list)>);
    std::size_t column = 0;
    ForEachField(FieldsOf<Record>::list, [&](const auto& field) {
        ReadValue(value[column], path.Element(column), field.rule, out.*field.member);
        ++column;
    });
}

/// A record from its JSON object: fields that are left out keep their defaults, unknown keys are refused.
template <Described Record>
void ReadValue(const Json& value, const JsonPath& path, const ValueRule&, Record& out)
{
    if constexpr (RowRecord<Record>)
        return ReadRow(value, path, out);
    ExpectObject(value, path);
    for (const auto& [key, member] : value.template get_ref<const Json::object_t&>()) {
        const JsonPath place = path.Member(key);
        if (!ReadMember(key, member, place, FieldsOf<Record>::list, out))
            ThrowUnknownKey(place);
    }
}

}  // namespace qvx
