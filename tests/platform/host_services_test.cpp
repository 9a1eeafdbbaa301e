#include "platform/host_services.h"

#include <cstdlib>
#include <filesystem>
#include <optional>

#include <gtest/gtest.h>

#include "platform/cwin_app.h"
#include "platform/preferences_file.h"
#include "support/model_log.h"
#include "support/recording_host.h"

namespace {

using namespace qvx;
using qvx::test::RecordingHost;
using qvx::test::RecordingWindow;
using qvx::test::TemporaryFile;

// Sets an environment variable for the length of a test.
class Environment
{
public:
    Environment(const char* name, const char* value) : name_(name)
    {
        if (const char* old = std::getenv(name))
            old_ = old;
        if (value == nullptr)
            unsetenv(name);
        else
            setenv(name, value, 1);
    }
    ~Environment()
    {
        if (old_)
            setenv(name_, old_->c_str(), 1);
        else
            unsetenv(name_);
    }

private:
    const char* name_;
    std::optional<std::string> old_;
};

TEST(HeadlessHost, PrintsBoxesOnTheErrorStreamAndAnswersYesOrOk)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(AfxMessageBox(L"Continue \u00e9?", 4132), kIdYes);
    EXPECT_EQ(AfxMessageBox(L"Done."), kIdOk);
    EXPECT_EQ(AfxMessageBox(L"Lost.", 4096), kIdOk);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Continue \xC3\xA9?\nDone.\nLost.\n");
}

TEST(HeadlessHost, DebugOutputGoesToTheErrorStreamAsItIs)
{
    testing::internal::CaptureStderr();
    Host().DebugOutput(L"x");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "x");
}

TEST(HeadlessHost, AbortKeyIsNeverDown)
{
    EXPECT_FALSE(Host().IsAbortKeyDown());
}

TEST(HeadlessHost, TellsMemoryProcessorsAndFoldersOfTheMachine)
{
    const MemoryStatus memory = Host().Memory();
    EXPECT_GT(memory.totalPhysical, 64ULL << 20);
    EXPECT_GT(memory.availablePhysical, 0u);
    EXPECT_LE(memory.availablePhysical, memory.totalPhysical);
    EXPECT_GE(Host().ProcessorCount(), 1);
    EXPECT_TRUE(std::filesystem::is_directory(ToUtf8(Host().CurrentFolder())));

    wchar_t folder[260];
    GetExecutablePath(folder, 260);
    EXPECT_EQ(Host().ExecutableFolder(), folder);
    EXPECT_TRUE(std::filesystem::exists(std::filesystem::path(folder) / "test_platform"));
}

TEST(HeadlessHost, ExecutablePathIsCutToItsBuffer)
{
    wchar_t folder[3] = {L'x', L'x', L'x'};
    GetExecutablePath(folder, 3);
    EXPECT_EQ(std::wstring(folder), Host().ExecutableFolder().substr(0, 2));
}

TEST(HeadlessHost, DeletesAFileThatExists)
{
    const TemporaryFile file;
    file.Write("x");
    EXPECT_TRUE(Host().DeleteFile(file.Path().wstring()));
    EXPECT_FALSE(std::filesystem::exists(file.Path()));
    EXPECT_FALSE(Host().DeleteFile(file.Path().wstring()));
}

TEST(Preferences, ProfileIntegersComeFromTheNamedIniFile)
{
    const TemporaryFile file(".ini");
    file.Write("SolverCPUs=1\n[Other]\nSolverCPUs=2\n; comment\n[ preferences ]\n# comment\nsolvercpus = 8 \r\n"
               "bUseZAsVertical=1\nOocMaxCore=many\nLockModel=-3\n");
    const Environment named("QVXFEM_PREFERENCES", file.Path().c_str());

    EXPECT_EQ(AfxGetApp().GetProfileInt(L"Preferences", L"SolverCPUs", 0), 8);
    EXPECT_EQ(AfxGetApp().GetProfileInt(L"Preferences", L"bUseZAsVertical", 0), 1);
    EXPECT_EQ(AfxGetApp().GetProfileInt(L"Preferences", L"LockModel", 0), -3);
    EXPECT_EQ(AfxGetApp().GetProfileInt(L"Preferences", L"OocMaxCore", 2000), 2000);  // no integer
    EXPECT_EQ(AfxGetApp().GetProfileInt(L"Preferences", L"Missing", 5), 5);
    EXPECT_EQ(AfxGetApp().GetProfileInt(L"Elsewhere", L"SolverCPUs", 5), 5);
}

TEST(Preferences, MissingFileGivesTheDefaults)
{
    const Environment named("QVXFEM_PREFERENCES", "/nonexistent/preferences.ini");
    EXPECT_EQ(AfxGetApp().GetProfileInt(L"Preferences", L"SolverCPUs", 3), 3);
}

TEST(Preferences, FileStandsInTheConfigurationFolderOfTheUser)
{
    const Environment named("QVXFEM_PREFERENCES", nullptr);
    const Environment home("HOME", "/home/user");
    {
        const Environment configuration("XDG_CONFIG_HOME", "/cfg");
        EXPECT_EQ(PreferencesFile(), "/cfg/qvxfem/preferences.ini");
    }
    const Environment configuration("XDG_CONFIG_HOME", nullptr);
    EXPECT_EQ(PreferencesFile(), "/home/user/.config/qvxfem/preferences.ini");
}

TEST(InstalledHost, TakesTheCallsUntilItGoes)
{
    {
        RecordingHost host;
        host.answers = {kIdNo};
        host.profile[{L"Preferences", L"LockModel"}] = 1;
        EXPECT_EQ(AfxMessageBox(L"Continue?", 4132), kIdNo);
        EXPECT_EQ(AfxMessageBox(L"Continue?", 4132), kIdYes);
        EXPECT_EQ(AfxGetApp().GetProfileInt(L"Preferences", L"LockModel", 0), 1);
        EXPECT_EQ(&Host(), &host);
        EXPECT_EQ(host.boxes.size(), 2u);
        EXPECT_EQ(host.boxes[0], (RecordingHost::Box{L"Continue?", 4132}));
    }
    const HostServices* installed = SetHostServices(nullptr);
    EXPECT_EQ(installed, nullptr);
}

TEST(RecordingWindow, KeepsLinesWithoutTheirTime)
{
    RecordingWindow window;
    const wchar_t text[] = L"[12:34:56] FACTORIZATION";
    const wchar_t status[] = L"OK";
    window.PostMessageW(1124, reinterpret_cast<WPARAM>(text), reinterpret_cast<LPARAM>(status));
    window.PostMessageW(1126, 0, 0);
    EXPECT_TRUE(window.HasLine(L"FACTORIZATION", L"OK"));
    EXPECT_EQ(window.statusLines, std::vector<std::wstring>{L""});
}

}  // namespace
