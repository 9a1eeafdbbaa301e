#include "qvxfem/settings.h"

#include <gmock/gmock.h>

#include "platform/file_error.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

class Settings : public testing::Test
{
protected:
    std::string Fault(const std::string& setting)
    {
        try {
            app::ApplySettings({setting}, model);
        } catch (const FileError& fault) {
            return fault.what();
        }
        return "";
    }

    RecordingHost host;
    CjxStruct model;
};

TEST_F(Settings, EachFieldTakesItsValueTheLastOfOneFieldHolds)
{
    app::ApplySettings({"numberOfSegments=8", "pDeltaTolerance=0.25", "numberOfSegments=12"}, model);
    EXPECT_EQ(model.numberOfSegments, 12);
    EXPECT_EQ(model.pDeltaTolerance, 0.25);
}

TEST_F(Settings, WhatIsNoFieldOrNoValueIsRefusedByItsText)
{
    EXPECT_EQ(Fault("numberOfSegments"), "--set numberOfSegments: expected FIELD=VALUE");
    EXPECT_EQ(Fault("=8"), "--set =8: expected FIELD=VALUE");
    EXPECT_EQ(Fault("speed=8"), "speed: there is no such setting");
    EXPECT_THAT(Fault("a=numberOfSegments=8"), testing::StartsWith("a: "));
    EXPECT_NE(Fault("numberOfSegments="), "");
    EXPECT_EQ(model.numberOfSegments, 20);
}

}  // namespace
}  // namespace qvx::test
