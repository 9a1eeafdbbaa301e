#pragma once

#include <vector>

#include "design/concrete_member.h"
#include "design/design_rules.h"
#include "rc/rc_shear.h"

namespace qvx {

/// Curve of a column under one combination, with its largest magnitudes.
struct ShearCurve
{
    int comb = -1;
    const std::vector<jxVMD>* stations = nullptr;
    double largestV2 = 0;
    double largestV3 = 0;
    double largestAxial = 0;
};

/// Ties of one column, station by station; the status words of all stations add up.
class ColumnShear
{
public:
    /// @param chosen  section that the column was given; null: none, and no steel is counted on
    /// @param trace   listener of what leads to the ties; null for none
    ColumnShear(const CjxStruct& model, const ConcreteMember& member, const jxColRcCrit& criterion,
                const jxConcreteSection* chosen, DesignRules rules, DesignTrace* trace = nullptr);
    ColumnShear(const ColumnShear&) = delete;  // its calculator looks at its material
    ColumnShear& operator=(const ColumnShear&) = delete;

    /// The closest ties that any combination asks for.
    jxRcShearStation At(double x);
    /// Those that one combination asks for. @return unset when the combination has no curve
    jxRcShearStation AtUnder(double x, int comb);
    int Status() const { return shear_.status; }

private:
    struct Ties
    {
        double spacing = 0;
        double reqAv = 0;
        double V = 0;
    };

    void SetTies(const jxColRcCrit& criterion);
    void SetDirection(bool isV3);
    Ties TiesFor(double V, double N, bool isV3);
    Ties TiesUnder(const ShearCurve& curve, const jxVMD& v, double& N);
    jxRcShearStation StationUnder(const ShearCurve& curve, double x);
    static bool Governs(const Ties& a, const Ties& b);

    const CjxStruct& model_;
    const ConcreteMember& member_;
    bool isConsistent_;
    CConcrete concrete_;
    CRcShear shear_;
    std::vector<ShearCurve> curves_;
    double cover_ = 0;  ///< from the face to the centre of the start bar [in]
    double largestSpacing_ = 0;
    double As_;
};

}  // namespace qvx
