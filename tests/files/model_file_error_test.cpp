#include <string>

#include <gtest/gtest.h>

#include "files/model_file.h"
#include "support/model_log.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

// Message of a text that cannot be read; checks that the model is as it was before.
std::string FaultOf(const std::string& text)
{
    CjxStruct model;
    model.nodes.push_back({.id = 99});
    model.modelName = L"before";
    try {
        ReadModelText(text, model);
    } catch (const FileError& fault) {
        EXPECT_EQ(model.modelName, L"before");
        EXPECT_EQ(model.nodes.size(), 1U);
        EXPECT_EQ(model.nodes[0].id, 99);
        return fault.what();
    }
    return "no fault";
}

std::string FaultOfMembers(const std::string& members)
{
    return FaultOf("{\"format\": \"qvxfem-model\", " + members + "}");
}

struct BadText
{
    const char* text;
    const char* message;
};

class ModelFileError : public testing::Test
{
protected:
    RecordingHost host_;
};

TEST_F(ModelFileError, SyntaxIsToldByLineAndColumn)
{
    const BadText cases[] = {
        {"", "line 1, column 1: syntax error while parsing value - unexpected end of input; expected '[', '{', or a "
             "literal"},
        {"{\n  \"notes\": [1,, 2]\n}", "line 2, column 15: syntax error while parsing value - unexpected ','; expected "
                                       "'[', '{', or a literal"},
        {"{\"name\": \"abc", "line 1, column 13: syntax error while parsing value - invalid string: missing closing "
                             "quote; last read: '\"abc'"},
        {"[]", "expected one JSON object"},
        {"17", "expected one JSON object"},
        {"{} x", "line 1, column 4: syntax error while parsing value - invalid literal; last read: '{} x'; expected "
                 "end of input"},
        {"{\"settings\": {\"mergeTolerance\": 1e999}}", "line 1, column 37: number overflow parsing '1e999'"},
        {"{\"name\": \"\xff\"}", "line 1, column 11: syntax error while parsing value - invalid string: ill-formed "
                                 "UTF-8 byte; last read: '\"\xff'"},
    };
    for (const BadText& bad : cases)
        EXPECT_EQ(FaultOf(bad.text), bad.message) << bad.text;
}

TEST_F(ModelFileError, WrongValuesAreToldByTheirPath)
{
    const BadText cases[] = {
        {R"("nodez": [])", "nodez: unknown key"},
        {R"("nodes": [{"id": 1, "w": 0}])", "nodes[0].w: unknown key"},
        {R"("nodes": {"id": 1})", "nodes: expected an array"},
        {R"("nodes": [1])", "nodes[0]: expected an object"},
        {R"("nodes": [{"id": 1}, {"id": "2"}])", "nodes[1].id: expected an integer"},
        {R"("nodes": [{"id": 1.0}])", "nodes[0].id: expected an integer"},
        {R"("nodes": [{"id": true}])", "nodes[0].id: expected an integer"},
        {R"("nodes": [{"id": 0}])", "nodes[0].id: expected an integer of at least 1"},
        {R"("nodes": [{"id": 2147483648}])", "nodes[0].id: expected an integer from 1 to 2147483647"},
        {R"("nodes": [{"id": -99999999999999}])", "nodes[0].id: expected an integer of at least 1"},
        {R"("nodes": [{"id": 18446744073709551615}])", "nodes[0].id: expected an integer from 1 to 2147483647"},
        {R"("nodes": [{"id": 1, "x": "0"}])", "nodes[0].x: expected a number"},
        {R"("nodes": [{"id": 1, "x": null}])", "nodes[0].x: expected a number"},
        {R"("nodes": [{"id": 1, "id": 2}])", "nodes[0].id: the key stands twice in one object"},
        {R"("nodes": [], "nodes": [])", "nodes: the key stands twice in the file"},
        {R"("nodes": [{"id": 4}, {"id": 3}, {"id": 4}])", "nodes[2].id: the id 4 is taken already"},
        // Of several ids taken twice, the record that comes first in the file is named.
        {R"("nodes": [{"id": 3}, {"id": 5}, {"id": 5}, {"id": 3}])", "nodes[2].id: the id 5 is taken already"},
        {R"("nodes": [{"id": 5}, {"id": 3}, {"id": 3}, {"id": 5}])", "nodes[2].id: the id 3 is taken already"},
        {R"("nodes": [{"id": 7}, {"id": 7}, {"id": 7}])", "nodes[1].id: the id 7 is taken already"},
        {R"("loadCases": [{"id": 1}, {"id": 1}])", "loadCases[1].id: the id 1 is taken already"},
        {R"("nodes": [{"id": 1}], "supports": [{"id": 1, "flag": "11111"}])",
         "supports[0].flag: expected 6 letters of \"012\""},
        {R"("nodes": [{"id": 1}], "supports": [{"id": 1, "flag": "111113"}])",
         "supports[0].flag: expected 6 letters of \"012\""},
        {R"("nodes": [{"id": 1}], "supports": [{"id": 1, "flag": 111111}])", "supports[0].flag: expected a text"},
        {R"("releases": [{"id": 1, "start": "000002"}])", "releases[0].start: expected 6 letters of \"01\""},
        {R"("nodes": [{"id": 1}], "supports": [{"id": 1, "value": [0, 0, 0]}])",
         "supports[0].value: expected an array of 6 elements, found 3"},
        {R"("nodes": [{"id": 1}], "supports": [{"id": 1, "value": [0, 0, 0, 0, 0, 0, 0]}])",
         "supports[0].value: expected an array of 6 elements, found 7"},
        {R"("nodes": [{"id": 1}], "supports": [{"id": 1, "value": [0, 0, "a", 0, 0, 0]}])",
         "supports[0].value[2]: expected a number"},
        {R"("loadCases": [{"id": 1}], "caseLoads": [{"ndLoads": [{"id": 1, "dof": 6}]}])",
         "caseLoads[0].ndLoads[0].dof: expected an integer from 0 to 5"},
        {R"("loadCases": [{"id": 1}], "caseLoads": [{"ndLoads": [{"id": 1, "dof": -1}]}])",
         "caseLoads[0].ndLoads[0].dof: expected an integer from 0 to 5"},
        {R"("loadCases": [{"id": 1}], "caseLoads": [{}, {}])",
         "caseLoads[1]: there is no load case at this position of loadCases"},
        {R"("settings": {"solverType": 3})", "settings.solverType: expected an integer from 0 to 2"},
        {R"("settings": {"solver": 0})", "settings.solver: unknown key"},
        {R"("settings": [])", "settings: expected an object"},
        {R"("units": {"Length": "kN"})", "units.Length: \"kN\" is not a unit of this quantity"},
        {R"("units": {"Length": "furlong"})", "units.Length: \"furlong\" is not a unit of this quantity"},
        {R"("units": {"Width": "m"})", "units.Width: there is no such quantity"},
        {R"("formats": {"Length": "0.00"})", "formats.Length: \"0.00\" is not a number format"},
        {R"("spectra": [null, null])", "spectra: expected an array of 3 elements, found 2"},
        {R"("name": "a\u0000b")", "name: a text cannot hold the character U+0000"},
        {R"("version": 2)", "version: expected version 1"},
    };
    for (const BadText& bad : cases)
        EXPECT_EQ(FaultOfMembers(bad.text), bad.message) << bad.text;
}

