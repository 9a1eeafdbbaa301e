// Answers judged by equilibrium: what the loads, the ground and the elements exert on the nodes adds up to nothing,
// whatever made the displacements.
#include "solver/equilibrium.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "model/findings.h"
#include "solver/skyline_stages.h"
#include "solver/sparse_stages.h"
#include "solver/static_run.h"
#include "support/model_on_every_solver.h"

namespace qvx::test {
namespace {

using Lie = std::function<void(std::vector<double128>& answer, const std::vector<double128>& load)>;

// The stages of a real solver whose answers are tampered with on their way out.
class LyingStages : public SystemStages
{
public:
    LyingStages(std::unique_ptr<SystemStages> honest, Lie lie) : honest_(std::move(honest)), lie_(std::move(lie)) {}

    EquationSolver& Solver() override { return honest_->Solver(); }
    void Allocate(int nTerms) override { honest_->Allocate(nTerms); }
    void AddBoundary(int comb) override { honest_->AddBoundary(comb); }
    bool Factorize(bool bAllow) override { return honest_->Factorize(bAllow); }
    bool TryFactorize() override { return honest_->TryFactorize(); }
    void AnnounceFactor(bool bPositive) override { honest_->AnnounceFactor(bPositive); }
    bool NamesCombinationOfFault() const override { return honest_->NamesCombinationOfFault(); }
    void CheckStability() override { honest_->CheckStability(); }
    void AnnounceSolution() override { honest_->AnnounceSolution(); }
    void Solve(std::span<std::vector<double128>* const> loads) override
    {
        std::vector<std::vector<double128>> before;
        for (const std::vector<double128>* load : loads)
            before.push_back(*load);
        honest_->Solve(loads);
        for (std::size_t i = 0; i < loads.size(); ++i)
            lie_(*loads[i], before[i]);
    }
    void Release() override { honest_->Release(); }

private:
    std::unique_ptr<SystemStages> honest_;
    Lie lie_;
};

class Equilibrium : public ModelOnEverySolver
{
protected:
    void RunWith(const Lie& lie)
    {
        StaticRun(m.model.Context(), [&](const RunContext& context, jxSolutionData& data) {
            std::unique_ptr<SystemStages> honest;
            if (GetParam().type == DoubleSparse)
                honest = std::make_unique<SparseStages>(context, data);
            else
                honest = std::make_unique<SkylineStages>(context, data);
            return std::make_unique<LyingStages>(std::move(honest), lie);
        }).Execute();
    }
    const jxCombOutcome& Outcome(std::size_t comb = 0) const { return m.model.combOutcomes.at(comb); }
    bool IsToldOf(int comb) const
    {
        return std::any_of(m.model.findings.begin(), m.model.findings.end(), [&](const Finding& finding) {
            return std::string(finding.code) == "out-of-balance" && finding.combination == comb;
        });
    }
    // Nonsense in an iteration may leave a stiffness that cannot be factorized: the run then fails, which is no answer.
    bool PassesForRight(const Lie& lie)
    {
        try {
            RunWith(lie);
        } catch (const jxException&) {
            m.model.RestoreInputData();
            return false;
        }
        EXPECT_EQ(IsToldOf(0), !IsReliable(m.model, 0));
        return !IsToldOf(0);
    }
    void ExpectBalance(std::size_t comb = 0)
    {
        EXPECT_LT(Outcome(comb).imbalance, 1e-10);
        EXPECT_LT(Outcome(comb).residual, 1e-10);
        EXPECT_FALSE(IsToldOf(static_cast<int>(comb)));
        EXPECT_TRUE(IsReliable(m.model, comb));
    }

