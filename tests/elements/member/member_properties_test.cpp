#include "elements/member/member_properties.h"

#include <gtest/gtest.h>

#include "elements/dense_run.h"

namespace {

using namespace qvx;
using namespace qvx::test;

// DenseRun: E = 2000, nu = 0.25, so G = 800; A = 3, Ay = 2, Az = 1.5, Iz = 7, Iy = 5, J = 4.
class MemberPropertiesOf : public testing::Test
{
protected:
    MemberPropertiesOf()
    {
        run.Node(0, 0);
        run.Node(3, 4);
        run.Member(1, 2);
        jxBm& beam = run.model.beams[0];
        beam.cracking = 0.5;
        beam.f_A = 2;
        beam.f_Ay = 3;
        beam.f_Az = 5;
        beam.f_Iz = 7;
        beam.f_Iy = 11;
        beam.f_J = 13;
    }
    MemberProperties<double> Properties()
    {
        jxBmEx member;
        CjxBmGroup::GetBeamEx(member, run.model.beams[0], &run.model, 1);
        return PropertiesOf<double>(member, run.model);
    }

    DenseRun run;
};

TEST_F(MemberPropertiesOf, WithoutFactorsIsTheSectionAsItStands)
{
    run.model.bStiffnessFactors = 0;
    run.model.bShearDeformation = 1;
    const MemberProperties<double> p = Properties();
    EXPECT_EQ(p.L, 5);
    EXPECT_EQ(p.EA, 6000);
    EXPECT_EQ(p.GJ, 3200);
    EXPECT_EQ(p.EIz, 14000);
    EXPECT_EQ(p.EIy, 10000);
    EXPECT_EQ(p.GAy, 1600);
    EXPECT_EQ(p.GAz, 1200);
}

// Each factor acts on its own property; cracking on bending in both planes and on nothing else.
TEST_F(MemberPropertiesOf, FactorsActOnTheirOwnAndCrackingOnBothBendings)
{
    run.model.bStiffnessFactors = 1;
    run.model.bShearDeformation = 1;
    const MemberProperties<double> p = Properties();
    EXPECT_EQ(p.EA, 2 * 6000);
    EXPECT_EQ(p.GJ, 13 * 3200);
    EXPECT_EQ(p.EIz, 0.5 * 7 * 14000);
    EXPECT_EQ(p.EIy, 0.5 * 11 * 10000);
    EXPECT_EQ(p.GAy, 3 * 1600);
    EXPECT_EQ(p.GAz, 5 * 1200);
}

TEST_F(MemberPropertiesOf, ShearAreasCountWhereAskedForAndPositive)
{
    run.model.bStiffnessFactors = 0;
    run.model.bShearDeformation = 0;
    EXPECT_EQ(Properties().GAy, 0);
    EXPECT_EQ(Properties().GAz, 0);
    run.model.bShearDeformation = 1;
    run.model.sections[0].Ay = -2;
    EXPECT_EQ(Properties().GAy, 0);
    EXPECT_EQ(Properties().GAz, 1200);
}

}  // namespace
