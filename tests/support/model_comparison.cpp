#include "support/model_comparison.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>

#include <nlohmann/json.hpp>

#include "files/file_schema.h"

namespace qvx::test {
namespace {

using Json = nlohmann::json;

// What the catalogue of fields says of a model file: its lists, and the defaults of their records.
const Json& Schema()
{
    static const Json schema = Json::parse(ModelFileSchema());
    return schema["properties"];
}

// Fields of the records of a list; of a list of loads with what holds it: "caseLoads.ptLoads".
const Json& FieldsOfList(const std::string& list)
{
    const std::size_t dot = list.find('.');
    const Json& holder = dot == std::string::npos ? Schema() : Schema()["caseLoads"]["items"]["properties"];
    return holder.at(list.substr(dot == std::string::npos ? 0 : dot + 1)).at("items").at("properties");
}

// Lists whose order is their own: load cases and combinations are compared by position.
bool IsInOrder(const std::string& list)
{
    return list == "loadCases" || list == "loadCombs" || list == "caseLoads" || list == "additionalMasses";
}

std::vector<std::string> ListsById()
{
    std::vector<std::string> lists;
    for (const auto& [key, value] : Schema().items())
        if (!IsInOrder(key) && value.contains("items") && value["items"].contains("properties") &&
            value["items"]["properties"].contains("id"))
            lists.push_back(key);
    return lists;
}

// Loads come in any order, but for area loads.
std::vector<std::string> LoadLists()
{
    std::vector<std::string> lists;
    for (const auto& [key, value] : Schema()["caseLoads"]["items"]["properties"].items())
        if (key != "areaLoads")
            lists.push_back(key);
    return lists;
}

bool IsDefault(const std::string& list, const std::string& key, const Json& value)
{
    const Json& fields = FieldsOfList(list);
    return fields.contains(key) && fields[key].contains("default") && fields[key]["default"] == value;
}

bool IsCoordinate(const std::string& key)
{
    return key == "x" || key == "y" || key == "z";
}

using NumberVisitor = std::function<void(const std::string&, double)>;

// Calls visit(key, number) for each number of a record; components of an array share their key.
void VisitNumbers(const Json& record, const NumberVisitor& visit)
{
    for (const auto& [key, value] : record.items()) {
        const std::string scaleKey = IsCoordinate(key) ? "xyz" : key;
        if (value.is_number())
            visit(scaleKey, value.get<double>());
        else if (value.is_array())
            for (const Json& part : value)
                if (part.is_number())
                    visit(scaleKey, part.get<double>());
    }
}

class Comparer
{
public:
    explicit Comparer(const ModelComparison& rules) : rules_(rules) {}

    void CompareModels(const Json& actual, const Json& expected)
    {
        for (const std::string& key : ListsById())
            if (!(rules_.isImport && key.ends_with("Criteria")))  // the document's own, which no import touches
                CompareById(key, List(actual, key), List(expected, key));
        CompareLoads("additionalMasses", "additionalMasses", List(actual, "additionalMasses"),
                     List(expected, "additionalMasses"));
        CompareInOrder("loadCases", List(actual, "loadCases"), List(expected, "loadCases"));
        if (!rules_.isImport)
            CompareInOrder("loadCombs", List(actual, "loadCombs"), List(expected, "loadCombs"));
        CompareCaseLoads(List(actual, "caseLoads"), List(expected, "caseLoads"));
    }

    std::vector<std::string> differences;

private:
    static Json List(const Json& object, const std::string& key) { return object.value(key, Json::array()); }

    void Differ(const std::string& where, const std::string& what) { differences.push_back(where + ": " + what); }

    bool SameCount(const std::string& where, const Json& actual, const Json& expected)
    {
        if (actual.size() != expected.size())
            Differ(where, std::to_string(actual.size()) + " records, expected " + std::to_string(expected.size()));
        return actual.size() == expected.size();
    }

    static bool IsNothing(const std::string& list, const Json& record)
    {
        const auto isFree = [&](const char* end) { return record.value(end, "").find('1') == std::string::npos; };
        return list == "releases" && isFree("start") && isFree("end");
    }

    void CompareById(const std::string& list, Json actual, Json expected)
    {
        const auto prepare = [&](Json& records) {
            Json kept = Json::array();
            for (const Json& record : records)
                if (!IsNothing(list, record))
                    kept.push_back(record);
            std::stable_sort(kept.begin(), kept.end(), [](const Json& a, const Json& b) { return a["id"] < b["id"]; });
            records = kept;
        };
        prepare(actual);
        prepare(expected);
        if (!SameCount(list, actual, expected))
            return;
        const auto scales = Scales(expected);
        for (std::size_t i = 0; i < expected.size(); ++i) {
            const std::string where = list + "[id " + expected[i]["id"].dump() + "]";
            if (actual[i]["id"] != expected[i]["id"])
                Differ(where, "found id " + actual[i]["id"].dump());
            else if (!(rules_.isImport && IsDefaultRecord(list, expected[i])))
                CompareRecords(list, where, actual[i], expected[i], scales);
        }
    }

