#include <algorithm>
#include <array>

#include <gtest/gtest.h>

#include "model/jx_struct.h"
#include "model/records/text_fields.h"
#include "model/units.h"

namespace {

jxSect Section(int id, const wchar_t* label, std::array<double, 4> dim = {})
{
    jxSect section;
    section.id = id;
    SetText(section.label, label);
    std::copy(dim.begin(), dim.end(), section.dim);
    return section;
}

}  // namespace

// A rectangle in millimetres, newtons and megapascals: 10 N/mm2 from 1000 N on 10 x 10 mm, through inch and pound.
TEST(MemberStresses, MemberStressesComeInTheUnitsOfTheModel)
{
    CjxStruct model;
    model.units.unit[kDimension] = qvx::FindUnit(L"mm").value();
    model.units.unit[kForce] = qvx::FindUnit(L"N").value();
    model.units.unit[kStress] = qvx::FindUnit(L"N/mm^2").value();
    model.sections = {Section(1, L"Rect", {10, 10, 0, 0}), Section(2, L"nothing known"), Section(3, L"W14X99"),
                      Section(4, L"2x4"), Section(5, L"Tee")};
    model.combResults.resize(1);
    for (int id = 1; id <= 5; ++id) {
        jxBm beam;
        beam.id = id;
        beam.section = id;
        model.beams.push_back(beam);
        jxBmVMD curve{.id = id, .vmd = std::vector<jxVMD>(2)};
        curve.vmd[1].x = 1;
        curve.vmd[1].Fx = -1000;
        model.combResults[0].beamCurves.push_back(curve);
    }

    const std::vector<jxBmStress> stresses = model.GetBeamStresses(0);

    // A label in no table and a tee without dimensions are left out, in the order of the rest.
    ASSERT_EQ(stresses.size(), 2U);
    EXPECT_EQ(stresses[0].id, 1);
    EXPECT_EQ(stresses[1].id, 3);
    ASSERT_EQ(stresses[0].stress.size(), 2U);
    const jxSectionStress& end = stresses[0].stress[1];
    EXPECT_EQ(end.x, 1);
    for (const double value : end.values)
        EXPECT_NEAR(value, -10, 1e-12);
    EXPECT_NEAR(end.minNegative, -10, 1e-12);
    EXPECT_EQ(end.maxPositive, 0);
    EXPECT_NEAR(stresses[1].stress[1].values[0], -1000 / (29.1 * 25.4 * 25.4), 1e-12);
}

TEST(MemberStresses, ModelWithoutCurvesHasNoStresses)
{
    CjxStruct model;
    model.combResults.resize(1);
    EXPECT_TRUE(model.GetBeamStresses(0).empty());
    EXPECT_TRUE(model.GetBeamStresses(-1).empty());
}
