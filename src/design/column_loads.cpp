#include "design/column_loads.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "design/moment_factor.h"
#include "rc/column_slenderness.h"

namespace qvx {

namespace {

double AverageAxialForce(const std::vector<jxVMD>& curve)
{
    assert(!curve.empty() && "a member curve has its two ends");
    // Self weight makes the two ends differ; the magnification takes one force for the whole column.
    return (curve.front().Fx + curve.back().Fx) * 0.5;
}

/// Demands of one column; tension positive until a load is formed.
class ColumnLoads
{
public:
    ColumnLoads(const CjxStruct& model, const ConcreteMember& member, const jxColRcCrit& criterion)
        : model_(model), member_(member), criterion_(criterion)
    {
        const std::vector<jxVMD>* sustained = CurveOf(model, model.design.sustainedLoadComb, member.beam.id);
        Psus_ = sustained == nullptr ? 0 : AverageAxialForce(*sustained);
    }

    ColumnDemand Under(int comb, const std::vector<jxVMD>& curve) const;

private:
    // Cm of ACI 318-19, 6.6.4.5.3: of the end moments where no load acts between the ends, else 1.
    void SetMomentFactors(ColumnDemand& demand, const std::vector<jxVMD>& curve) const;
    void SetMagnifiers(ColumnDemand& demand, double Pu) const;
    double Magnifier(const ColumnPlane& plane, double betaD, double Pu) const;
    ColumnDemand::Station StationOf(const jxVMD& v, const ColumnDemand& demand) const;
    ColumnDemand::Station UnstableStation(const jxVMD& first, double Pu) const;

    const CjxStruct& model_;
    const ConcreteMember& member_;
    const jxColRcCrit& criterion_;
    double Psus_ = 0;
};

void ColumnLoads::SetMomentFactors(ColumnDemand& demand, const std::vector<jxVMD>& curve) const
{
    if (model_.design.bSkipMagnification != 0)
        return;
    int transverse[2] = {};
    model_.CheckTransverseLoad(transverse, member_.beam, demand.comb);
    const EndMoments ends = CleanedEndMoments(curve, member_.L);
    demand.Cm3 = model_.CalcCm(ends.M3[0], ends.M3[1], transverse[0]);
    demand.Cm2 = model_.CalcCm(ends.M2[0], ends.M2[1], transverse[1]);
}

double ColumnLoads::Magnifier(const ColumnPlane& plane, double betaD, double Pu) const
{
    // 6.6.4.5.2: Cm / (1 - Pu / (0.75 Pc)), at least 1; the edition says how the critical load is reduced.
    const int code = model_.design.concreteCode;
    return MomentMagnifier(plane.Cm, std::fabs(Pu), ReducedCriticalLoad(plane, betaD, code), code);
}

void ColumnLoads::SetMagnifiers(ColumnDemand& demand, double Pu) const
{
    // Tension straightens a column: nothing is magnified.
    if (Pu >= 0)
        return;
    // A criterion of length 0 leaves it to the member: many columns share one criterion.
    const auto unbraced = [&](double lu) { return lu > 0 ? lu : member_.L; };
    const double E = member_.material.E;
    const ColumnPlane plane3{
        .E = E, .I = member_.section.Iz, .K = criterion_.K3, .lu = unbraced(criterion_.lu3), .Cm = demand.Cm3};
    const ColumnPlane plane2{
        .E = E, .I = member_.section.Iy, .K = criterion_.K2, .lu = unbraced(criterion_.lu2), .Cm = demand.Cm2};
    demand.delta3 = Magnifier(plane3, demand.betaD, Pu);
    demand.delta2 = Magnifier(plane2, demand.betaD, Pu);
    // A negative magnifier means that the load is beyond 0.75 Pc: no section of these dimensions carries it, as the
    // stiffness is that of the gross section.
    demand.isUnstable = demand.delta3 < 0 || demand.delta2 < 0;
    if (demand.isUnstable) {
        demand.delta3 = demand.delta3 > 0 ? demand.delta3 : 1;
        demand.delta2 = demand.delta2 > 0 ? demand.delta2 : 1;
        return;
    }
    demand.delta3 = std::max(demand.delta3, 1.0);
    demand.delta2 = std::max(demand.delta2, 1.0);
}

ColumnDemand::Station ColumnLoads::StationOf(const jxVMD& v, const ColumnDemand& demand) const
{
    ColumnDemand::Station station{.distance = v.x, .P = -v.Fx, .M3 = v.Mz, .M2 = v.My, .load = {}};
    const auto raised = [&](double M, double dimension) {
        assert(dimension > 0 && "a side of the column");
        // About each axis by itself, as if the axial force stood off the middle in one direction at a time (6.6.4.5.4).
        const double least = MinimumMoment(station.P, dimension, model_.design.concreteCode);
        return std::fabs(M) < least ? least : M;
    };
    if (station.P >= 0 && model_.design.bMinimumEccentricity != 0) {
        station.M3 = raised(station.M3, member_.section.dim[1]);
        station.M2 = raised(station.M2, member_.section.dim[0]);
    }
    station.load = {.P = station.P, .M3 = demand.delta3 * station.M3, .M2 = demand.delta2 * station.M2};
    return station;
}

ColumnDemand::Station ColumnLoads::UnstableStation(const jxVMD& first, double Pu) const
{
    return {.distance = 0, .P = -Pu, .M3 = first.Mz, .M2 = first.My, .load = {}};
}

ColumnDemand ColumnLoads::Under(int comb, const std::vector<jxVMD>& curve) const
{
    assert(!curve.empty());
    const double Pu = AverageAxialForce(curve);
    assert(comb >= 0 && static_cast<std::size_t>(comb) < model_.loadCombs.size() && "one of the combinations");
    const double susLoadFactor = model_.loadCombs[static_cast<std::size_t>(comb)].susLoadFactor;
    ColumnDemand demand;
    demand.comb = comb;
    demand.betaD = SustainedRatio(Psus_, susLoadFactor, Pu, model_.design.concreteCode);
    SetMomentFactors(demand, curve);
    SetMagnifiers(demand, Pu);
    if (demand.isUnstable) {
        // One record is enough to tell it: the stations differ in nothing that matters now.
        demand.stations.push_back(UnstableStation(curve.front(), Pu));
        return demand;
    }
    const bool isEndsOnly = model_.design.bColumnEndsOnly != 0;
    for (std::size_t i = 0; i < curve.size(); ++i)
        if (!isEndsOnly || i == 0 || i + 1 == curve.size())
            demand.stations.push_back(StationOf(curve[i], demand));
    return demand;
}

}  // namespace

std::vector<ColumnDemand> ColumnDemands(const CjxStruct& model, const ConcreteMember& member,
                                        const jxColRcCrit& criterion)
{
    const ColumnLoads loads(model, member, criterion);
    std::vector<ColumnDemand> demands;
    for (const int comb : ConcreteCombinations(model))
        if (const std::vector<jxVMD>* curve = CurveOf(model, comb, member.beam.id))
            demands.push_back(loads.Under(comb, *curve));
    return demands;
}

}  // namespace qvx