TEST_F(ModelFileError, MissingRecordsAreToldByTheReferenceThatNamesThem)
{
    const std::string nodes = R"("nodes": [{"id": 1}, {"id": 2}], "materials": [{"id": 1}], "sections": [{"id": 1}], )";
    const BadText cases[] = {
        {R"("beams": [{"id": 1, "node1": 1, "node2": 3}])", "beams[0].node2: there is no node 3"},
        {R"("beams": [{"id": 1, "node1": 1, "node2": 2, "material": 7}])", "beams[0].material: there is no material 7"},
        {R"("beams": [{"id": 1, "node1": 1, "node2": 2, "section": 7}])", "beams[0].section: there is no section 7"},
        {R"("shell4s": [{"id": 1, "node": [1, 2, 1, 5]}])", "shell4s[0].node[3]: there is no node 5"},
        {R"("shell4s": [{"id": 1, "node": [1, 2, 1, 2]}])", "shell4s[0].thickness: there is no thickness 1"},
        {R"("supports": [{"id": 9}])", "supports[0].id: there is no node 9"},
        {R"("nodalSprings": [{"id": 9}])", "nodalSprings[0].id: there is no node 9"},
        {R"("diaphragms": [{"id": 1, "node": [1, 0, 0, 4]}])", "diaphragms[0].node[3]: there is no node 4"},
        {R"("multiDofConstraints": [{"id": 1, "node": [1, 4]}])", "multiDofConstraints[0].node[1]: there is no node 4"},
        {R"("loadCases": [{"id": 1}], "caseLoads": [{"ndLoads": [{"id": 2}, {"id": 8}]}])",
         "caseLoads[0].ndLoads[1].id: there is no node 8"},
    };
    for (const BadText& bad : cases)
        EXPECT_EQ(FaultOfMembers(nodes + bad.text), bad.message) << bad.text;
}

TEST_F(ModelFileError, AFileWithoutItsFormatIsNoModel)
{
    EXPECT_EQ(FaultOf("{}"), "format: expected \"qvxfem-model\", found nothing");
    EXPECT_EQ(FaultOf(R"({"format": "qvxfem-results"})"), "format: expected \"qvxfem-model\"");
}

TEST_F(ModelFileError, LabelsLongerThanTheirFieldAreRefused)
{
    const std::string label(128, 'a');
    EXPECT_EQ(FaultOfMembers(R"("materials": [{"id": 1, "label": ")" + label + "\"}]"),
              "materials[0].label: expected at most 127 characters, found 128");
}

// Deep nesting and objects with very many members cost a hostile file no more than its own size.
TEST_F(ModelFileError, HostileNestingEndsEarly)
{
    EXPECT_NE(FaultOfMembers("\"notes\": " + std::string(100000, '[')).find("nested deeper than 16 levels"),
              std::string::npos);
    std::string members;
    for (int i = 0; i < 300; ++i)
        members += (i > 0 ? ", \"k" : "\"k") + std::to_string(i) + "\": 0";
    EXPECT_EQ(FaultOfMembers("\"nodes\": [{" + members + "}]"), "nodes[0].k256: more than 256 members in one object");
}

TEST_F(ModelFileError, MessagesCarryNoControlCharacters)
{
    EXPECT_EQ(FaultOfMembers(R"("a\u001b[31m": 0)"), "a?[31m: unknown key");
}

TEST_F(ModelFileError, TheFileIsNamed)
{
    const TemporaryFile file(".json");
    file.Write("{\"format\": \"qvxfem-model\",\n \"nodes\": [{\"id\": 1}, {\"x\": }]}");
    CjxStruct model;
    try {
        ReadModelFile(file.Path(), model);
        FAIL();
    } catch (const FileError& fault) {
        EXPECT_EQ(fault.what(), file.Path().string() + ": line 2, column 29: syntax error while parsing value - "
                                                       "unexpected '}'; expected '[', '{', or a literal");
    }
    EXPECT_THROW(ReadModelFile("/no/such/file.json", model), FileError);
    EXPECT_THROW(ReadModelFile(file.Path().parent_path(), model), FileError);
}

}  // namespace
}  // namespace qvx::test
