#pragma once

#include <vector>

#include "model/jx_struct.h"

namespace qvx {

/// One member to be cut: lengths of the pieces from its start, and the pieces as members between their nodes. The first
/// piece has the member's id.
struct MemberCut
{
    int id = 0;
    double length = 0;  ///< of the whole member
    std::vector<double> pieces;
    std::vector<jxBm> parts;  ///< one per piece
};

/// Cuts planned one after the other: it hands out ids and makes the nodes; the model is changed by Apply alone.
class MemberCuts
{
public:
    /// What becomes of springs along a member that is cut.
    enum class LineSprings { Copied, LeftOnFirstPiece };

    explicit MemberCuts(CjxStruct& model);

    /// Plans a cut at new nodes along the member.
    /// @param pieces  lengths from its start, two at least; the last one ends at the end of the member
    MemberCut& AtLengths(const jxBm& beam, const std::vector<double>& pieces);
    /// Plans a cut at nodes of the model.
    /// @param chain  the two ends of the member, and the nodes between, in their order from its start
    void AtNodes(const jxBm& beam, double length, const std::vector<const jxNd*>& chain);

    /// Carries the cuts out: members, releases and loads of all load cases. Lists stay in the order of their ids.
    void Apply(LineSprings springs);

    bool IsEmpty() const { return cuts_.empty(); }
    const std::vector<MemberCut>& Cuts() const { return cuts_; }  ///< in the order in which they were planned

private:
    MemberCut& Add(const jxBm& beam, double length, const std::vector<double>& pieces, const std::vector<int>& nodes);
    void CutMembers();
    void CutReleases();
    void CutLoads(jxCaseLoad& loads);
    void CopySprings();

    CjxStruct& model_;
    std::vector<MemberCut> cuts_;
    std::vector<jxNd> newNodes_;
    int nextMember_;
    int nextNode_;
};

}  // namespace qvx
