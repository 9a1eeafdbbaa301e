#include <algorithm>
#include <cassert>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <system_error>
#include <type_traits>

#include "files/model_file.h"
#include "files/model_references.h"
#include "files/reader_findings.h"
#include "files/record_reader.h"
#include "files/units_reader.h"
#include "model/struct_fields.h"
#include "model/units.h"

namespace qvx {

// An empty slot of the three spectra is null.
// The three stand for directions 1 to 3, so that a slot cannot be left out: those behind it would move.
void ReadValue(const Json& value, const JsonPath& path, const ValueRule& rule, jxSpectrum (&out)[3])
{
    ExpectArray(value, path, 3);
    for (std::size_t i = 0; i < 3; ++i)
        if (!value[i].is_null())
            ReadValue(value[i], path.Element(i), rule, out[i]);
}

namespace {

// Beyond any model that a machine of today solves; a device or a wrong file of that size is refused before it is read.
constexpr std::uintmax_t kLargestFile = std::uintmax_t{1} << 32;

// Paths are UTF-8 in messages whatever the locale says; u8string gives char8_t, which no stream of ours takes.
std::string Utf8(const std::filesystem::path& path)
{
    const auto text = path.u8string();
    return {text.begin(), text.end()};
}

// Formats are how reports print a quantity: a file without them prints with those of a fresh model.
void ReadFormats(const Json& value, const JsonPath& path, jxUnit& units)
{
    ExpectObject(value, path);
    for (const auto& [key, member] : value.get_ref<const Json::object_t&>()) {
        const JsonPath place = path.Member(key);
        const auto quantity = FindQuantity(FromUtf8(key));
        if (!quantity)
            throw JsonFault(place, "there is no such quantity");
        std::wstring name;
        ReadValue(member, place, {}, name);
        const auto format = FindFormat(name);
        if (!format)
            throw JsonFault(place, "\"" + ToUtf8(name) + "\" is not a number format");
        units.format[*quantity] = *format;
    }
}

// Settings of the analysis and of the design stand in one object of the file and in two records of the model. Their
// keys differ, so that the order of the two looks does not matter.
bool ReadSetting(const std::string& key, const Json& value, const JsonPath& path, CjxStruct& model)
{
    return ReadMember(key, value, path, kAnalysisSettings, model) ||
           ReadMember(key, value, path, FieldsOf<jxDesignSettings>::list, model.design);
}

void ReadSettings(const Json& value, const JsonPath& path, CjxStruct& model)
{
    ExpectObject(value, path);
    for (const auto& [key, member] : value.get_ref<const Json::object_t&>()) {
        const JsonPath place = path.Member(key);
        if (!ReadSetting(key, member, place, model))
            ThrowUnknownKey(place);
    }
}

void ReadFormatName(const Json& value, const JsonPath& path)
{
    if (!value.is_string() || value.get_ref<const std::string&>() != "qvxfem-model")
        throw JsonFault(path, "expected \"qvxfem-model\"");
}

// A file of a later version is refused: what it means by a key of today is not known.
void ReadVersion(const Json& value, const JsonPath& path)
{
    if (!value.is_number_integer() || value.get<long long>() != 1)
        throw JsonFault(path, "expected version 1");
}

// Fills a fresh model from the members of a file's object.
class ModelReceiver : public JsonReceiver
{
public:
    explicit ModelReceiver(CjxStruct& model) : model_(model)
    {
        values_["format"] = ReadFormatName;
        values_["version"] = ReadVersion;
        values_["units"] = [this](const Json& value, const JsonPath& path) {
            ReadUnits(value, path, model_.units);
            unitsLeftOut_ = QuantitiesLeftOut(value);
        };
        values_["formats"] = [this](const Json& value, const JsonPath& path) {
            ReadFormats(value, path, model_.units);
        };
        values_["settings"] = [this](const Json& value, const JsonPath& path) { ReadSettings(value, path, model_); };
        // Values are read by key, in whatever order a file has them; a program that writes files of its own need not
        // know ours.
        AddFields(kDocumentFields);
        AddFields(kClosingFields);
        ForEachField(kModelLists, [this](const auto& list) { AddList(list); });
    }

    void BeginMember(const std::string& key) override
    {
        if (!values_.contains(key) && !elements_.contains(key))
            throw JsonFault(key, "unknown key");
        // Told at once and not after the member: a misspelt list of a million records is not read first.
        isFormatNamed_ = isFormatNamed_ || key == "format";
    }
    bool TakesElements(const std::string& key) const override { return elements_.contains(key); }
    void ReceiveElement(const std::string& key, std::size_t index, const Json& value) override
    {
        const JsonPath list{nullptr, key, -1};
        assert(elements_.contains(key) && "TakesElements said so");
        elements_[key](value, list.Element(index));
    }
    void ReceiveMember(const std::string& key, const Json& value) override
    {
        const JsonPath path{nullptr, key, -1};
        if (elements_.contains(key))
            throw JsonFault(path, "expected an array");
        assert(values_.contains(key) && "BeginMember let it pass");
        values_[key](value, path);
    }

