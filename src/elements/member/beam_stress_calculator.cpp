#include "elements/member/beam_stress_calculator.h"

#include <cmath>
#include <string>

#include "platform/cstring.h"

namespace qvx {

namespace {

bool BeginsWith(const wchar_t* label, std::wstring_view word)
{
    const std::wstring head = std::wstring(label).substr(0, word.size());
    return CompareNoCase(head.c_str(), std::wstring(word).c_str()) == 0;
}

// Heel, toe of the long leg, toe of the short one.
std::vector<SectionPoint> AnglePoints(const jxSect_AISC& s)
{
    return {{-s.y, -s.x}, {s.d - s.y, -s.x}, {-s.y, s.b - s.x}};
}

// Product of inertia of an angle from its principal moments: their axes stand at alpha against y and x. Its legs lie
// where y and z have opposite signs.
double AngleProductOfInertia(const jxSect_AISC& s)
{
    // Mohr's circle of inertias: half the difference of the principal moments times the sine of twice the angle.
    return -(s.Iw - s.Iz) * std::sin(2 * std::atan(s.tan_alpha)) / 2;
}

std::vector<SectionPoint> SteelPoints(const jxSect_AISC& s)
{
    switch (s.shape) {
    case kShapeC:
    case kShapeMC:
        return RectanglePoints(-s.x, s.b - s.x, s.d);
    case kShapeWT:
    case kShapeMT:
    case kShapeST:
        return TeePoints(s.b, s.d, s.tw, s.y);
    case kShapeL:
        return AnglePoints(s);
    case kShape2L:
        // Two angles back to back are a tee whose stem is both legs and the gap: the gap is hollow, but no stress point
        // lies in it.
        return TeePoints(2 * s.b + s.sep, s.d, 2 * s.t + s.sep, s.y);
    case kShapeHssRound:
    case kShapePipe:
        return RoundPoints(s.d);
    case kShapeW:
    case kShapeM:
    case kShapeS:
    case kShapeHP:
    case kShapeHssRect:
    case kShapeHssSquare:
        return RectanglePoints(-s.b / 2, s.b / 2, s.d);
    default:
        return {};
    }
}

}  // namespace

RegularSection RegularSectionOf(const wchar_t* label)
{
    if (BeginsWith(label, L"Rect"))
        return kRegularRect;
    if (BeginsWith(label, L"Round"))
        return kRegularRound;
    return BeginsWith(label, L"Tee") ? kRegularTee : kNotRegular;
}

StressSection SteelStressSection(const jxSect_AISC& shape)
{
    return {.A = shape.A,
            .Iz = shape.Ix,
            .Iy = shape.Iy,
            .Iyz = shape.shape == kShapeL ? AngleProductOfInertia(shape) : 0,
            .edgeRadius = shape.shape == kShapeHssRound || shape.shape == kShapePipe ? shape.d / 2 : 0,
            .points = SteelPoints(shape)};
}

}  // namespace qvx

bool SectionPropertyCalculator::IsRegularSection(const wchar_t* label)
{
    return qvx::RegularSectionOf(label) != qvx::kNotRegular;
}

CBeamStressCalculator::CBeamStressCalculator(const wchar_t* label, int shape, bool bNds)
    : regular_(qvx::RegularSectionOf(label)), shape_(shape), bNds_(bNds)
{
}

void CBeamStressCalculator::SetDimension(double d1, double d2, double d3, double d4)
{
    if (regular_ == qvx::kRegularRect && d1 > 0 && d2 > 0)
        section_ = qvx::RectangleStressSection(d1, d2);
    else if (regular_ == qvx::kRegularRound && d1 > 0)
        section_ = qvx::RoundStressSection(d1);
    // Web no wider than the flange, flange no thicker than the depth: anything else has no outline. Zeros are a section
    // whose dimensions were never entered.
    else if (regular_ == qvx::kRegularTee && d1 >= d4 && d2 >= d3 && d3 > 0 && d4 > 0)
        section_ = qvx::TeeStressSection(d1, d2, d3, d4);
}

void CBeamStressCalculator::SetAiscSection(const jxSect_AISC& section)
{
    if (shape_ != kShapeNone)
        section_ = qvx::SteelStressSection(section);
}

void CBeamStressCalculator::SetNdsSection(const jxSect_NDS& section)
{
    if (bNds_)
        section_ = qvx::RectangleStressSection(section.b, section.d);
}

std::vector<double> CBeamStressCalculator::CalculateNormalStresses(double Fx, double Mz, double My) const
{
    if (section_.points.empty())
        return {};
    return qvx::NormalStresses(section_, Fx, Mz, My);
}
