#include "design/column_loads.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "design/moment_factor.h"
#include "rc/concrete_code.h"

namespace qvx {

namespace {

double AverageAxialForce(const std::vector<jxVMD>& curve)
{
    assert(!curve.empty() && "a member curve has its two ends");
    // Self weight makes the two ends differ; the magnification takes one force for the whole column.
    return (curve.front().Fx + curve.back().Fx) * 0.5;
}

}  // namespace

ColumnLoads::ColumnLoads(const CjxStruct& model, const ConcreteMember& member, const jxColRcCrit& criterion)
    : model_(model), member_(member), criterion_(criterion)
{
    const std::vector<jxVMD>* sustained = CurveOf(model, model.design.sustainedLoadComb, member.beam.id);
    Psus_ = sustained == nullptr ? 0 : AverageAxialForce(*sustained);
}

void ColumnLoads::Listen(DesignTrace* trace, double distance)
{
    trace_ = trace;
    told_ = distance;
}

void ColumnLoads::SetMomentFactors(ColumnDemand& demand, const std::vector<jxVMD>& curve) const
{
    if (model_.design.bSkipMagnification != 0)
        return;
    int transverse[2] = {};
    model_.CheckTransverseLoad(transverse, member_.beam, demand.comb);
    const EndMoments ends = CleanedEndMoments(curve, member_.L);
    demand.Cm3 = MomentFactor("Cm, axis 3", ends.M3, transverse[0]);
    demand.Cm2 = MomentFactor("Cm, axis 2", ends.M2, transverse[1]);
}

double ColumnLoads::MomentFactor(const char* name, const double (&ends)[2], int isLoadedAcross) const
{
    const int code = model_.design.concreteCode;
    Noted(trace_, {"M at the start [kip-ft]", ends[0], "", ""});
    Noted(trace_, {"M at the end [kip-ft]", ends[1], "", ""});
    return Noted(trace_,
                 {name, model_.CalcCm(ends[0], ends[1], isLoadedAcross), ClauseOf(code, "6.6.4.5.3", "10.10.6.4"),
                  isLoadedAcross != 0 ? "1: a load acts across the column" : "0.6 + 0.4 M1/M2 >= 0.4"});
}

double ColumnLoads::Magnifier(int axis, const ColumnPlane& plane, double betaD, double Pu) const
{
    const int code = model_.design.concreteCode;
    Noted(trace_, {"bending axis", static_cast<double>(axis), "", ""});
    Noted(trace_, {"I [in^4]", plane.I, "", "gross section"});
    Noted(trace_, {"K lu [in]", plane.K * plane.lu, ClauseOf(code, "6.6.4.4.3", "10.10.6.3"), "K times lu"});
    // 6.6.4.5.2: Cm / (1 - Pu / (0.75 Pc)), at least 1; the edition says how the critical load is reduced.
    const double critical = ReducedCriticalLoad(plane, betaD, code, trace_);
    return MomentMagnifier(plane.Cm, std::fabs(Pu), critical, code, trace_);
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
    demand.delta3 = Magnifier(3, plane3, demand.betaD, Pu);
    demand.delta2 = Magnifier(2, plane2, demand.betaD, Pu);
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
    DesignTrace* trace = v.x == told_ ? trace_ : nullptr;
    ColumnDemand::Station station{.distance = v.x, .P = -v.Fx, .M3 = v.Mz, .M2 = v.My, .load = {}};
    const auto raised = [&](double M, double dimension) {
        assert(dimension > 0 && "a side of the column");
        // About each axis by itself, as if the axial force stood off the middle in one direction at a time (6.6.4.5.4).
        const double least = MinimumMoment(station.P, dimension, model_.design.concreteCode, trace);
        return std::fabs(M) < least ? least : M;
    };
    if (station.P >= 0 && model_.design.bMinimumEccentricity != 0) {
        station.M3 = raised(station.M3, member_.section.dim[1]);
        station.M2 = raised(station.M2, member_.section.dim[0]);
    }
    station.load = {.P = Noted(trace, {"Pu [kip]", station.P, "", "compression positive"}),
                    .M3 = Noted(trace, {"Mc3 [kip-ft]", demand.delta3 * station.M3, "", "delta3 M3"}),
                    .M2 = Noted(trace, {"Mc2 [kip-ft]", demand.delta2 * station.M2, "", "delta2 M2"})};
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
    Noted(trace_, {"Pu, mean of both ends [kip]", -Pu, "", "compression positive"});
    Noted(trace_, {"Psus, mean of both ends [kip]", -Psus_, "", "of the sustained combination"});
    demand.betaD = SustainedRatio(Psus_, susLoadFactor, Pu, model_.design.concreteCode, trace_);
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
