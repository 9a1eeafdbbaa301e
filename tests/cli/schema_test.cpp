// Files are held against their schema by a validator that knows nothing of this code: Python's jsonschema.
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "command_line.h"

namespace qvx::test {
namespace {

namespace fs = std::filesystem;

const fs::path kSource = QVXFEM_SOURCE_DIR;

class SchemaCommand : public CommandLine
{
protected:
    // The schema of a file in the folder of the test.
    std::string Schema(const std::string& file) const
    {
        const ProgramRun run = Run({"schema", file});
        EXPECT_EQ(run.exitCode, 0) << run.err;
        Write(file + ".schema.json", run.out);
        return file + ".schema.json";
    }

    ProgramRun Validate(const std::string& schema, std::vector<std::string> files) const
    {
        files.insert(files.begin(), {(kSource / "tests/cli/validate_files.py").string(), schema});
        return RunProgram(QVXFEM_PYTHON, files, folder_);
    }

    // Raw imports are not models yet: triangles stand in them as shells without a fourth node.
    static bool IsRawImport(const std::string& name)
    {
        return name.starts_with("expected-raw") || name.starts_with("expected-alt");
    }

    static std::vector<std::string> ModelFiles()
    {
        std::vector<std::string> files;
        for (const char* folder : {"examples", "tests/cases"})
            for (const auto& entry : fs::recursive_directory_iterator(kSource / folder)) {
                const std::string name = entry.path().filename().string();
                const bool isModel =
                    std::string(folder) == "examples" ? name.ends_with(".json") : name.ends_with(".model.json");
                if (isModel && !IsRawImport(name))
                    files.push_back(entry.path().string());
            }
        return files;
    }
};

TEST_F(SchemaCommand, EveryExampleAndCaseIsAModelOfTheSchema)
{
    const std::vector<std::string> files = ModelFiles();
    ASSERT_GT(files.size(), 15U);
    const ProgramRun run = Validate(Schema("model"), files);
    EXPECT_EQ(run.exitCode, 0) << run.out << run.err;
}

// What the program writes has all keys and none besides: models rewritten by it, and results of static runs.
TEST_F(SchemaCommand, WhatTheProgramWritesIsOfTheSchema)
{
    std::vector<std::string> models, results;
    for (const std::string& file : ModelFiles()) {
        const bool isExample = file.find("/examples/") != std::string::npos;
        const bool isPart = file.find("/import/") != std::string::npos || file.find("/generate/") != std::string::npos;
        if (isPart || (!isExample && fs::file_size(file) > 60000))
            continue;  // parts of a model lack what a run needs; the validator takes its time
        const std::string number = std::to_string(models.size());
        models.push_back("model" + number + ".json");
        results.push_back("results" + number + ".json");
        const ProgramRun converted = Run({"convert", file, models.back()});
        EXPECT_EQ(converted.exitCode, 0) << file << converted.err;
        Run({"run", file, "--quiet", "--results", results.back()});
        EXPECT_TRUE(Exists(results.back())) << file;
    }
    ASSERT_GT(models.size(), 4U);
    const ProgramRun ofModels = Validate(Schema("model"), models);
    EXPECT_EQ(ofModels.exitCode, 0) << ofModels.out << ofModels.err;
    const ProgramRun ofResults = Validate(Schema("results"), results);
    EXPECT_EQ(ofResults.exitCode, 0) << ofResults.out << ofResults.err;
}

// The kept results file holds every family, design results among them.
TEST_F(SchemaCommand, EveryFamilyOfResultsIsOfTheSchema)
{
    const ProgramRun run = Validate(Schema("results"), {(kSource / "tests/files/golden/every_family.json").string()});
    EXPECT_EQ(run.exitCode, 0) << run.out << run.err;
}

TEST_F(SchemaCommand, TheValidatorRefusesWhatTheReaderRefuses)
{
    const std::string schema = Schema("model");
    for (const char* members :
         {R"("beems": [])", R"("nodes": [{"id": 0}])", R"("nodes": [{"id": 1, "w": 2}])", R"("nodes": {})",
          R"("settings": {"solverType": 3})", R"("settings": {"bContinueAfterFailure": 1})",
          R"("supports": [{"id": 1, "flag": "11111"}])", R"("supports": [{"id": 1, "flag": "111113"}])",
          R"("units": {"Length": "kN"})", R"("spectra": [null, null])", R"("origin": [0, 0])", R"("version": 2)"}) {
        Write("bad.json", std::string("{\"format\": \"qvxfem-model\", ") + members + "}");
        EXPECT_EQ(Validate(schema, {"bad.json"}).exitCode, 1) << members;
        EXPECT_EQ(Run({"check", "bad.json"}).exitCode, 2) << members;
    }
}

TEST_F(SchemaCommand, KnowsTheModelAndTheResultsFileOnly)
{
    EXPECT_EQ(Run({"schema", "report"}).exitCode, 2);
    EXPECT_EQ(Run({"schema"}).exitCode, 2);
}

}  // namespace
}  // namespace qvx::test
