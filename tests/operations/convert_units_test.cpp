#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "model/jx_struct.h"
#include "model/units.h"
#include "support/round_off.h"

/// Reaches the conversion, which hosts reach through the runs only.
class ConvertUnitsAccess
{
public:
    static void Convert(CjxStruct& model, const jxUnit& from, const jxUnit& to) { model.ConvertUnits(from, to); }
};

namespace qvx::test {
namespace {

/// One number of the model and the factor that a conversion must give it.
struct Number
{
    std::string name;
    double* value = nullptr;
    double factor = 1;
};

/// A unit set in which every quantity has a factor of its own, so that a number converted as another quantity shows.
jxUnit DistinctUnits()
{
    const wchar_t* const names[kQuantityCount] = {
        L"ft", L"mm",     L"kN",     L"kip/ft", L"N-m",      L"MT-m/m", L"N/mm^2",     L"cm",       L"deg",
        L"C",  L"kN/m^2", L"kN/m^3", L"mm^2",   L"kip/in^2", L"N/mm",   L"kip-ft/rad", L"Kgf/cm^2", L"MT/m^3"};
    jxUnit units;
    for (int k = 0; k < kQuantityCount; ++k)
        units.unit[k] = *FindUnit(names[k]);
    return units;
}

/// A model in which each kind of record stands once (twice where its factor depends on a direction), with the list
/// of its numbers. Names are those of the fields.
class FilledModel
{
public:
    FilledModel(const jxUnit& from, const jxUnit& to)
    {
        GetConversionFactors(f, from, to);
        FillHostData();
        FillProperties();
        FillCriteria();
        FillElements();
        FillSprings();
        FillLoads();
        model.combResults.resize(1);
        FillCombination("combResults.", model.combResults[0]);
        FillCombination("modalResult.", model.modalResult);
        FillMembers("combResults.", model.combResults[0]);
        FillShells("combResults.", model.combResults[0]);
        FillEnvelopes();
        FillModes();
        FillConcreteDesign();
        FillSteelDesign();
        GiveDistinctValues();
    }

    CjxStruct model;
    double f[kQuantityCount] = {};
    std::vector<Number> numbers;

private:
    void Add(std::string name, double& value, double factor) { numbers.push_back({std::move(name), &value, factor}); }

    template <std::size_t N>
    void Add(const std::string& name, double (&values)[N], double factor)
    {
        for (std::size_t i = 0; i < N; ++i)
            Add(name + "[" + std::to_string(i) + "]", values[i], factor);
    }

    void AddSix(const std::string& name, double (&values)[6], double translation, double rotation)
    {
        for (std::size_t i = 0; i < 6; ++i)
            Add(name + "[" + std::to_string(i) + "]", values[i], i < 3 ? translation : rotation);
    }

    template <class Record>
    static Record& One(std::vector<Record>& records)
    {
        // Room for all records of a kind, so that earlier addresses stay.
        records.reserve(8);
        return records.emplace_back();
    }

    void AddNode(const std::string& name, jxNd& node)
    {
        Add(name + "x", node.x, f[kLength]);
        Add(name + "y", node.y, f[kLength]);
        Add(name + "z", node.z, f[kLength]);
    }

    void FillHostData()
    {
        Add("origin.x", model.origin.x, f[kLength]);
        Add("origin.y", model.origin.y, f[kLength]);
        Add("origin.z", model.origin.z, f[kLength]);
        AddNode("gridNodes.", One(model.gridNodes));
        Add("mergeTolerance", model.mergeTolerance, f[kLength]);
        Add("mesh.size", model.mesh.size, f[kLength]);
        model.spectra[0].points.emplace_back(1.0, 2.0);
        Add("spectra.abscissa", model.spectra[0].points[0].first, 1);
        Add("spectra.ordinate", model.spectra[0].points[0].second, 1);
        Add("pDeltaTolerance", model.pDeltaTolerance, 1);
        Add("eigenTolerance", model.eigenTolerance, 1);
        Add("roundOffThreshold", model.roundOffThreshold, 1);
        Add("shellOzFactor", model.shellOzFactor, 1);
        Add("diaphragmStiffnessFactor", model.diaphragmStiffnessFactor, 1);
        Add("selfWeightFactor", model.selfWeightFactor, 1);
        Add("penaltyFactor", model.penaltyFactor, 1);
        Add("dampingRatio", model.dampingRatio, 1);
        Add("spectrumFactor", model.spectrumFactor, 1);
    }