    static bool IsDefaultRecord(const std::string& list, const Json& record)
    {
        return record["id"] == 1 && (list == "materials" || list == "sections" || list == "thicknesses");
    }

    void CompareInOrder(const std::string& list, const Json& actual, const Json& expected)
    {
        CompareInOrder(list, list, actual, expected);
    }

    void CompareInOrder(const std::string& list, const std::string& where, const Json& actual, const Json& expected)
    {
        if (!SameCount(where, actual, expected))
            return;
        const auto scales = Scales(expected);
        for (std::size_t i = 0; i < expected.size(); ++i)
            if (!(rules_.isImport && list == "loadCases" && expected[i].value("id", 0) == 1))
                CompareRecords(list, where + "[" + std::to_string(i) + "]", actual[i], expected[i], scales);
    }

    void CompareCaseLoads(const Json& actual, const Json& expected)
    {
        if (!SameCount("caseLoads", actual, expected))
            return;
        for (std::size_t i = 0; i < expected.size(); ++i) {
            const std::string where = "caseLoads[" + std::to_string(i) + "].";
            for (const std::string& list : LoadLists())
                CompareLoads("caseLoads." + list, where + list, List(actual[i], list), List(expected[i], list));
            CompareInOrder("caseLoads.areaLoads", where + "areaLoads", List(actual[i], "areaLoads"),
                           List(expected[i], "areaLoads"));
        }
    }

    // Loads of one element and direction come in any order: both sides are put into one.
    void CompareLoads(const std::string& list, const std::string& where, Json actual, Json expected)
    {
        const auto order = [](const Json& load) {
            Json key = Json::array();
            for (const char* field : {"id", "dof", "dir", "coordSys", "bAbsoluteDistance", "distance", "distance1",
                                      "distance2", "value", "value1", "value2", "dT"})
                key.push_back(load.value(field, 0.0));
            return key;
        };
        const auto prepare = [&](Json& loads) {
            const auto size = [](const Json& load) {
                return std::max({std::fabs(load.value("value", 0.0)), std::fabs(load.value("value1", 0.0)),
                                 std::fabs(load.value("value2", 0.0)), std::fabs(load.value("dT", 0.0))});
            };
            double largest = 0;
            for (const Json& load : loads)
                largest = std::max(largest, size(load));
            Json kept = Json::array();
            for (const Json& load : loads)
                if (size(load) > 1e-12 * largest)
                    kept.push_back(load);
            std::stable_sort(kept.begin(), kept.end(),
                             [&](const Json& a, const Json& b) { return order(a) < order(b); });
            loads = kept;
        };
        prepare(actual);
        prepare(expected);
        CompareInOrder(list, where, actual, expected);
    }

    static std::map<std::string, double> Scales(const Json& records)
    {
        std::map<std::string, double> scales;
        for (const Json& record : records)
            VisitNumbers(record, [&](const std::string& key, double number) {
                scales[key] = std::max(scales[key], std::fabs(number));
            });
        return scales;
    }

    void CompareRecords(const std::string& list, const std::string& where, const Json& actual, const Json& expected,
                        const std::map<std::string, double>& scales)
    {
        for (const auto& [key, value] : expected.items()) {
            if (actual.contains(key))
                CompareValues(where + "." + key, actual[key], value, ScaleOf(scales, key));
            else if (!IsDefault(list, key, value))
                Differ(where + "." + key, "left out, expected " + value.dump());
        }
        for (const auto& [key, value] : actual.items())
            if (!expected.contains(key) && !IsDefault(list, key, value))
                Differ(where + "." + key, value.dump() + ", expected its default");
    }

    static double ScaleOf(const std::map<std::string, double>& scales, const std::string& key)
    {
        const auto found = scales.find(IsCoordinate(key) ? "xyz" : key);
        return found == scales.end() ? 0 : found->second;
    }

    void CompareValues(const std::string& where, const Json& actual, const Json& expected, double scale)
    {
        if (expected.is_array() && actual.is_array() && actual.size() == expected.size()) {
            for (std::size_t i = 0; i < expected.size(); ++i)
                CompareValues(where + "[" + std::to_string(i) + "]", actual[i], expected[i], scale);
            return;
        }
        if (expected.is_object() && actual.is_object()) {
            for (const auto& [key, value] : expected.items())
                CompareValues(where + "." + key, actual.value(key, Json()), value, 0);
            if (actual.size() != expected.size())
                Differ(where, actual.dump() + ", expected " + expected.dump());
            return;
        }
        bool isSame = actual == expected;
        if (actual.is_number() && expected.is_number()) {
            const double number = expected.get<double>();
            isSame = std::fabs(actual.get<double>() - number) <= std::max(1e-9 * std::fabs(number), 1e-12 * scale);
        }
        if (!isSame)
            Differ(where, actual.dump() + ", expected " + expected.dump());
    }

    ModelComparison rules_;
};

}  // namespace

std::vector<std::string> ModelDifferences(const std::string& actual, const std::string& expected,
                                          const ModelComparison& rules)
{
    Comparer comparer(rules);
    comparer.CompareModels(Json::parse(actual), Json::parse(expected));
    return comparer.differences;
}

}  // namespace qvx::test
