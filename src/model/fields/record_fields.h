#pragma once

#include <climits>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace qvx {

/// What an integer names, when it is the id of another record of the model.
enum class Reference { None, Node, NodeOrNone, Material, Section, Thickness };

/// What a value must be, beyond its type.
struct ValueRule
{
    int least = INT_MIN;               ///< of an integer
    int most = INT_MAX;                ///< of an integer
    const wchar_t* letters = nullptr;  ///< of a text of codes: the letters that may stand in it
    Reference refersTo = Reference::None;
};

/// When a field is written.
enum class Presence {
    Always,       ///< in every record
    WhenUnusual,  ///< only where it differs from the record's default
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

/// One field of a record: its key in the file and its place in the record. Reading and writing go by the same list of
/// fields, so that neither knows a key that the other does not.
template <class Record, class Value, Presence kPresence>
struct Field
{
    static constexpr Presence presence = kPresence;
    using Element = typename ElementOf<Value>::Type;  ///< of a vector, else the value itself

    std::string_view key;
    Value Record::*member;
    ValueRule rule;
};

template <class Record, class Value>
constexpr Field<Record, Value, Presence::Always> Always(std::string_view key, Value Record::*member,
                                                        ValueRule rule = {})
{
    return {key, member, rule};
}

template <class Record, class Value>
constexpr Field<Record, Value, Presence::WhenUnusual> WhenUnusual(std::string_view key, Value Record::*member,
                                                                  ValueRule rule = {})
{
    return {key, member, rule};
}

/// The fields of a record: specialized with `static constexpr auto list = std::make_tuple(Always(...), ...)`.
template <class Record>
struct FieldsOf;

/// Whether records of this type have a list of fields.
template <class Record>
concept Described = requires
{
    FieldsOf<Record>::list;
};

/// Calls visit(field) for every field of a list.
template <class List, class Visitor>
constexpr void ForEachField(const List& list, Visitor&& visit)
{
    std::apply([&](const auto&... field) { (visit(field), ...); }, list);
}

/// Calls visit(field) for the field with this key; false when the list has none.
template <class List, class Visitor>
bool VisitField(const List& list, std::string_view key, Visitor&& visit)
{
    return std::apply([&](const auto&... field) { return ((field.key == key && (visit(field), true)) || ...); }, list);
}

}  // namespace qvx
