// Materials, sections, thicknesses, load cases and combinations.

#include "model/jx_struct.h"

#include <cassert>

#include "report/report.h"
#include "report/report_layout.h"

using namespace qvx;

namespace {

// Its unit is the inverse of a temperature; numbers around 1e-5 need an exponent.
Cell ThermalCoefficient(const jxMat& m)
{
    return Plain('e', 3, m.Tc);
}

constexpr Column<jxMat> kMaterialColumns[] = {
    {"Material", 8, IdOf<jxMat>},
    {"Label", 32, LabelOf<jxMat>},
    {"E", 12, [](const jxMat& m) { return Input(kModulus, m.E); }},
    {"Poisson v", 10, [](const jxMat& m) { return Plain('f', 3, m.nu); }},
    {"Wc", 10, [](const jxMat& m) { return Input(kWeightDensity, m.Wc); }},
    {"Tc", 10, ThermalCoefficient},
    {"fc", 12, [](const jxMat& m) { return Input(kModulus, m.fc); }},
    {"fy", 12, [](const jxMat& m) { return Input(kModulus, m.fy); }},
    {"fys", 12, [](const jxMat& m) { return Input(kModulus, m.fys); }},
};
constexpr Layout<jxMat> kMaterials(
    "Material                            Label            E  Poisson v         Wc         Tc           fc           fy"
    "          fys",
    kMaterialColumns);

constexpr Column<jxSect> kSectionColumns[] = {
    {"Section", 8, IdOf<jxSect>},
    {"Label", 32, LabelOf<jxSect>},
    {"Iz", 12, [](const jxSect& s) { return Input(kDimension, s.Iz); }},
    {"Iy", 12, [](const jxSect& s) { return Input(kDimension, s.Iy); }},
    {"J", 12, [](const jxSect& s) { return Input(kDimension, s.J); }},
    {"A", 12, [](const jxSect& s) { return Input(kDimension, s.A); }},
    {"Ay", 12, [](const jxSect& s) { return Input(kDimension, s.Ay); }},
    {"Az", 12, [](const jxSect& s) { return Input(kDimension, s.Az); }},
};
constexpr Layout<jxSect> kSections(
    " Section                            Label           Iz           Iy            J           A            Ay"
    "           Az",
    kSectionColumns);

// Narrow enough for two on a line.
constexpr Column<jxThick> kThicknessColumns[] = {
    {"Thickness", 9, IdOf<jxThick>},
    {"Label", 12, LabelOf<jxThick>},
    {"t", 12, [](const jxThick& t) { return Input(kDimension, t.t); }},
};
constexpr Layout<jxThick> kThicknesses("Thickness        Label            t   Thickness        Label            t",
                                       kThicknessColumns, PerLine::Two);

constexpr Column<jxLoadCase> kLoadCaseColumns[] = {
    {"LoadCase", 8, IdOf<jxLoadCase>},
    {"Label", 32, LabelOf<jxLoadCase>},
    {"Type", 32, [](const jxLoadCase& c) { return Label(c.type); }},
};
constexpr Layout<jxLoadCase> kLoadCases("LoadCase                           Label                              Type",
                                        kLoadCaseColumns);

// A term of a combination; what belongs to the combination itself stands in its first row only.
struct CombinationRow
{
    const jxLoadComb& combination;
    int number;
    const jxCaseFactor* term;
    bool isFirst;

