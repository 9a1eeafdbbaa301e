#include "rc/column_candidates.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "model/records/text_fields.h"
#include "platform/cstring.h"
#include "tools/leading_number.h"

namespace qvx {
namespace {

constexpr double kPi = 3.141592654;  // of all names and counts of candidates

struct Range
{
    int least;
    int most;

    bool IsEmpty() const { return least > most; }
};

/// The range within a pair of the criterion, where the pair is given and leaves anything of it.
Range Narrowed(Range range, int least, int most)
{
    const Range narrow{std::max(range.least, least), std::min(range.most, most)};
    return least > 0 && most > 0 && !narrow.IsEmpty() ? narrow : range;
}

bool IsPatternKept(int pattern, int nx, int ny)
{
    switch (pattern) {
    case kBarsOnWidthFaces:
        return ny == 2;
    case kBarsOnDepthFaces:
        return nx == 2;
    case kEqualBarsPerSide:
        return nx == ny;
    default:
        return true;
    }
}

CString RectName(const jxConcreteSection& s)
{
    CString name;
    name.Format(L"Rect_BH%gx%g_fc%g_fy%g_Bars%0.3d#%d_NX%0.3d_NY%0.3d_cc%g", s.b, s.h, s.fc, s.fy, s.barCount,
                s.barSize, s.nx, s.ny, s.cover);
    return name;
}

CString RoundName(const jxConcreteSection& s)
{
    CString name;
    name.Format(L"Round_D%g_fc%g_fy%g_Bars%0.3d#%d_cc%g_%s", s.b, s.fc, s.fy, s.barCount, s.barSize, s.cover,
                s.bSpiral == 1 ? L"spiral" : L"tied");
    return name;
}

/// The candidates of one bar size.
class BarCandidates
{
public:
    BarCandidates(const ColumnShape& shape, const jxColRcCrit& criterion, const jxBar& bar, double tie)
        : shape_(shape), criterion_(criterion), bar_(bar), cover_(tie + criterion.cover + 0.5 * bar.diameter)
    {
    }

    void AddTo(std::vector<jxConcreteSection>& sections) const
    {
        if (shape_.type == jxConcreteSection::kRound)
            AddRounds(sections);
        else
            AddRects(sections);
    }

private:
    void AddRounds(std::vector<jxConcreteSection>& sections) const;
    void AddRects(std::vector<jxConcreteSection>& sections) const;
    bool IsTooTight(double side, int count) const
    {
        assert(count > 1 && "a gap is between two bars");
        return 2 * bar_.diameter > side / (count - 1);
    }
    jxConcreteSection Section(int count) const;

    const ColumnShape& shape_;
    const jxColRcCrit& criterion_;
    const jxBar& bar_;
    double cover_;  ///< from the face to the centre of the bars [in]
};

jxConcreteSection BarCandidates::Section(int count) const
{
    jxConcreteSection s;
    s.type = shape_.type;
    s.b = shape_.b;
    s.h = shape_.h;
    s.fc = shape_.fc;
    s.fy = shape_.fy;
    s.barSize = bar_.size;
    s.barCount = count;
    s.bSpiral = criterion_.bSpiral;
    s.cover = cover_;
    s.barArea = bar_.area;
    s.steelArea = count * bar_.area;
    return s;
}

void BarCandidates::AddRounds(std::vector<jxConcreteSection>& sections) const
{
    constexpr int kFewest = 6;  // 10.7.3.1 asks for it in a spiral
    const double D = shape_.b;
    // Truncated: a count that goes beyond the largest ratio by a rounding is beyond it.
    const int most = TruncateToInt(kPi * D * D * 0.25 * shape_.maxRho / bar_.area);
    const Range range = Narrowed({kFewest, most}, criterion_.minBarsLR, criterion_.maxBarsLR);
    for (int n = range.least; n <= range.most; ++n) {
        if (IsTooTight(kPi * (D - 2 * cover_), n))
            continue;
        jxConcreteSection section = Section(n);
        SetText(section.name, RoundName(section).Text());
        sections.push_back(section);
    }
}

void BarCandidates::AddRects(std::vector<jxConcreteSection>& sections) const
{
    constexpr int kFewest = 4;  // 10.7.3.1: one in every corner
    const double Ag = shape_.b * shape_.h;
    const int least = std::max(kFewest, TruncateToInt(Ag * shape_.minRho / bar_.area));
    const int most = TruncateToInt(std::max(0.0, Ag * shape_.maxRho) / bar_.area);
    const Range all{2, most - 2};
    const Range rangeX = Narrowed(all, criterion_.minBarsTB, criterion_.maxBarsTB);
    const Range rangeY = Narrowed(all, criterion_.minBarsLR, criterion_.maxBarsLR);
    for (int ny = rangeY.least; ny <= rangeY.most; ++ny) {
        if (IsTooTight(shape_.h - 2 * cover_, ny))
            break;  // and with more bars all the more
        for (int nx = rangeX.least; nx <= rangeX.most; ++nx) {
            // nx along each width face, ny along each depth face, the four corners counted once.
            const int count = 2 * (nx + ny) - 4;
            if (IsTooTight(shape_.b - 2 * cover_, nx) || count > most)
                break;
            if (count < least || !IsPatternKept(criterion_.pattern, nx, ny))
                continue;
            jxConcreteSection section = Section(count);
            section.nx = nx;
            section.ny = ny;
            SetText(section.name, RectName(section).Text());
            sections.push_back(section);
        }
    }
}

}  // namespace

std::vector<jxConcreteSection> ColumnCandidates(const ColumnShape& shape, const jxColRcCrit& criterion,
                                                const jxBarDatabase& bars)
{
    const auto bar = [&](int index) -> const jxBar& { return bars.bars.at(static_cast<std::size_t>(index)); };
    assert(criterion.startBar <= criterion.endBar);
    std::vector<jxConcreteSection> sections;
    for (int s = criterion.startBar; s <= criterion.endBar; ++s)
        BarCandidates(shape, criterion, bar(s), bar(criterion.stirrupBar).diameter).AddTo(sections);
    return sections;
}

}  // namespace qvx
