#pragma once

#include "elements/brick/brick_group.h"
#include "elements/member/beam_group.h"
#include "elements/shell/shell4_group.h"
#include "model/jx_struct.h"

namespace qvx {

/// The element groups of a run.
struct ElementGroups
{
    explicit ElementGroups(CjxStruct& model) : members(&model), shells(&model), bricks(&model) {}

    CjxBmGroup members;
    CjxShell4Group shells;
    CjxBrickGroup bricks;
};

/// Adds the nodal and element loads of a combination to its load vector, which stands allocated, without a word. Sums up
/// the applied force in the outcome of the combination, if there are outcomes.
/// @throws jxException  when a load refers to what the model does not have
void FormLoadVector(CjxStruct& model, int comb, ElementGroups& groups);

// Forming and telling are apart: the loads of all combinations that are solved together are formed ahead, and each is
// told of when its turn comes in the window.

/// The words that CjxStruct::ProcessNodalAndElementLoads says, of a load vector that has been formed without them.
void TellLoadVector(CjxStruct& model);

/// Warning of a combination whose load vector is zero.
inline constexpr wchar_t kZeroLoad[] = L"Zero load vector";

/// True when no equation is loaded.
bool IsZeroLoad(const std::vector<double128>& load);

}  // namespace qvx
