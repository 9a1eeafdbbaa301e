#pragma once

#include <cassert>
#include <string>
#include <string_view>

#include "files/json_document.h"
#include "files/record_reader.h"

// Arguments of operations and generators are read like records, by lists of their fields: unknown keys and wrong types
// are refused with the place of the value.

namespace qvx {

/// Fills a record from the members of the one object of a text.
template <Described Record>
class RecordReceiver : public JsonReceiver
{
public:
    explicit RecordReceiver(Record& record) : record_(record) {}

    void BeginMember(const std::string& key) override
    {
        if (!VisitField(FieldsOf<Record>::list, key, [](const auto&) {}))
            throw JsonFault(key, "unknown key");
    }
    bool TakesElements(const std::string&) const override { return false; }
    void ReceiveElement(const std::string&, std::size_t, const Json&) override {}
    void ReceiveMember(const std::string& key, const Json& value) override
    {
        [[maybe_unused]] const bool isKnown =
            ReadMember(key, value, JsonPath{nullptr, key, -1}, FieldsOf<Record>::list, record_);
        assert(isKnown && "BeginMember let it pass");
    }

private:
    Record& record_;
};

/// Arguments by their fields, from one JSON object; what is left out stays as it is in the defaults. No text at all is an
/// empty object. Throws JsonFault.
template <Described Record>
Record ReadArguments(std::string_view text, Record arguments = {})
{
    RecordReceiver<Record> receiver(arguments);
    ParseJsonObject(text.empty() ? "{}" : text, receiver);
    return arguments;
}

}  // namespace qvx