    // A portal of two columns and a beam in space, under a line load and a push.
    void BuildPortal()
    {
        m.Node(0, 0, 0);
        m.Node(0, 10, 1);
        m.Node(12, 10, 1);
        m.Node(12, 0, 0);
        m.Member(1, 2);
        m.Member(2, 3);
        m.Member(3, 4);
        m.Support(1, L"111111");
        m.Support(4, L"111000");
        m.LineLoad(2, kGlobal, kY, -0.2, -0.3);
        m.NodalLoad(2, kX, 0.5);
        m.NodalLoad(3, kOY, 0.7);
    }
};
INSTANTIATE_TEST_SUITE_P(Solvers, Equilibrium, testing::ValuesIn(AllSolvers()), SolverName);

TEST_P(Equilibrium, ReactionsAreTheOppositeOfTheLoads)
{
    BuildPortal();
    ASSERT_EQ(m.FaultOfRun(), L"");
    ExpectBalance();
    EXPECT_NEAR(Outcome().reactionForce[kX], -0.5, 1e-12);
    EXPECT_NEAR(Outcome().reactionForce[kY], 0.25 * 12, 1e-12);
    EXPECT_NEAR(Outcome().reactionForce[kZ], 0, 1e-12);
}

// A support of '2' has no penalty and no reaction of its own: what the elements exert on it is what the ground holds.
TEST_P(Equilibrium, FreedomsThatAreTakenOutHoldWhatTheElementsExert)
{
    BuildPortal();
    SetText(m.SupportAt(1).flag, L"222222");
    SetText(m.SupportAt(4).flag, L"212000");
    ASSERT_EQ(m.FaultOfRun(), L"");
    ExpectBalance();
    EXPECT_NEAR(Outcome().reactionForce[kX], -0.5, 1e-12);
    EXPECT_NEAR(Outcome().reactionForce[kY], 0.25 * 12, 1e-12);
}

// Springs of every kind, and the line spring of a member that is excluded: the spring belongs to the ground and holds,
// although the reactions of excluded members are shown as zero.
TEST_P(Equilibrium, SpringsAreCountedIn)
{
    BuildPortal();
    m.model.supports.clear();
    m.Spring(m.model.nodalSprings, 1, {3, 4, 5, 60, 70, 80});
    m.CoupledSpring(4).k[0] = 7;
    m.model.coupledSprings[0].k[1] = 1;
    m.model.coupledSprings[0].k[6] = 9;
    m.Node(12, 0, 9);
    m.Member(4, 5);
    m.Beam(m.Member(2, 5)).excluded = 1;
    m.Spring(m.model.beamSprings, 5, {0.2, 0.3, 0.4});
    ASSERT_EQ(m.FaultOfRun(), L"");
    ExpectBalance();
    EXPECT_NEAR(Outcome().reactionForce[kX], -0.5, 1e-9);
    EXPECT_NEAR(Outcome().reactionForce[kY], 3, 1e-9);
    EXPECT_EQ(StaticModel::ValueOf(m.Result().beamSpringReactions, 5, kY), 0);
}

// A relation of two displacements is a lever on the ground: u = 2 v pulls with forces whose sum is not 0.
TEST_P(Equilibrium, ConstraintsAreCountedIn)
{
    BuildPortal();
    m.model.penaltyFactor = 1e5;  // which the sparse solvers take for constraints whatever it is
    m.Constraint(2, kX, 1, 3, kZ, 2);
    ASSERT_EQ(m.FaultOfRun(), L"");
    ASSERT_NE(m.Result().multiDofConstraintForces[0].force[0], 0);
    ExpectBalance();
    EXPECT_NEAR(Outcome().reactionForce[kX], -0.5, 1e-9);
}

// A rigid floor on four columns, a roof of shells that slopes, heated, and a solid: all that elements exert.
TEST_P(Equilibrium, ElementsOfEveryKindAreCountedIn)
{
    for (const double x : {0.0, 8.0})
        for (const double z : {0.0, 6.0}) {
            const int foot = m.Node(x, 0, z);
            const int floor = m.Node(x, 5, z);
            const int roof = m.Node(x, 9 + 0.2 * x, z + 0.1 * x);
            m.Support(foot, L"111111");
            m.Member(foot, floor);
            m.Member(floor, roof);
        }
    m.model.bRigidDiaphragms = 1;
    m.model.diaphragms.push_back({.id = 1, .type = 1, .node = {2}});
    m.model.shell4s.push_back({.id = 1, .node = {3, 9, 12, 6}, .angle = 0.3});
    m.model.caseLoads[0].shell4ThermalLoads.push_back({.id = 1, .dT = 20});
    m.model.caseLoads[0].shell4SurfaceLoads.push_back({.id = 1, .coordSys = kLocal, .dir = kZ, .value = 0.01});
    for (int i = 0; i < 4; ++i)
        m.Node(i == 1 || i == 2 ? 30 : 26, 0, i < 2 ? 0 : 3);
    for (int i = 0; i < 4; ++i)
        m.Node(i == 1 || i == 2 ? 31 : 26, 4, i < 2 ? 0 : 3);
    m.model.bricks.push_back({.id = 1, .node = {13, 16, 15, 14, 17, 20, 19, 18}});
    for (int node = 13; node <= 16; ++node)
        m.Support(node, L"111222");
    for (int node = 17; node <= 20; ++node)
        m.Support(node, L"000222");
    m.NodalLoad(17, kX, 3);
    m.NodalLoad(2, kX, 2);
    m.NodalLoad(9, kOZ, 2);

    ASSERT_EQ(m.FaultOfRun(), L"");

    EXPECT_FALSE(m.model.links.empty());
    EXPECT_LT(Outcome().imbalance, 1e-9);
    EXPECT_LT(Outcome().residual, 1e-9);
}

// A support that settles, and nothing else: the size of the forces is that of the reactions.
TEST_P(Equilibrium, SettlementBalancesInItself)
{
    BuildPortal();
    m.model.caseLoads[0] = {};
    m.SupportAt(4).value[kY] = -0.1;
    ASSERT_EQ(m.FaultOfRun(), L"");
    EXPECT_LT(Outcome().imbalance, 1e-9);
    EXPECT_LT(Outcome().residual, 1e-9);
    EXPECT_NEAR(Outcome().reactionForce[kY], 0, 1e-6);
}

// The recovered forces of a P-Delta combination have the axial forces that its last solution gave; it is judged with
// those that it was solved with, be it the first iteration or the last.
TEST_P(Equilibrium, PDeltaIsJudgedWithTheStiffnessThatSolvedIt)
{
    BuildPortal();
    m.NodalLoad(2, kY, -2);
    m.model.loadCombs[0].bPDelta = 1;
    for (const int limit : {1, 10}) {
        m.model.maxNonlinearIterations = limit;
        ASSERT_EQ(m.FaultOfRun(), L"");
        EXPECT_LT(Outcome().imbalance, 1e-10) << limit;
        EXPECT_LT(Outcome().residual, 1e-10) << limit;
        EXPECT_FALSE(IsToldOf(0));
    }
}

TEST_P(Equilibrium, NothingIsLeftOverWhereNothingActs)
{
    BuildPortal();
    m.model.caseLoads[0] = {};
    ASSERT_EQ(m.FaultOfRun(), L"");
    EXPECT_EQ(Outcome().imbalance, 0);
    EXPECT_EQ(Outcome().residual, 0);
}

// A library that does nothing leaves the loads where the displacements belong, or zeros; one that solves something else
// is off by little. None of it passes, in the linear part and in an iteration.
TEST_P(Equilibrium, SolversThatLieAreCaught)
{
    const std::vector<std::pair<const char*, Lie>> lies = {
        {"nothing done", [](auto& answer, const auto& load) { answer = load; }},
        {"zeros", [](auto& answer, const auto&) { answer.assign(answer.size(), double128()); }},
        {"not numbers", [](auto& answer, const auto&) { answer[3] = double128(std::nan("")); }},
        {"a little more of all",
         [](auto& answer, const auto&) {
             for (double128& u : answer)
                 u *= double128(1 + 1e-5);
         }},
        {"one displacement off", [](auto& answer, const auto&) { answer[8] *= double128(1 + 1e-5); }},
        {"one rotation off", [](auto& answer, const auto&) { answer[12] *= double128(1.001); }},
    };
    BuildPortal();
    for (const int isPDelta : {0, 1}) {
        m.model.loadCombs[0].bPDelta = isPDelta;
        for (const auto& [what, lie] : lies) {
            EXPECT_FALSE(PassesForRight(lie)) << what;
        }
    }
    EXPECT_TRUE(PassesForRight([](auto&, const auto&) {}));
}

TEST_P(Equilibrium, FindingsNameWhatIsOutOfBalance)
{
    BuildPortal();
    m.model.caseLoads[0] = {};
    m.NodalLoad(2, kX, 0.5);
    m.NodalLoad(3, kY, -2);
    RunWith([](auto& answer, const auto&) { answer.assign(answer.size(), double128()); });
    std::vector<std::wstring> texts;
    for (const Finding& finding : m.model.findings)
        if (std::string(finding.code) == "out-of-balance")
            texts.push_back(finding.text);
    EXPECT_THAT(texts, testing::ElementsAre(L"loads and reactions differ by 0.8 of their size",
                                            L"the forces of the elements leave 1 of the largest load of a node over"));
}

// A combination that lies does not take its neighbours along.
TEST_P(Equilibrium, EveryCombinationIsJudgedByItself)
{
    BuildPortal();
    m.AddCombination(L"SOUND", {{L"LOAD", 2.0}});
    int calls = 0;
    RunWith([&](auto& answer, const auto&) {
        if (calls++ == 0)
            answer[9] *= double128(2);
    });
    EXPECT_FALSE(IsReliable(m.model, 0));
    EXPECT_TRUE(IsReliable(m.model, 1));
}

}  // namespace
}  // namespace qvx::test
