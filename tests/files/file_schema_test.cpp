#include "files/file_schema.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "support/recording_host.h"

namespace qvx::test {
namespace {

using Schema = nlohmann::ordered_json;

class FileSchema : public testing::Test
{
protected:
    RecordingHost host_;
    const Schema model_ = Schema::parse(ModelFileSchema());
    const Schema results_ = Schema::parse(ResultsFileSchema());

    const Schema& Field(const char* list, const char* key) const
    {
        return model_.at("properties").at(list).at("items").at("properties").at(key);
    }
};

TEST_F(FileSchema, IsOfTheDraftOf2020)
{
    EXPECT_EQ(model_["$schema"], "https://json-schema.org/draft/2020-12/schema");
    EXPECT_EQ(results_["$schema"], "https://json-schema.org/draft/2020-12/schema");
    EXPECT_EQ(model_["properties"]["format"]["const"], "qvxfem-model");
    EXPECT_EQ(results_["properties"]["format"]["const"], "qvxfem-results");
}

TEST_F(FileSchema, TellsUnitsByTheirQuantities)
{
    EXPECT_EQ(Field("materials", "E")["unit"], "Modulus");
    EXPECT_EQ(Field("materials", "Tc")["unit"], "1/Temperature");
    EXPECT_FALSE(Field("materials", "nu").contains("unit"));
    EXPECT_EQ(Field("sections", "Iz")["unit"], "Dimension^4");
    EXPECT_EQ(Field("thicknesses", "t")["unit"], "Dimension");
    EXPECT_EQ(Field("namedLengths", "t")["unit"], "Length");
    EXPECT_EQ(Field("supports", "value")["unit"], "3 x Translational Displacement, 3 x Rotational Displacement");
    EXPECT_EQ(Field("beamSprings", "k")["unit"], "3 x Line Translational Spring, 3 x -");
    EXPECT_EQ(Field("coupledSprings", "k")["unit"],
              "Nodal Translational Spring between translations, Nodal Rotational Spring between rotations, "
              "Force/Rotational Displacement where they meet");
    EXPECT_EQ(Field("additionalMasses", "value")["unit"],
              "Force s^2/Length of directions 0 to 2, Force * Length s^2 of 3 to 5");
    const Schema& loads = model_["properties"]["caseLoads"]["items"]["properties"];
    EXPECT_EQ(loads["ptLoads"]["items"]["properties"]["distance"]["unit"], "Length with bAbsoluteDistance");
    EXPECT_EQ(loads["ndLoads"]["items"]["properties"]["value"]["unit"], "Force of directions 0 to 2, Moment of 3 to 5");
    const Schema& steel = results_["properties"]["steel"]["items"]["properties"]["sections"]["items"]["properties"];
    EXPECT_EQ(steel["results"]["unit"], "Force, Moment, Moment, Force, Force, -, -, -");
}

TEST_F(FileSchema, TellsDefaultsRangesAndReferences)
{
    EXPECT_EQ(Field("beams", "cracking")["default"], 1);
    EXPECT_EQ(Field("beams", "designType")["default"], "B");
    EXPECT_EQ(Field("beams", "designType")["maxLength"], 1);
    EXPECT_EQ(Field("beams", "nonlinear")["maximum"], 2);
    EXPECT_EQ(Field("beams", "node1")["minimum"], 1);
    EXPECT_EQ(Field("beams", "node1")["refersTo"], "node");
    EXPECT_EQ(Field("beamSprings", "id")["refersTo"], "member");
    EXPECT_EQ(Field("columnRcCriteria", "endBar")["default"], 8);
    EXPECT_EQ(Field("supports", "flag")["pattern"], "^[012]{6}$");
    EXPECT_EQ(Field("materials", "label")["maxLength"], 127);
    EXPECT_EQ(Field("shell4s", "node")["minItems"], 4);
    EXPECT_EQ(model_["properties"]["settings"]["properties"]["pDeltaTolerance"]["default"], 0.5);
    const Schema& units = model_["properties"]["units"]["anyOf"];  // a system by its name, or quantity by quantity
    EXPECT_EQ(units[0]["enum"][0], "kN-m");
    EXPECT_EQ(units[1]["properties"]["Temperature"]["enum"], Schema::array({"F", "C"}));
}

// Keys in memory alone are in no file; no object takes a key that the catalogue does not have.
TEST_F(FileSchema, IsStrict)
{
    EXPECT_FALSE(model_["properties"]["beams"]["items"]["properties"].contains("no"));
    EXPECT_FALSE(model_["properties"]["settings"]["properties"].contains("bContinueAfterFailure"));
    for (const Schema* object :
         {&model_, &results_, &model_["properties"]["settings"], &model_["properties"]["beams"]["items"],
          &results_["$defs"]["combination"], &results_["properties"]["woodArmer"]["items"]})
        EXPECT_EQ((*object)["additionalProperties"], false);
}

// A model file may leave out all but its format; a results file says everything but a failure that did not happen and
// that a combination may be relied on.
TEST_F(FileSchema, RequiresTheFormatOfModelsAndAllFamiliesOfResults)
{
    EXPECT_EQ(model_["required"], Schema::array({"format"}));
    EXPECT_FALSE(model_["properties"]["beams"]["items"].contains("required"));
    EXPECT_EQ(results_["required"].size(), results_["properties"].size());
    const Schema& combination = results_["$defs"]["combination"];
    EXPECT_EQ(combination["required"].size() + 6, combination["properties"].size());
    EXPECT_EQ(combination["properties"]["failure"]["written"], "where it differs from its default");
}

// What the record shows in a row has a column each; end forces show six of the nine.
TEST_F(FileSchema, NamesTheColumnsOfRows)
{
    const Schema& families = results_["$defs"]["combination"]["properties"];
    const Schema& station = families["beamCurves"]["items"]["properties"]["stations"]["items"];
    ASSERT_EQ(station["prefixItems"].size(), 9U);
    EXPECT_EQ(station["prefixItems"][8]["title"], "Dz");
    const Schema& end = families["beamEndForces"]["items"]["properties"]["start"];
    ASSERT_EQ(end["prefixItems"].size(), 6U);
    EXPECT_EQ(end["prefixItems"][0]["title"], "Fx");
    EXPECT_EQ(end["prefixItems"][5]["unit"], "Moment");
    EXPECT_EQ(end["minItems"], 6);
}

}  // namespace
}  // namespace qvx::test
