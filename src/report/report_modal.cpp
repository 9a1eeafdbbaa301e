// Modes and their response to the spectra.

#include <cassert>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "model/jx_struct.h"
#include "model/physical_constants.h"
#include "report/report.h"
#include "report/report_selection.h"
#include "report/report_six_values.h"

using namespace qvx;

namespace {

constexpr const char* kDirectionAnchors[] = {"x", "y", "z"};
constexpr const char* kDirectionNames[] = {"SX", "SY", "SZ"};

double PeriodOf(double eigenvalue)
{
    // The eigenvalue of K v = lambda M v is the square of the circular frequency.
    return kTwoPi / std::sqrt(eigenvalue);
}

// Of the eigenvalue list and of the participation list: what one of them lacks is null.
struct ModeRow
{
    int number;
    double eigenvalue;
    double errorMeasure;
    const double* participation;
};

// A number of a mode has no quantity of the unit table.
Cell Number(double value)
{
    return PlainResult('g', 6, value);
}

constexpr Column<ModeRow> kEigenColumns[] = {
    {"Mode", 8, [](const ModeRow& r) { return Integer(r.number); }},
    {"Period", 14, [](const ModeRow& r) { return Number(PeriodOf(r.eigenvalue)); }},
    {"Frequency", 14, [](const ModeRow& r) { return Number(1 / PeriodOf(r.eigenvalue)); }},
    {"Circular Freq", 14, [](const ModeRow& r) { return Number(std::sqrt(r.eigenvalue)); }},
    {"Eigenvalue", 14, [](const ModeRow& r) { return Number(r.eigenvalue); }},
    {"Error Measure", 14, [](const ModeRow& r) { return Number(r.errorMeasure); }},
};
constexpr Layout<ModeRow>
    kEigenValues("    Mode         Period      Frequency  Circular Freq     Eigenvalue  Error Measure", kEigenColumns);

template <int I>
Cell Participation(const ModeRow& r)
{
    assert(r.participation != nullptr && "a row of the response");
    return PlainResult('f', 6, r.participation[I]);
}

constexpr Column<ModeRow> kParticipationColumns[] = {
    {"Mode", 8, [](const ModeRow& r) { return Integer(r.number); }},
    {"Period", 14, [](const ModeRow& r) { return Number(PeriodOf(r.eigenvalue)); }},
    {"SX-Participation", 21, Participation<0>},
    {"SY-Participation", 17, Participation<1>},
    {"SZ-Participation", 17, Participation<2>},
};
constexpr Layout<ModeRow>
    kParticipations("    Mode         Period      SX-Participation  SY-Participation  SZ-Participation",
                    kParticipationColumns);

// Mass times spectral acceleration at each node: what the response of the mode is the static answer to.
constexpr Column<jxResult6Val> kInertiaColumns[] = {
    {"Node", 8, IdOf<jxResult6Val>}, {"Fx", 12, Reaction::At<0>}, {"Fy", 12, Reaction::At<1>},
    {"Fz", 12, Reaction::At<2>},     {"Mx", 12, Reaction::At<3>}, {"My", 12, Reaction::At<4>},
    {"Mz", 12, Reaction::At<5>},
};
constexpr Layout<jxResult6Val>
    kInertiaForces("    Node           Fx           Fy           Fz           Mx           My           Mz",
                   kInertiaColumns);

// Head of a mode, then its table of nodal values.
void WriteMode(ReportWriter& out, int number, double eigenvalue, const Layout<jxResult6Val>& layout,
               const std::vector<jxResult6Val>& values, const Selection& selection)
{
    assert(number >= 1 && "modes are counted from 1");
    char period[kLongestNumberText];
    const char* end = PutNumber(period, PeriodOf(eigenvalue), {'g', 4});
    out.BeginBlockTitle();
    out.Put("Mode-");
    out.PutInt(number);
    out.Put(": (Period=");
    out.Put({period, static_cast<std::size_t>(end - period)});
    out.Put(" sec)");
    out.EndBlockTitle();
    WriteTable(out, layout, values, selection.OfNode());
}

std::string DisplacementUnits(const ReportWriter& out)
{
    return ReportWriter::UnitsLine({{"Units: Displacements Dx, Dy, Dz ", out.UnitOf(kTranslationalDisplacement)},
                                    {"Dox, Doy, Doz ", out.UnitOf(kRotationalDisplacement)}});
}

// One of the three lists of a direction, mode by mode.
void WriteResponse(ReportWriter& out, const CjxStruct& model, const Selection& selection,
                   const Layout<jxResult6Val>& layout, std::vector<jxResult6Val> (jxResponseSpectrumResult::*lists)[3],
                   int direction)
{
    assert(direction >= 0 && direction < 3 && "X, Y or Z");
    int number = 0;
    for (const jxResponseSpectrumResult& mode : model.spectrumResults)
        WriteMode(out, ++number, mode.eigenvalue, layout, (mode.*lists)[direction], selection);
}

}  // namespace

