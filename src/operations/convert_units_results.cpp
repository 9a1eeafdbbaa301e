#include "model/records/node.h"
#include "model/records/unit.h"
#include "operations/convert_units.h"

namespace qvx {
namespace {

template <std::size_t N>
void Scale(double (&values)[N], double factor)
{
    for (double& value : values)
        value *= factor;
}

// Six values in DOF order: three of translation kind, three of rotation kind.
void ConvertSix(std::vector<jxResult6Val>& results, double translation, double rotation)
{
    for (jxResult6Val& result : results)
        for (int dof = 0; dof < kDofCount; ++dof)
            result.value[dof] *= dof <= kZ ? translation : rotation;
}

void ConvertDisplacementsOf(std::vector<jxResult6Val>& results, ConversionFactors f)
{
    ConvertSix(results, f[kTranslationalDisplacement], f[kRotationalDisplacement]);
}

void ConvertForcesOf(std::vector<jxResult6Val>& results, ConversionFactors f)
{
    ConvertSix(results, f[kForce], f[kMoment]);
}

// Springs along members and under shells react in translation only.
void ConvertSpringReactions(std::vector<jxResult6Val>& reactions, double factor)
{
    ConvertSix(reactions, factor, 1.0);
}

void ConvertStation(jxVMD& station, ConversionFactors f)
{
    station.Fx *= f[kForce];
    station.Fy *= f[kForce];
    station.Fz *= f[kForce];
    station.Mx *= f[kMoment];
    station.My *= f[kMoment];
    station.Mz *= f[kMoment];
    station.Dy *= f[kTranslationalDisplacement];
    station.Dz *= f[kTranslationalDisplacement];
}

void ConvertMembers(jxCombResult& result, ConversionFactors f)
{
    for (jxBmLoadVector& loads : result.beamLoadVectors)
        for (int i = 0; i < 12; ++i)
            loads.value[i] *= f[i % kDofCount <= kZ ? kForce : kMoment];
    for (jxBmEndVMD& ends : result.beamEndForces) {
        ConvertStation(ends.start, f);
        ConvertStation(ends.end, f);
    }
    for (jxBmVMD& curve : result.beamCurves)
        for (jxVMD& station : curve.vmd)
            ConvertStation(station, f);
}

void ConvertDerived(jxShellDerived& derived, ConversionFactors f)
{
    derived.Fmax *= f[kLinearForce];
    derived.Fmin *= f[kLinearForce];
    derived.Mmax *= f[kLinearMoment];
    derived.Mmin *= f[kLinearMoment];
    derived.Vmax *= f[kLinearForce];
    Scale(derived.Sxx, f[kStress]);
    Scale(derived.Syy, f[kStress]);
    Scale(derived.Szz, f[kStress]);
    Scale(derived.Sxy, f[kStress]);
    Scale(derived.Syz, f[kStress]);
    Scale(derived.Sxz, f[kStress]);
    Scale(derived.S1, f[kStress]);
    Scale(derived.S2, f[kStress]);
    Scale(derived.vonMises, f[kStress]);
}

void ConvertShells(std::vector<jxShellStress>& stresses, ConversionFactors f)
{
    for (jxShellStress& stress : stresses) {
        for (auto& forces : stress.F)
            Scale(forces, f[kLinearForce]);
        for (auto& values : stress.P)
            for (int i = 0; i < 5; ++i)  // three moments, two shears
                values[i] *= f[i < 3 ? kLinearMoment : kLinearForce];
        Scale(stress.fm, f[kForce]);
        for (int i = 0; i < 12; ++i)  // per node one force, two moments
            stress.fp[i] *= f[i % 3 == 0 ? kForce : kMoment];
        for (jxShellDerived& derived : stress.derived)
            ConvertDerived(derived, f);
    }
}

void ConvertBricks(std::vector<jxBrickStress>& stresses, ConversionFactors f)
{
    for (jxBrickStress& stress : stresses) {
        for (auto& values : stress.S)
            Scale(values, f[kStress]);
        Scale(stress.f, f[kForce]);
    }
}

}  // namespace

void ConvertResults(jxCombResult& result, ConversionFactors f)
{
    ConvertDisplacementsOf(result.displacements, f);
    ConvertForcesOf(result.supportReactions, f);
    for (jxMultiDofConstraintForce& constraint : result.multiDofConstraintForces)
        for (int i = 0; i < 2; ++i)
            constraint.force[i] *= f[constraint.dof[i] <= kZ ? kForce : kMoment];
    ConvertForcesOf(result.nodalSpringReactions, f);
    ConvertForcesOf(result.coupledSpringReactions, f);
    ConvertSpringReactions(result.beamSpringReactions, f[kLinearForce]);
    ConvertSpringReactions(result.shell3SpringReactions, f[kSurfacePressure]);
    ConvertSpringReactions(result.shell4SpringReactions, f[kSurfacePressure]);
    ConvertShells(result.shell3Stresses, f);
    ConvertShells(result.shell4Stresses, f);
    ConvertBricks(result.brickStresses, f);
    ConvertMembers(result, f);
}

void ConvertResults(jxMaxBmVMD& envelope, ConversionFactors f)
{
    for (jxMaxVMD& station : envelope.vmd)
        for (int i = 0; i < kDofCount; ++i) {  // axial force and shears, then torsion and moments
            station.max[i] *= f[i <= kZ ? kForce : kMoment];
            station.min[i] *= f[i <= kZ ? kForce : kMoment];
        }
}

void ConvertResults(jxWoodArmer& moments, ConversionFactors f)
{
    for (auto& location : moments.moments)
        Scale(location, f[kLinearMoment]);
}

void ConvertResults(jxResponseSpectrumResult& mode, ConversionFactors f)
{
    for (int direction = 0; direction < 3; ++direction) {
        ConvertDisplacementsOf(mode.displacements[direction], f);
        ConvertForcesOf(mode.forces[direction], f);
    }
}

// A run converts back after its solves: by then each load vector has become the displacements it causes.
void ConvertDisplacements(std::vector<double128>& byEquation, const std::vector<int> (&idTable)[6], ConversionFactors f)
{
    for (int dof = 0; dof < kDofCount; ++dof) {
        const double128 factor = f[dof <= kZ ? kTranslationalDisplacement : kRotationalDisplacement];
        for (const int equation : idTable[dof])
            if (equation > 0 && static_cast<std::size_t>(equation) < byEquation.size())
                byEquation[static_cast<std::size_t>(equation)] *= factor;
    }
}

}  // namespace qvx
