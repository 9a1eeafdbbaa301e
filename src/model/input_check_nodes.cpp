#include <algorithm>
#include <cassert>

#include "model/find_record.h"
#include "model/input_check.h"
#include "model/near_nodes.h"

namespace qvx {

namespace {

void CheckDuplicateNodes(InputCheck& check)
{
    CjxStruct& m = check.model;
    check.Heading(L"CHECKING DUPLICATE NODES");
    if (!std::is_sorted(m.nodes.begin(), m.nodes.end()))
        // A host may have appended nodes. Everything from here on finds records by binary search on their ids.
        std::stable_sort(m.nodes.begin(), m.nodes.end());
    assert(std::is_sorted(m.nodes.begin(), m.nodes.end()) && "what follows looks nodes up by id");
    const auto duplicates = FindDuplicateNodes(m.nodes, m.mergeTolerance);
    if (duplicates.empty())
        return;
    constexpr const wchar_t* kQuestion =
        L"Duplicate nodes are found in the model.\n"
        L"It is recommended that you run Edit | Merge Nodes & Elements before proceeding.\n"
        L"Do you want to continue?";
    const bool isAccepted = check.Ask(kQuestion);
    for (const auto& [node, other] : duplicates) {
        check.About(L"node", node);
        check.About(L"node", other);
    }
    check.List(FindingCode::DuplicateNodes, kQuestion);
    check.Log(L"%d duplicate nodes are found in the model.", static_cast<int>(duplicates.size()));
    if (!isAccepted)
        check.RefuseAnswer(L"duplicate nodes found");
}

/// Marks the nodes, by position, that elements and constraints hold.
class ConnectedNodes
{
public:
    explicit ConnectedNodes(const CjxStruct& m) : nodes_(m.nodes), isConnected_(m.nodes.size(), false)
    {
        for (const jxBm& b : m.beams)
            Mark({b.node1, b.node2});
        for (const jxShell4& s : m.shell4s)
            Mark(s.node);
        for (const jxShell3& s : m.shell3s)
            Mark(s.node);
        for (const jxBrick& b : m.bricks)
            Mark(b.node);
        for (const jxMultiDofConstraint& c : m.multiDofConstraints)
            Mark(c.node);
    }

    bool operator[](std::size_t position) const
    {
        assert(position < isConnected_.size());
        return isConnected_[position];
    }

private:
    template <std::size_t N>
    void Mark(const int (&ids)[N])
    {
        for (const int id : ids)
            if (const jxNd* node = FindOrNull(nodes_, id))
                isConnected_[static_cast<std::size_t>(node - nodes_.data())] = true;
    }

    const std::vector<jxNd>& nodes_;
    std::vector<bool> isConnected_;
};

bool IsFullyRestrained(const CjxStruct& m, int node)
{
    const auto [first, last] = RecordsOf(m.supports, node);
    return std::any_of(first, last, [](const jxSupt& s) { return CompareNoCase(s.flag, L"111111") == 0; });
}

void CheckOrphanedNodes(InputCheck& check)
{
    constexpr unsigned char kSelected = 1;
    CjxStruct& m = check.model;
    check.Heading(L"CHECKING ORPHANED NODES");
    const ConnectedNodes isConnected(m);
    bool isAnyOrphaned = false;
    for (std::size_t i = 0; i < m.nodes.size(); ++i) {
        jxNd& node = m.nodes[i];
        if (isConnected[i] || IsFullyRestrained(m, node.id))
            continue;  // a node that is held all round gives no free equation: hosts use it as a mark
        // The host shows what is selected: the way to find one node among thousands.
        node.bSelected |= kSelected;
        check.Log(L"Node %d is an orphaned (unconnected) node", node.id);
        check.About(L"node", node.id);
        isAnyOrphaned = true;
    }
    if (isAnyOrphaned)
        check.Refuse(FindingCode::OrphanedNode, L"orphaned nodes found");
}

}  // namespace

void CheckNodes(InputCheck& check)
{
    CheckDuplicateNodes(check);
    CheckOrphanedNodes(check);
}

void CheckMergeableNodes(InputCheck& check)
{
    const CjxStruct& m = check.model;
    check.Heading(L"CHECK MERGEABLE NODES ON MEMBERS");
    // A node on a member that does not end there looks connected on the screen and is not: the commonest fault of a
    // drawn model, and one that no equation shows.
    const auto found = FindNodesOnMembers(m.beams, m.nodes, m.mergeTolerance);
    for (const auto& [member, node] : found) {
        check.Log(L"Member %d: potential mergeable node %d", member, node);
        check.About(L"member", member);
        check.About(L"node", node);
    }
    if (found.empty())
        return;
    check.Warn(FindingCode::NodeOnMember, L"Mergeable nodes found on members");
    check.AskOrRefuse(L"Mergeable nodes are found on members.\nDo you want to continue solution process?");
}

}  // namespace qvx
