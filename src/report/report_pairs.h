#pragma once

#include <string>

namespace qvx {

/// A caption of the report with its value.
struct ReportPair
{
    std::string caption;
    std::wstring value;
};

/// How captions and values stand beside each other: two columns of a table, or of text, both flush left there.
struct ReportPairTable
{
    const char* captionHead;
    int captionShare;  ///< of the table [%]
    int captionWidth;  ///< of the text [characters]
    const char* valueHead;
    int valueWidth;
};

}  // namespace qvx
