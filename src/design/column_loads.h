#pragma once

#include <vector>

#include "design/concrete_member.h"
#include "rc/column_slenderness.h"
#include "rc/interaction_surface.h"
#include "tools/design_trace.h"

namespace qvx {

/// What one combination asks of a column, the same for every candidate: stations with their magnified loads, or the news
/// that the column is unstable.
struct ColumnDemand
{
    struct Station
    {
        double distance = 0;
        double P = 0;   ///< compression positive [kip]
        double M3 = 0;  ///< after the minimum moment, before the magnification [kip-ft]
        double M2 = 0;
        jxSectionLoad load;  ///< magnified
    };

    int comb = -1;
    double betaD = 0;
    double Cm3 = 1;
    double Cm2 = 1;
    double delta3 = 1;
    double delta2 = 1;
    bool isUnstable = false;
    std::vector<Station> stations;  ///< of an unstable column the first one alone, with the average axial force
};

/// What combinations ask of one column.
class ColumnLoads
{
public:
    ColumnLoads(const CjxStruct& model, const ConcreteMember& member, const jxColRcCrit& criterion);

    /// Listener of the slenderness and of the loads of the station at `distance`, of the combinations to come; null for
    /// none.
    void Listen(DesignTrace* trace, double distance);
    /// @param curve  of the combination, not empty
    ColumnDemand Under(int comb, const std::vector<jxVMD>& curve) const;

private:
    void SetMomentFactors(ColumnDemand& demand, const std::vector<jxVMD>& curve) const;
    double MomentFactor(const char* name, const double (&ends)[2], int isLoadedAcross) const;
    void SetMagnifiers(ColumnDemand& demand, double Pu) const;
    double Magnifier(int axis, const ColumnPlane& plane, double betaD, double Pu) const;
    ColumnDemand::Station StationOf(const jxVMD& v, const ColumnDemand& demand) const;
    ColumnDemand::Station UnstableStation(const jxVMD& first, double Pu) const;

    const CjxStruct& model_;
    const ConcreteMember& member_;
    const jxColRcCrit& criterion_;
    double Psus_ = 0;
    DesignTrace* trace_ = nullptr;
    double told_ = 0;  ///< distance of the station that the listener hears of
};

/// Slenderness and loads of one column under all concrete combinations, in their order. Combinations without a curve are
/// passed over.
/// Formed once for a column and not for each candidate: slenderness is that of the gross section, which all share.
std::vector<ColumnDemand> ColumnDemands(const CjxStruct& model, const ConcreteMember& member,
                                        const jxColRcCrit& criterion);

}  // namespace qvx
