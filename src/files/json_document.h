#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace qvx {

/// A value of a JSON file with its members in the order of the file.
using Json = nlohmann::ordered_json;

/// Where a value stands in its file: a chain of keys and indices on the stack of the readers, spelled only for a message.
struct JsonPath
{
    const JsonPath* parent = nullptr;
    std::string_view key;       ///< member of the parent, empty for an element of an array
    std::ptrdiff_t index = -1;  ///< element of the parent

    JsonPath Member(std::string_view name) const { return {this, name, -1}; }
    JsonPath Element(std::size_t position) const { return {this, {}, static_cast<std::ptrdiff_t>(position)}; }
    /// "beams[12].node2"; empty for the file's one object.
    std::string Text() const;
};

/// A fault in a JSON text: its place and what is wrong there. The readers of files add the file's name.
class JsonFault : public std::runtime_error
{
public:
    JsonFault(std::string place, const std::string& reason);
    JsonFault(const JsonPath& path, const std::string& reason);

    const std::string& Place() const { return place_; }

private:
    std::string place_;
};

/// Receives the members of a file's one object while the text is read, so that a large file never stands in memory
/// as a tree. Every function may throw JsonFault; reading ends there.
class JsonReceiver
{
public:
    virtual ~JsonReceiver() = default;

    /// Called once per key before its value; refuses keys that are unknown.
    virtual void BeginMember(const std::string& key) = 0;
    /// Whether the elements of this member are to be handed over one by one, should it be an array.
    virtual bool TakesElements(const std::string& key) const = 0;
    virtual void ReceiveElement(const std::string& key, std::size_t index, const Json& value) = 0;
    virtual void ReceiveMember(const std::string& key, const Json& value) = 0;
};

/// Reads one JSON object (UTF-8, RFC 8259) and hands its members to the receiver.
/// Throws JsonFault with line and column on bad syntax, on a number beyond the range of double, on nesting deeper than
/// 16 levels, and with the path on a key that stands twice in one object or on an object of more than 256 members.
void ParseJsonObject(std::string_view text, JsonReceiver& receiver);

}  // namespace qvx
