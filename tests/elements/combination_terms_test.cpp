#include "elements/combination_terms.h"

#include <gtest/gtest.h>

#include "elements/member/member_loads.h"
#include "support/shell_model.h"
#include "support/static_model.h"

namespace {

using namespace qvx;
using namespace qvx::test;

using ModelWithShells = WithShells<StaticModel>;

TEST(CombinationTerms, NameTheirCaseItsFactorAndItsLoadsInOrder)
{
    StaticModel m;
    m.AddCase(L"WIND");
    m.AddCombination(L"BOTH", {{L"WIND", -0.5}, {L"nothing", 4}, {L"LOAD", 2}, {L"WIND", 3}});

    const std::vector<CombinationTerm> terms = TermsOf(m.model, 1);

    ASSERT_EQ(terms.size(), 3u);
    const int expectedCase[] = {1, 0, 1};
    const double expectedFactor[] = {-0.5, 2, 3};
    for (std::size_t i = 0; i < terms.size(); ++i) {
        EXPECT_EQ(terms[i].loadCase, expectedCase[i]);
        EXPECT_EQ(terms[i].factor, expectedFactor[i]);
        EXPECT_EQ(&terms[i].loads, &m.model.caseLoads[static_cast<std::size_t>(expectedCase[i])]);
    }
}

// A host that adds a load case and leaves caseLoads as it was has a case without loads, whatever it is combined with.
TEST(CombinationTerms, ACaseWithoutAnEntryInCaseLoadsIsEmpty)
{
    StaticModel m;
    m.AddCase(L"LATE");
    m.AddCombination(L"BOTH", {{L"LATE", 2}, {L"LOAD", 1}});
    m.model.caseLoads.resize(1);

    const std::vector<CombinationTerm> terms = TermsOf(m.model, 1);

    ASSERT_EQ(terms.size(), 2u);
    EXPECT_EQ(terms[0].loadCase, 1);
    EXPECT_EQ(terms[0].factor, 2);
    EXPECT_TRUE(terms[0].loads.ndLoads.empty());
    EXPECT_TRUE(terms[0].loads.lnLoads.empty());
    EXPECT_TRUE(terms[0].loads.shell4SurfaceLoads.empty());
    EXPECT_EQ(&terms[1].loads, &m.model.caseLoads[0]);
}

// Strain = Tc times the sum of factor times temperature over the terms and the loads of the one element.
TEST(CombinationTerms, TemperaturesOfAnElementAddWithTheirFactors)
{
    StaticModel m;
    m.AddCase(L"HEAT");
    m.model.caseLoads[0].brickThermalLoads = {{.id = 1, .dT = 10}, {.id = 2, .dT = 100}, {.id = 2, .dT = 3}};
    m.model.caseLoads[1].brickThermalLoads = {{.id = 2, .dT = 7}};
    m.AddCombination(L"BOTH", {{L"LOAD", 2}, {L"HEAT", -0.5}});

    const auto strainOf = [&](int id) {
        return ThermalStrain(TermsOf(m.model, 1), &jxCaseLoad::brickThermalLoads, id, 1e-5);
    };

    EXPECT_NEAR(strainOf(1), 1e-5 * 2 * 10, 1e-18);
    EXPECT_NEAR(strainOf(2), 1e-5 * (2 * 103 - 0.5 * 7), 1e-17);
    EXPECT_EQ(strainOf(3), 0);
    EXPECT_EQ(ThermalStrain(TermsOf(m.model, 1), &jxCaseLoad::bmThermalLoads, 2, 1e-5), 0);
}

// Self weight is no entry of caseLoads: the case that carries it does so with or without one.
TEST(CombinationTerms, ACaseWithoutAnEntryCarriesItsSelfWeightAllTheSame)
{
    StaticModel m;
    m.Node(0, 0);
    m.Node(8, 0);
    m.Member(1, 2);
    m.model.materials[0].Wc = 0.5;  // on an area of 10
    m.AddCase(L"LATE");
    m.AddCombination(L"WEIGHT", {{L"LATE", 3}});
    m.model.caseLoads.resize(1);
    m.model.selfWeightCase = 1;
    m.model.selfWeightFactor = -1;

    MemberLoads loads;
    CollectMemberLoads(loads, m.model, TermsOf(m.model, 1), m.model.beams[0], SelfWeightEntry::WhereItActs);

    ASSERT_EQ(loads.lines.size(), 1u);
    EXPECT_EQ(loads.lines[0].value1, -15);
    EXPECT_EQ(loads.lines[0].value2, -15);
}

// Cantilever of length 8, E I = 1000 * 100, and a shell of 2 x 2 held at two corners: a whole run with a case that has
// no entry gives the answer of the other terms alone. With a shell it used to read beyond caseLoads.
TEST(CombinationTerms, ARunWithACaseWithoutEntryAnswersAsWithoutThatTerm)
{
    for (const bool hasShell : {false, true}) {
        ModelWithShells m;
        m.Node(0, 0);
        m.Node(8, 0);
        m.Member(1, 2);
        m.Support(1, L"222222");
        if (hasShell) {
            m.Node(0, 5);
            m.Node(2, 5);
            m.Node(2, 7);
            m.Node(0, 7);
            m.Shell(3, 4, 5, 6);
            m.Support(3, L"222222");
            m.Support(4, L"222222");
        }
        m.NodalLoad(2, kY, 3);
        m.AddCase(L"LATE");
        m.model.loadCombs.clear();
        m.AddCombination(L"ALONE", {{L"LOAD", 1}});
        m.AddCombination(L"BOTH", {{L"LATE", 2}, {L"LOAD", 1}});
        m.model.OnAddMoreLoadCombination();
        m.model.caseLoads.resize(1);

        m.Solve(DoubleSkyline);

        EXPECT_NEAR(m.Displacement(2, kY, 1), 3.0 * 512 / (3 * 1e5), 1e-15);
        EXPECT_EQ(m.Displacement(2, kY, 1), m.Displacement(2, kY, 0));
        if (hasShell) {
            EXPECT_EQ(m.Stress(1, 1).F[0][0], 0);
        }
    }
}

}  // namespace
