#pragma once

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "model/jx_struct.h"
#include "report/report.h"
#include "support/recording_host.h"
#include "support/temporary_folder.h"

namespace qvx::test {

/// Fills an empty model with every kind of record that the report lists and with results of every kind, simple numbers
/// that are told apart at a glance. The results are not those of an analysis.
void FillReportSample(CjxStruct& model);

/// A folder of the test's own with a model named "model" in it, and its report.
class ReportTest : public testing::Test
{
protected:
    ReportTest();

    /// Runs the report and reads its file.
    std::string Written();
    std::string WrittenAsText();
    std::string ReadFile(const std::string& name) const { return temporary_.Read(name); }

    TemporaryFolder temporary_;
    const std::filesystem::path& folder_ = temporary_.Path();
    RecordingHost host_;
    CjxStruct model_;
    CjxReport report_;
};

/// The part of a report from the heading of a section to the next heading or the end of the sections.
std::string SectionIn(const std::string& report, const std::string& anchor);
/// Whether part stands in text; a failure shows the part, not the whole report.
testing::AssertionResult Has(const std::string& text, const std::string& part);
testing::AssertionResult Lacks(const std::string& text, const std::string& part);
/// How often part stands in text.
int CountIn(const std::string& text, const std::string& part);

}  // namespace qvx::test
