#include "qvxfem/output_paths.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "platform/file_error.h"
#include "support/temporary_folder.h"

namespace qvx::test {
namespace {

namespace fs = std::filesystem;

class OutputPaths : public testing::Test
{
protected:
    std::string Fault(const fs::path& input, std::initializer_list<fs::path> outputs) const
    {
        try {
            app::RequireDistinct(input, outputs);
        } catch (const FileError& fault) {
            std::string text = fault.what();
            for (std::size_t at; (at = text.find(In("").string())) != std::string::npos;)
                text.erase(at, In("").string().size());
            return text;
        }
        return "";
    }
    fs::path In(const char* name) const { return folder.Path() / name; }

    TemporaryFolder folder;
};

TEST_F(OutputPaths, DifferentFilesPass)
{
    folder.Write("m.json", "1");
    folder.Write("old", "2");
    EXPECT_EQ(Fault(In("m.json"), {In("r.json"), In("r.htm"), "", In("old")}), "");
    EXPECT_EQ(Fault("", {In("m.json")}), "");
}

TEST_F(OutputPaths, TheInputIsNoOutput)
{
    folder.Write("m.json", "1");
    fs::create_hard_link(In("m.json"), In("hard"));
    fs::create_directory(In("sub"));
    EXPECT_EQ(Fault(In("m.json"), {In("m.json")}), "m.json: cannot be written: is the input");
    EXPECT_EQ(Fault(In("m.json"), {In("other"), In("hard")}), "hard: cannot be written: is the input");
    EXPECT_EQ(Fault(In("m.json"), {In("sub/../m.json")}), "sub/../m.json: cannot be written: is the input");
    EXPECT_EQ(Fault(In("none"), {In("sub/../none")}), "sub/../none: cannot be written: is the input");
}

// Whether they are there already or not; the first and the third too.
TEST_F(OutputPaths, TwoOutputsAreTwoFiles)
{
    folder.Write("old", "1");
    fs::create_symlink("old", In("link"));
    const std::string fault = ": cannot be written: two outputs are one file";
    EXPECT_EQ(Fault(In("m.json"), {In("a"), In("b"), In("a")}), "a" + fault);
    EXPECT_EQ(Fault(In("m.json"), {In("old"), In("link")}), "link" + fault);
}

TEST_F(OutputPaths, ADeviceMayTakeAll)
{
    if (!fs::exists("/dev/null"))
        GTEST_SKIP() << "no device here";
    EXPECT_EQ(Fault(In("m.json"), {"/dev/null", "/dev/null"}), "");
    EXPECT_EQ(Fault("/dev/null", {"/dev/null"}), "");
}

}  // namespace
}  // namespace qvx::test
