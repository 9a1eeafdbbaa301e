// The sparse run with its factor on disk: the same answers within the memory it may take, the given fault when the disk
// will not have it, and nothing left behind however a run ends.
#include <cmath>
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>

#include "files/model_file.h"
#include "support/model_on_every_solver.h"
#include "support/small_disk.h"

namespace {

namespace fs = std::filesystem;
using qvx::FromUtf8;
using qvx::test::SmallDisk;
using qvx::test::StaticModel;
using qvx::test::TemporaryFolder;

constexpr int kLeastMaxCore = 20;  // megabytes

// A tower of 4 x 4 columns: its fronts are small, and its factor grows with its height.
void BuildTower(StaticModel& m, int storeys)
{
    const auto node = [](int i, int j, int k) { return 1 + i + 4 * (k + 4 * j); };
    for (int j = 0; j <= storeys; ++j)
        for (int k = 0; k < 4; ++k)
            for (int i = 0; i < 4; ++i) {
                m.Node(100.0 * i, 100.0 * j, 100.0 * k);
                if (j == 0)
                    m.Support(node(i, 0, k), L"111111");
            }
    for (int j = 1; j <= storeys; ++j)
        for (int k = 0; k < 4; ++k)
            for (int i = 0; i < 4; ++i) {
                m.Member(node(i, j - 1, k), node(i, j, k));
                if (i < 3)
                    m.Member(node(i, j, k), node(i + 1, j, k));
                if (k < 3)
                    m.Member(node(i, j, k), node(i, j, k + 1));
            }
    m.NodalLoad(node(3, storeys, 3), kX, 10);
    m.NodalLoad(node(0, storeys, 0), kY, -10);
}

class OutOfCore : public qvx::test::ModelOnEverySolver
{
protected:
    static constexpr int kStoreys = 240;

    void SetUp() override
    {
        ModelOnEverySolver::SetUp();
        m.host.profile[{L"Preferences", L"OocMaxCore"}] = kLeastMaxCore;
        m.host.currentFolder = FromUtf8(folder.Path().string());
        m.model.bOutOfCore = 1;
    }
    /// "Peak memory usage" of the run [megabytes], told with this ending.
    static int PeakOf(const StaticModel& run, const std::wstring& ending)
    {
        for (const auto& line : run.window.lines)
            if (line.text == L"Peak memory usage" && line.status.ends_with(ending))
                return std::stoi(line.status);
        return -1;
    }
    /// Displacements of the tower by a run whose factor stays in memory.
    std::vector<jxResult6Val> SolveInCore() const
    {
        StaticModel inCore(DoubleSparse);
        inCore.host.profile = m.host.profile;
        BuildTower(inCore, kStoreys);
        inCore.model.ExecuteStatic();
        EXPECT_GT(PeakOf(inCore, L" MB [In-Core]"), kLeastMaxCore) << "the factor is too small to prove anything";
        return inCore.Result().displacements;
    }
    /// The solver's files on the disk, in bytes.
    std::uintmax_t BytesOnDisk() const
    {
        std::uintmax_t bytes = 0;
        std::error_code ignored;
        for (const auto& entry : fs::recursive_directory_iterator(folder.Path(), ignored))
            if (entry.is_regular_file(ignored) && entry.path().filename() != "pardiso_ooc.cfg")
                bytes += entry.file_size(ignored);
        return bytes;
    }

