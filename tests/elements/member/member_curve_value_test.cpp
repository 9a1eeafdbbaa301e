#include "elements/member/member_curve_value.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tools/jx_exception.h"

namespace {

std::vector<jxVMD> ThreeStations()
{
    std::vector<jxVMD> curve(3);
    curve[0] = {.x = 0, .Fx = 1, .Fy = 2, .Fz = 3, .Mx = 4, .My = 5, .Mz = 6, .Dy = 7, .Dz = 8};
    curve[1] = {.x = 0.3, .Fx = 3, .Fy = 6, .Fz = 9, .Mx = 12, .My = 15, .Mz = 18, .Dy = 21, .Dz = 24};
    curve[2] = {.x = 1, .Fx = -1, .Fy = 0, .Fz = 0, .Mx = 0, .My = 0, .Mz = 0, .Dy = 0, .Dz = 0};
    return curve;
}

}  // namespace

TEST(CurveValue, StationIsReturnedAsItIsStored)
{
    const jxVMD value = qvx::CurveValueAt(ThreeStations(), 0.3);
    EXPECT_EQ(value.x, 0.3);
    EXPECT_EQ(value.Mz, 18);
    EXPECT_EQ(value.Dz, 24);
    EXPECT_EQ(qvx::CurveValueAt(ThreeStations(), 1).Fx, -1);
}

TEST(CurveValue, EveryFieldRunsStraightBetweenStations)
{
    const jxVMD value = qvx::CurveValueAt(ThreeStations(), 0.15);
    EXPECT_EQ(value.x, 0.15);
    const double actual[] = {value.Fx, value.Fy, value.Fz, value.Mx, value.My, value.Mz, value.Dy, value.Dz};
    for (int i = 0; i < 8; ++i)
        EXPECT_DOUBLE_EQ(actual[i], 2.0 * (i + 1));
}

TEST(CurveValue, BeyondTheCurveIsRefused)
{
    try {
        qvx::CurveValueAt(ThreeStations(), 1.0000001);
        FAIL();
    } catch (const jxException& e) {
        EXPECT_STREQ(e.GetText(), L"Invalid distance in GetVMD_At()");
    }
}
