#include <algorithm>
#include <cassert>
#include <cmath>
#include <iterator>
#include <numeric>

#include "model/find_record.h"
#include "operations/geometric_tolerance.h"
#include "operations/member_cuts.h"
#include "operations/record_references.h"
#include "operations/selection_bits.h"
#include "platform/host_services.h"

namespace {

using qvx::IsPicked;
using qvx::kRelativeTolerance;
using qvx::MemberCuts;

double LengthOf(const CjxStruct& model, const jxBm& beam)
{
    return calc_distance(qvx::FindById(model.nodes, beam.node1).Point(),
                         qvx::FindById(model.nodes, beam.node2).Point());
}

double Sum(const std::vector<double>& lengths)
{
    return std::accumulate(lengths.begin(), lengths.end(), 0.0);
}

bool FitsInto(double total, double length)
{
    return std::fabs(total - length) <= length * kRelativeTolerance;
}

// The list cut off where it passes the end of the member, or filled up to it.
std::vector<double> FittedTo(double length, const std::vector<double>& pieces)
{
    std::vector<double> fitted;
    double sum = 0;
    for (const double piece : pieces) {
        if (length - sum <= length * kRelativeTolerance)
            break;
        fitted.push_back(std::min(piece, length - sum));
        sum += piece;
    }
    if (length - sum > length * kRelativeTolerance)
        fitted.push_back(length - sum);
    return fitted;
}

// Of a piece list that ends short of the member by less than half its shortest piece, the last one takes the rest.
// Empty when the list does not fit.
std::vector<double> Lengthened(double length, const std::vector<double>& pieces)
{
    std::vector<double> lengthened = pieces;
    const double total = Sum(pieces);
    if (FitsInto(total, length))
        return lengthened;
    const double missing = length - total;
    if (!(missing > 0 && missing < *std::min_element(pieces.begin(), pieces.end()) * 0.5))
        return {};
    lengthened.back() += missing;
    return lengthened;
}

void Tell(const CjxStruct& model, const wchar_t* format, std::size_t count)
{
    if (model.bInteractive == 0)
        return;
    CString text;
    text.Format(format, static_cast<int>(count));
    AfxMessageBox(text);
}

// Carries the cuts of the selected members out and tells of them.
void ApplyAndTell(CjxStruct& model, MemberCuts& cuts, std::size_t nIncompatible)
{
    const std::size_t before = model.beams.size();
    cuts.Apply(MemberCuts::LineSprings::Copied);
    Tell(model, L"%d new members are generated from splitting the selected members", model.beams.size() - before);
    if (nIncompatible > 0)
        Tell(model, L"%d selected members are not split due to incompatible length", nIncompatible);
}

// Sections of a tapered member join those of the model: under their own ids where these are free, else under the next.
std::vector<jxSect> AddSections(std::vector<jxSect>& sections, const std::vector<jxSect>& added)
{
    std::vector<jxSect> taken = added;
    qvx::SortById(sections);
    for (jxSect& section : taken) {
        if (section.id < 1 || qvx::FindOrNull(sections, section.id) != nullptr)
            section.id = qvx::LargestId(sections) + 1;
        sections.push_back(section);
        qvx::SortById(sections);
    }
    return taken;
}

}  // namespace

void CjxStruct::ExplodeBeam(std::vector<double>& pieces, int equal)
{
    const double total = Sum(pieces);
    MemberCuts cuts(*this);
    std::size_t nIncompatible = 0;
    for (const jxBm& beam : beams) {
        if (!IsPicked(beam))
            continue;
        const double length = LengthOf(*this, beam);
        std::vector<double> fitted = pieces;
        if (equal != 0) {
            std::fill(fitted.begin(), fitted.end(), length / static_cast<double>(pieces.size()));
        } else if (!FitsInto(total, length)) {
            ++nIncompatible;
            fitted = FittedTo(length, pieces);
        }
        if (fitted.size() > 1 && length > 0)
            cuts.AtLengths(beam, fitted);
    }
    ApplyAndTell(*this, cuts, nIncompatible);
}

void CjxStruct::CreateBeamRigidOffset(double startOffset, double endOffset, int rigidSection)
{
    // An offset that is not positive is none.
    const double start = std::max(startOffset, 0.0);
    const double end = std::max(endOffset, 0.0);
    MemberCuts cuts(*this);
    std::size_t nIncompatible = 0;
    for (const jxBm& beam : beams) {
        if (!IsPicked(beam))
            continue;
        const double length = LengthOf(*this, beam);
        if (!(length * kRelativeTolerance + start + end < length)) {
            ++nIncompatible;
            continue;
        }
        std::vector<double> pieces{start, length - start - end, end};
        std::erase(pieces, 0.0);
        if (pieces.size() < 2)
            continue;
        qvx::MemberCut& cut = cuts.AtLengths(beam, pieces);
        if (start > 0)
            cut.parts.front().section = rigidSection;
        if (end > 0)
            cut.parts.back().section = rigidSection;
    }
    ApplyAndTell(*this, cuts, nIncompatible);
}

void CjxStruct::NonPrismaticBeam(std::vector<double>& pieces, const std::vector<jxSect>& pieceSections)
{
    assert(pieces.size() <= pieceSections.size() && "each piece has its section");
    MemberCuts cuts(*this);
    std::size_t nIncompatible = 0;
    if (pieces.empty())
        return;
    // Sections are added when a member takes them, ids are needed before: they are handed out on a copy.
    std::vector<jxSect> allSections = sections;
    const std::vector<jxSect> taken = AddSections(allSections, pieceSections);
    for (const jxBm& beam : beams) {
        if (!IsPicked(beam))
            continue;
        const double length = LengthOf(*this, beam);
        const std::vector<double> lengthened = Lengthened(length, pieces);
        if (lengthened.size() < 2 || !(length > 0)) {
            ++nIncompatible;
            continue;
        }
        qvx::MemberCut& cut = cuts.AtLengths(beam, lengthened);
        for (std::size_t k = 0; k < cut.parts.size(); ++k)
            cut.parts[k].section = taken[k].id;
    }
    if (!cuts.IsEmpty())
        sections = allSections;
    ApplyAndTell(*this, cuts, nIncompatible);
}
