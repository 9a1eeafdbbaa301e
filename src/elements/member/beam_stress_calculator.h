#pragma once

#include <vector>

#include "elements/member/timber_sections.h"
#include "platform/export.h"
#include "steel/jx_sect_aisc.h"
#include "tools/section_stress.h"

namespace qvx {

/// Shapes given by their dimensions; the leading word of the section's label names them, ignoring case.
enum RegularSection : int { kNotRegular = 0, kRegularRect, kRegularRound, kRegularTee };

RegularSection RegularSectionOf(const wchar_t* label);

/// Stress points of a rolled shape, its properties as tabulated. As seen along the member from its start, y up:
/// the web of a channel on the left, the heel of an angle below on the left with its long leg up, the flange of a tee
/// and the outstanding legs of a double angle on top. The outermost points alone: I shapes, channels and rectangular
/// tubes have the corners of their outline, an angle heel and toes. Empty when the record has no shape.
StressSection SteelStressSection(const jxSect_AISC& shape);

}  // namespace qvx

class QVXFEM_API SectionPropertyCalculator
{
public:
    /// True when the label begins with "Rect", "Round" or "Tee", ignoring case.
    static bool IsRegularSection(const wchar_t* label);
};

/// Normal stresses of one member section in inch, pound and psi.
///
/// Four points per section, an angle three; a round section has six values. See SteelStressSection and
/// section_stress.h for their order.
class QVXFEM_API CBeamStressCalculator
{
public:
    /// @param shape  SteelShape of the table, kShapeNone for a section that is not in it
    /// @param bNds   the section is a timber
    CBeamStressCalculator(const wchar_t* label, int shape, bool bNds);

    /// Shape dimensions of a regular section [in]: Rect width, depth; Round diameter; Tee flange width, depth, flange
    /// thickness, web width.
    void SetDimension(double d1, double d2, double d3, double d4);
    void SetAiscSection(const jxSect_AISC& section);
    void SetNdsSection(const jxSect_NDS& section);

    /// False when the dimensions make no section.
    bool HasSection() const { return !section_.points.empty(); }

    /// Stress at each point [psi], tension positive; empty when the dimensions make no section.
    /// @param Fx      axial force, tension positive [lb]
    /// @param Mz, My  moments of the member curves [lb-in]
    std::vector<double> CalculateNormalStresses(double Fx, double Mz, double My) const;

private:
    qvx::RegularSection regular_;
    int shape_;
    bool bNds_;
    qvx::StressSection section_;
};
