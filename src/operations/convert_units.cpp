#include "operations/convert_units.h"

#include "model/jx_struct.h"
#include "model/units.h"
#include "tools/list_text.h"

namespace qvx {
namespace {

double Power(double base, int exponent)
{
    double result = 1;
    for (int i = 0; i < exponent; ++i)
        result *= base;
    return result;
}

template <class Records>
void ConvertAll(Records& records, ConversionFactors f)
{
    for (auto& record : records)
        ConvertRecord(record, f);
}

void ConvertNodes(std::vector<jxNd>& nodes, ConversionFactors f)
{
    for (jxNd& node : nodes) {
        node.x *= f[kLength];
        node.y *= f[kLength];
        node.z *= f[kLength];
    }
}

void ConvertSupports(std::vector<jxSupt>& supports, ConversionFactors f)
{
    for (jxSupt& support : supports)
        for (int dof = 0; dof < kDofCount; ++dof)
            support.value[dof] *= f[dof <= kZ ? kTranslationalDisplacement : kRotationalDisplacement];
}

void ConvertNodalSprings(std::vector<jxSpring>& springs, ConversionFactors f)
{
    for (jxSpring& spring : springs)
        for (int dof = 0; dof < kDofCount; ++dof)
            spring.k[dof] *= f[dof <= kZ ? kNodalTranslationalSpring : kNodalRotationalSpring];
}

// Springs along members and under shells resist translations only.
void ConvertElementSprings(std::vector<jxSpring>& springs, double factor)
{
    for (jxSpring& spring : springs)
        for (int dof = kX; dof <= kZ; ++dof)
            spring.k[dof] *= factor;
}

// Masses are weights over the acceleration of gravity: force s^2 / length, rotational ones force s^2 length. Derived
// masses are stored per translation alone.
void ConvertMasses(std::vector<jxNdLoad>& derived, std::vector<jxNdLoad>& additional, ConversionFactors f)
{
    for (jxNdLoad& mass : derived)
        mass.value *= f[kForce] / f[kLength];
    for (jxNdLoad& mass : additional)
        mass.value *= mass.dof <= kZ ? f[kForce] / f[kLength] : f[kForce] * f[kLength];
}

}  // namespace

void ConvertCoordinates(jxPoint& point, ConversionFactors f)
{
    point.x *= f[kLength];
    point.y *= f[kLength];
    point.z *= f[kLength];
}

void ConvertListText(CString& text, ConversionFactors f)
{
    std::vector<int> counts;
    std::vector<double> values;
    if (!ParseList(counts, values, text))
        return;
    CString rebuilt;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i > 0)
            rebuilt += L",";
        if (counts[i] > 0)
            rebuilt.AppendFormat(L"%d@", counts[i]);
        rebuilt.AppendFormat(L"%.3f", values[i] * f[kLength]);
    }
    text = rebuilt;
}

void ConvertRecord(jxMat& material, ConversionFactors f)
{
    material.E *= f[kModulus];
    material.fc *= f[kModulus];
    material.fy *= f[kModulus];
    material.fys *= f[kModulus];
    material.Wc *= f[kWeightDensity];
    material.Tc /= f[kTemperature];  // per degree: a larger degree makes a larger coefficient
}

void ConvertRecord(jxSect& section, ConversionFactors f)
{
    const double area = Power(f[kDimension], 2);
    const double inertia = Power(f[kDimension], 4);
    section.A *= area;
    section.Ay *= area;
    section.Az *= area;
    section.Iz *= inertia;
    section.Iy *= inertia;
    section.J *= inertia;
    section.Cw *= Power(f[kDimension], 6);
    for (double& dimension : section.dim)
        dimension *= f[kDimension];
}

