// The tables of docs/file-formats.md are formed from the schema, and so from the catalogue of fields. With
// QVXFEM_WRITE_TABLES set in the environment the test writes them anew.
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "files/file_schema.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

using Schema = nlohmann::ordered_json;

const std::string kDocument = QVXFEM_SOURCE_DIR "/docs/file-formats.md";
const std::string kOpening = "<!-- fields of ";
const std::string kClosing = "<!-- end of fields -->";

std::string TypeOf(const Schema& property);

std::string TypeOfInteger(const Schema& property)
{
    if (!property.contains("minimum"))
        return "integer";
    const std::string least = property["minimum"].dump();
    if (property.contains("maximum"))
        return least + " to " + property["maximum"].dump();
    return "integer >= " + least;
}

std::string TypeOfText(const Schema& property)
{
    if (property.contains("pattern")) {  // ^[letters]{count}$
        const std::string pattern = property["pattern"];
        const std::size_t bracket = pattern.find(']');
        const std::string count = pattern.substr(bracket + 2, pattern.size() - bracket - 4);
        return count + " of `" + pattern.substr(2, bracket - 2) + "`";
    }
    return property.contains("maxLength") ? "text, " + property["maxLength"].dump() + " characters" : "text";
}

std::string TypeOfArray(const Schema& property)
{
    if (property.contains("prefixItems")) {
        std::string row;
        for (const Schema& column : property["prefixItems"])
            row += (row.empty() ? "[" : ", ") + column["title"].get<std::string>();
        return row + "]";
    }
    const std::string items = TypeOf(property["items"]);
    return property.contains("minItems") ? property["minItems"].dump() + " x " + items : "list of " + items;
}

std::string TypeOf(const Schema& property)
{
    if (property.contains("const"))
        return property["const"].dump();
    if (property.contains("anyOf"))
        return TypeOf(property["anyOf"][0]) + " or " + TypeOf(property["anyOf"][1]);
    const std::string type = property.value("type", "object");
    if (type == "integer")
        return TypeOfInteger(property);
    if (type == "string")
        return TypeOfText(property);
    return type == "array" ? TypeOfArray(property) : type;
}

// Arrays of one value are told by it.
std::string DefaultOf(const Schema& property)
{
    if (!property.contains("default"))
        return "";
    const Schema& value = property["default"];
    const auto isFirst = [&](const Schema& element) { return element == value[0]; };
    if (value.is_array() && !value.empty() && !value[0].is_structured() &&
        std::all_of(value.begin(), value.end(), isFirst))
        return value[0].dump();
    return value.dump();
}

// The columns that a row of numbers names carry their units; a list of records has the fields of its records below.
std::string UnitOf(const Schema& property)
{
    const Schema& inner = property.contains("items") && property["items"].is_object() ? property["items"] : property;
    if (!inner.contains("prefixItems"))
        return property.value("unit", "");
    std::string units;
    for (const Schema& column : inner["prefixItems"])
        units += (units.empty() ? "" : ", ") + column.value("unit", "-");
    return units;
}

void AddRows(std::ostringstream& table, const Schema& object, const std::string& prefix)
{
    for (const auto& [key, property] : object["properties"].items()) {
        if (key == "bSelected")  // of every record: told once
            continue;
        const std::string name = property.contains("written") ? prefix + key : "**" + prefix + key + "**";
        std::string meaning = property.value("description", "");
        if (property.contains("refersTo"))
            meaning = property["refersTo"].get<std::string>() + (meaning.empty() ? "" : ": ") + meaning;
        table << "| " << name << " | " << TypeOf(property) << " | " << UnitOf(property) << " | " << DefaultOf(property)
              << " | " << meaning << " |\n";
        const Schema* inner = &property;
        for (; inner->contains("items"); inner = &(*inner)["items"])
            continue;
        if (inner->contains("anyOf"))  // a record or nothing; the units are told below
            inner = &(*inner)["anyOf"][0];
        if (inner->contains("properties"))
            AddRows(table, *inner, prefix + key + (inner == &property ? "." : "[]."));
    }
}

/// Table of what a marker names: "model", "settings", the key of a list of the model file, "results", "combination".
std::string Table(const std::string& subject)
{
    const Schema model = Schema::parse(ModelFileSchema());
    Schema results = Schema::parse(ResultsFileSchema());
    std::ostringstream table;
    table << "| key | type | unit | default | meaning |\n|---|---|---|---|---|\n";
    if (subject == "model") {
        Schema root = model;  // the lists, the settings and the units have tables of their own
        for (auto& [key, property] : root["properties"].items())
            if (property.contains("items") && property["items"].is_object())
                property["items"].erase("properties");
        for (const char* key : {"settings", "formats"})
            root["properties"][key].erase("properties");
        AddRows(table, root, "");
    } else if (subject == "settings") {
        AddRows(table, model["properties"]["settings"], "");
    } else if (subject == "results") {
        AddRows(table, results, "");
    } else if (subject == "combination") {
        AddRows(table, results["$defs"]["combination"], "");
    } else {
        AddRows(table, model.at("properties").at(subject).at("items"), "");
    }
    return table.str();
}

std::string Replaced(const std::string& document)
{
    std::string result;
    std::size_t from = 0;
    for (std::size_t at = 0; (at = document.find(kOpening, from)) != std::string::npos;) {
        const std::size_t name = at + kOpening.size();
        const std::size_t line = document.find('\n', at);
        const std::string subject = document.substr(name, document.find(' ', name) - name);
        const std::size_t end = document.find(kClosing, at);
        if (end == std::string::npos)
            throw std::runtime_error("the table of " + subject + " has no end");
        result += document.substr(from, line + 1 - from) + "\n" + Table(subject) + "\n";
        from = end;
    }
    return result + document.substr(from);
}

TEST(FormatTables, OfTheDocumentAreThoseOfTheCatalogue)
{
    const RecordingHost host;
    std::ostringstream text;
    text << std::ifstream(kDocument).rdbuf();
    const std::string expected = Replaced(text.str());
    if (std::getenv("QVXFEM_WRITE_TABLES") != nullptr)
        std::ofstream(kDocument) << expected;
    else
        EXPECT_TRUE(text.str() == expected)
            << "the catalogue has changed: QVXFEM_WRITE_TABLES=1 build/debug/tests/files/test_files "
               "--gtest_filter='FormatTables*' writes the tables anew";
}

TEST(FormatTables, EveryListOfTheModelFileHasOne)
{
    const RecordingHost host;
    std::ostringstream text;
    text << std::ifstream(kDocument).rdbuf();
    const Schema model = Schema::parse(ModelFileSchema());
    for (const auto& [key, property] : model["properties"].items()) {
        if (property.contains("items") && property["items"].contains("properties")) {
            EXPECT_NE(text.str().find(kOpening + key + " "), std::string::npos) << key;
        }
    }
}

}  // namespace
}  // namespace qvx::test
