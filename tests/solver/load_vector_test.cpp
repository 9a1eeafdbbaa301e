#include "solver/assembled_model.h"

using qvx::double128;
using qvx::test::AssembledModel;
using qvx::test::RoundOff;

TEST(LoadVector, NodalLoadsAddUpWithTheFactorsOfTheirCases)
{
    AssembledModel m;
    m.Node(0, 0);
    m.Node(1, 0);
    m.Support(2, L"000002");
    m.AddCase(L"Wind");
    m.NodalLoad(1, kY, 10, 0);
    m.NodalLoad(1, kY, 5, 0);
    m.NodalLoad(2, kOX, 7, 1);
    m.NodalLoad(2, kOZ, 100, 1);  // no equation: no load
    m.AddCombination(L"Both", {{L"LOAD", 2}, {L"Wind", -0.5}, {L"LOAD", 1}});
    m.Prepare();

    m.model.ProcessNdLoads(1);

    EXPECT_EQ(m.Load(1, kY, 1), 45);
    EXPECT_EQ(m.Load(2, kOX, 1), -3.5);
    double sum = 0;
    for (const double128& term : m.model.loadVectors[1])
        sum += static_cast<double>(term);
    EXPECT_EQ(sum, 41.5);
}

TEST(LoadVector, ATermThatNamesNoCaseGivesNoLoad)
{
    AssembledModel m;
    m.Node(0, 0);
    m.NodalLoad(1, kX, 1);
    m.AddCombination(L"Wrong", {{L"load", 1}, {L"LOAD ", 1}});
    m.Prepare();

    m.model.ProcessNdLoads(1);

    EXPECT_TRUE(m.model.CheckNonzeroLoadVector(m.model.loadVectors[1].data()));
}

TEST(LoadVector, TheFirstCaseWithExactlyTheLabelIsTaken)
{
    AssembledModel m;
    m.AddCase(L"Wind");
    m.AddCase(L"Wind");
    EXPECT_EQ(m.model.FindLoadCase(L"Wind"), 1);
    EXPECT_EQ(m.model.FindLoadCase(L"wind"), -1);
    EXPECT_EQ(m.model.FindLoadCase(L""), -1);
}

TEST(LoadVector, LoadOnAMissingNodeIsNamed)
{
    AssembledModel m;
    m.Node(0, 0);
    m.NodalLoad(3, kX, 1);
    m.Prepare();
    try {
        m.model.ProcessNdLoads(0);
        FAIL() << "a load without node was accepted";
    } catch (const jxException& fault) {
        EXPECT_STREQ(fault.GetText(), L"error finding node 3");
    }
}

TEST(LoadVector, ZeroVectorIsToldOnce)
{
    AssembledModel m;
    m.Node(0, 0);
    m.Prepare();
    std::vector<double128>& load = m.model.loadVectors[0];
    load[0] = 5;  // slot 0 is no equation

    m.window.lines.clear();
    EXPECT_TRUE(m.model.CheckNonzeroLoadVector(load.data()));
    EXPECT_TRUE(m.window.HasLine(L"Zero load vector", L"WARNING"));

    m.window.lines.clear();
    load.back() = 1e-300;
    EXPECT_FALSE(m.model.CheckNonzeroLoadVector(load.data()));
    EXPECT_TRUE(m.window.lines.empty());
}
