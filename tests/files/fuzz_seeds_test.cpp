// The seeds of the fuzz targets, and with them every input that once was a finding, read by the readers.

#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>

#include <gtest/gtest.h>

#include "files/model_file.h"
#include "rc/bar_file.h"
#include "sap2000/sap2000_support.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

int ForEachSeed(const char* target, const std::function<void(const std::string&)>& read)
{
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(QVX_FUZZ_SEEDS) / target)) {
        std::ifstream stream(entry.path(), std::ios::binary);
        std::ostringstream text;
        text << stream.rdbuf();
        read(text.str());
        ++count;
    }
    return count;
}

TEST(FuzzSeeds, OfSap2000AreReadAndRepaired)
{
    RecordingHost host;

    const int count = ForEachSeed("sap2000", [](const std::string& text) {
        const Imported file(text);
        file.model->RepaireData();
        for (const ImportLoss& loss : file.importer.Losses())
            EXPECT_FALSE(loss.Text().IsEmpty());
    });

    EXPECT_GE(count, 5);
}

TEST(FuzzSeeds, OfTheModelFileAreReadOrRefused)
{
    RecordingHost host;

    const int count = ForEachSeed("model_json", [](const std::string& text) {
        CjxStruct model;
        try {
            ReadModelText(text, model);
        } catch (const FileError& e) {
            EXPECT_STRNE(e.what(), "");
            return;
        }
        const std::string written = WriteModelText(model);
        CjxStruct copy;
        ReadModelText(written, copy);
        EXPECT_EQ(WriteModelText(copy), written);
    });

    EXPECT_GE(count, 3);
}

TEST(FuzzSeeds, OfBarTablesAreReadWholeOrNotAtAll)
{
    int read = 0;
    const int count =
        ForEachSeed("bar_tables", [&](const std::string& text) { read += ReadBarTables(text).has_value(); });

    EXPECT_GE(count, 5);
    EXPECT_EQ(read, 3);
}

}  // namespace
}  // namespace qvx::test
