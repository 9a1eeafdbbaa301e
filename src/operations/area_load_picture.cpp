#include "operations/area_load_picture.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include <fmt/format.h>

#include "model/units.h"
#include "platform/cstring.h"
#include "tools/geometry.h"

namespace qvx {
namespace {

constexpr double kWidth = 720;     // of a drawing [px]
constexpr double kMargin = 40;     // around it
constexpr double kText = 84;       // lines of totals below it
constexpr double kLargest = 0.08;  // largest line load, of the size of the drawing

// Places in the plane of a footprint to places on the page, y down.
class Panel
{
public:
    Panel(const AreaLoadOutcome& outcome, double top) : top_(top)
    {
        lowest_ = highest_ = outcome.corners[0];
        for (const jxPoint& corner : outcome.corners) {
            lowest_ = {std::min(lowest_.x, corner.x), std::min(lowest_.y, corner.y), 0};
            highest_ = {std::max(highest_.x, corner.x), std::max(highest_.y, corner.y), 0};
        }
        const double size = std::max(highest_.x - lowest_.x, highest_.y - lowest_.y);
        assert(size > 0 && "a footprint has an area");
        scale_ = kWidth / size;
    }

    double Height() const { return (highest_.y - lowest_.y) * scale_ + 2 * kMargin + kText; }
    double TextTop() const { return top_ + Height() - kText; }
    double Scale() const { return scale_; }
    std::string Place(const jxPoint& p) const
    {
        return fmt::format("{:.1f},{:.1f}", kMargin + (p.x - lowest_.x) * scale_,
                           top_ + kMargin + (highest_.y - p.y) * scale_);
    }

private:
    double top_;
    double scale_ = 1;
    jxPoint lowest_;
    jxPoint highest_;
};

template <class Points>
std::string Polygon(const Panel& panel, const Points& points, const char* style)
{
    std::string places;
    for (const jxPoint& p : points)
        places += (places.empty() ? "" : " ") + panel.Place(p);
    return fmt::format("<polygon class=\"{}\" points=\"{}\"/>\n", style, places);
}

std::string Label(const Panel& panel, const jxPoint& at, const std::string& text)
{
    const std::string place = panel.Place(at);
    const std::size_t comma = place.find(',');
    return fmt::format("<text class=\"area\" x=\"{}\" y=\"{}\">{}</text>\n", place.substr(0, comma),
                       place.substr(comma + 1), text);
}

double LargestOrdinate(const AreaLoadOutcome& outcome)
{
    double largest = 0;
    for (const auto& part : outcome.subAreas)
        for (const jxLnLoad& line : part.loads)
            largest = std::max({largest, std::fabs(line.value1), std::fabs(line.value2)});
    return largest;
}

// All directions of a load have the same shape along a member: the one with the largest component is drawn.
int DrawnDirection(const AreaLoadOutcome& outcome)
{
    double largest[3] = {};
    for (const auto& part : outcome.subAreas)
        for (const jxLnLoad& line : part.loads)
            largest[line.dir] = std::max({largest[line.dir], std::fabs(line.value1), std::fabs(line.value2)});
    return static_cast<int>(std::max_element(std::begin(largest), std::end(largest)) - std::begin(largest));
}

// One line load as the area between its member and its ordinates, which point into the sub-area.
std::string LineLoad(const Panel& panel, const AreaLoadOutcome& outcome, const AreaLoadOutcome::SubArea& part,
                     const jxLnLoad& line, double perOrdinate)
{
    const auto& [start, end] = outcome.members.at(line.id);
    const jxPoint inside = centroid(part.points.data(), static_cast<int>(part.points.size()));
    const jxPoint along = end - start;
    jxPoint across{-along.y, along.x, 0};
    normalize(across);
    if (dot(across, inside - start) < 0)
        across = -1 * across;
    const jxPoint a = start + line.distance1 * along;
    const jxPoint b = start + line.distance2 * along;
    return Polygon(panel,
                   std::vector<jxPoint>{a, a + std::fabs(line.value1) * perOrdinate * across,
                                        b + std::fabs(line.value2) * perOrdinate * across, b},
                   "load");
}

std::string Totals(const Panel& panel, const AreaLoadOutcome& outcome, const jxUnit& units)
{
    const auto name = [&units](Quantity quantity) { return ToUtf8(UnitName(units.unit[quantity])); };
    const jxPoint total = outcome.Resultant(units);
    const int(&node)[4] = outcome.load.node;
    const std::string lines[] = {
        fmt::format("Area load ({}, {}, {}, {}): {:.4g} {}, distribution {}", node[0], node[1], node[2], node[3],
                    outcome.load.value, name(kSurfacePressure), outcome.load.distribution),
        fmt::format("Footprint {:.6g} {}^2, loaded {:.6g} {}^2 in {} sub-areas{}", outcome.footprintArea, name(kLength),
                    outcome.loadedArea, name(kLength), outcome.subAreas.size(),
                    outcome.IsWhole() ? "" : ": the hatched part got no load"),
        fmt::format("Total of the line loads: X {:.6g}, Y {:.6g}, Z {:.6g} {}; largest {:.4g} {}", total.x, total.y,
                    total.z, name(kForce), LargestOrdinate(outcome), name(kLinearForce))};
    std::string text;
    double y = panel.TextTop();
    for (const std::string& line : lines)
        text += fmt::format("<text x=\"{}\" y=\"{:.1f}\">{}</text>\n", kMargin, y += 20, line);
    return text;
}

std::string DrawPanel(const Panel& panel, const AreaLoadOutcome& outcome, const jxUnit& units)
{
    std::string drawing = Polygon(panel, outcome.corners, "footprint");
    for (const auto& part : outcome.subAreas)
        if (!part.loads.empty())
            drawing += Polygon(panel, part.points, "subarea");
    const double largest = LargestOrdinate(outcome);
    const double perOrdinate = largest > 0 ? kLargest * kWidth / panel.Scale() / largest : 0.0;
    const int direction = DrawnDirection(outcome);
    for (const auto& part : outcome.subAreas)
        for (const jxLnLoad& line : part.loads)
            if (line.dir == direction)
                drawing += LineLoad(panel, outcome, part, line, perOrdinate);
    for (const auto& [id, ends] : outcome.members)
        drawing += fmt::format("<polyline class=\"member\" points=\"{} {}\"><title>member {}</title></polyline>\n",
                               panel.Place(ends.first), panel.Place(ends.second), id);
    for (const auto& part : outcome.subAreas)
        drawing += Label(panel, centroid(part.points.data(), static_cast<int>(part.points.size())),
                         fmt::format("{:.4g}", part.area));
    constexpr const char* kCorners[] = {"A", "B", "C", "D"};
    for (int i = 0; i < 4; ++i)
        drawing += Label(panel, outcome.corners[i], kCorners[i]);
    return drawing + Totals(panel, outcome, units);
}

constexpr const char* kStyle =
    "<defs><pattern id=\"hatch\" width=\"8\" height=\"8\" patternUnits=\"userSpaceOnUse\">"
    "<path d=\"M0,8 L8,0\" stroke=\"#b22\" stroke-width=\"1\"/></pattern></defs>\n"
    "<style>text{font:13px sans-serif} .area{text-anchor:middle;fill:#333} "
    ".footprint{fill:url(#hatch);stroke:#b22;stroke-dasharray:6 4} .subarea{fill:#eef4fb;stroke:none} "
    ".load{fill:#3a7ab5;fill-opacity:.45;stroke:#1d4f7c;stroke-width:.7} "
    ".member{fill:none;stroke:#000;stroke-width:2}</style>\n";

}  // namespace

std::string AreaLoadPicture(const std::vector<AreaLoadOutcome>& outcomes, const jxUnit& units)
{
    std::string drawing;
    double height = 0;
    for (const AreaLoadOutcome& outcome : outcomes) {
        const Panel panel(outcome, height);
        drawing += DrawPanel(panel, outcome, units);
        height += panel.Height();
    }
    return fmt::format("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"{0:.0f}\" height=\"{1:.0f}\" "
                       "viewBox=\"0 0 {0:.0f} {1:.0f}\">\n{2}{3}</svg>\n",
                       kWidth + 2 * kMargin, std::max(height, 2 * kMargin), kStyle, drawing);
}

}  // namespace qvx