    Cell Once(const Cell& cell) const { return isFirst ? cell : Cell{}; }
};

// One row for each term: whoever reads the comma-separated file finds the factor of a load case in one cell.
constexpr Column<CombinationRow> kCombinationColumns[] = {
    {"LoadComb", 8, [](const CombinationRow& r) { return r.Once(Integer(r.number)); }},
    {"Label", 32, [](const CombinationRow& r) { return r.Once(Label(r.combination.label)); }},
    {"P-Delta", 8, [](const CombinationRow& r) { return r.Once(YesNo(r.combination.bPDelta)); }},
    {"RS-Factor", 9, [](const CombinationRow& r) { return r.Once(Plain('g', 6, r.combination.rsFactor)); }},
    {"LoadCase", 32, [](const CombinationRow& r) { return r.term ? Label(r.term->label) : Cell{}; }},
    {"Factor", 8, [](const CombinationRow& r) { return r.term ? Plain('g', 6, r.term->factor) : Cell{}; }},
};
constexpr Layout<CombinationRow> kCombinations(
    "LoadComb                            Label  P-Delta RS-Factor                         LoadCase   Factor",
    kCombinationColumns);

// What a combination is for: which designs it counts in and which deflections are checked (total and live load). One
// row for each combination, without its terms.
constexpr Column<CombinationRow> kDesignColumns[] = {
    {"LoadComb", 8, [](const CombinationRow& r) { return Integer(r.number); }},
    {"Label", 32, [](const CombinationRow& r) { return Label(r.combination.label); }},
    {"Steel", 10, [](const CombinationRow& r) { return YesNo(r.combination.bSteel); }},
    {"Check TLD", 10, [](const CombinationRow& r) { return YesNo(r.combination.bCheckTLD); }},
    {"Check LLD", 10, [](const CombinationRow& r) { return YesNo(r.combination.bCheckLLD); }},
    {"Concrete", 10, [](const CombinationRow& r) { return YesNo(r.combination.bConcrete); }},
    {"Sus. Load Factor", 16, [](const CombinationRow& r) { return Plain('g', 6, r.combination.susLoadFactor); }},
};
constexpr Layout<CombinationRow> kDesignCombinations(
    "LoadComb                            Label      Steel  Check TLD  Check LLD   Concrete Sus. Load Factor",
    kDesignColumns);

// `number` counts combinations from 1, as messages do.
void WriteTerms(TableOf<CombinationRow>& table, const jxLoadComb& combination, int number)
{
    assert(number >= 1 && "combinations are counted from 1");
    // A combination without terms is listed all the same: it is solved, and its result is zero.
    if (combination.cases.empty())
        table.Write({combination, number, nullptr, true});
    for (const jxCaseFactor& term : combination.cases)
        table.Write({combination, number, &term, &term == &combination.cases.front()});
}

}  // namespace

void CjxReport::list_materials()
{
    ReportWriter& out = *writer_;
    out.BeginSection("materials", "Materials",
                     {ReportWriter::UnitsLine({{"Units: Young's Modulus (E), fc, fy, fys", out.UnitOf(kModulus)},
                                               {"Weight Density (Wc)", out.UnitOf(kWeightDensity)},
                                               {"Thermal Coefficient (Tc)", "1/" + out.UnitOf(kTemperature)}})});
    WriteTable(out, kMaterials, model->materials);
    out.EndSection();
}

void CjxReport::list_sections()
{
    ReportWriter& out = *writer_;
    const std::string dimension = out.UnitOf(kDimension);
    out.BeginSection(
        "sections", "Sections",
        {ReportWriter::UnitsLine({{"Units: Iz, Iy, J", dimension + "^4"}, {"A, Ay, Az", dimension + "^2"}})});
    WriteTable(out, kSections, model->sections);
    out.EndSection();
}

void CjxReport::list_thicknesses()
{
    ReportWriter& out = *writer_;
    out.BeginSection("thicknesses", "Shell Thicknesses",
                     {ReportWriter::UnitsLine({{"Units: Thickness (t) ", out.UnitOf(kDimension)}})});
    WriteTable(out, kThicknesses, model->thicknesses);
    out.EndSection();
}

void CjxReport::list_load_cases()
{
    writer_->BeginSection("load_cases", "Load Cases");
    WriteTable(*writer_, kLoadCases, model->loadCases);
    writer_->EndSection();
}

void CjxReport::list_load_combinations()
{
    writer_->BeginSection("load_combinations", "Load Combinations");
    TableOf<CombinationRow> table(*writer_, kCombinations);
    int number = 0;
    for (const jxLoadComb& combination : model->loadCombs)
        WriteTerms(table, combination, ++number);
    table.End();
    writer_->EndSection();
}

void CjxReport::list_load_combinations_design()
{
    writer_->BeginSection("load_combinations_design", "Load Combinations for Design");
    TableOf<CombinationRow> table(*writer_, kDesignCombinations);
    int number = 0;
    for (const jxLoadComb& combination : model->loadCombs)
        table.Write({combination, ++number, nullptr, true});
    table.End();
    writer_->EndSection();
}
