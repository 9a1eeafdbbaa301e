#include "operations/member_cuts.h"

#include <algorithm>
#include <cassert>
#include <iterator>

#include "model/find_record.h"
#include "operations/record_references.h"
#include "operations/split_loads.h"
#include "tools/geometry.h"

namespace qvx {
namespace {

constexpr int kEndDofs = 6;  // partial releases: six of the start, then six of the end

// Calls split(cut, first, last) for the records of every member that is cut, keep(record) for each other record.
template <class Record, class Split, class Keep>
void ForEachCut(std::vector<Record>& records, const std::vector<MemberCut>& cuts, Split split, Keep keep)
{
    assert(std::is_sorted(records.begin(), records.end()) && "records are grouped by their member");
    for (auto first = records.begin(); first != records.end();) {
        const int id = first->id;
        const auto last = std::find_if(first, records.end(), [id](const Record& r) { return r.id != id; });
        if (const MemberCut* cut = FindOrNull(cuts, id); cut != nullptr)
            split(*cut, first, last);
        else
            std::for_each(first, last, keep);
        first = last;
    }
}

// A list rebuilt from what append(out, cut, first, last) makes of the records of each member that is cut.
template <class Record, class Append>
void Rebuild(std::vector<Record>& records, const std::vector<MemberCut>& cuts, Append append)
{
    std::vector<Record> out;
    out.reserve(records.size());
    ForEachCut(
        records, cuts,
        [&](const MemberCut& cut, auto first, auto last) {
            append(out, cut, std::as_const(first), std::as_const(last));
        },
        [&](const Record& record) { out.push_back(record); });
    records = std::move(out);
    SortById(records);
}

void FreeNothing(wchar_t (&mask)[7])
{
    std::fill(mask, mask + kEndDofs, L'0');
}

}  // namespace

MemberCuts::MemberCuts(CjxStruct& model)
    : model_(model), nextMember_(LargestId(model.beams) + 1), nextNode_(LargestId(model.nodes) + 1)
{
    assert(std::is_sorted(model.beams.begin(), model.beams.end()));
    assert(std::is_sorted(model.nodes.begin(), model.nodes.end()));
}

MemberCut& MemberCuts::Add(const jxBm& beam, double length, const std::vector<double>& pieces,
                           const std::vector<int>& chain)
{
    assert(pieces.size() >= 2 && chain.size() == pieces.size() + 1);
    MemberCut& cut = cuts_.emplace_back(MemberCut{.id = beam.id, .length = length, .pieces = pieces, .parts = {}});
    for (std::size_t k = 0; k < pieces.size(); ++k) {
        jxBm& part = cut.parts.emplace_back(beam);
        part.id = k == 0 ? beam.id : nextMember_++;
        part.node1 = chain[k];
        part.node2 = chain[k + 1];
    }
    return cut;
}

MemberCut& MemberCuts::AtLengths(const jxBm& beam, const std::vector<double>& pieces)
{
    const jxPoint a = FindById(model_.nodes, beam.node1).Point();
    const jxPoint b = FindById(model_.nodes, beam.node2).Point();
    const double length = calc_distance(a, b);
    std::vector<int> chain{beam.node1};
    double sum = 0;
    for (std::size_t k = 0; k + 1 < pieces.size(); ++k) {
        sum += pieces[k];
        jxPoint place;
        pt_interpolate(place, a, b, sum / length);
        chain.push_back(nextNode_);
        newNodes_.push_back({.id = nextNode_++, .x = place.x, .y = place.y, .z = place.z});
    }
    chain.push_back(beam.node2);
    return Add(beam, length, pieces, chain);
}

void MemberCuts::AtNodes(const jxBm& beam, double length, const std::vector<const jxNd*>& chain)
{
    std::vector<double> gaps;
    std::vector<int> ids;
    for (std::size_t k = 0; k < chain.size(); ++k) {
        ids.push_back(chain[k]->id);
        if (k > 0)
            gaps.push_back(calc_distance(chain[k - 1]->Point(), chain[k]->Point()));
    }
    Add(beam, length, gaps, ids);
}

void MemberCuts::Apply(LineSprings springs)
{
    model_.nodes.insert(model_.nodes.end(), newNodes_.begin(), newNodes_.end());
    CutMembers();
    CutReleases();
    for (jxCaseLoad& loads : model_.caseLoads)
        CutLoads(loads);
    if (springs == LineSprings::Copied)
        CopySprings();
}

void MemberCuts::CutMembers()
{
    std::vector<jxBm> added;
    for (const MemberCut& cut : cuts_) {
        model_.beams[LowerBound(model_.beams, cut.id)] = cut.parts.front();
        added.insert(added.end(), cut.parts.begin() + 1, cut.parts.end());
    }
    model_.beams.insert(model_.beams.end(), added.begin(), added.end());
    assert(std::is_sorted(model_.beams.begin(), model_.beams.end()) && "new ids follow the largest");
}

// The releases of the start stay with the first piece, those of the end go to the last; the pieces hold fast to one
// another.
void MemberCuts::CutReleases()
{
    SortById(model_.releases);
    Rebuild(model_.releases, cuts_, [](std::vector<jxRels>& out, const MemberCut& cut, auto first, auto last) {
        for (auto release = first; release != last; ++release) {
            jxRels start = *release;
            jxRels end = *release;
            end.id = cut.parts.back().id;
            FreeNothing(start.end);
            FreeNothing(end.start);
            std::fill(start.partial + kEndDofs, std::end(start.partial), 0.0);
            std::fill(end.partial, end.partial + kEndDofs, 0.0);
            out.push_back(start);
            out.push_back(end);
        }
    });
}

void MemberCuts::CutLoads(jxCaseLoad& loads)
{
    SortById(loads.ptLoads);
    SortById(loads.lnLoads);
    SortById(loads.bmThermalLoads);
    ForEachCut(
        loads.ptLoads, cuts_,
        [](const MemberCut& cut, auto first, auto last) {
            bool isMoved = false;
            split_ptload(isMoved, first, last, cut.length, cut.pieces, cut.parts);
        },
        [](const jxPtLoad&) {});
    SortById(loads.ptLoads);
    Rebuild(loads.lnLoads, cuts_, [](std::vector<jxLnLoad>& out, const MemberCut& cut, auto first, auto last) {
        split_lnload(out, first, last, cut.length, cut.pieces, cut.parts);
    });
    Rebuild(loads.bmThermalLoads, cuts_,
            [](std::vector<jxThermalLoad>& out, const MemberCut& cut, auto first, auto last) {
                split_memberthermalload(out, first, last, cut.length, cut.pieces, cut.parts);
            });
}

void MemberCuts::CopySprings()
{
    SortById(model_.beamSprings);
    Rebuild(model_.beamSprings, cuts_, [](std::vector<jxSpring>& out, const MemberCut& cut, auto first, auto last) {
        for (const jxBm& part : cut.parts)
            for (auto spring = first; spring != last; ++spring) {
                out.push_back(*spring);
                out.back().id = part.id;
            }
    });
}

}  // namespace qvx
