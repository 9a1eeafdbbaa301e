#pragma once

#include <span>

#include "report/report.h"

namespace qvx {

/// One section of the report: what turns it on, what it needs, who writes it.
struct ReportSection
{
    const char* anchor;
    const char* label;                     ///< of its link in the contents; null when it has none
    int CjxReport::*isWanted;              ///< switch
    bool (*hasRecords)(const CjxReport&);  ///< whether there is anything to list
    void (*write)(CjxReport&);
};

/// All sections in the order of the report.
std::span<const ReportSection> ReportSections();

/// Whether the report has this section; its link in the contents stands under the same test.
bool IsPresent(const CjxReport& report, const ReportSection& section);

/// A line of the contents: caption and the sections that it links to.
struct ContentsGroup
{
    const char* caption;
    bool (*isPresent)(const CjxReport&);
    std::span<const char* const> anchors;
};

/// The contents of the report: links to the sections of the input, then to those of the results.
std::span<const ContentsGroup> InputContents();
std::span<const ContentsGroup> OutputContents();
/// Section of the table with this anchor, which must be there.
const ReportSection& SectionOf(const char* anchor);

}  // namespace qvx
