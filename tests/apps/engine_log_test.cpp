#include "qvxfem/engine_log.h"

#include <filesystem>

#include <gmock/gmock.h>

#include "model/findings.h"
#include "platform/file_error.h"
#include "support/recording_host.h"
#include "support/temporary_folder.h"

namespace qvx::test {
namespace {

using app::EngineLog;
using testing::HasSubstr;

class EngineLogTest : public testing::Test
{
protected:
    RecordingHost host;
    TemporaryFolder folder;
    CjxStruct model;
};

TEST_F(EngineLogTest, EndsWithTheFindings)
{
    folder.Write("l.txt", "of the run before");
    model.findings.Add(MakeFinding(FindingCode::NoSelfWeight, L"light"));
    EngineLog log(model, folder.Path() / "l.txt");
    model.LogLine(L"working");
    log.Finish();

    EXPECT_THAT(folder.Read("l.txt"), testing::MatchesRegex("\\[[^\n]*\\]: working\n\\[[^\n]*\\]: FINDINGS\n"
                                                            "\\[[^\n]*\\]: note: light \\[no-self-weight\\]\n"
                                                            "\\[[^\n]*\\]:     Set selfWeightFactor [^\n]*\n"));
    EXPECT_FALSE(model.fileLog.is_open());
}

TEST_F(EngineLogTest, WithoutFindingsHasNoHeading)
{
    EngineLog log(model, folder.Path() / "l.txt");
    log.Finish();
    EXPECT_EQ(folder.Read("l.txt"), "");
}

TEST_F(EngineLogTest, WithoutAFileThereIsNone)
{
    EngineLog log(model, "");
    EXPECT_FALSE(model.fileLog.is_open());
    log.Finish();
    EXPECT_EQ(folder.Count(), 0);
}

TEST_F(EngineLogTest, IsClosedWithItsRun)
{
    {
        const EngineLog log(model, folder.Path() / "l.txt");
        EXPECT_TRUE(model.fileLog.is_open());
    }
    EXPECT_FALSE(model.fileLog.is_open());
}

TEST_F(EngineLogTest, WhatCannotBeWrittenIsTold)
{
    const std::filesystem::path file = folder.Path() / "none" / "l.txt";
    try {
        const EngineLog log(model, file);
        FAIL() << "there is no such folder";
    } catch (const FileError& fault) {
        EXPECT_EQ(fault.what(), file.string() + ": cannot be written: No such file or directory");
    }
}

TEST_F(EngineLogTest, AFullDiskIsTold)
{
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "no device without space here";
    EngineLog log(model, "/dev/full");
    model.LogLine(L"working");
    EXPECT_THROW(log.Finish(), FileError);
}

}  // namespace
}  // namespace qvx::test
