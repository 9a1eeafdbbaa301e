#include "exchange/atomic_file.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "exchange/file_error.h"

namespace qvx::test {
namespace {

namespace fs = std::filesystem;

// An empty folder of the test's own.
class AtomicFileTest : public testing::Test
{
protected:
    AtomicFileTest() : folder_(fs::temp_directory_path() / ("qvx-atomic-" + std::to_string(std::rand())))
    {
        fs::remove_all(folder_);
        fs::create_directory(folder_);
    }
    ~AtomicFileTest() override { fs::remove_all(folder_); }

    static std::string Text(const fs::path& path)
    {
        std::ifstream in(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    std::ptrdiff_t FilesInFolder() const
    {
        return std::distance(fs::directory_iterator(folder_), fs::directory_iterator());
    }

    fs::path folder_;
};

TEST_F(AtomicFileTest, StandsUnderItsNameAfterCommitOnly)
{
    AtomicFile file(folder_ / "a.json");
    file.Write("one ");
    file.Write("two");
    EXPECT_FALSE(fs::exists(folder_ / "a.json"));

    file.Commit();

    EXPECT_EQ(Text(folder_ / "a.json"), "one two");
    EXPECT_EQ(FilesInFolder(), 1);
}

TEST_F(AtomicFileTest, LeavesNothingBehindWithoutCommit)
{
    std::ofstream(folder_ / "a.json") << "before";
    {
        AtomicFile file(folder_ / "a.json");
        file.Write("half of a fi");
    }
    EXPECT_EQ(Text(folder_ / "a.json"), "before");
    EXPECT_EQ(FilesInFolder(), 1);
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
    EXPECT_EQ(FilesInFolder(), 0);
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
    std::ofstream(folder_ / "target.json") << "before";
    fs::create_symlink(folder_ / "target.json", folder_ / "link.json");
    AtomicFile file(folder_ / "link.json");
    file.Write("after");

    file.Commit();

    EXPECT_TRUE(fs::is_symlink(folder_ / "link.json"));
    EXPECT_EQ(Text(folder_ / "target.json"), "after");
}

}  // namespace
}  // namespace qvx::test