    void FillProperties()
    {
        const double d = f[kDimension];
        jxMat& material = One(model.materials);
        Add("jxMat.E", material.E, f[kModulus]);
        Add("jxMat.nu", material.nu, 1);
        Add("jxMat.Wc", material.Wc, f[kWeightDensity]);
        Add("jxMat.Tc", material.Tc, 1 / f[kTemperature]);
        Add("jxMat.fc", material.fc, f[kModulus]);
        Add("jxMat.fy", material.fy, f[kModulus]);
        Add("jxMat.fys", material.fys, f[kModulus]);
        jxSect& section = One(model.sections);
        Add("jxSect.A", section.A, d * d);
        Add("jxSect.Ay", section.Ay, d * d);
        Add("jxSect.Az", section.Az, d * d);
        Add("jxSect.Iz", section.Iz, std::pow(d, 4));
        Add("jxSect.Iy", section.Iy, std::pow(d, 4));
        Add("jxSect.J", section.J, std::pow(d, 4));
        Add("jxSect.Cw", section.Cw, std::pow(d, 6));
        Add("jxSect.dim", section.dim, d);
        Add("thicknesses.t", One(model.thicknesses).t, d);
        Add("namedLengths.t", One(model.namedLengths).t, f[kLength]);
    }

    void FillCriteria()
    {
        jxBmRcCrit& beam = One(model.beamRcCriteria);
        Add("jxBmRcCrit.topCover", beam.topCover, f[kDimension]);
        Add("jxBmRcCrit.bottomCover", beam.bottomCover, f[kDimension]);
        jxColRcCrit& column = One(model.columnRcCriteria);
        Add("jxColRcCrit.lu3", column.lu3, f[kLength]);
        Add("jxColRcCrit.lu2", column.lu2, f[kLength]);
        Add("jxColRcCrit.K3", column.K3, 1);
        Add("jxColRcCrit.K2", column.K2, 1);
        Add("jxColRcCrit.cover", column.cover, f[kDimension]);
        jxPlateRcCrit& plate = One(model.plateRcCriteria);
        Add("jxPlateRcCrit.topCoverX", plate.topCoverX, f[kDimension]);
        Add("jxPlateRcCrit.topCoverY", plate.topCoverY, f[kDimension]);
        Add("jxPlateRcCrit.bottomCoverX", plate.bottomCoverX, f[kDimension]);
        Add("jxPlateRcCrit.bottomCoverY", plate.bottomCoverY, f[kDimension]);
        jxSteelCrit& steel = One(model.steelCriteria);
        Add("jxSteelCrit.L3", steel.L3, f[kLength]);
        Add("jxSteelCrit.L2", steel.L2, f[kLength]);
        Add("jxSteelCrit.Lz", steel.Lz, f[kLength]);
        Add("jxSteelCrit.K3", steel.K3, 1);
        Add("jxSteelCrit.K2", steel.K2, 1);
        Add("jxSteelCrit.Kz", steel.Kz, 1);
        Add("jxSteelCrit.Lb", steel.Lb, f[kLength]);
        Add("jxSteelCrit.Cb", steel.Cb, 1);
        Add("jxSteelCrit.maxRatio", steel.maxRatio, 1);
        Add("design.connectorDistance", model.design.connectorDistance, f[kLength]);
        Add("design.minColumnRho", model.design.minColumnRho, 1);
        Add("design.maxColumnRho", model.design.maxColumnRho, 1);
        Add("design.minPlateRho", model.design.minPlateRho, 1);
        Add("design.totalLoadDeflectionRatio", model.design.totalLoadDeflectionRatio, 1);
        Add("design.liveLoadDeflectionRatio", model.design.liveLoadDeflectionRatio, 1);
    }

