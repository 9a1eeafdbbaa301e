#include "sap2000/import_loss.h"

#include <cassert>

namespace qvx {
namespace {

// "%s" stands for the subject.
const wchar_t* TextOf(ImportLossKind kind)
{
    switch (kind) {
    case ImportLossKind::SkippedTable:
        return L"table \"%s\" is not read";
    case ImportLossKind::RowAfterBlankLine:
        return L"table \"%s\" is read up to its first empty line only";
    case ImportLossKind::ContinuedRecord:
        return L"records of table \"%s\" go on in the next line, which is read as a record of its own";
    case ImportLossKind::NameCutAtBlank:
        return L"a name is cut at its first blank: %s";
    case ImportLossKind::SkippedShape:
        return L"frame sections of shape %s are not read";
    case ImportLossKind::UnknownDesignType:
        return L"load patterns of type %s are taken as dead load";
    case ImportLossKind::SelfWeight:
        return L"the self weight of load pattern %s is not read";
    case ImportLossKind::JointWithoutGlobal:
        return L"joints without GlobalX, GlobalY, GlobalZ have 0 in their place";
    case ImportLossKind::DroppedFrame:
        return L"frames that are not marked IsCurved=No are dropped";
    case ImportLossKind::UnknownSection:
        return L"elements of section %s get section 1: it is not among those read before";
    case ImportLossKind::UnknownMaterial:
        return L"elements of material %s keep theirs: it is not among those read before";
    case ImportLossKind::AssignmentToNothing:
        return L"rows of table \"%s\" name no element read before";
    case ImportLossKind::AdvancedAxes:
        return L"local axes of frames that are not marked AdvanceAxes=No are not read";
    case ImportLossKind::TurnedSection:
        return L"the table of local axes turns every frame by 90 degrees, its section too: check the sides of frames";
    case ImportLossKind::LocalLoadNotTurned:
        return L"loads along local 2 and 3 are not turned by 90 degrees without a table of local axes: check them";
    case ImportLossKind::MissingJoint:
        return L"areas of fewer than four joints have 0 for a missing one";
    case ImportLossKind::UnknownLoadPattern:
        return L"loads of pattern %s go to the first load case: it is not among those read before";
    case ImportLossKind::UnknownDirection:
        return L"loads along %s are taken along a local axis";
    case ImportLossKind::DroppedLoad:
        return L"loads of table \"%s\" are dropped";
    case ImportLossKind::LineTooLong:
        return L"the line is too long; the rest of the file is not read";
    }
    return L"%s";
}

// Found out after a table or the file has been read: the count is one of elements or loads, not of lines.
bool IsOfRecords(ImportLossKind kind)
{
    return kind == ImportLossKind::UnknownSection || kind == ImportLossKind::UnknownMaterial ||
           kind == ImportLossKind::TurnedSection || kind == ImportLossKind::LocalLoadNotTurned;
}

}  // namespace

CString ImportLoss::Text() const
{
    assert(count > 0 && "something was lost");
    CString text;
    const wchar_t* format = TextOf(kind);
    // Texts without a subject have no place for it; the argument then goes unused.
    text.Format(format, subject.GetString());
    if (IsOfRecords(kind))
        text.AppendFormat(L" (%d)", count);
    else if (count == 1)
        text.AppendFormat(L" (line %d)", firstLine);
    else
        // One message a kind and subject, however many lines: a file may have a hundred thousand rows of a table that
        // is not read.
        text.AppendFormat(L" (%d lines, from line %d)", count, firstLine);
    return text;
}

}  // namespace qvx
