#include "platform/atomic_file.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "platform/file_error.h"
#include "support/temporary_folder.h"

namespace qvx::test {
namespace {

namespace fs = std::filesystem;

class AtomicFileTest : public testing::Test
{
protected:
    TemporaryFolder temporary_;
    const fs::path& folder_ = temporary_.Path();
};

TEST_F(AtomicFileTest, StandsUnderItsNameAfterCommitOnly)
{
    AtomicFile file(folder_ / "a.json");
    file.Write("one ");
    file.Write("two");
    EXPECT_FALSE(fs::exists(folder_ / "a.json"));

    file.Commit();

    EXPECT_EQ(temporary_.Read("a.json"), "one two");
    EXPECT_EQ(temporary_.Count(), 1);
}

TEST_F(AtomicFileTest, LeavesNothingBehindWithoutCommit)
{
    temporary_.Write("a.json", "before");
    {
        AtomicFile file(folder_ / "a.json");
        file.Write("half of a fi");
    }
    EXPECT_EQ(temporary_.Read("a.json"), "before");
    EXPECT_EQ(temporary_.Count(), 1);
}

TEST_F(AtomicFileTest, RefusesAFolderThatIsNotThere)
{
    const fs::path path = folder_ / "missing" / "a.json";
    try {
        AtomicFile file(path);
        FAIL() << "a file in a folder that is not there";
    } catch (const FileError& fault) {
        EXPECT_EQ(fault.what(), path.string() + ": cannot be written: No such file or directory");
    }
}

TEST_F(AtomicFileTest, RefusesTheNameOfAFolder)
{
    EXPECT_THROW(AtomicFile file(folder_), FileError);
    EXPECT_EQ(temporary_.Count(), 0);
}

// /dev/full is a disk on which nothing fits: writing gives the error of a full disk.
TEST_F(AtomicFileTest, TellsOfAFullDisk)
{
    if (!fs::exists("/dev/full"))
        GTEST_SKIP() << "no device without space here";
    AtomicFile file("/dev/full");
    try {
        file.Write("text");
        file.Commit();
        FAIL() << "written to a full disk";
    } catch (const FileError& fault) {
        EXPECT_STREQ(fault.what(), "/dev/full: cannot be written: No space left on device");
    }
    EXPECT_TRUE(fs::exists("/dev/full"));
}

TEST_F(AtomicFileTest, ReplacesTheTargetOfALinkAndKeepsTheLink)
{
    temporary_.Write("target.json", "before");
    fs::create_symlink(folder_ / "target.json", folder_ / "link.json");
    AtomicFile file(folder_ / "link.json");
    file.Write("after");

    file.Commit();

    EXPECT_TRUE(fs::is_symlink(folder_ / "link.json"));
    EXPECT_EQ(temporary_.Read("target.json"), "after");
}

}  // namespace
}  // namespace qvx::test