    void FillElements()
    {
        AddNode("nodes.", One(model.nodes));
        AddSix("jxSupt.value", One(model.supports).value, f[kTranslationalDisplacement], f[kRotationalDisplacement]);
        jxBm& beam = One(model.beams);
        Add("jxBm.angle", beam.angle, 1);
        Add("jxBm.axialForce", beam.axialForce, f[kForce]);
        Add("jxBm.cracking", beam.cracking, 1);
        for (double* factor : {&beam.f_Iz, &beam.f_Iy, &beam.f_J, &beam.f_A, &beam.f_Ay, &beam.f_Az})
            Add("jxBm.f_", *factor, 1);
        Add("jxRels.partial", One(model.releases).partial, 1);
        Add("jxShell3.angle", One(model.shell3s).angle, 1);
        jxShell4& shell = One(model.shell4s);
        Add("jxShell4.angle", shell.angle, 1);
        Add("jxShell4.cracking", shell.cracking, 1);
        for (double* factor : {&shell.f_Fxx, &shell.f_Fyy, &shell.f_Fxy, &shell.f_Mxx, &shell.f_Myy, &shell.f_Mxy,
                               &shell.f_Vxx, &shell.f_Vyy})
            Add("jxShell4.f_", *factor, 1);
        jxLink& link = One(model.links);
        Add("jxLink.normal.x", link.normal.x, 1);
        Add("jxLink.normal.y", link.normal.y, 1);
        Add("jxLink.normal.z", link.normal.z, 1);
        Add("jxMultiDofConstraint.factor", One(model.multiDofConstraints).factor, 1);
    }

    void FillSprings()
    {
        AddSix("nodalSprings.k", One(model.nodalSprings).k, f[kNodalTranslationalSpring], f[kNodalRotationalSpring]);
        AddSix("beamSprings.k", One(model.beamSprings).k, f[kLineTranslationalSpring], 1);
        AddSix("shell3Springs.k", One(model.shell3Springs).k, f[kSurfaceTranslationalSpring], 1);
        AddSix("shell4Springs.k", One(model.shell4Springs).k, f[kSurfaceTranslationalSpring], 1);
        // Kx_Kx, Kx_Ky, Kx_Kz, Kx_Kox, ...: t translations, r rotations, m mixed.
        const std::string kinds = "tttmmm"
                                  "ttmmm"
                                  "tmmm"
                                  "rrr"
                                  "rr"
                                  "r";
        jxCoupledSpring& coupled = One(model.coupledSprings);
        for (std::size_t i = 0; i < kinds.size(); ++i) {
            const double mixed = f[kForce] / f[kRotationalDisplacement];
            const double same = f[kinds[i] == 't' ? kNodalTranslationalSpring : kNodalRotationalSpring];
            Add("jxCoupledSpring.k[" + std::to_string(i) + "]", coupled.k[i], kinds[i] == 'm' ? mixed : same);
        }
    }

    void FillLoads()
    {
        jxCaseLoad& loads = One(model.caseLoads);
        for (int dof = 0; dof < 6; ++dof) {
            jxNdLoad& nodal = One(loads.ndLoads);
            nodal.dof = dof;
            Add("jxNdLoad.value", nodal.value, f[dof < 3 ? kForce : kMoment]);
            jxNdLoad& derived = One(model.derivedMasses);
            derived.dof = dof;
            Add("derivedMasses.value", derived.value, f[kForce] / f[kLength]);
            jxNdLoad& mass = One(model.additionalMasses);
            mass.dof = dof;
            Add("additionalMasses.value", mass.value, dof < 3 ? f[kForce] / f[kLength] : f[kForce] * f[kLength]);
        }
        for (const int dir : {1, 4})
            for (const int absolute : {0, 1}) {
                const double distance = absolute != 0 ? f[kLength] : 1;
                jxPtLoad& point = One(loads.ptLoads);
                point.dir = dir;
                point.bAbsoluteDistance = absolute;
                Add("jxPtLoad.value", point.value, f[dir < 3 ? kForce : kMoment]);
                Add("jxPtLoad.distance", point.distance, distance);
                jxLnLoad& line = One(loads.lnLoads);
                line.dir = dir;
                line.bAbsoluteDistance = absolute;
                Add("jxLnLoad.value1", line.value1, f[dir < 3 ? kLinearForce : kLinearMoment]);
                Add("jxLnLoad.value2", line.value2, f[dir < 3 ? kLinearForce : kLinearMoment]);
                Add("jxLnLoad.distance1", line.distance1, distance);
                Add("jxLnLoad.distance2", line.distance2, distance);
            }
        Add("bmThermalLoads.dT", One(loads.bmThermalLoads).dT, f[kTemperature]);
        Add("shell4ThermalLoads.dT", One(loads.shell4ThermalLoads).dT, f[kTemperature]);
        Add("brickThermalLoads.dT", One(loads.brickThermalLoads).dT, f[kTemperature]);
        Add("shell3SurfaceLoads.value", One(loads.shell3SurfaceLoads).value, f[kSurfacePressure]);
        Add("shell4SurfaceLoads.value", One(loads.shell4SurfaceLoads).value, f[kSurfacePressure]);
        Add("areaLoads.value", One(loads.areaLoads).value, f[kSurfacePressure]);
        jxLoadComb& combination = One(model.loadCombs);
        Add("jxLoadComb.susLoadFactor", combination.susLoadFactor, 1);
        Add("jxLoadComb.rsFactor", combination.rsFactor, 1);
        Add("jxCaseFactor.factor", One(combination.cases).factor, 1);
    }