// The energy of a spring is k u v / 2: force per translation, moment per rotation, and force per rotation (which is
// moment per translation) where the two meet.
void ConvertRecord(jxCoupledSpring& spring, ConversionFactors f)
{
    double* term = spring.k;
    for (int row = kX; row < kDofCount; ++row)
        for (int column = row; column < kDofCount; ++column) {
            const bool bRowTranslates = row <= kZ;
            const bool bColumnTranslates = column <= kZ;
            if (bRowTranslates != bColumnTranslates)
                *term *= f[kForce] / f[kRotationalDisplacement];
            else
                *term *= f[bRowTranslates ? kNodalTranslationalSpring : kNodalRotationalSpring];
            ++term;
        }
}

void ConvertRecord(jxBmRcCrit& criterion, ConversionFactors f)
{
    criterion.topCover *= f[kDimension];
    criterion.bottomCover *= f[kDimension];
}

void ConvertRecord(jxColRcCrit& criterion, ConversionFactors f)
{
    criterion.lu3 *= f[kLength];
    criterion.lu2 *= f[kLength];
    criterion.cover *= f[kDimension];
}

void ConvertRecord(jxPlateRcCrit& criterion, ConversionFactors f)
{
    criterion.topCoverX *= f[kDimension];
    criterion.topCoverY *= f[kDimension];
    criterion.bottomCoverX *= f[kDimension];
    criterion.bottomCoverY *= f[kDimension];
}

void ConvertRecord(jxSteelCrit& criterion, ConversionFactors f)
{
    criterion.L3 *= f[kLength];
    criterion.L2 *= f[kLength];
    criterion.Lz *= f[kLength];
    criterion.Lb *= f[kLength];
}

}  // namespace qvx

void CjxStruct::ConvertUnits(const jxUnit& from, const jxUnit& to)
{
    double f[kQuantityCount];
    GetConversionFactors(f, from, to);

    // Drawing grid and settings
    qvx::ConvertCoordinates(origin, f);
    for (CString& list : gridLists)
        qvx::ConvertListText(list, f);
    qvx::ConvertNodes(gridNodes, f);
    mergeTolerance *= f[kLength];

    // Properties and criteria
    qvx::ConvertAll(materials, f);
    qvx::ConvertAll(sections, f);
    for (jxThick& thickness : thicknesses)
        thickness.t *= f[kDimension];
    for (jxThick& length : namedLengths)
        length.t *= f[kLength];
    qvx::ConvertSupports(supports, f);
    qvx::ConvertAll(beamRcCriteria, f);
    qvx::ConvertAll(columnRcCriteria, f);
    qvx::ConvertAll(plateRcCriteria, f);
    design.connectorDistance *= f[kLength];
    qvx::ConvertAll(steelCriteria, f);

    // Nodes, members, springs
    qvx::ConvertNodes(nodes, f);
    for (jxBm& beam : beams)
        beam.axialForce *= f[kForce];
    qvx::ConvertNodalSprings(nodalSprings, f);
    qvx::ConvertAll(coupledSprings, f);
    qvx::ConvertElementSprings(beamSprings, f[kLineTranslationalSpring]);
    qvx::ConvertElementSprings(shell3Springs, f[kSurfaceTranslationalSpring]);
    qvx::ConvertElementSprings(shell4Springs, f[kSurfaceTranslationalSpring]);

    // Loads and masses; spectra are in g over seconds or hertz
    for (jxCaseLoad& loads : caseLoads)
        qvx::ConvertLoads(loads, f);
    qvx::ConvertMasses(derivedMasses, additionalMasses, f);
    mesh.size *= f[kLength];

    // Results
    for (jxCombResult& result : combResults)
        qvx::ConvertResults(result, f);
    for (jxMaxBmVMD& envelope : concreteEnvelope)
        qvx::ConvertResults(envelope, f);
    for (jxWoodArmer& moments : woodArmer)
        qvx::ConvertResults(moments, f);
    for (jxResponseSpectrumResult& mode : spectrumResults)
        qvx::ConvertResults(mode, f);
    qvx::ConvertResults(modalResult, f);
    for (std::vector<qvx::double128>& vector : loadVectors)
        qvx::ConvertDisplacements(vector, idTable, f);
}