    TemporaryFolder folder;
};

INSTANTIATE_TEST_SUITE_P(Backends, OutOfCore, testing::ValuesIn(qvx::test::SparseSolvers()), qvx::test::SolverName);

// Round-off: the same factor by the same operations, in another order of its panels.
TEST_P(OutOfCore, FactorAboveTheLimitGoesToDiskAndGivesTheSameAnswers)
{
    const std::vector<jxResult6Val> inCore = SolveInCore();
    BuildTower(m, kStoreys);
    std::uintmax_t onDisk = 0;
    m.host.abortKey = [&] {
        onDisk = std::max(onDisk, BytesOnDisk());
        return false;
    };

    EXPECT_EQ(m.FaultOfRun(), L"");

    const int peak = PeakOf(m, L" MB [Out-Of-Core]");
    EXPECT_GT(peak, 0);
    EXPECT_LE(peak, kLeastMaxCore);
    EXPECT_GT(onDisk, 1000000U);
    double largest = 0;
    double difference = 0;
    for (std::size_t i = 0; i < m.model.nodes.size(); ++i)
        for (int dof = 0; dof < 3; ++dof) {
            const double expected = inCore[i].value[dof];
            largest = std::max(largest, std::fabs(expected));
            difference = std::max(difference, std::fabs(m.Result().displacements[i].value[dof] - expected));
        }
    EXPECT_GT(largest, 0);
    EXPECT_LT(difference, 1e-7 * largest);
    EXPECT_EQ(folder.Contents(), "");
}

TEST_P(OutOfCore, ConfigurationStandsInTheCurrentFolderAndIsNeverBelowTwenty)
{
    for (const auto& [asked, written] : {std::pair{5, 20}, {20, 20}, {300, 300}}) {
        m.host.profile[{L"Preferences", L"OocMaxCore"}] = asked;
        m.model.configure_pardiso();
        std::ifstream in(folder.Path() / "pardiso_ooc.cfg");
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}),
                  "MKL_PARDISO_OOC_MAX_CORE_SIZE = " + std::to_string(written) + "\nMKL_PARDISO_OOC_KEEP_FILE = 1\n");
    }
    m.host.profile.erase({L"Preferences", L"OocMaxCore"});
    m.model.configure_pardiso();
    std::ifstream in(folder.Path() / "pardiso_ooc.cfg");
    std::string line;
    std::getline(in, line);
    EXPECT_EQ(line, "MKL_PARDISO_OOC_MAX_CORE_SIZE = 2000");
}

TEST_P(OutOfCore, ConfigurationOfTheUserIsNotTouched)
{
    const std::string mine = "MKL_PARDISO_OOC_MAX_CORE_SIZE = 500\n";
    std::ofstream(folder.Path() / "pardiso_ooc.cfg") << mine;
    BuildTower(m, 2);

    EXPECT_EQ(m.FaultOfRun(), L"");

    EXPECT_EQ(folder.Contents(), "pardiso_ooc.cfg\n");
    std::ifstream in(folder.Path() / "pardiso_ooc.cfg");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), mine);
}

// A run that was killed leaves its file; the next one takes it for its own, and away.
TEST_P(OutOfCore, ConfigurationOfAnEarlierRunIsTakenAway)
{
    std::ofstream(folder.Path() / "pardiso_ooc.cfg")
        << "MKL_PARDISO_OOC_MAX_CORE_SIZE = 300\nMKL_PARDISO_OOC_KEEP_FILE = 1\n";
    BuildTower(m, 2);

    EXPECT_EQ(m.FaultOfRun(), L"");

    EXPECT_EQ(folder.Contents(), "");
}

// A folder below a plain file: nobody can write there, the superuser neither.
TEST_P(OutOfCore, FolderThatCannotBeWrittenIsTold)
{
    std::ofstream(folder.Path() / "file") << "x";
    m.host.currentFolder = FromUtf8((folder.Path() / "file" / "below").string());
    BuildTower(m, 2);

    EXPECT_EQ(m.FaultOfRun(),
              L"error creating solver configuration file: " + m.host.currentFolder + L"/pardiso_ooc.cfg");

    EXPECT_EQ(folder.Contents(), "file\n");
    EXPECT_FALSE(m.model.HasStaticSolution());
}

