#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

#include "design/concrete_model.h"

namespace qvx::test {
namespace {

/// A beam of 240 in along X from node 1, and whatever meets it at its start; Y is vertical.
class SupportedBeam : public ConcreteModel
{
public:
    SupportedBeam()
    {
        Shape(L"Rect 12x24", 12, 24);
        Shape(L"Rect 16x20", 16, 20);
        Shape(L"Round 18", 18, 18);
        Node(0, 0);
        Node(240, 0);
        Member(1, 2);
    }

    /// A member from node 1 in the x-y plane, `degrees` off the downward vertical.
    void Support(int section, double degrees)
    {
        const double angle = degrees * std::numbers::pi / 180;
        const int node = Node(120 * std::sin(angle), -120 * std::cos(angle));
        Member(node, 1, section);
    }
    double Width(int end = 0)
    {
        model.GetNodeBeamsMap();
        double width = -1;
        model.CalcBeamSupportWidth(width, model.beams[0], end);
        return width;
    }
};

TEST(SupportWidth, NoOtherMemberMeansNoSupport)
{
    SupportedBeam m;
    EXPECT_EQ(m.Width(0), 0);
    EXPECT_EQ(m.Width(1), 0);
}

TEST(SupportWidth, AnUprightRectangleGivesItsFirstDimension)
{
    SupportedBeam m;
    m.Support(2, 0);
    EXPECT_EQ(m.Width(0), 16);
    EXPECT_EQ(m.Width(1), 0);
}

TEST(SupportWidth, AnyOtherSupportGivesTheRootOfItsArea)
{
    SupportedBeam m;
    m.Support(3, 0);
    EXPECT_EQ(m.Width(), 18);
    SupportedBeam turned;
    turned.Support(2, 0);
    turned.model.beams[1].angle = 0.1;
    EXPECT_DOUBLE_EQ(turned.Width(), std::sqrt(320.0));
}

TEST(SupportWidth, AColumnWithinFiveDegreesOfTheVerticalIsTaken)
{
    SupportedBeam m;
    m.Support(2, 4.9);
    EXPECT_EQ(m.Width(), 16);
    SupportedBeam beyond;
    beyond.Support(2, 5.1);
    EXPECT_EQ(beyond.Width(), 0);
}

// Two candidates: a girder across and a column. The one along the vertical axis, which points as gravity does not when the
// factor of the self weight is positive, ends the search; else the last one stands.
TEST(SupportWidth, AVerticalSupportGoesBeforeOthers)
{
    SupportedBeam m;
    m.Member(1, m.Node(0, 120), 2);  // a column upwards
    m.Member(1, m.Node(0, 0, 120), 3);
    EXPECT_EQ(m.Width(), 16);
    SupportedBeam below;
    below.Support(2, 0);
    below.Member(1, below.Node(0, 0, 120), 3);
    EXPECT_EQ(below.Width(), 18);
    below.model.selfWeightFactor = -1;
    EXPECT_EQ(below.Width(), 16);
}

TEST(SupportWidth, IsCappedByTheLengthOfTheMember)
{
    SupportedBeam m;
    m.Support(2, 0);
    m.model.nodes[1].x = 40;
    EXPECT_DOUBLE_EQ(m.Width(), 14);
}

TEST(SupportWidth, IsZeroWithoutFaceMoments)
{
    SupportedBeam m;
    m.Support(2, 0);
    m.model.design.bUseBeamFaceMoments = 0;
    EXPECT_EQ(m.Width(), 0);
}

}  // namespace
}  // namespace qvx::test
