#include "model/findings.h"

#include <algorithm>
#include <cassert>
#include <cwchar>
#include <string_view>
#include <utility>

namespace qvx {
namespace {

std::wstring Prefix(const Finding& finding, const CjxStruct& model)
{
    std::wstring text = FromUtf8(SeverityWord(finding.severity)) + L": ";
    if (finding.combination < 0)
        return text;
    // From 1, as messages and reports count combinations; the label beside it, unless the model has changed since.
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
    assert(records.size() <= finding.count && "counted at least as often as named");
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
    assert(static_cast<std::size_t>(code) < FindingCatalogue().size() && "every code has its line in the catalogue");
    return FindingCatalogue()[static_cast<std::size_t>(code)].code;
}

// No boxes for its time.
// CheckInputData asks a host's user before it goes on; CheckModel answers programs, which cannot be asked.
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
    assert(severity >= Severity::Note && severity <= Severity::Error);
    constexpr const char* kWords[] = {"note", "warning", "error"};
    return kWords[static_cast<std::size_t>(severity)];
}

const FindingList& CheckModel(CjxStruct& model)
{
    const Unasked unasked(model);
    model.CheckInputData(0, false);
    return model.findings;
}

void DropFindings(FindingList& findings, FindingCode first, FindingCode last)
{
    FindingList kept;
    for (const Finding& finding : findings) {
        const bool isDropped =
            std::any_of(FindingCatalogue().begin() + static_cast<std::ptrdiff_t>(first),
                        FindingCatalogue().begin() + static_cast<std::ptrdiff_t>(last) + 1,
                        [&](const FindingKind& kind) { return std::string_view(kind.code) == finding.code; });
        if (!isDropped)
            kept.Add(finding);
    }
    findings = std::move(kept);
}

bool HasRefusedShapes(const CjxStruct& model)
{
    return std::any_of(model.findings.begin(), model.findings.end(), [](const Finding& finding) {
        // By the word of the finding: it may come from a list that was read from a file and knows no enumerator.
        const std::string_view code = finding.code;
        return code == CodeWord(FindingCode::ShellCornerInvalid) || code == CodeWord(FindingCode::BrickCornerInvalid);
    });
}

// Findings about the model as a whole are told by AreAllReliable: they name no combination.
bool IsReliable(const CjxStruct& model, std::size_t comb)
{
    const bool isOfModes = model.IsResponseSpectrumLoadCombination(static_cast<int>(comb));
    return std::none_of(model.findings.begin(), model.findings.end(), [&](const Finding& finding) {
        return !finding.isReliable &&
               (finding.combination == static_cast<int>(comb) || (isOfModes && finding.stage == FindingStage::Modes));
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
