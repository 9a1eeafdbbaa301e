// Frequency and spectrum runs of the command line.
#include <bit>
#include <cstdint>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "command_line.h"

using testing::HasSubstr;
using testing::Not;

namespace qvx::test {
namespace {

/// One mass of 2.5 lb s^2/in on a column that shears: w^2 = 400, T = 0.314159 s.
constexpr const char* kOneMass = R"({
  "format": "qvxfem-model", "version": 1, "name": "one mass",
  "materials": [{"id": 1, "label": "Steel", "E": 30000000, "nu": 0.3, "Wc": 0, "Tc": 6.5e-6, "fc": 0, "fy": 36000, "fys": 36000}],
  "sections": [{"id": 1, "label": "S1", "A": 10, "Ay": 0, "Az": 0, "Iz": 4.8, "Iy": 10, "J": 1, "Cw": 0, "dim": [0, 0, 0, 0]}],
  "nodes": [{"id": 1, "x": 0, "y": 0, "z": 0}, {"id": 2, "x": 0, "y": 120, "z": 0}],
  "supports": [{"id": 1, "flag": "222222", "value": [0, 0, 0, 0, 0, 0]}, {"id": 2, "flag": "022222", "value": [0, 0, 0, 0, 0, 0]}],
  "beams": [{"id": 1, "node1": 1, "node2": 2, "material": 1, "section": 1, "angle": 0}],
  "loadCases": [{"id": 1, "label": "DEAD", "type": "Dead-D", "bIncluded": 1}], "caseLoads": [{}],
  "loadCombs": [{"label": "Default", "cases": [{"label": "DEAD", "factor": 1}]}],
  "additionalMasses": [{"id": 2, "dof": 0, "value": 2.5}],
  "settings": {"modelType": 1, "bLoadsToMasses": 0, "spectrumFactor": [1, 0, 0]},
  "spectra": [SPECTRA, null, null]
})";

std::string OneMass(const std::string& spectrum = R"({"name": "FLAT", "type": 0, "points": [[0, 0.5], [4, 0.5]]})")
{
    std::string text = kOneMass;
    return text.replace(text.find("SPECTRA"), 7, spectrum);
}

/// Bytes of a spectra file with one spectrum of constant value.
std::string SpectraFile(const std::string& name, double value)
{
    std::string bytes;
    const auto append = [&](std::uint64_t number, int size) {
        for (int i = 0; i < size; ++i)
            bytes += static_cast<char>(number >> (8 * i) & 0xFF);
    };
    append(1, 4);
    for (std::size_t i = 0; i < 128; ++i)
        append(i < name.size() ? static_cast<unsigned char>(name[i]) : 0, 2);
    append(0, 4);
    append(2, 4);
    for (const double number : {0.0, value, 4.0, value})
        append(std::bit_cast<std::uint64_t>(number), 8);
    return bytes;
}

class Modes : public CommandLine
{
};

TEST_F(Modes, FrequencyRunPrintsPeriodsAndVerdict)
{
    Write("m.json", OneMass());

    const ProgramRun run = Run({"run", "m.json", "--analysis", "frequency", "--results", "r.json"});

    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_THAT(run.out, HasSubstr("Modes: 1 of 1 mass degrees of freedom"));
    EXPECT_THAT(run.out, HasSubstr("0.314159"));
    EXPECT_THAT(run.out, HasSubstr("1.0000"));  // all of the mass along X
    EXPECT_THAT(run.out, HasSubstr("90 % of the mass along X is moved by 1 mode"));
    EXPECT_THAT(run.out, HasSubstr("Sturm sequence check: 1 modes below 3.19"));
    EXPECT_THAT(run.out, HasSubstr(", all found"));
    EXPECT_THAT(run.out, Not(HasSubstr("Combination 1")));  // nothing static was asked for
    const nlohmann::json results = nlohmann::json::parse(Read("r.json"));
    ASSERT_EQ(results.at("eigen").size(), 1u);
    EXPECT_NEAR(results["eigen"][0]["eigenvalue"].get<double>(), 400, 1e-9);
    EXPECT_TRUE(results.at("responseSpectrum").empty());
    EXPECT_TRUE(results.at("combinations").empty());
}

// Sa = 0.5 g: u = 0.5 * 386.09 / 400 in, base shear k u = 2.5 * 0.5 * 386.09 lb.
TEST_F(Modes, SpectrumRunSolvesTheInertiaCases)
{
    Write("m.json", OneMass());

    const ProgramRun run = Run({"run", "m.json", "--analysis", "spectrum", "--results", "r.json"});

    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_THAT(run.out, HasSubstr("base shear along X"));
    EXPECT_THAT(run.out, HasSubstr("482.61"));
    EXPECT_THAT(run.out, HasSubstr("INERTIA_LOADCOMB_X_MODE_1"));
    const nlohmann::json results = nlohmann::json::parse(Read("r.json"));
    EXPECT_NEAR(results.at("modal").at("displacements")[1]["value"][0].get<double>(), 0.5 * 386.09 / 400, 1e-9);
}

TEST_F(Modes, SpectraOfAFileAreTakenByName)
{
    Write("m.json", OneMass(R"({"name": "code", "type": 0, "points": []})"));
    Write("lib.spc", SpectraFile("CODE", 0.25));

    const ProgramRun run = Run({"run", "m.json", "--analysis", "spectrum", "--spectra", "lib.spc"});

    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_THAT(run.out, HasSubstr("241.30"));  // half of the flat spectrum's
}

TEST_F(Modes, TheOnlySpectrumOfAFileIsThatOfAllDirections)
{
    Write("m.json", OneMass("null"));
    Write("lib.spc", SpectraFile("CODE", 0.25));
    EXPECT_THAT(Run({"run", "m.json", "--analysis", "spectrum", "--spectra", "lib.spc"}).out, HasSubstr("241.30"));
}

TEST_F(Modes, SpectrumThatTheFileHasNotIsAnError)
{
    Write("m.json", OneMass());
    Write("lib.spc", SpectraFile("CODE", 0.25));
    const ProgramRun run = Run({"run", "m.json", "--analysis", "spectrum", "--spectra", "lib.spc"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.err, HasSubstr("has no spectrum named \"FLAT\""));
}

TEST_F(Modes, SpectraFileThatIsNoneIsAnError)
{
    Write("m.json", OneMass());
    Write("empty.spc", "");
    for (const char* file : {"empty.spc", "missing.spc"}) {
        const ProgramRun run = Run({"run", "m.json", "--analysis", "spectrum", "--spectra", file});
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_THAT(run.err, HasSubstr(file));
    }
}

TEST_F(Modes, ModelWithoutMassIsRefusedWithTheReason)
{
    std::string text = OneMass();
    text.replace(text.find(R"("value": 2.5)"), 12, R"("value": 0.0)");
    Write("m.json", text);
    const ProgramRun run = Run({"run", "m.json", "--analysis", "frequency", "--results", "r.json"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.out + run.err, HasSubstr("No masses are defined."));
    EXPECT_FALSE(Exists("r.json"));
}

}  // namespace
}  // namespace qvx::test