void CjxReport::list_eigen_values()
{
    // Period, frequency and circular frequency say one thing three ways; all are listed, as each has readers that know
    // no other.
    writer_->BeginSection("eigen_values", "Eigenvalues",
                          {"Units: Period [sec]; Frequency [cycle/sec]; Circular Frequency [rad/sec]; "
                           "Eigenvalue [(rad/sec)^2]"});
    TableOf<ModeRow> table(*writer_, kEigenValues);
    int number = 0;
    for (const jxEigenResult& mode : model->eigenResults)
        table.Write({++number, mode.eigenvalue, mode.errorMeasure, nullptr});
    table.End();
    writer_->EndSection();
}

void CjxReport::list_eigen_vectors()
{
    writer_->BeginSection("eigen_vectors", "Eigenvectors", {DisplacementUnits(*writer_)});
    const Selection selection(*model, bSelectedOnly);
    int number = 0;
    for (const jxEigenResult& mode : model->eigenResults)
        WriteMode(*writer_, ++number, mode.eigenvalue, kDisplacements, mode.shape, selection);
    writer_->EndSection();
}

void CjxReport::list_participation_factors()
{
    writer_->BeginSection("participation_factors", "Mode Participation Factors", {"Units: Period [sec]"});
    TableOf<ModeRow> table(*writer_, kParticipations);
    int number = 0;
    for (const jxResponseSpectrumResult& mode : model->spectrumResults)
        table.Write({++number, mode.eigenvalue, 0, mode.participation});
    table.End();
    writer_->EndSection();
}

void CjxReport::list_modal_displacements(int direction)
{
    assert(direction >= 0 && direction < 3);
    writer_->BeginSection(std::string("modal_displacements_") + kDirectionAnchors[direction],
                          std::string("Modal Displacements (") + kDirectionNames[direction] + ")",
                          {DisplacementUnits(*writer_)});
    WriteResponse(*writer_, *model, Selection(*model, bSelectedOnly), kDisplacements,
                  &jxResponseSpectrumResult::displacements, direction);
    writer_->EndSection();
}

void CjxReport::list_inertial_forces(int direction)
{
    assert(direction >= 0 && direction < 3);
    writer_->BeginSection(std::string("inertial_forces_") + kDirectionAnchors[direction],
                          std::string("Modal Inertial Forces (") + kDirectionNames[direction] + ")",
                          {ReportWriter::UnitsLine({{"Units: Fx, Fy, Fz ", writer_->UnitOf(kForce)},
                                                    {"Mx, My, Mz ", writer_->UnitOf(kMoment)}})});
    WriteResponse(*writer_, *model, Selection(*model, bSelectedOnly), kInertiaForces, &jxResponseSpectrumResult::forces,
                  direction);
    writer_->EndSection();
}
