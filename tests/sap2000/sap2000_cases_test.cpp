// Files with the models that an independent reader makes of them (tests/cases/import): right after the import, and
// after the model's repair.

#include <filesystem>
#include <fstream>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "files/model_file.h"
#include "platform/wide_path.h"
#include "sap2000/sap2000_support.h"
#include "support/model_comparison.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

namespace fs = std::filesystem;

std::string TextOfFile(const fs::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    EXPECT_TRUE(stream) << path;
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

class Sap2000Case : public ::testing::TestWithParam<std::string>
{
protected:
    fs::path Folder() const { return fs::path(QVX_CASES) / "import" / GetParam(); }
};

TEST_P(Sap2000Case, GivesTheExpectedModel)
{
    using ::testing::IsEmpty;
    RecordingHost host;
    const auto model = EmptyDocument();
    host.boxes.clear();
    CSap2000Importer importer(TextOf(Folder() / "IN.s2k"), model.get());

    ASSERT_TRUE(importer.Process());

    std::vector<std::string> boxes;
    for (const std::wstring& text : host.BoxTexts())
        boxes.push_back(ToUtf8(text));
    const auto expectedBoxes = nlohmann::json::parse(TextOfFile(Folder() / "expected.messages.json"));
    EXPECT_EQ(boxes, expectedBoxes.get<std::vector<std::string>>());
    const ModelComparison rules{.isImport = true};
    const std::string raw = TextOfFile(Folder() / "expected-raw.model.json");
    EXPECT_THAT(ModelDifferences(WriteModelText(*model), raw, rules), IsEmpty());

    model->RepaireData();

    const std::string repaired = TextOfFile(Folder() / "expected.model.json");
    EXPECT_THAT(ModelDifferences(WriteModelText(*model), repaired, rules), IsEmpty());
}

// The comparison itself: one number changed, one record missing, one label changed are each seen.
TEST(ModelComparison, SeesWhatDiffers)
{
    const std::string text = TextOfFile(fs::path(QVX_CASES) / "import" / "01-plain-frame" / "expected.model.json");
    const auto changed = [&](const char* pointer, const nlohmann::json& value) {
        auto model = nlohmann::json::parse(text);
        model[nlohmann::json::json_pointer(pointer)] = value;
        return ModelDifferences(model.dump(), text, {});
    };

    EXPECT_THAT(ModelDifferences(text, text, {}), ::testing::IsEmpty());
    EXPECT_EQ(changed("/nodes/2/z", 4.00000001).size(), 1u);
    EXPECT_EQ(changed("/beams/1/node2", 4).size(), 1u);
    EXPECT_EQ(changed("/caseLoads/2/ptLoads/0/value", -41).size(), 1u);
    EXPECT_EQ(changed("/supports/1/flag", "111001").size(), 1u);
    EXPECT_EQ(changed("/loadCases/2/type", "Dead-D").size(), 1u);
    EXPECT_EQ(changed("/beams", nlohmann::json::array()).size(), 1u);
    EXPECT_EQ(changed("/beams/0/cracking", 0.5).size(), 1u);
}

std::vector<std::string> Cases()
{
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(fs::path(QVX_CASES) / "import"))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

INSTANTIATE_TEST_SUITE_P(Files, Sap2000Case, ::testing::ValuesIn(Cases()), [](const auto& test) {
    std::string name = test.param;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
});

}  // namespace
}  // namespace qvx::test