    void FillCombination(const std::string& at, jxCombResult& result)
    {
        AddSix(at + "displacements", One(result.displacements).value, f[kTranslationalDisplacement],
               f[kRotationalDisplacement]);
        AddSix(at + "supportReactions", One(result.supportReactions).value, f[kForce], f[kMoment]);
        AddSix(at + "nodalSpringReactions", One(result.nodalSpringReactions).value, f[kForce], f[kMoment]);
        AddSix(at + "coupledSpringReactions", One(result.coupledSpringReactions).value, f[kForce], f[kMoment]);
        AddSix(at + "beamSpringReactions", One(result.beamSpringReactions).value, f[kLinearForce], 1);
        AddSix(at + "shell3SpringReactions", One(result.shell3SpringReactions).value, f[kSurfacePressure], 1);
        AddSix(at + "shell4SpringReactions", One(result.shell4SpringReactions).value, f[kSurfacePressure], 1);
        jxMultiDofConstraintForce& constraint = One(result.multiDofConstraintForces);
        constraint.dof[0] = 2;
        constraint.dof[1] = 3;
        Add(at + "multiDofConstraintForces[0]", constraint.force[0], f[kForce]);
        Add(at + "multiDofConstraintForces[1]", constraint.force[1], f[kMoment]);
    }

    void AddStation(const std::string& at, jxVMD& station)
    {
        Add(at + "x", station.x, 1);
        for (double* force : {&station.Fx, &station.Fy, &station.Fz})
            Add(at + "F", *force, f[kForce]);
        for (double* moment : {&station.Mx, &station.My, &station.Mz})
            Add(at + "M", *moment, f[kMoment]);
        for (double* deflection : {&station.Dy, &station.Dz})
            Add(at + "D", *deflection, f[kTranslationalDisplacement]);
    }

    void FillMembers(const std::string& at, jxCombResult& result)
    {
        jxBmLoadVector& loads = One(result.beamLoadVectors);
        for (int i = 0; i < 12; ++i)
            Add(at + "beamLoadVectors", loads.value[i], f[i % 6 < 3 ? kForce : kMoment]);
        jxBmEndVMD& ends = One(result.beamEndForces);
        AddStation(at + "beamEndForces.start.", ends.start);
        AddStation(at + "beamEndForces.end.", ends.end);
        AddStation(at + "beamCurves.vmd.", One(One(result.beamCurves).vmd));
    }

    void FillShells(const std::string& at, jxCombResult& result)
    {
        for (jxShellStress* shell : {&One(result.shell3Stresses), &One(result.shell4Stresses)}) {
            for (int location = 0; location < 5; ++location) {
                Add(at + "F", shell->F[location], f[kLinearForce]);
                for (int i = 0; i < 5; ++i)
                    Add(at + "P", shell->P[location][i], f[i < 3 ? kLinearMoment : kLinearForce]);
                AddDerived(at + "derived.", shell->derived[location]);
            }
            Add(at + "fm", shell->fm, f[kForce]);
            for (int i = 0; i < 12; ++i)
                Add(at + "fp[" + std::to_string(i) + "]", shell->fp[i], f[i % 3 == 0 ? kForce : kMoment]);
        }
        jxBrickStress& brick = One(result.brickStresses);
        for (auto& location : brick.S)
            Add(at + "brickStresses.S", location, f[kStress]);
        Add(at + "brickStresses.f", brick.f, f[kForce]);
    }

