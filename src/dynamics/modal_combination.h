#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "model/jx_struct.h"
#include "tools/modal_rules.h"

namespace qvx {

/// Per direction the mode with the largest participation, the first of equal ones, from 0; -1 where no mode takes part
/// or results are to have no sign (bSignedModalResults).
struct DominantModes
{
    int mode[3] = {-1, -1, -1};
};
DominantModes FindDominantModes(const CjxStruct& model);

/// Combines what the inertia combinations left: over the modes of a direction by the model's rule, then over the
/// directions as the sum of factor times result, with no further root.
class ModalCombination
{
public:
    explicit ModalCombination(CjxStruct& model);

    /// Fills every family of the model's modal result. Records stand in the order in which the combinations have them.
    void Gather();

private:
    /// The modes of one direction whose inertia combinations have results, and the rule over them.
    struct Direction
    {
        double factor = 0;
        std::vector<const jxCombResult*> modes;
        ModalCombiner rule;
    };

    template <class Record>
    void GatherFamily(std::vector<Record> jxCombResult::*family);
    void GatherCurves();
    jxBmVMD CombineCurves(std::size_t place, const jxBmVMD& reference) const;
    std::vector<double> CurvePlaces(std::size_t place, int memberId) const;

    CjxStruct& model_;
    std::vector<Direction> directions_;
    const jxCombResult* reference_ = nullptr;  ///< a combination that was solved: it has every record of every family
};

/// Stresses of the faces and principal values that follow from the forces of the shells.
void DeriveShellStresses(const CjxStruct& model, std::vector<jxShellStress>& stresses);

}  // namespace qvx
