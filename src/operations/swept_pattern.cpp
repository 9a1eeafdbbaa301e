#include "operations/swept_pattern.h"

#include <algorithm>
#include <cassert>
#include <climits>
#include <type_traits>

#include "model/find_record.h"

namespace qvx {
namespace {

int CheckedId(const wchar_t* kind, long long id)
{
    if (id < 1 || id > INT_MAX) {
        CString text;
        text.Format(L"A new %s would have the id %I64d: ids go from 1 to %d", kind, id, INT_MAX);
        throw jxException(text);
    }
    return static_cast<int>(id);
}

// Id of a record's copy.
template <class Record>
int CopyId(int id, int copy, int increment)
{
    return CheckedId(Record::name(), id + static_cast<long long>(copy) * increment);
}

// Ids of the nodes of a record's copy.
class NodeShift
{
public:
    NodeShift(int copy, int increment) : copy_(copy), increment_(increment) {}
    int operator()(int node) const { return CopyId<jxNd>(node, copy_, increment_); }

private:
    int copy_;
    int increment_;
};

template <class Visit>
void ForEachNode(jxBm& beam, Visit visit)
{
    visit(beam.node1);
    visit(beam.node2);
}

template <class Element, class Visit>
void ForEachNode(Element& element, Visit visit)
{
    for (int& node : element.node)
        visit(node);
}

jxBm JointOf(const jxNd& node, const NodeShift& earlier, const NodeShift& later)
{
    return {.node1 = earlier(node.id), .node2 = later(node.id)};
}

// The shell goes along the earlier member and back along the later one, so that its corners are in turn.
jxShell4 JointOf(const jxBm& beam, const NodeShift& earlier, const NodeShift& later)
{
    return {.material = beam.material,
            .node = {earlier(beam.node1), earlier(beam.node2), later(beam.node2), later(beam.node1)}};
}

jxBrick JointOf(const jxShell4& shell, const NodeShift& earlier, const NodeShift& later)
{
    jxBrick brick{.material = shell.material};
    std::transform(std::begin(shell.node), std::end(shell.node), brick.node, earlier);
    std::transform(std::begin(shell.node), std::end(shell.node), brick.node + std::size(shell.node), later);
    return brick;
}

std::vector<jxNd> NodeCopies(const std::vector<jxNd>& pattern, const PatternPath& path, int increment)
{
    std::vector<jxNd> copies;
    for (int copy = 1; copy <= path.nCopies; ++copy)
        for (jxNd node : pattern) {
            const jxPoint p = path.place(node, copy);
            node.id = CopyId<jxNd>(node.id, copy, increment);
            node.x = p.x;
            node.y = p.y;
            node.z = p.z;
            copies.push_back(node);
        }
    return copies;
}

template <class Element>
std::vector<Element> ElementCopies(const std::vector<Element>& pattern, const PatternPath& path, const PatternIds& ids)
{
    std::vector<Element> copies;
    for (int copy = 1; copy <= path.nCopies; ++copy) {
        const NodeShift shift(copy, ids.nodeIncrement);
        for (Element element : pattern) {
            element.id = CopyId<Element>(element.id, copy, ids.elementIncrement);
            ForEachNode(element, [&](int& node) { node = shift(node); });
            copies.push_back(element);
        }
    }
    return copies;
}

template <class Element>
auto Joints(const std::vector<Element>& pattern, const PatternPath& path, const PatternIds& ids)
{
    using Joint = decltype(JointOf(pattern.front(), NodeShift(0, 0), NodeShift(0, 0)));
    std::vector<Joint> joints;
    for (int copy = 0; copy < path.Joints(); ++copy) {
        const NodeShift earlier(copy, ids.nodeIncrement);
        const NodeShift later(path.After(copy), ids.nodeIncrement);
        for (const Element& element : pattern) {
            const auto count = static_cast<long long>(joints.size());
            joints.push_back(JointOf(element, earlier, later));
            joints.back().id = CheckedId(Joint::name(), ids.firstJoint + count);
        }
    }
    return joints;
}

// Every node that new elements name must stand in the model or among the new ones.
class NodeLookup
{
public:
    NodeLookup(const std::vector<jxNd>& present, const std::vector<jxNd>& added) : present_(present)
    {
        added_.reserve(added.size());
        for (const jxNd& node : added)
            added_.push_back(node.id);
        std::sort(added_.begin(), added_.end());
    }
    template <class Element>
    void Require(std::vector<Element>& elements) const
    {
        for (Element& element : elements)
            ForEachNode(element, [this](int id) {
                if (FindOrNull(present_, id) == nullptr && !std::binary_search(added_.begin(), added_.end(), id))
                    ThrowMissingRecord(jxNd::name(), id);
            });
    }

private:
    const std::vector<jxNd>& present_;
    std::vector<int> added_;
};

template <class Record>
void MakeRoom(std::vector<Record>& records, const std::vector<Record>& added)
{
    records.reserve(records.size() + added.size());
}

// Lookups go by id. Where room was made nothing here can fail: stable_sort does without its buffer when there is none.
template <class Record>
void Append(std::vector<Record>& records, const std::vector<Record>& added)
{
    assert(records.capacity() >= records.size() + added.size() &&
           "room is made for all lists before one of them grows");
    records.insert(records.end(), added.begin(), added.end());
    if (!std::is_sorted(records.begin(), records.end()))
        std::stable_sort(records.begin(), records.end());
}

template <class Element>
auto& ListOf(CjxStruct& model)
{
    if constexpr (std::is_same_v<Element, jxBm>)
        return model.beams;
    else if constexpr (std::is_same_v<Element, jxShell4>)
        return model.shell4s;
    else
        return model.bricks;
}

template <class Element>
void Sweep(CjxStruct& model, const std::vector<jxNd>& nodes, const std::vector<Element>& elements,
           const PatternPath& path, const PatternIds& ids)
{
    assert(path.nCopies >= 0);
    const std::vector<jxNd> newNodes = NodeCopies(nodes, path, ids.nodeIncrement);
    std::vector<Element> copies = ElementCopies(elements, path, ids);
    auto joints = Joints(elements, path, ids);
    using Joint = typename decltype(joints)::value_type;
    const NodeLookup lookup(model.nodes, newNodes);
    lookup.Require(copies);
    lookup.Require(joints);
    MakeRoom(model.nodes, newNodes);
    MakeRoom(ListOf<Element>(model), copies);
    MakeRoom(ListOf<Joint>(model), joints);
    Append(model.nodes, newNodes);
    Append(ListOf<Element>(model), copies);
    Append(ListOf<Joint>(model), joints);
}

}  // namespace

void SweepNodes(CjxStruct& model, const std::vector<jxNd>& nodes, const PatternPath& path, const PatternIds& ids)
{
    assert(path.nCopies >= 0);
    const std::vector<jxNd> newNodes = NodeCopies(nodes, path, ids.nodeIncrement);
    std::vector<jxBm> members = Joints(nodes, path, ids);
    NodeLookup(model.nodes, newNodes).Require(members);
    MakeRoom(model.nodes, newNodes);
    MakeRoom(model.beams, members);
    Append(model.nodes, newNodes);
    Append(model.beams, members);
}

void SweepElements(CjxStruct& model, const std::vector<jxNd>& nodes, const std::vector<jxBm>& beams,
                   const PatternPath& path, const PatternIds& ids)
{
    Sweep(model, nodes, beams, path, ids);
}

void SweepElements(CjxStruct& model, const std::vector<jxNd>& nodes, const std::vector<jxShell4>& shells,
                   const PatternPath& path, const PatternIds& ids)
{
    Sweep(model, nodes, shells, path, ids);
}

}  // namespace qvx
