#include "elements/member/member_properties.h"

namespace qvx {

template <Number Real>
MemberProperties<Real> PropertiesOf(const jxBmEx& member, const CjxStruct& model)
{
    const bool bFactors = model.bStiffnessFactors != 0;
    const bool bShear = model.bShearDeformation != 0;
    assert(member.mat.nu > -1 && "G = E / (2 (1 + nu)) is a shear modulus");
    const jxSect sect = bFactors ? CjxBmGroup::ApplyStiffnessFactor(member.sect, member) : member.sect;
    const Real E = member.mat.E;
    const Real G = E * Real(0.5) / (Real(member.mat.nu) + Real(1));
    const Real cracked = E * Real(bFactors ? member.cracking : 1.0);  // cracks soften bending only
    return {.L = member.length,
            .EA = Real(sect.A) * E,
            .GJ = G * Real(sect.J),
            .EIz = Real(sect.Iz) * cracked,
            .EIy = Real(sect.Iy) * cracked,
            .GAy = bShear && sect.Ay > 0 ? G * Real(sect.Ay) : Real(0),
            .GAz = bShear && sect.Az > 0 ? G * Real(sect.Az) : Real(0)};
}

template MemberProperties<double> PropertiesOf<double>(const jxBmEx&, const CjxStruct&);
template MemberProperties<double128> PropertiesOf<double128>(const jxBmEx&, const CjxStruct&);

}  // namespace qvx
