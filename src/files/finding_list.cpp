#include "files/finding_list.h"

#include <cassert>
#include <string_view>

#include "files/json_output.h"

namespace qvx {
namespace {

void WriteRecords(JsonWriter& out, const Finding& finding)
{
    assert(finding.records.size() <= finding.count && "the first of those that are counted");
    out.Key("records");
    out.BeginArray(Layout::Line);
    for (const FindingRecord& record : finding.records) {
        out.BeginObject(Layout::Line);
        out.Key("kind");
        out.Text(std::wstring_view(record.kind));
        out.Key("id");
        out.Number(record.id);
        out.EndObject();
    }
    out.EndArray();
    out.Key("count");
    out.Number(static_cast<int>(finding.count));
}

void WriteFinding(JsonWriter& out, const Finding& finding)
{
    out.BeginObject(Layout::Line);
    out.Key("severity");
    out.Text(SeverityWord(finding.severity));
    out.Key("code");
    out.Text(finding.code);
    out.Key("text");
    out.Text(std::wstring_view(finding.text));
    // Empty texts and counts of 0 are left out: a program that reads the list asks whether a key is there.
    if (!finding.remedy.empty()) {
        out.Key("remedy");
        out.Text(std::wstring_view(finding.remedy));
    }
    if (finding.count > 0)
        WriteRecords(out, finding);
    // An index from 0, as lists of combinations in the file are; texts for people count from 1.
    if (finding.combination >= 0) {
        out.Key("combination");
        out.Number(finding.combination);
    }
    if (!finding.field.empty()) {
        out.Key("field");
        out.Text(finding.field);
    }
    out.EndObject();
}

}  // namespace

void WriteFindings(JsonWriter& out, const FindingList& findings)
{
    out.BeginArray(Layout::Lines);
    for (const Finding& finding : findings)
        WriteFinding(out, finding);
    out.EndArray();
}

std::string FindingListText(const CjxStruct& model, bool isAccepted)
{
    return WriteJsonText([&](JsonWriter& out) {
        out.BeginObject(Layout::Lines);
        out.Key("accepted");
        out.Bool(isAccepted);
        out.Key("findings");
        WriteFindings(out, model.findings);
        out.EndObject();
        out.Finish();
    });
}

}  // namespace qvx