    void AddDerived(const std::string& at, jxShellDerived& derived)
    {
        Add(at + "Fmax", derived.Fmax, f[kLinearForce]);
        Add(at + "Fmin", derived.Fmin, f[kLinearForce]);
        Add(at + "angle", derived.angle, 1);
        Add(at + "Mmax", derived.Mmax, f[kLinearMoment]);
        Add(at + "Mmin", derived.Mmin, f[kLinearMoment]);
        Add(at + "angleM", derived.angleM, 1);
        Add(at + "Vmax", derived.Vmax, f[kLinearForce]);
        Add(at + "angleV", derived.angleV, 1);
        for (auto* stress : {&derived.Sxx, &derived.Syy, &derived.Szz, &derived.Sxy, &derived.Syz, &derived.Sxz,
                             &derived.S1, &derived.S2, &derived.vonMises})
            Add(at + "S", *stress, f[kStress]);
    }

    void FillEnvelopes()
    {
        jxMaxVMD& station = One(One(model.concreteEnvelope).vmd);
        Add("concreteEnvelope.x", station.x, 1);
        AddSix("concreteEnvelope.max", station.max, f[kForce], f[kMoment]);
        AddSix("concreteEnvelope.min", station.min, f[kForce], f[kMoment]);
        FillEnvelopeReport();
        for (auto& location : One(model.woodArmer).moments)
            Add("woodArmer.moments", location, f[kLinearMoment]);
    }

    void FillEnvelopeReport()
    {
        jxEnvelopeReport& report = model.envelopeReport;
        AddSix("displacements.max", One(report.displacements).max, f[kTranslationalDisplacement],
               f[kRotationalDisplacement]);
        AddSix("supportReactions.min", One(report.supportReactions).min, f[kForce], f[kMoment]);
        jxEnvelopeVMD& station = One(One(report.beamEnvelopes).vmd);
        for (std::size_t i = 0; i < 8; ++i) {
            const double factor = f[i < 3 ? kForce : i < 6 ? kMoment : kTranslationalDisplacement];
            Add("beamEnvelopes.max", station.max[i], factor);
            Add("beamEnvelopes.min", station.min[i], factor);
        }
        jxVMD& governing = One(One(report.beamCurves).vmd);
        Add("beamCurves.x", governing.x, 1);
        Add("beamCurves.Fy", governing.Fy, f[kForce]);
        Add("beamCurves.Mz", governing.Mz, f[kMoment]);
        Add("beamCurves.Dz", governing.Dz, f[kTranslationalDisplacement]);
    }

    void FillModes()
    {
        jxEigenResult& eigen = One(model.eigenResults);
        Add("jxEigenResult.eigenvalue", eigen.eigenvalue, 1);
        Add("jxEigenResult.errorMeasure", eigen.errorMeasure, 1);
        AddSix("jxEigenResult.shape", One(eigen.shape).value, 1, 1);
        jxResponseSpectrumResult& mode = One(model.spectrumResults);
        Add("jxResponseSpectrumResult.eigenvalue", mode.eigenvalue, 1);
        Add("jxResponseSpectrumResult.participation", mode.participation, 1);
        for (int direction = 0; direction < 3; ++direction) {
            AddSix("jxResponseSpectrumResult.displacements", One(mode.displacements[direction]).value,
                   f[kTranslationalDisplacement], f[kRotationalDisplacement]);
            AddSix("jxResponseSpectrumResult.forces", One(mode.forces[direction]).value, f[kForce], f[kMoment]);
        }
    }

    void FillConcreteDesign()
    {
        const double area = f[kReinforcementArea];
        jxBmRcStation& beam = One(One(model.concreteBeams).stations);
        Add("concreteBeams.distance", beam.distance, 1);
        Add("concreteBeams.momentNeg", beam.momentNeg, f[kMoment]);
        Add("concreteBeams.momentPos", beam.momentPos, f[kMoment]);
        Add("concreteBeams.asTop", beam.asTop, area);
        Add("concreteBeams.asBottom", beam.asBottom, area);
        jxColRcResult& column = One(model.concreteColumns);
        Add("concreteColumns.P", column.P, f[kForce]);
        Add("concreteColumns.M3", column.M3, f[kMoment]);
        Add("concreteColumns.M2", column.M2, f[kMoment]);
        for (double* ratio :
             {&column.ratio, &column.distance, &column.delta3, &column.delta2, &column.betaD, &column.Cm3, &column.Cm2})
            Add("concreteColumns.ratios", *ratio, 1);
        jxRcShearStation& shear = One(One(model.concreteShear).stations);
        Add("concreteShear.distance", shear.distance, 1);
        Add("concreteShear.spacing", shear.spacing, f[kDimension]);
        Add("concreteShear.reqAv", shear.reqAv, area / f[kDimension]);
        Add("concreteShear.V", shear.V, f[kForce]);
        Add("concreteShear.N", shear.N, f[kForce]);
        Add("concreteShear.comb", shear.comb, 1);
        Add("concreteShear.reserved", shear.reserved, 1);
        for (auto& location : One(model.concretePlates).as)
            Add("concretePlates.as", location, area / f[kDimension]);
    }

