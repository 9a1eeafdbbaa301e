#include "operations/split_loads.h"

#include <cassert>

#include "operations/geometric_tolerance.h"

namespace {

using qvx::kRelativeTolerance;

// A part of a line load shorter than this share of the member is rounding of the place of a cut.
constexpr double kRounding = 1e-12;

// One line load on its way along the pieces: what of it lies at and beyond `from`.
struct Remainder
{
    double from = 0;   // from the start of the whole member [length]
    double value = 0;  // there
};

// The part of a line load on piece k, which ends at pieceEnd along the whole member.
void AppendPart(std::vector<jxLnLoad>& out, const jxLnLoad& whole, Remainder& rest, double partEnd, double pieceEnd,
                double piece, double slope, int id)
{
    const double start = piece - (pieceEnd - rest.from);
    const double end = piece - (pieceEnd - partEnd);
    const double scale = whole.bAbsoluteDistance == 0 ? piece : 1.0;
    jxLnLoad part = whole;
    part.id = id;
    part.distance1 = start / scale;
    part.distance2 = end / scale;
    part.value1 = rest.value;
    rest.value += slope * (end - start);
    part.value2 = rest.value;
    out.push_back(part);
}

void SplitLineLoad(std::vector<jxLnLoad>& out, const jxLnLoad& whole, double length, const std::vector<double>& pieces,
                   const std::vector<jxBm>& newBeams)
{
    const double scale = whole.bAbsoluteDistance == 0 ? length : 1.0;
    const double end = whole.distance2 * scale;
    Remainder rest{.from = whole.distance1 * scale, .value = whole.value1};
    if (end < rest.from) {
        out.push_back(whole);  // its end stands before its start: the input check tells of it
        return;
    }
    const double slope = end > rest.from ? (whole.value2 - whole.value1) / (end - rest.from) : 0.0;
    double sum = 0;
    for (std::size_t k = 0; k < pieces.size(); ++k) {
        sum += pieces[k];
        const double reach = length * kRelativeTolerance + sum;
        if (!(reach > rest.from))
            continue;
        const bool isLast = reach > end;
        const double partEnd = isLast ? end : sum;
        if (partEnd - rest.from > length * kRounding) {
            AppendPart(out, whole, rest, partEnd, sum, pieces[k], slope, newBeams[k].id);
            rest.from = partEnd;
        }
        if (isLast)
            return;
    }
}

}  // namespace

void split_ptload(bool& moved, std::vector<jxPtLoad>::iterator first, std::vector<jxPtLoad>::iterator last,
                  double length, const std::vector<double>& pieces, const std::vector<jxBm>& newBeams)
{
    assert(pieces.size() == newBeams.size());
    moved = false;
    for (auto load = first; load != last; ++load) {
        if (load->value == 0)
            continue;
        const double place = load->bAbsoluteDistance == 0 ? load->distance * length : load->distance;
        double sum = 0;
        for (std::size_t k = 0; k < pieces.size(); ++k) {
            sum += pieces[k];
            if (!(pieces[k] > 0) || !(length * kRelativeTolerance + sum > place))
                continue;  // a piece between two nodes at one place has no length to carry anything
            load->id = newBeams[k].id;
            moved = moved || k > 0;
            load->distance = (pieces[k] - (sum - place)) / (load->bAbsoluteDistance == 0 ? pieces[k] : 1.0);
            break;
        }
    }
}

void split_lnload(std::vector<jxLnLoad>& out, std::vector<jxLnLoad>::const_iterator first,
                  std::vector<jxLnLoad>::const_iterator last, double length, const std::vector<double>& pieces,
                  const std::vector<jxBm>& newBeams)
{
    assert(pieces.size() == newBeams.size());
    for (auto load = first; load != last; ++load)
        if (load->value1 != 0 || load->value2 != 0)
            SplitLineLoad(out, *load, length, pieces, newBeams);
}

void split_memberthermalload(std::vector<jxThermalLoad>& out, std::vector<jxThermalLoad>::const_iterator first,
                             std::vector<jxThermalLoad>::const_iterator last, [[maybe_unused]] double length,
                             [[maybe_unused]] const std::vector<double>& pieces, const std::vector<jxBm>& newBeams)
{
    assert(length > 0 && pieces.size() == newBeams.size());
    for (auto load = first; load != last; ++load)
        for (const jxBm& piece : newBeams) {
            if (load->dT == 0)
                break;
            out.push_back(*load);
            out.back().id = piece.id;
        }
}
