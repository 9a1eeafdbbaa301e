#pragma once

#include <array>

#include "model/jx_struct.h"

namespace qvx {

/// Degrees of freedom that have an equation: neither the type of the model nor a support takes them out.
class Freedoms
{
public:
    /// Leaves the model as it is.
    explicit Freedoms(CjxStruct& model);

    /// Whether the model's type leaves it out at every node.
    bool IsSuppressed(int dof) const { return isSuppressed_[static_cast<std::size_t>(dof)]; }
    /// Whether the type leaves any out.
    bool IsAnySuppressed() const;
    /// Whether a support of the node takes it out with flag '2'.
    bool IsTakenOut(int node, int dof) const;
    /// Part of a unit vector along translations (first = kX) or rotations (first = kOX) that have no equation, 0 to 1.
    double LostShare(const jxPoint& direction, int first) const;

private:
    const CjxStruct& model_;
    std::array<bool, kDofCount> isSuppressed_{};
};

}  // namespace qvx