    void Finish() const
    {
        if (!isFormatNamed_)
            // Without it any JSON object of known keys would pass, the empty one among them.
            throw JsonFault("format", "expected \"qvxfem-model\", found nothing");
        FindUnitsLeftOut(unitsLeftOut_, model_);
    }

private:
    using Handler = std::function<void(const Json&, const JsonPath&)>;

    template <class List>
    void AddFields(const List& fields)
    {
        ForEachField(fields, [this](const auto& field) {
            values_[std::string(field.key)] = [this, field](const Json& value, const JsonPath& path) {
                ReadValue(value, path, field.rule, model_.*field.member);
            };
        });
    }

    template <class List>
    void AddList(const List& list)
    {
        elements_[std::string(list.key)] = [this, list](const Json& value, const JsonPath& path) {
            // In place: the record is not copied once more, and a fault drops the whole model anyway.
            ReadValue(value, path, ValueRule{}, (model_.*list.member).emplace_back());
            if constexpr (std::is_same_v<typename List::Element, jxCaseLoad>)
                FindValuesLeftOut(value, path, model_);
        };
    }

    CjxStruct& model_;
    std::map<std::string, Handler> values_;    // members read as a whole
    std::map<std::string, Handler> elements_;  // lists read record by record
    std::vector<Quantity> unitsLeftOut_;
    bool isFormatNamed_ = false;
};

// Sorts the lists whose records are looked up by id; records of one id keep their order.
template <class Record, class Lists>
void SortLists(Record& record, const Lists& lists)
{
    ForEachField(lists, [&](const auto& list) {
        auto& records = record.*list.member;
        if constexpr (requires { records.front().id; }) {
            // Stable: the loads of one member keep the order of the file, in which reports list them.
            if (list.rule.isSortedById)
                std::stable_sort(records.begin(), records.end(),
                                 [](const auto& a, const auto& b) { return a.id < b.id; });
        }
    });
}

// Loads pair with load cases by position; cases at the end may have none.
void PairLoadsWithCases(CjxStruct& model)
{
    const std::size_t nCases = model.loadCases.size();
    // More loads than cases would be loads that nothing combines, which only a mistake explains.
    if (model.caseLoads.size() > nCases)
        throw JsonFault("caseLoads[" + std::to_string(nCases) + "]",
                        "there is no load case at this position of loadCases");
    model.caseLoads.resize(nCases);
}

void ReadFresh(std::string_view text, CjxStruct& fresh)
{
    ModelReceiver receiver(fresh);
    ParseJsonObject(text, receiver);
    receiver.Finish();
    PairLoadsWithCases(fresh);
    AddMissingCombinations(fresh);
    // Before sorting, so that a fault is told at the place where the record stands in the file.
    CheckModelReferences(fresh);
    SortLists(fresh, kModelLists);
    assert(fresh.caseLoads.size() == fresh.loadCases.size() && "loads pair with load cases by position");
    for (jxCaseLoad& loads : fresh.caseLoads)
        SortLists(loads, FieldsOf<jxCaseLoad>::list);
}

void ReadNamedText(std::string_view fileName, std::string_view text, CjxStruct& model)
{
    // Into a model of its own: a fault in the last line leaves the host's model as it was.
    CjxStruct fresh;
    try {
        ReadFresh(text, fresh);
    } catch (const JsonFault& fault) {
        throw FileError(fileName, fault.Place(), fault.what());
    }
    // The path of the document belongs to the host, which may read a text for a document that has a place already.
    fresh.documentPath = model.documentPath;
    model.copy_input(fresh);
    model.ClearResult();
    model.findings = fresh.findings;
}

// Told apart: a folder opens like a file on Linux and fails only when it is read, with a reason nobody understands.
std::string ReadBytes(const std::filesystem::path& path)
{
    std::error_code fault;
    const auto status = std::filesystem::status(path, fault);
    if (std::filesystem::is_directory(status))
        throw FileError(Utf8(path), "", "is a folder");
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        throw FileError(Utf8(path), "", "cannot be opened: " + std::generic_category().message(errno));
    if (std::filesystem::is_regular_file(status) && std::filesystem::file_size(path, fault) > kLargestFile)
        throw FileError(Utf8(path), "", "is larger than 4 GiB");
    // To its end and not by its size: a pipe has none.
    std::string text{std::istreambuf_iterator<char>(stream), {}};
    if (stream.bad())
        throw FileError(Utf8(path), "", "cannot be read");
    return text;
}

}  // namespace

void ReadModelFile(const std::filesystem::path& path, CjxStruct& model)
{
    ReadNamedText(Utf8(path), ReadBytes(path), model);
}

void ReadModelText(std::string_view text, CjxStruct& model)
{
    ReadNamedText("", text, model);
}

void SetModelSetting(CjxStruct& model, const std::string& field, std::string_view value)
{
    const JsonPath path{nullptr, field, -1};
    try {
        // Without exceptions of the parser: its message names a column of a text that the user typed as one word.
        const Json parsed = Json::parse(value.begin(), value.end(), nullptr, false);
        if (parsed.is_discarded())
            throw JsonFault(path, "\"" + std::string(value) + "\" is not a number or an array of numbers");
        if (!ReadSetting(field, parsed, path, model))
            throw JsonFault(path, "there is no such setting");
    } catch (const JsonFault& fault) {
        throw FileError("", fault.Place(), fault.what());
    }
}

}  // namespace qvx
