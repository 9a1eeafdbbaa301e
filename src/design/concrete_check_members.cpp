#include "design/concrete_check.h"

#include "elements/member/beam_stress_calculator.h"
#include "model/find_record.h"

namespace qvx {

namespace {

CString Member(int id, const wchar_t* fault)
{
    CString text;
    text.Format(L"Member %d%s", id, fault);
    return text;
}

bool HasDimensions(const jxSect& section)
{
    const double(&dim)[4] = section.dim;
    switch (RegularSectionOf(section.label)) {
    case kRegularRect:
        return dim[0] > 0 && dim[1] > 0;
    case kRegularRound:
        return dim[0] > 0;
    case kRegularTee:
        // Flange and web within the outline, else the tee is none.
        return dim[0] > 0 && dim[1] > 0 && dim[2] > 0 && dim[3] > 0 && dim[3] <= dim[0] && dim[2] <= dim[1];
    default:
        return true;
    }
}

}  // namespace

void ConcreteCheck::Sections()
{
    model_.LogLine(L"CHECKING SECTIONS");
    for (const jxSect& section : model_.sections)
        Section(section);
    End(L"Invalid RC section properties found");
}

void ConcreteCheck::Section(const jxSect& section)
{
    if (HasDimensions(section))
        return;
    const bool isTee = RegularSectionOf(section.label) == kRegularTee;
    CString text;
    text.Format(L"%d [%s]: invalid %s", section.id, section.label,
                isTee ? L"Tee dimension properties" : L"dimension properties");
    Fault(text);
}

void ConcreteCheck::Members()
{
    model_.LogLine(L"CHECKING RC BEAMS & COLUMNS");
    for (const jxBm& beam : model_.beams)
        if (beam.bConcreteSkip == 0 && beam.excluded == 0)
            Member(beam);
    End(L"Invalid RC member design criteria found");
}

void ConcreteCheck::Member(const jxBm& beam)
{
    const jxSect& section = FindById(model_.sections, beam.section);
    // Nothing to design: a concrete member of another shape is passed over, as a steel one is.
    if (RegularSectionOf(section.label) == kNotRegular)
        return;
    if (model_.design.shearOption != 0 && !(FindById(model_.materials, beam.material).Wc > 0))
        Fault(qvx::Member(beam.id, L": 0 or negative material density specified when lightweight concrete reduction "
                                   L"factor is considered."),
              L"member", beam.id, FindingCode::LightweightWithoutDensity);
    if (beam.designType != L'B' && beam.designType != L'C')
        Fault(qvx::Member(beam.id, L": design type must be B(beam) or C(column)"), L"member", beam.id);
    Cover(beam, section);
}

void ConcreteCheck::Cover(const jxBm& beam, const jxSect& section)
{
    const RegularSection shape = RegularSectionOf(section.label);
    const double* dim = section.dim;
    if (beam.designType == L'B' && shape != kRegularRound) {
        const jxBmRcCrit& criterion = FindById(model_.beamRcCriteria, beam.rcCriterion);
        // Covers are to the middle of the bars: beyond half the depth tension and compression steel would change
        // places.
        if (criterion.topCover >= 0.5 * dim[1] || criterion.bottomCover >= 0.5 * dim[1])
            Fault(qvx::Member(beam.id, L": invalid beam concrete cover (>= 0.5 * h)"), L"member", beam.id);
    }
    if (beam.designType == L'C' && shape != kRegularTee) {
        const double cover = FindById(model_.columnRcCriteria, beam.rcCriterion).cover;
        if (cover >= 0.5 * dim[0] || (shape == kRegularRect && cover >= 0.5 * dim[1]))
            Fault(qvx::Member(beam.id, L": invalid column concrete cover (>= 0.5 * b or 0.5 * h)"), L"member", beam.id);
    }
}

void ConcreteCheck::Plates()
{
    model_.LogLine(L"CHECKING RC PLATES");
    for (const jxShell4& shell : model_.shell4s)
        Plate(shell);
    End(L"Invalid RC slab design criteria found");
}

void ConcreteCheck::Plate(const jxShell4& shell)
{
    const double half = 0.5 * FindById(model_.thicknesses, shell.thickness).t;
    const jxPlateRcCrit& c = FindById(model_.plateRcCriteria, shell.rcCriterion);
    if (c.topCoverX < half && c.topCoverY < half && c.bottomCoverX < half && c.bottomCoverY < half)
        return;
    CString text;
    text.Format(L"Plate %d: invalid plate concrete cover (>= 0.5 * t)", shell.id);
    Fault(text, L"shell", shell.id);
}

}  // namespace qvx
