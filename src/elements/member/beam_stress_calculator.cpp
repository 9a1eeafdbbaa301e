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

std::vector<SectionPoint> IShapePoints(const jxSect_AISC& s)
{
    const double out = s.d / 2, in = s.d / 2 - s.tf, z = s.b / 2;
    return {{out, -z}, {out, z}, {in, z}, {in, -z}, {-in, -z}, {-in, z}, {-out, z}, {-out, -z}};
}

std::vector<SectionPoint> ChannelPoints(const jxSect_AISC& s)
{
    const double out = s.d / 2, in = s.d / 2 - s.tf, back = -s.x, tip = s.b - s.x, web = s.tw - s.x;
    return {{out, back}, {out, tip}, {in, tip}, {in, web}, {-in, web}, {-in, tip}, {-out, tip}, {-out, back}};
}

std::vector<SectionPoint> AnglePoints(const jxSect_AISC& s)
{
    const double left = -s.x, below = -s.y;
    return {{below + s.d, left},       {below + s.d, left + s.t}, {below + s.t, left + s.t},
            {below + s.t, left + s.b}, {below, left + s.b},       {below, left}};
}

std::vector<SectionPoint> DoubleAnglePoints(const jxSect_AISC& s)
{
    const double top = s.y, leg = s.y - s.t, below = s.y - s.d;
    const double inner = s.sep / 2, outer = s.sep / 2 + s.t, tip = s.sep / 2 + s.b;
    return {{top, -tip},    {top, tip},      {leg, tip},      {below, outer},
            {below, inner}, {below, -inner}, {below, -outer}, {leg, -tip}};
}

// Product of inertia of an angle from its least principal moment: (Ix - I)(Iy - I) = Ixy^2. Its legs lie where y and z
// have opposite signs.
double AngleProductOfInertia(const jxSect_AISC& s)
{
    return -std::sqrt(std::fabs((s.Ix - s.Iz) * (s.Iy - s.Iz)));
}

std::vector<SectionPoint> SteelPoints(const jxSect_AISC& s)
{
    switch (s.shape) {
    case kShapeW:
    case kShapeS:
    case kShapeM:
    case kShapeHP:
        return IShapePoints(s);
    case kShapeC:
    case kShapeMC:
        return ChannelPoints(s);
    case kShapeWT:
    case kShapeMT:
    case kShapeST:
        return TeePoints(s.b, s.d, s.tf, s.tw, s.y);
    case kShapeL:
        return AnglePoints(s);
    case kShape2L:
        return DoubleAnglePoints(s);
    case kShapeHssRect:
    case kShapeHssSquare:
        return RectanglePoints(s.b, s.d);
    case kShapeHssRound:
    case kShapePipe:
        return RoundPoints(s.d);
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
