#include "qvxfem/run_window.h"

#include <cstdint>

#include <gtest/gtest.h>

namespace qvx::test {
namespace {

using app::Progress;
using app::Telling;

std::string Posted(UINT message, const wchar_t* text, const wchar_t* status)
{
    testing::internal::CaptureStderr();
    Progress progress(Telling::Lines);
    app::RunWindow window(progress);
    EXPECT_EQ(window.PostMessageW(message, reinterpret_cast<std::uintptr_t>(text), reinterpret_cast<LPARAM>(status)),
              1);
    return testing::internal::GetCapturedStderr();
}

// A list line begins with its time; one without, or too short for one, stands as it is.
TEST(RunWindow, ListLinesAreShownWithoutTheirTime)
{
    EXPECT_EQ(Posted(1124, L"[12:34:56] FACTORIZATION", L"OK"), "FACTORIZATION - OK\n");
    EXPECT_EQ(Posted(1124, L"[12:34:56] ", L"OK"), " - OK\n");
    EXPECT_EQ(Posted(1124, L"[1] of many", L""), "\n");
    EXPECT_EQ(Posted(1124, L"[1] of man", L""), "[1] of man\n");
    EXPECT_EQ(Posted(1124, L"FACTORIZATION OF K", nullptr), "FACTORIZATION OF K\n");
}

TEST(RunWindow, OtherMessagesAreNoLines)
{
    EXPECT_EQ(Posted(1126, L"12%", nullptr), "");
    EXPECT_EQ(Posted(1125, L"[12:34:56] FACTORIZATION", L"OK"), "");
}

}  // namespace
}  // namespace qvx::test