    void FillSteelDesign()
    {
        jxSteelResult& member = One(model.steelResults);
        for (double* length : {&member.length, &member.connectorDistance, &member.Lb})
            Add("steel.lengths", *length, f[kLength]);
        Add("steel.Lu", member.Lu, f[kLength]);
        Add("steel.fy", member.fy, f[kModulus]);
        Add("steel.K", member.K, 1);
        for (double* ratio : {&member.Cb, &member.totalLoadDeflectionRatio, &member.liveLoadDeflectionRatio})
            Add("steel.ratios", *ratio, 1);
        jxSteelSectionResult& section = One(member.sections);
        for (double* force : {&section.P, &section.V2, &section.V3})
            Add("steel.sections.forces", *force, f[kForce]);
        for (double* moment : {&section.M3, &section.M2})
            Add("steel.sections.moments", *moment, f[kMoment]);
        for (double* deflection : {&section.Dy, &section.Dz, &section.limitTotal, &section.limitLive})
            Add("steel.sections.deflections", *deflection, f[kTranslationalDisplacement]);
        for (double* ratio : {&section.ratio, &section.distance, &section.Cm3, &section.Cm2, &section.Cb,
                              &section.deflectionRatioTotal, &section.deflectionRatioLive})
            Add("steel.sections.ratios", *ratio, 1);
        // Pc, Mc3, Mc2, Vc2, Vc3, KL/r, interaction, shear
        const double factors[8] = {f[kForce], f[kMoment], f[kMoment], f[kForce], f[kForce], 1, 1, 1};
        for (std::size_t i = 0; i < 8; ++i)
            Add("steel.sections.results", section.results[i], factors[i]);
    }

