#include "files/file_schema.h"

#include <cassert>
#include <set>
#include <type_traits>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "files/json_output.h"
#include "files/record_writer.h"
#include "files/results_records.h"
#include "model/struct_fields.h"
#include "model/unit_systems.h"
#include "model/units.h"

namespace qvx {
namespace {

using Schema = nlohmann::ordered_json;

/// What the schema says of fields: a model file may leave each out, a results file holds them.
enum class FileKind { Model, Results };

std::string NameOf(Quantity quantity)
{
    return ToUtf8(QuantityLabel(quantity));
}

// "Dimension^2", "Force s^2/Length", "1/Temperature"; empty for a plain number.
std::string NameOf(const QuantityUnit& unit)
{
    std::string name;
    if (unit.of != kQuantityCount)
        name = NameOf(unit.of);
    if (unit.power != 1)
        name.append("^").append(std::to_string(unit.power));
    if (unit.times != kQuantityCount)
        name += " * " + NameOf(unit.times);
    if (unit.seconds != 0)
        name.append(" s^").append(std::to_string(unit.seconds));
    if (unit.per != kQuantityCount)
        name = (name.empty() ? "1" : name) + "/" + NameOf(unit.per);
    return name;
}

// Names of units that go by the position of the number; "-" where it has none.
std::string Listed(const std::vector<QuantityUnit>& units)
{
    std::string list;
    for (const QuantityUnit& unit : units)
        list += (list.empty() ? "" : ", ") + (unit.IsPlain() ? "-" : NameOf(unit));
    return list;
}

// For people: "unit" is no keyword of JSON Schema, and validators pass over what they do not know (draft 2020-12, core,
// section 4.3.1).
std::string NameOf(const Measure& measure)
{
    const auto& units = measure.units;
    switch (measure.rule) {
    case UnitRule::Plain:
    // A plain number has no unit; one whose unit is that of its list was resolved before (MeasureOf).
    case UnitRule::OfTheList:
        return {};
    case UnitRule::Same:
    case UnitRule::ListText:
        return NameOf(units[0]);
    case UnitRule::Periodic: {
        assert(measure.nFirst > 0 && measure.nFirst < measure.period && "a period has two kinds of numbers");
        const std::string first = std::to_string(measure.nFirst) + " x " + NameOf(units[0]);
        const std::string others = std::to_string(measure.period - measure.nFirst) + " x ";
        return first + ", " + others + (units[1].IsPlain() ? "-" : NameOf(units[1]));
    }
    case UnitRule::ByDof:
        return NameOf(units[0]) + " of directions 0 to 2, " + NameOf(units[1]) + " of 3 to 5";
    case UnitRule::OfAbsolute:
        return NameOf(units[0]) + " with bAbsoluteDistance";
    case UnitRule::SpringMatrix:
        return NameOf(units[0]) + " between translations, " + NameOf(units[1]) + " between rotations, " +
               NameOf(units[2]) + " where they meet";
    case UnitRule::PerPosition:
        return Listed({units.begin(), units.end()});
    }
    return {};
}

// Words of `refersTo`, an annotation as `unit` is: JSON Schema cannot say that a number names a record elsewhere. The
// reader checks what must exist.
const char* NameOf(Reference reference)
{
    switch (reference) {
    case Reference::None:
        return nullptr;
    case Reference::Node:
        return "node";
    case Reference::NodeOrNone:
        return "node or 0";
    case Reference::Material:
        return "material";
    case Reference::Section:
        return "section";
    case Reference::Thickness:
        return "thickness";
    case Reference::Member:
        return "member";
    case Reference::Shell3:
        return "three-node shell";
    case Reference::Shell4:
        return "shell";
    case Reference::Brick:
        return "solid";
    case Reference::MemberCriterion:
        return "beam or column criterion";
    case Reference::PlateCriterion:
        return "plate criterion";
    case Reference::SteelCriterion:
        return "steel criterion";
    case Reference::LoadCaseLabel:
        return "label of a load case";
    case Reference::LoadCaseIndex:
        return "load case, index";
    case Reference::CombinationIndex:
        return "combination, index";
    case Reference::BarIndex:
        return "bar of the current table, index";
    }
    return nullptr;
}

Schema OfInteger(const ValueRule& rule)
{
    assert(rule.least <= rule.most && "a range of one number at least");
    // The ends of int are those of the type and say nothing about the field.
    Schema schema{{"type", "integer"}};
    if (rule.least != INT_MIN)
        schema["minimum"] = rule.least;
    if (rule.most != INT_MAX)
        schema["maximum"] = rule.most;
    return schema;
}

// A text in an array of nLetters characters and the end: a string of codes fills it.
Schema OfText(const ValueRule& rule, std::size_t nLetters)
{
    assert(nLetters > 0 && "room for a letter beside the end");
    Schema schema{{"type", "string"}};
    if (rule.letters != nullptr)
        schema["pattern"] = "^[" + ToUtf8(rule.letters) + "]{" + std::to_string(nLetters) + "}$";
    else
        schema["maxLength"] = nLetters;
    return schema;
}

Schema OfArray(Schema items, std::size_t size)
{
    return {{"type", "array"}, {"items", std::move(items)}, {"minItems", size}, {"maxItems", size}};
}

/// Schema of a type: a function for each, as for reading and writing.
/// @param measure  units of its numbers, of the field or of the list that holds the record
template <class Value>
struct SchemaOf;

template <class Value>
concept PlainText = std::is_same_v<Value, std::wstring> || std::is_same_v<Value, CString>;

template <PlainText Value>
struct SchemaOf<Value>
{
    static Schema Make(const ValueRule&, const Measure&, FileKind) { return {{"type", "string"}}; }
};
template <std::integral Value>
struct SchemaOf<Value>
{
    static Schema Make(const ValueRule& rule, const Measure&, FileKind)
    {
        if constexpr (std::is_same_v<Value, bool>)
            return {{"type", "boolean"}};
        else if constexpr (std::is_same_v<Value, wchar_t>)
            return OfText(rule, 1);
        else
            return OfInteger(rule);
    }
};
template <>
struct SchemaOf<double>
{
    static Schema Make(const ValueRule&, const Measure&, FileKind) { return {{"type", "number"}}; }
};
template <>
struct SchemaOf<std::pair<double, double>>
{
    static Schema Make(const ValueRule&, const Measure&, FileKind) { return OfArray({{"type", "number"}}, 2); }
};
template <std::size_t N>
struct SchemaOf<wchar_t[N]>
{
    static Schema Make(const ValueRule& rule, const Measure&, FileKind) { return OfText(rule, N - 1); }
};
template <class Element, std::size_t N>
struct SchemaOf<Element[N]>
{
    static Schema Make(const ValueRule& rule, const Measure& measure, FileKind file)
    {
        return OfArray(SchemaOf<Element>::Make(rule, measure, file), N);
    }
};
template <class Element>
struct SchemaOf<std::vector<Element>>
{
    static Schema Make(const ValueRule& rule, const Measure& measure, FileKind file)
    {
        return {{"type", "array"}, {"items", SchemaOf<Element>::Make(rule, measure, file)}};
    }
};
template <class Less>
struct SchemaOf<std::set<std::wstring, Less>>
{
    static Schema Make(const ValueRule&, const Measure&, FileKind)
    {
        return {{"type", "array"}, {"items", {{"type", "string"}}}, {"uniqueItems", true}};
    }
};

template <class Value>
Schema DefaultOf(const Value& value)
{
    // Through the writer of files: a default then stands in the schema exactly as a file would have it.
    return Schema::parse(WriteJsonText([&](JsonWriter& out) {
        WriteValue(out, value);
        out.Finish();
    }));
}

// What a field says beside its type.
void Annotate(Schema& schema, const ValueRule& rule, std::string_view meaning, const Measure& measure)
{
    if (!meaning.empty())
        schema["description"] = meaning;
    if (const std::string unit = NameOf(measure); !unit.empty())
        schema["unit"] = unit;
    if (const char* reference = NameOf(rule.refersTo))
        schema["refersTo"] = reference;
    if (const char* reference = NameOf(rule.idRefersTo))
        schema["items"]["properties"]["id"]["refersTo"] = reference;
}

const Measure& MeasureOf(const ValueRule& rule, const Measure& ofTheList)
{
    return rule.measure.rule == UnitRule::OfTheList ? ofTheList : rule.measure;
}

/// Adds the properties of a list of fields to the schema of an object.
template <class Record, class List>
void AddProperties(Schema& object, const Record& defaults, const List& list, const Measure& ofTheList, FileKind file)
{
    ForEachField(list, [&](const auto& field) {
        using Field = std::remove_cvref_t<decltype(field)>;
        if constexpr (IsInFiles<Field>) {
            constexpr bool holdsRecords = kTakesLines<typename Field::Element>;
            const Measure& measure = MeasureOf(field.rule, ofTheList);
            // Records in a list carry the units of their own fields; a list of plain numbers has those of its own.
            Schema property = SchemaOf<typename Field::Value>::Make(field.rule, measure, file);
            Annotate(property, field.rule, field.meaning, holdsRecords ? Measure{} : measure);
            // The default of a record would repeat those of all its fields.
            if constexpr (!holdsRecords)
                if (file == FileKind::Model && !field.rule.isDefaultOpen)
                    property["default"] = DefaultOf(defaults.*field.member);
            if (Field::presence == Presence::WhenUnusual)
                property["written"] = "where it differs from its default";
            else if (file == FileKind::Results)
                object["required"].push_back(field.key);
            object["properties"][std::string(field.key)] = std::move(property);
        }
    });
}

Schema EmptyObject()
{
    return {{"type", "object"}, {"additionalProperties", false}, {"properties", Schema::object()}};
}

template <Described Record>
struct SchemaOf<Record>
{
    static Schema Make(const ValueRule&, const Measure& ofTheList, FileKind file)
    {
        Schema object = EmptyObject();
        AddProperties(object, Record{}, FieldsOf<Record>::list, ofTheList, file);
        return object;
    }
};

template <RowRecord Record>
struct SchemaOf<Record>
{
    static Schema Make(const ValueRule& rule, const Measure& ofTheList, FileKind)
    {
        Schema columns = Schema::array();
        int column = 0;
        ForEachField(FieldsOf<Record>::list, [&](const auto& field) {
            if (column >= rule.firstColumn && column - rule.firstColumn < rule.nColumns) {
                Schema number{{"type", "number"}, {"title", field.key}};
                Annotate(number, field.rule, field.meaning, MeasureOf(field.rule, ofTheList));
                columns.push_back(std::move(number));
            }
            ++column;
        });
        const std::size_t size = columns.size();
        assert(size > 0 && "a rule leaves some columns of a row");
        return {{"type", "array"}, {"prefixItems", std::move(columns)}, {"items", false}, {"minItems", size}};
    }
};

// An empty slot of the three spectra is null.
template <>
struct SchemaOf<jxSpectrum[3]>
{
    static Schema Make(const ValueRule& rule, const Measure& measure, FileKind file)
    {
        const Schema slot{{"anyOf", {SchemaOf<jxSpectrum>::Make(rule, measure, file), {{"type", "null"}}}}};
        return OfArray(slot, 3);
    }
};
Schema Root(const char* title, const char* format)
{
    Schema root{{"$schema", "https://json-schema.org/draft/2020-12/schema"}, {"title", title}};
    root.update(EmptyObject());
    root["required"] = Schema::array({"format"});
    root["properties"]["format"] = {{"const", format}};
    root["properties"]["version"] = {{"const", 1}, {"default", 1}};
    return root;
}

Schema UnitsSchema()
{
    Schema units = EmptyObject();
    units["description"] = "unit of each quantity";
    const jxUnit internal;
    for (int k = 0; k < kQuantityCount; ++k) {
        const auto quantity = static_cast<Quantity>(k);
        // Only units of the quantity: a force is no unit of length, and a validator should say so before the reader
        // does.
        Schema names = Schema::array();
        for (int unit = UnitsOf(quantity).first; unit < UnitsOf(quantity).last; ++unit)
            names.push_back(ToUtf8(UnitName(unit)));
        units["properties"][NameOf(quantity)] = {{"enum", names}, {"default", ToUtf8(UnitName(internal.unit[k]))}};
    }
    return units;
}

// The name of a consistent system, or units by quantity on top of such a system.
Schema UnitsOfModelSchema()
{
    Schema systems = Schema::array();
    for (const UnitSystem& system : UnitSystems())
        systems.push_back(ToUtf8(system.name));
    Schema byQuantity = UnitsSchema();
    byQuantity.erase("description");
    byQuantity["properties"]["system"] = {{"enum", systems}};
    return {{"description", "name of a system of units, or unit of each quantity"},
            {"anyOf", {Schema{{"type", "string"}, {"enum", systems}}, byQuantity}}};
}

Schema FormatsSchema()
{
    Schema formats = EmptyObject();
    formats["description"] = "number format of each quantity in reports";
    const jxUnit internal;
    Schema names = Schema::array();
    for (int format = 0; format < kFormatCount; ++format)
        names.push_back(ToUtf8(FormatName(format)));
    for (int k = 0; k < kQuantityCount; ++k)
        formats["properties"][NameOf(static_cast<Quantity>(k))] = {{"enum", names},
                                                                   {"default", ToUtf8(FormatName(internal.format[k]))}};
    return formats;
}

Schema KeysOf(const Schema& properties)
{
    Schema keys = Schema::array();
    for (const auto& [key, property] : properties.items())
        keys.push_back(key);
    return keys;
}

Schema CombinationSchema()
{
    Schema object = EmptyObject();
    ForEachField(kCombinationFields, [&](const auto& field) {
        using Record = typename std::remove_cvref_t<decltype(field)>::Record;
        AddProperties(object, Record{}, std::make_tuple(field), {}, FileKind::Results);
    });
    return object;
}

Schema PropertyOf(const char* type, const char* meaning)
{
    return {{"type", type}, {"description", meaning}};
}

// Keys without meaning for a finding are left out.
Schema FindingsSchema()
{
    Schema record = EmptyObject();
    record["properties"]["kind"] = PropertyOf("string", "member, shell, node, ...");
    record["properties"]["id"] = PropertyOf("integer", "");
    Schema finding = EmptyObject();
    Schema& properties = finding["properties"];
    properties["severity"] = {{"enum", {"note", "warning", "error"}}, {"type", "string"}};
    properties["code"] = PropertyOf("string", "a stable word");
    properties["text"] = PropertyOf("string", "what was found");
    properties["remedy"] = PropertyOf("string", "what to do about it");
    properties["records"] = {{"type", "array"}, {"items", record}, {"description", "the first 20"}};
    properties["count"] = PropertyOf("integer", "of all records");
    properties["combination"] = PropertyOf("integer", "index");
    properties["field"] = PropertyOf("string", "of the records");
    finding["required"] = {"severity", "code", "text"};
    for (const char* key : {"remedy", "records", "count", "combination", "field"})
        properties[key]["written"] = "where it means something";
    return {{"type", "array"}, {"items", finding}, {"description", "what the engine found worth telling"}};
}

}  // namespace

std::string ModelFileSchema()
{
    // Defaults are those of a fresh model, which is what the reader fills.
    const CjxStruct model;
    Schema root = Root("qvxFEM model file", "qvxfem-model");
    AddProperties(root, model, kDocumentFields, {}, FileKind::Model);
    root["properties"]["units"] = UnitsOfModelSchema();
    root["properties"]["formats"] = FormatsSchema();
    Schema& settings = root["properties"]["settings"] = EmptyObject();
    AddProperties(settings, model, kAnalysisSettings, {}, FileKind::Model);
    AddProperties(settings, model.design, FieldsOf<jxDesignSettings>::list, {}, FileKind::Model);
    AddProperties(root, model, kModelLists, {}, FileKind::Model);
    AddProperties(root, model, kClosingFields, {}, FileKind::Model);
    return root.dump(1) + "\n";
}

std::string ResultsFileSchema()
{
    const CjxStruct model;
    Schema root = Root("qvxFEM results file", "qvxfem-results");
    Schema units = UnitsSchema();
    units["required"] = KeysOf(units["properties"]);
    root["properties"]["model"] = {{"type", "string"}, {"description", "name of the model"}};
    root["properties"]["units"] = std::move(units);
    root["properties"]["findings"] = FindingsSchema();
    const Schema combination{{"$ref", "#/$defs/combination"}};
    root["properties"]["combinations"] = {
        {"type", "array"}, {"items", combination}, {"description", "one object per load combination"}};
    root["properties"]["modal"] = {{"anyOf", {combination, {{"type", "null"}}}},
                                   {"description", "the modal combination, or null"}};
    AddProperties(root, model, kResultLists, {}, FileKind::Results);
    root["required"] = KeysOf(root["properties"]);
    // Once, and referred to twice: the modal result has the form of a combination.
    root["$defs"]["combination"] = CombinationSchema();
    return root.dump(1) + "\n";
}

}  // namespace qvx
