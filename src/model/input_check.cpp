#include "model/input_check.h"

#include <cassert>
#include <cstdarg>

#include "platform/host_services.h"

namespace qvx {

void InputCheck::Warn(const wchar_t* text)
{
    model.list_msg(text, L"WARNING");
    model.LogLine(text);
}

void InputCheck::Refuse(const wchar_t* text, const wchar_t* logText)
{
    RefuseLogged(text);
    model.LogLine(logText == nullptr ? text : logText);
}

void InputCheck::RefuseLogged(const wchar_t* text)
{
    model.list_msg(text, L"NOT OK");
    result = 0;
}

void InputCheck::List(const wchar_t* text)
{
    model.list_msg(text, L"...");
}

bool InputCheck::Ask(const wchar_t* text) const
{
    assert(text != nullptr && *text != 0);
    constexpr unsigned kFlags = kMbSystemModal | kMbIconQuestion | kMbYesNo;
    return model.bInteractive == 0 || AfxMessageBox(text, kFlags) == kIdYes;
}

void InputCheck::AskOrRefuse(const wchar_t* text)
{
    if (!Ask(text))
        result = 0;
}

void InputCheck::Log(const wchar_t* format, ...)
{
    assert(format != nullptr);
    va_list arguments;
    va_start(arguments, format);
    CString text;
    text.FormatV(format, arguments);
    va_end(arguments);
    model.LogLine(text);
}

bool CheckStiffnessFactors(InputCheck& check, const wchar_t* element, int id, const std::vector<double>& factors)
{
    bool isValid = true;
    for (const double factor : factors) {
        if (!(factor > 0)) {  // a factor that is no number is invalid too
            check.Log(L"%s %d invalid stiffness modification factor: %g", element, id, factor);
            isValid = false;
        }
        check.isUsingFactors |= factor != 1.0;
    }
    return isValid;
}

bool CheckCracking(InputCheck& check, const wchar_t* element, int id, double cracking)
{
    check.isUsingFactors |= cracking != 1.0;
    if (cracking > 0 && cracking <= 1)
        return true;
    check.Log(L"%s %d invalid cracking factor: %g", element, id, cracking);
    return false;
}

void LengthRange::Add(double length, int id)
{
    assert(!(length < 0));
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
        check.Refuse(fault.GetText());
    }
    qvx::CheckLinksAgainstSolver(check);
    assert(linearCombCount >= 0 && linearCombCount <= static_cast<int>(loadCombs.size()));
    return check.result;
}