    void GiveDistinctValues()
    {
        double value = 1.25;
        for (const Number& number : numbers)
            *number.value = value += 1.0;
    }
};

TEST(ConvertUnits, GivesEveryNumberOfTheModelItsOwnFactor)
{
    const jxUnit from;
    const jxUnit to = DistinctUnits();
    FilledModel filled(from, to);
    std::vector<double> before;
    for (const Number& number : filled.numbers)
        before.push_back(*number.value);

    ConvertUnitsAccess::Convert(filled.model, from, to);

    for (std::size_t i = 0; i < before.size(); ++i) {
        const Number& number = filled.numbers[i];
        const double expected = before[i] * number.factor;
        EXPECT_WITHIN(*number.value, expected, RoundOff(expected, 8)) << number.name;
    }
}

// The factors of the set used above differ from 1 and from each other: no quantity can be taken for another.
TEST(ConvertUnits, IsTestedWithFactorsThatTellQuantitiesApart)
{
    double f[kQuantityCount];
    GetConversionFactors(f, jxUnit(), DistinctUnits());

    for (int i = 0; i < kQuantityCount; ++i) {
        EXPECT_GT(std::fabs(f[i] - 1), 1e-3) << i;
        for (int j = 0; j < i; ++j)
            EXPECT_GT(std::fabs(f[i] / f[j] - 1), 1e-3) << i << " and " << j;
    }
}

TEST(ConvertUnits, ThereAndBackReturnsEveryNumber)
{
    const jxUnit from;
    const jxUnit to = DistinctUnits();
    FilledModel filled(from, to);
    std::vector<double> before;
    for (const Number& number : filled.numbers)
        before.push_back(*number.value);

    ConvertUnitsAccess::Convert(filled.model, from, to);
    ConvertUnitsAccess::Convert(filled.model, to, from);

    for (std::size_t i = 0; i < before.size(); ++i)
        EXPECT_WITHIN(*filled.numbers[i].value, before[i], RoundOff(before[i], 12)) << filled.numbers[i].name;
}

TEST(ConvertUnits, BetweenEqualSetsChangesNothingButTheLists)
{
    const jxUnit units = DistinctUnits();
    FilledModel filled(units, units);
    filled.model.gridLists[0] = L"2@1.23456,7";
    std::vector<double> before;
    for (const Number& number : filled.numbers)
        before.push_back(*number.value);

    ConvertUnitsAccess::Convert(filled.model, units, units);

    for (std::size_t i = 0; i < before.size(); ++i)
        EXPECT_EQ(*filled.numbers[i].value, before[i]) << filled.numbers[i].name;
    EXPECT_EQ(filled.model.gridLists[0], L"2@1.235,7.000");
}

// A thermal coefficient is a strain per degree: the larger degree Celsius strains more, by 1.8.
TEST(ConvertUnits, MakesTheThermalCoefficientGrowFromFahrenheitToCelsius)
{
    jxUnit celsius;
    celsius.unit[kTemperature] = *FindUnit(L"C");
    CjxStruct model;
    model.materials.emplace_back().Tc = 6.5e-6;
    model.caseLoads.emplace_back().bmThermalLoads.emplace_back().dT = 18;

    ConvertUnitsAccess::Convert(model, jxUnit(), celsius);

    EXPECT_WITHIN(model.materials[0].Tc, 6.5e-6 * 1.7999999999999998, RoundOff(6.5e-6, 4));
    EXPECT_WITHIN(model.caseLoads[0].bmThermalLoads[0].dT, 10.0, RoundOff(10, 4));
}

TEST(ConvertUnits, LeavesTheUnitsOfTheModelToTheCaller)
{
    CjxStruct model;
    model.units.unit[kLength] = *FindUnit(L"m");

    ConvertUnitsAccess::Convert(model, model.units, jxUnit());

    EXPECT_EQ(model.units.unit[kLength], *FindUnit(L"m"));
    EXPECT_EQ(model.bInSolution, 0);
}

TEST(ConvertUnits, RebuildsTheGridListsWithThreeDecimals)
{
    jxUnit feet;
    feet.unit[kLength] = *FindUnit(L"ft");
    CjxStruct model;
    model.gridLists[0] = L"3@10.5, 2";
    model.gridLists[1] = L"";
    model.gridLists[2] = L"0@4,1@0.0001";

    ConvertUnitsAccess::Convert(model, feet, jxUnit());

    EXPECT_EQ(model.gridLists[0], L"3@126.000,24.000");
    EXPECT_EQ(model.gridLists[1], L"");
    EXPECT_EQ(model.gridLists[2], L"48.000,1@0.001");  // 0.0012 in, of which three decimals stay
}

TEST(ConvertUnits, LeavesATextThatIsNoListAlone)
{
    jxUnit feet;
    feet.unit[kLength] = *FindUnit(L"ft");
    CjxStruct model;
    model.gridLists[0] = L"as built";

    ConvertUnitsAccess::Convert(model, feet, jxUnit());

    EXPECT_EQ(model.gridLists[0], L"as built");
}

// By the time a run converts back, its load vectors hold the displacements they caused.
TEST(ConvertUnits, ConvertsLoadVectorsAsDisplacementsThroughTheIdTable)
{
    CjxStruct model;
    for (auto& row : model.idTable)
        row.assign(3, 0);
    model.idTable[kX][1] = 1;
    model.idTable[kOZ][2] = 2;
    model.loadVectors = {{0, 10, 20}, {}};
    jxUnit to;
    to.unit[kTranslationalDisplacement] = *FindUnit(L"ft");
    to.unit[kRotationalDisplacement] = *FindUnit(L"deg");

    ConvertUnitsAccess::Convert(model, jxUnit(), to);

    EXPECT_WITHIN(model.loadVectors[0][1].Hi(), 10 / 12.0, RoundOff(1, 4));
    EXPECT_WITHIN(model.loadVectors[0][2].Hi(), 20 / 0.017453292520882225, RoundOff(1146, 4));
    EXPECT_TRUE(model.loadVectors[1].empty());
}

TEST(ConvertUnits, LeavesLoadVectorsAloneWithoutAnIdTable)
{
    CjxStruct model;
    model.loadVectors = {{0, 10, 20}};
    jxUnit to;
    to.unit[kTranslationalDisplacement] = *FindUnit(L"ft");

    ConvertUnitsAccess::Convert(model, jxUnit(), to);

    EXPECT_EQ(model.loadVectors[0][1].Hi(), 10);
}

}  // namespace
}  // namespace qvx::test