TEST_P(OutOfCore, FullDiskForTheConfigurationIsToldAndLeavesNoPart)
{
    const SmallDisk disk(16);
    if (!disk.Fault().empty())
        GTEST_SKIP() << disk.Fault();
    disk.Fill();
    m.host.currentFolder = FromUtf8(disk.Path().string());
    BuildTower(m, 2);

    EXPECT_EQ(m.FaultOfRun(),
              L"error creating solver configuration file: " + m.host.currentFolder + L"/pardiso_ooc.cfg");

    EXPECT_EQ(disk.Contents(), "full\n");
}

TEST_P(OutOfCore, FullDiskForTheFactorIsToldAndLeavesNothing)
{
    const SmallDisk disk(1024);
    if (!disk.Fault().empty())
        GTEST_SKIP() << disk.Fault();
    m.host.currentFolder = FromUtf8(disk.Path().string());
    BuildTower(m, kStoreys);
    const std::string before = qvx::WriteModelText(m.model);

    EXPECT_THAT(m.FaultOfRun(), testing::AnyOf(m.model.get_pardiso_error(-10).Text(),
                                               std::wstring(m.model.get_pardiso_error(-11).Text())));

    EXPECT_EQ(disk.Contents(), "");
    EXPECT_FALSE(m.model.HasStaticSolution());
    m.model.RestoreInputData();
    EXPECT_EQ(qvx::WriteModelText(m.model), before);
}

TEST_P(OutOfCore, AbortedFactorizationLeavesNothing)
{
    BuildTower(m, kStoreys);
    m.host.abortKey = [&] { return BytesOnDisk() > 0; };
    const std::string before = qvx::WriteModelText(m.model);

    EXPECT_EQ(m.FaultOfRun(), L"SOLUTION ABORTED!");

    EXPECT_FALSE(m.window.HasLine(L"FACTORIZATION", L"OK"));
    EXPECT_EQ(folder.Contents(), "");
    EXPECT_FALSE(m.model.HasStaticSolution());
    m.model.RestoreInputData();
    EXPECT_EQ(qvx::WriteModelText(m.model), before);
}

TEST_P(OutOfCore, AbortAfterTheFactorizationLeavesNothing)
{
    BuildTower(m, 3);
    m.host.abortKey = [&] { return m.window.HasLine(L"FACTORIZATION", L"OK"); };

    EXPECT_EQ(m.FaultOfRun(), L"SOLUTION ABORTED!");

    EXPECT_EQ(folder.Contents(), "");
    EXPECT_FALSE(m.model.HasStaticSolution());
}

// A mechanism: a column in two pieces, hinged to one another in the middle.
TEST_P(OutOfCore, BadPivotLeavesNothing)
{
    m.model.modelType = Frame2D;
    for (int i = 0; i < 4; ++i)
        m.Node(100 * i, 0);
    for (int i = 1; i < 4; ++i)
        m.Member(i, i + 1);
    m.Release(1, L"000000", L"000001");
    m.Release(2, L"000000", L"000001");
    m.Support(1, L"110000");
    m.Support(4, L"110000");
    m.NodalLoad(2, kY, 1);

    EXPECT_EQ(m.FaultOfRun(), m.model.get_pardiso_error(-4).Text());

    EXPECT_EQ(folder.Contents(), "");
    EXPECT_FALSE(m.model.HasStaticSolution());
}

// Whatever may come out of a window of the host: the solver's files go all the same.
TEST_P(OutOfCore, AnyExceptionLeavesNothing)
{
    BuildTower(m, 3);
    struct Thrower : CWnd
    {
        int PostMessageW(UINT, WPARAM text, LPARAM) override
        {
            if (text != 0 &&
                std::wstring(reinterpret_cast<const wchar_t*>(text)).find(L"Peak memory") != std::wstring::npos)
                throw std::bad_alloc();
            return 1;
        }
        void* GetSafeHwnd() const override { return nullptr; }
        void BringWindowToTop() override {}
    } thrower;
    m.model.set_solver_wnds(&thrower);

    EXPECT_THROW(m.model.ExecuteStatic(), std::bad_alloc);

    EXPECT_EQ(folder.Contents(), "");
}

}  // namespace
