#pragma once

#include <optional>
#include <string>
#include <vector>

#include "design/design_rules.h"
#include "model/jx_struct.h"
#include "steel/aisc_design.h"

namespace qvx {

/// What one station of a member asks of every candidate.
struct SteelDemand
{
    int comb = 0;                    ///< index of the combination
    const jxVMD* station = nullptr;  ///< of its member curve, in kip and kip-ft
    double Cm3 = 1;
    double Cm2 = 1;
    double Cb = 1;
    bool isTotalLoadChecked = false;  ///< deflections of this combination have the limit of total load
    bool isLiveLoadChecked = false;
};

/// Design of steel members one by one, in design units. Members do not touch each other: any thread may design any.
class SteelMemberDesign
{
public:
    /// Shapes of the families of all criteria are looked up here, once.
    explicit SteelMemberDesign(const CjxStruct& model);

    /// Result of a member; nothing for one that is no steel member: flagged out, of another stiffness than steel's
    /// 29000 ksi (10 %), without strength or without a shape of the table.
    /// @throws jxException "error finding steel criteria <id>" and the like
    std::optional<jxSteelResult> Of(const jxBm& beam, DesignRules rules) const;

    /// Where the ratios of a member by the usual rules differ from those by the consistent ones; empty for nowhere.
    /// @param usual  result of the beam
    std::wstring DifferenceOf(const jxBm& beam, const jxSteelResult& usual) const;

    /// Largest B1 of the member's own section at the station that governs it; 1 where nothing is amplified.
    double Amplification(const jxBm& beam, const jxSteelResult& member) const;

    /// Calculates the member's own section once more at the station that governs it, told from the moments of its curve to
    /// the ratio.
    /// @param member  result of the beam by the same rules, its own section checked
    void Tell(const jxBm& beam, const jxSteelResult& member, DesignRules rules, DesignTrace& trace) const;

private:
    /// A shape to be tried; the member's own section comes first and is kept even if it fails.
    struct Candidate
    {
        const wchar_t* label;
        const jxSect_AISC* shape;
        bool isOwn;
    };

    /// Every station of every combination that is marked for steel.
    std::vector<SteelDemand> DemandsOn(const jxBm& beam, const jxSteelResult& member, DesignRules rules) const;
    void SetMomentFactors(SteelDemand& demand, const jxBm& beam, const jxBmVMD& curve, double L,
                          DesignTrace* trace = nullptr) const;
    void AddStations(std::vector<SteelDemand>& demands, const jxBmVMD& curve, SteelDemand common,
                     const jxSteelResult& member, DesignRules rules) const;
    void CheckCandidates(jxSteelResult& member, const std::vector<SteelDemand>& demands, const jxSect_AISC& own,
                         const wchar_t* ownLabel, const jxSteelCrit& criterion) const;
    std::optional<jxSteelSectionResult> Check(const Candidate& candidate, const jxSect_AISC& own,
                                              const jxSteelResult& member, const std::vector<SteelDemand>& demands,
                                              double maxRatio) const;

    const CjxStruct& model_;
    std::vector<std::vector<jxSect_AISC>> families_;  // by position of the criterion
};

/// Whether a criterion's family asks for the member's own section alone: blank or "Default".
bool IsDefaultFamily(const wchar_t* family);

/// The calculation of one candidate with the parameters of a member's result.
/// Lengths, factors and strengths are in the result; the shape may be another than the member's own.
CAiscDesign SteelDesignOf(int steelCode, const jxSect_AISC& shape, const jxSteelResult& member);

}  // namespace qvx
