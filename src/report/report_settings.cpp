// General information, units and settings: captions with their values.

#include "model/jx_struct.h"
#include "model/setting_names.h"
#include "model/units.h"
#include "platform/visible_text.h"
#include "report/report.h"
#include "report/report_layout.h"
#include "report/report_pairs.h"

#include <cassert>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

using namespace qvx;

namespace {

constexpr const char* kGlobalAxes[] = {"X", "Y", "Z"};

std::wstring Wide(std::string_view text)
{
    return FromUtf8(text);
}

std::wstring YesNoText(int flag)
{
    return flag != 0 ? L"Yes" : L"No";
}

std::wstring General(double value)
{
    char text[kLongestNumberText];
    const char* end = PutNumber(text, value, {'g', 6});
    return Wide({text, static_cast<std::size_t>(end - text)});
}

template <class Record>
std::wstring LabelAt(const std::vector<Record>& records, int index)
{
    // A stored index may point beyond a list that has become shorter; a report says so and goes on.
    return index >= 0 && index < static_cast<int>(records.size()) ? records[static_cast<std::size_t>(index)].label
                                                                  : L"Invalid";
}

std::vector<ReportPair> SettingsOf(const CjxStruct& model)
{
    return {
        {"Model type", Wide(NameOf(kModelTypeNames, model.modelType))},
        {"Solver Type", Wide(NameOf(kSolverTypeNames, model.solverType))},
        {"Maximum Nonlinear Iterations", std::to_wstring(model.maxNonlinearIterations)},
        {"P-Delta Tolerance (%)", General(model.pDeltaTolerance)},
        {"Fictitious oz stiffness factor for shell", General(model.shellOzFactor)},
        {"Diaphragm stiffness factor", General(model.diaphragmStiffnessFactor)},
        {"Consider member shear deformations", YesNoText(model.bShearDeformation)},
        {"Consider rigid diaphragms", YesNoText(model.bRigidDiaphragms)},
        {"Apply stiffness modification factors and cracking factors", YesNoText(model.bStiffnessFactors)},
        {"Number of segments for member output", std::to_wstring(model.numberOfSegments)},
        {"Average shell and brick stresses", YesNoText(model.bAverageStresses)},
        {"Use thin plate bending formulation for rectangular shells", YesNoText(model.bThinPlate)},
        {"Use incompatible membrane formulation for shells", YesNoText(model.bIncompatibleMembrane)},
        {"Self weight considered as load case", LabelAt(model.loadCases, model.selfWeightCase)},
        {"Self weight acted in global direction", Wide(NameOf(kGlobalAxes, model.selfWeightDir))},
        {"Self weight multiplier", General(model.selfWeightFactor)},
        {"Number of modes (eigenvalues and eigenvectors)", std::to_wstring(model.numberOfModes)},
        {"Number of iteration vectors", std::to_wstring(model.iterationVectors)},
        {"Eigenvalue tolerance", General(model.eigenTolerance)},
        {"Maximum subspace iterations", std::to_wstring(model.maxSubspaceIterations)},
        {"Load combination for mass", LabelAt(model.loadCombs, model.massLoadComb)},
        {"Convert loads to masses", YesNoText(model.bLoadsToMasses)},
    };
}

}  // namespace

void CjxReport::WritePairs(const ReportPairTable& table, const std::vector<ReportPair>& pairs)
{
    assert(table.captionShare > 0 && table.captionShare < 100 && table.captionWidth > 0 && table.valueWidth > 0);
    ReportWriter& out = *writer_;
    if (!out.IsTable()) {
        for (const ReportPair& pair : pairs)
            out.PairLine(pair.caption, table.captionWidth, ToUtf8(VisibleText(std::wstring_view(pair.value))),
                         table.valueWidth);
        return out.EndLine();
    }
    set_table();
    out.BeginRow();
    out.HeadCell(table.captionHead, table.captionShare);
    out.HeadCell(table.valueHead, 100 - table.captionShare);
    out.EndRow();
    bool isShaded = false;
    for (const ReportPair& pair : pairs) {
        write_row2(pair.caption, EscapedHtml(ToUtf8(VisibleText(std::wstring_view(pair.value)))), 1, 1,
                   isShaded ? kShade : "", "left");
        isShaded = !isShaded;
    }
    out.Line("</table> ");
}

void CjxReport::list_general_info()
{
    std::vector<ReportPair> pairs = {{"Model Name:", model->modelName.Text()},
                                     {"Company:", model->company.Text()},
                                     {"Engineer:", model->engineer.Text()}};
    const char* caption = "Notes:";
    for (const CString& note : model->notes) {
        // A note of several lines has its caption in the first and keeps its empty ones.
        std::wistringstream lines(note.Text());
        std::wstring line;
        std::getline(lines, line);
        do {
            if (line.ends_with(L'\r'))  // of an edit control
                line.pop_back();
            pairs.push_back({caption, line});
            caption = "";
        } while (std::getline(lines, line));
    }
    writer_->BeginSection("general_info", "General Info");
    WritePairs({.captionHead = "Item", .captionShare = 35, .captionWidth = 20, .valueHead = "Value", .valueWidth = 70},
               pairs);
    writer_->EndSection();
}

void CjxReport::list_units()
{
    std::vector<ReportPair> pairs;
    pairs.reserve(kQuantityCount);
    for (int k = 0; k < kQuantityCount; ++k)
        pairs.push_back({ToUtf8(QuantityLabel(static_cast<Quantity>(k))), UnitName(model->units.unit[k])});
    writer_->BeginSection("units", "Units");
    WritePairs({.captionHead = "Item", .captionShare = 65, .captionWidth = 50, .valueHead = "Unit", .valueWidth = 20},
               pairs);
    writer_->EndSection();
}

void CjxReport::list_miscellaneous()
{
    writer_->BeginSection("miscellaneous", "Miscellaneous");
    WritePairs({.captionHead = "Item", .captionShare = 65, .captionWidth = 65, .valueHead = "Value", .valueWidth = 30},
               SettingsOf(*model));
    writer_->EndSection();
}
