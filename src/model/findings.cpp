#include "model/findings.h"

#include <algorithm>
#include <cwchar>
#include <string_view>

namespace qvx {
namespace {

std::wstring Prefix(const Finding& finding, const CjxStruct& model)
{
    std::wstring text = FromUtf8(SeverityWord(finding.severity)) + L": ";
    if (finding.combination < 0)
        return text;
    const auto comb = static_cast<std::size_t>(finding.combination);
    text += L"combination " + std::to_wstring(comb + 1);
    if (comb < model.loadCombs.size())
        text += std::wstring(L" \"") + model.loadCombs[comb].label + L"\"";
    return text + L": ";
}

// "members 1, 2, 3, node 7 and 12 more": the kind is said once for records of one kind in a row.
std::wstring RecordsLine(const Finding& finding)
{
    const std::vector<FindingRecord>& records = finding.records;
    const auto isSameKind = [&](std::size_t i, std::size_t j) {
        return j < records.size() && std::wcscmp(records[i].kind, records[j].kind) == 0;
    };
    std::wstring line;
    for (std::size_t i = 0; i < records.size(); ++i) {
        line += i == 0 ? L"" : L", ";
        if (i == 0 || !isSameKind(i, i - 1))
            line += std::wstring(records[i].kind) + (isSameKind(i, i + 1) ? L"s " : L" ");
        line += std::to_wstring(records[i].id);
    }
    if (finding.count > records.size())
        line += L" and " + std::to_wstring(finding.count - records.size()) + L" more";
    return line;
}

std::string_view CodeWord(FindingCode code)
{
    return FindingCatalogue()[static_cast<std::size_t>(code)].code;
}

// No boxes for its time.
class Unasked
{
public:
    explicit Unasked(CjxStruct& model) : model_(model), before_(model.bInteractive) { model.bInteractive = 0; }
    ~Unasked() { model_.bInteractive = before_; }
    Unasked(const Unasked&) = delete;
    Unasked& operator=(const Unasked&) = delete;

private:
    CjxStruct& model_;
    unsigned char before_;
};

}  // namespace

const char* SeverityWord(Severity severity)
{
    constexpr const char* kWords[] = {"note", "warning", "error"};
    return kWords[static_cast<std::size_t>(severity)];
}

const FindingList& CheckModel(CjxStruct& model)
{
    const Unasked unasked(model);
    model.CheckInputData(0, false);
    return model.findings;
}

bool HasRefusedShapes(const CjxStruct& model)
{
    return std::any_of(model.findings.begin(), model.findings.end(), [](const Finding& finding) {
        const std::string_view code = finding.code;
        return code == CodeWord(FindingCode::ShellCornerInvalid) || code == CodeWord(FindingCode::BrickCornerInvalid);
    });
}

bool IsReliable(const CjxStruct& model, std::size_t comb)
{
    return std::none_of(model.findings.begin(), model.findings.end(), [comb](const Finding& finding) {
        return !finding.isReliable && (finding.combination < 0 || finding.combination == static_cast<int>(comb));
    });
}

bool AreAllReliable(const CjxStruct& model)
{
    return std::all_of(model.findings.begin(), model.findings.end(),
                       [](const Finding& finding) { return finding.isReliable; });
}

std::vector<std::wstring> LinesOf(const Finding& finding, const CjxStruct& model)
{
    std::vector<std::wstring> lines;
    lines.push_back(Prefix(finding, model) + finding.text + L" [" + FromUtf8(finding.code) + L"]");
    if (!finding.records.empty())
        lines.push_back(L"    " + RecordsLine(finding));
    if (!finding.remedy.empty())
        lines.push_back(L"    " + finding.remedy);
    return lines;
}

}  // namespace qvx
