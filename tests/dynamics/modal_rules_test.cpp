// Modal rules on whole result records.
#include "dynamics/modal_rules.h"

#include <gtest/gtest.h>

namespace {

constexpr double kDamping = 0.05;
const std::vector<double> kOmegas = {1, 100};  // far apart: the complete quadratic rule is close to the root of squares

/// A record whose numbers are all of one value.
template <class Record>
Record Filled(double value)
{
    Record record;
    for (std::size_t i = 0; i < qvx::RecordValues<Record>::kCount; ++i)
        qvx::RecordValues<Record>::At(record, i) = value;
    return record;
}

template <class Record>
class ModalRules : public testing::Test
{
protected:
    static void ExpectAll(const Record& record, double value, double tolerance)
    {
        for (std::size_t i = 0; i < qvx::RecordValues<Record>::kCount; ++i)
            EXPECT_NEAR(qvx::RecordValues<Record>::At(record, i), value, tolerance) << "number " << i;
    }
};

using Records = testing::Types<jxResult6Val, jxVMD, jxShellStress, jxBrickStress, jxMultiDofConstraintForce>;
TYPED_TEST_SUITE(ModalRules, Records);

TYPED_TEST(ModalRules, EveryNumberOfARecordIsCombined)
{
    const std::vector<TypeParam> modes = {Filled<TypeParam>(3), Filled<TypeParam>(-4)};

    this->ExpectAll(calc_modal_srss(modes, kOmegas, kDamping, -1), 5, 1e-15);
    this->ExpectAll(calc_modal_abssum(modes, kOmegas, kDamping, -1), 7, 1e-15);
    this->ExpectAll(calc_modal_cqc(modes, kOmegas, kDamping, -1), 5, 1e-3);
    this->ExpectAll(calc_modal_srss(modes, kOmegas, kDamping, 1), -5, 1e-15);
}

TEST(ModalRulesOnRecords, KeepWhatNamesTheItem)
{
    const jxMultiDofConstraintForce mode{.id = 7, .node = {3, 4}, .dof = {0, 5}, .force = {-2, 2}};

    const jxMultiDofConstraintForce combined =
        calc_modal_abssum(std::vector<jxMultiDofConstraintForce>{mode}, {1.0}, kDamping, -1);

    EXPECT_EQ(combined.id, 7);
    EXPECT_EQ(combined.node[1], 4);
    EXPECT_EQ(combined.dof[1], 5);
    EXPECT_EQ(combined.force[0], 2);
}

TEST(ModalRulesOnRecords, StationKeepsItsPlace)
{
    const std::vector<jxVMD> modes = {{.x = 0.25, .Fx = 1, .Dz = 2}};
    EXPECT_EQ(calc_modal_cqc(modes, {1.0}, kDamping, -1).x, 0.25);
}

}  // namespace
