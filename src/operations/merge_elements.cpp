#include <array>
#include <cassert>
#include <numeric>

#include "operations/record_references.h"
#include "platform/host_services.h"

namespace {

using qvx::IdMap;
using qvx::Reference;

// Two members are one when they join the same nodes, either way round.
std::array<int, 2> IdentityOf(const jxBm& beam)
{
    return {std::min(beam.node1, beam.node2), std::max(beam.node1, beam.node2)};
}

// Two shells are one when their corners follow each other in the same turn, wherever it begins: of the four rotations
// the one that comes first in order stands for all.
std::array<int, 4> IdentityOf(const jxShell4& shell)
{
    std::array<int, 4> corners = std::to_array(shell.node);
    std::array<int, 4> first = corners;
    for (int turn = 1; turn < 4; ++turn) {
        std::rotate(corners.begin(), corners.begin() + 1, corners.end());
        first = std::min(first, corners);
    }
    return first;
}

std::array<int, 8> IdentityOf(const jxBrick& brick)
{
    return std::to_array(brick.node);
}

// Of elements of one identity the last by id stays and takes over what belongs to the others.
template <class Element>
std::vector<Element> MergeElements(CjxStruct& model, std::vector<Element>& elements, Reference kind)
{
    qvx::SortById(elements);
    using Identity = decltype(IdentityOf(elements.front()));
    std::vector<std::pair<Identity, std::size_t>> order;
    order.reserve(elements.size());
    for (std::size_t i = 0; i < elements.size(); ++i)
        order.emplace_back(IdentityOf(elements[i]), i);
    std::sort(order.begin(), order.end());

    std::vector<std::size_t> survivor(elements.size());
    for (std::size_t i = order.size(); i-- > 0;) {
        const bool isLast = i + 1 == order.size() || order[i + 1].first != order[i].first;
        survivor[order[i].second] = isLast ? order[i].second : survivor[order[i + 1].second];
    }
    std::vector<Element> kept;
    std::vector<Element> dropped;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (survivor[i] == i) {
            kept.push_back(elements[i]);
            continue;
        }
        assert(survivor[i] > i && "the last of a group stays");
        dropped.push_back(elements[i]);
        dropped.back().no = elements[survivor[i]].id;
    }
    if (dropped.empty())
        return {};
    qvx::RewriteReferences(model, kind, IdMap(qvx::NewIdsOf(dropped)));
    elements = kept;
    return dropped;
}

// Takes the elements out for which isInvalid holds, and what belongs to them; returns how many.
template <class Element, class IsInvalid>
int RemoveElements(CjxStruct& model, std::vector<Element>& elements, Reference kind, IsInvalid isInvalid)
{
    std::vector<int> removed;
    for (const Element& element : elements)
        if (isInvalid(element))
            removed.push_back(element.id);
    std::sort(removed.begin(), removed.end());
    std::erase_if(elements, isInvalid);
    qvx::DropReferences(model, kind, removed);
    return static_cast<int>(removed.size());
}

template <class Element>
bool NamesNodeTwice(const Element& element)
{
    auto nodes = std::to_array(element.node);
    std::sort(nodes.begin(), nodes.end());
    return std::adjacent_find(nodes.begin(), nodes.end()) != nodes.end();
}

// Tells counts when that is asked for, or when there is something to tell and it is not forbidden.
template <class... Counts>
void TellCounts(const CjxStruct& model, int messages, const wchar_t* format, Counts... counts)
{
    const bool isFound = ((counts != 0) || ...);
    if (model.bInteractive == 0 || !(messages == 1 || (messages == 0 && isFound)))
        return;
    CString text;
    text.Format(format, static_cast<int>(counts)...);
    AfxMessageBox(text);
}

}  // namespace

std::vector<jxBm> CjxStruct::MergeBeams()
{
    std::vector<jxBm> dropped = MergeElements(*this, beams, Reference::Member);
    if (dropped.empty())
        return dropped;
    qvx::KeepFirstOfRuns(beamSprings);
    qvx::KeepFirstOfRuns(releases);
    qvx::SortLists(*this);
    return dropped;
}

std::vector<jxShell4> CjxStruct::MergeShell4s()
{
    std::vector<jxShell4> dropped = MergeElements(*this, shell4s, Reference::Shell4);
    if (dropped.empty())
        return dropped;
    qvx::KeepFirstOfRuns(shell4Springs);
    qvx::SortLists(*this);
    return dropped;
}

std::vector<jxShell3> CjxStruct::MergeShell3s()
{
    return {};
}

std::vector<jxBrick> CjxStruct::MergeBricks()
{
    std::vector<jxBrick> dropped = MergeElements(*this, bricks, Reference::Brick);
    if (!dropped.empty())
        qvx::SortLists(*this);
    return dropped;
}

/// Nodes go first: elements may become one by it, or come to name one node twice.
jxMergedInfo CjxStruct::Merge(int messages)
{
    const jxMergedInfo merged{.nodes = qvx::NewIdsOf(MergeNodes()),
                              .members = qvx::NewIdsOf(MergeBeams()),
                              .shell4s = qvx::NewIdsOf(MergeShell4s()),
                              .bricks = qvx::NewIdsOf(MergeBricks())};
    TellCounts(*this, messages, L"%d nodes merged. \n%d members merged. \n%d shell4 merged. \n%d bricks merged. ",
               merged.nodes.size(), merged.members.size(), merged.shell4s.size(), merged.bricks.size());
    int members = 0;
    int shells = 0;
    int solids = 0;
    RemoveInvalidElements(members, shells, solids);
    TellCounts(*this, messages, L"\n%d members deleted. \n%d shell4 deleted. \n%d bricks deleted. ", members, shells,
               solids);
    return merged;
}

void CjxStruct::RemoveInvalidElements(int& members, int& nShell4s, int& nBricks)
{
    members = RemoveElements(*this, beams, Reference::Member, [](const jxBm& b) { return b.node1 == b.node2; });
    nShell4s = RemoveElements(*this, shell4s, Reference::Shell4, NamesNodeTwice<jxShell4>);
    nBricks = RemoveElements(*this, bricks, Reference::Brick, NamesNodeTwice<jxBrick>);
}
