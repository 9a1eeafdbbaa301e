#include <cassert>

#include "model/find_record.h"
#include "operations/record_references.h"

namespace {

using qvx::Hold;
using qvx::Reference;

// The new id of each record stands in its no.
template <class Record>
void Renumber(CjxStruct& model, std::vector<Record>& records, Reference kind)
{
    qvx::SortById(records);
    qvx::RewriteReferences(model, kind, qvx::IdMap(qvx::NewIdsOf(records)));
    for (Record& record : records)
        record.id = record.no;
    qvx::SortLists(model);
}

// Counts in no how many records are made of each node. Supports, springs, loads and masses belong to a node and keep
// none alive; neither do relations that only the host knows and the links that every run makes anew.
void CountUses(CjxStruct& model)
{
    for (jxNd& node : model.nodes)
        node.no = 0;
    qvx::ForEachRecordList(model, [&model](const auto& records, const qvx::ValueRule& rule) {
        using Record = typename std::remove_cvref_t<decltype(records)>::value_type;
        if constexpr (!std::is_same_v<Record, jxMasterSlave> && !std::is_same_v<Record, jxLink>)
            for (const Record& record : records)
                qvx::VisitReferences(record, rule, [&](const int& id, Reference names, Hold hold) {
                    if (names != Reference::Node || hold != Hold::Part)
                        return;
                    const std::size_t at = qvx::LowerBound(model.nodes, id);
                    if (at < model.nodes.size() && model.nodes[at].id == id)
                        ++model.nodes[at].no;
                });
    });
}

}  // namespace

void CjxStruct::RenumberNodes()
{
    Renumber(*this, nodes, Reference::Node);
}

void CjxStruct::RenumberBeams()
{
    Renumber(*this, beams, Reference::Member);
}

void CjxStruct::RenumberShells()
{
    Renumber(*this, shell4s, Reference::Shell4);
}

void CjxStruct::RenumberBricks()
{
    Renumber(*this, bricks, Reference::Brick);
}

std::vector<int> CjxStruct::RemoveOrphanedNodes()
{
    SelectAll(0, 0);
    CountUses(*this);
    std::vector<int> removed;
    for (const jxNd& node : nodes)
        if (node.no == 0)
            removed.push_back(node.id);
    std::erase_if(nodes, [](const jxNd& node) { return node.no == 0; });
    qvx::DropReferences(*this, Reference::Node, removed);
    return removed;
}
