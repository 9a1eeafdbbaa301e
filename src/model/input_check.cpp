#include "model/input_check.h"

#include <algorithm>
#include <cassert>
#include <cstdarg>
#include <cwchar>

#include "platform/host_services.h"

namespace qvx {

namespace {

// A question as a statement in one line: without its last sentence, since it is told whatever the answer.
std::wstring Statement(std::wstring question)
{
    if (const std::size_t asked = question.find(L"\nDo you want"); asked != std::wstring::npos)
        question.erase(asked);
    std::replace(question.begin(), question.end(), L'\n', L' ');
    return question;
}

}  // namespace

void InputCheck::Find(FindingCode code, std::wstring text)
{
    Finding finding = MakeFinding(code, std::move(text));
    finding.combination = pending_.combination;
    finding.count = pending_.count;
    finding.records = std::move(pending_.records);
    finding.field = std::move(pending_.field);
    // What a finding is about is said before it: the next one starts with nothing.
    pending_ = {};
    model.findings.Add(std::move(finding));
}

void InputCheck::WarnOnly(const wchar_t* text)
{
    model.list_msg(text, L"WARNING");
    model.LogLine(text);
}

void InputCheck::Warn(FindingCode code, const wchar_t* text)
{
    WarnOnly(text);
    Find(code, text);
}

void InputCheck::Refuse(FindingCode code, const wchar_t* text, const wchar_t* logText)
{
    RefuseOnly(text);
    model.LogLine(logText == nullptr ? text : logText);
    Find(code, text);
}

void InputCheck::RefuseOnly(const wchar_t* text)
{
    // The check goes on: an author corrects all faults of a model in one go, not one a run.
    model.list_msg(text, L"NOT OK");
    result = 0;
}

void InputCheck::List(FindingCode code, const wchar_t* text)
{
    model.list_msg(text, L"...");
    Find(code, Statement(text));
}

bool InputCheck::Ask(const wchar_t* text) const
{
    assert(text != nullptr && *text != 0);
    constexpr unsigned kFlags = kMbSystemModal | kMbIconQuestion | kMbYesNo;
    // Without boxes nobody is asked. Yes is the answer that does not refuse a model which a host has decided to solve.
    return model.bInteractive == 0 || AfxMessageBox(text, kFlags) == kIdYes;
}

void InputCheck::AskOrRefuse(const wchar_t* text)
{
    if (Ask(text))
        return;
    result = 0;
    Find(FindingCode::AnsweredNo, Statement(text));
}

FindingOfMany::FindingOfMany(InputCheck& check, FindingCode code, std::string field)
    : check_(check), finding_(MakeFinding(code, {}))
{
    finding_.field = std::move(field);
}

FindingOfMany::~FindingOfMany()
{
    if (finding_.count > 0)
        check_.model.findings.Add(std::move(finding_));
}

void InputCheck::Log(const wchar_t* format, ...)
{
    assert(format != nullptr);
    // The texts and their formats are fixed for whoever reads the log, odd ones too: they come as they are.
    va_list arguments;
    va_start(arguments, format);
    CString text;
    text.FormatV(format, arguments);
    va_end(arguments);
    model.LogLine(text);
}

namespace {

// "Member" begins a line of the log, "member" names the kind of a record.
const wchar_t* KindOf(const wchar_t* element)
{
    return std::wcscmp(element, L"Member") == 0 ? L"member" : L"shell";
}

}  // namespace

bool CheckStiffnessFactors(InputCheck& check, const wchar_t* element, int id, const std::vector<double>& factors)
{
    bool isValid = true;
    for (const double factor : factors) {
        if (!(factor > 0)) {  // a factor that is no number is invalid too
            check.Log(L"%s %d invalid stiffness modification factor: %g", element, id, factor);
            if (isValid)
                check.About(KindOf(element), id);
            isValid = false;
        }
        check.isUsingFactors |= factor != 1.0;
    }
    return isValid;
}

bool CheckCracking(InputCheck& check, const wchar_t* element, int id, double cracking)
{
    // Exactly 1 is the default: any other value was meant by somebody.
    check.isUsingFactors |= cracking != 1.0;
    if (cracking > 0 && cracking <= 1)
        return true;
    check.Log(L"%s %d invalid cracking factor: %g", element, id, cracking);
    check.About(KindOf(element), id);
    return false;
}

void LengthRange::Add(double length, int id)
{
    assert(!(length < 0));
    // Strictly less and more: of equal lengths the first one is named, and a repeated check names the same.
    if (length < shortest) {
        shortest = length;
        shortestId = id;
    }
    if (length > longest) {
        longest = length;
        longestId = id;
    }
}

}  // namespace qvx

/// Settings first, for what follows relies on their ranges; nodes before members, for members are found on sorted
/// nodes; links last, for they are made whatever was found.
int CjxStruct::CheckInputData(int mode, bool bSilent)
{
    assert(mode == qvx::kStaticCheck || mode == qvx::kFrequencyCheck);
    findings.Drop(qvx::FindingStage::Check);
    qvx::InputCheck check(*this, mode, bSilent);
    qvx::LimitSettings(check);
    qvx::CheckMassCombination(check);
    qvx::CheckConsistency(check);
    qvx::CheckBoundaryConditions(check);
    qvx::CheckProperties(check);
    qvx::CheckNodes(check);
    qvx::CheckMembers(check);
    qvx::CheckMergeableNodes(check);
    qvx::CheckMemberLengths(check);
    qvx::CheckShellGeometry(check);
    qvx::CheckShells(check);
    qvx::CheckLoads(check);
    qvx::DeriveNonlinearity(check);
    qvx::CheckDiaphragms(check);
    try {
        CreateDiaphragmLinks();
    } catch (const jxException& fault) {  // a diaphragm that cannot be: bad input like any other
        check.Refuse(qvx::FindingCode::DiaphragmInvalid, fault.GetText());
    }
    qvx::CheckLinksAgainstSolver(check);
    qvx::CheckElementShapes(check);
    qvx::CheckCombinations(check);
    qvx::CheckLoadValues(check);
    qvx::CheckIdleRecords(check);
    qvx::CheckReleases(check);
    qvx::CheckDiaphragmPlanes(check);
    FindInElements(check);
    assert(linearCombCount >= 0 && linearCombCount <= static_cast<int>(loadCombs.size()));
    return check.result;
}
