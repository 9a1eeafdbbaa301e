#include "report/interaction_picture.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <optional>

#include <fmt/format.h>

#include "platform/atomic_file.h"
#include "platform/cstring.h"
#include "platform/visible_text.h"
#include "report/report_writer.h"

namespace qvx {

namespace {

struct PlotPoint
{
    double x = 0;
    double y = 0;
};

using PlotLine = std::vector<PlotPoint>;

constexpr double kPanel = 330, kGap = 90, kLeft = 80, kTop = 90, kHeight = 500;  // [px]
constexpr double kWidth = kLeft + 3 * kPanel + 2 * kGap + 40;

/// Steps of 1, 2 or 5 times a power of ten, about five of them over a range.
double TickStep(double range)
{
    const double rough = range / 5;
    const double power = std::pow(10, std::floor(std::log10(rough)));
    for (const double step : {1.0, 2.0, 5.0})
        if (step * power >= rough)
            return step * power;
    return 10 * power;
}

/// Range of one axis, ends at ticks.
struct Axis
{
    double least = 0;
    double most = 0;
    double step = 1;

    void Take(double value)
    {
        least = std::min(least, value);
        most = std::max(most, value);
    }
    void Round()
    {
        step = TickStep(most > least ? most - least : 1);
        least = std::floor(least / step * (1 + 1e-12)) * step;
        most = std::max(std::ceil(most / step * (1 - 1e-12)) * step, least + step);
    }
};

/// One diagram: axes, lines and points in its own units.
class Panel
{
public:
    Panel(std::string heading, std::string xLabel, std::string yLabel)
        : heading_(std::move(heading)), xLabel_(std::move(xLabel)), yLabel_(std::move(yLabel))
    {
    }

    void AddLine(PlotLine line, bool isDashed)
    {
        for (const PlotPoint& p : line)
            Take(p);
        (isDashed ? dashed_ : solid_).push_back(std::move(line));
    }
    void AddLoad(PlotPoint p)
    {
        Take(p);
        loads_.push_back(p);
    }
    void SetGoverning(PlotPoint p)
    {
        Take(p);
        governing_ = p;
    }

    std::string Svg(int place);

private:
    void Take(PlotPoint p)
    {
        x_.Take(p.x);
        y_.Take(p.y);
    }
    double X(double value) const { return origin_ + (value - x_.least) / (x_.most - x_.least) * kPanel; }
    double Y(double value) const { return kTop + kPanel - (value - y_.least) / (y_.most - y_.least) * kPanel; }
    std::string Grid() const;
    std::string Labels() const;
    std::string Path(const PlotLine& line, const char* look) const;

    std::string heading_, xLabel_, yLabel_;
    Axis x_, y_;
    double origin_ = 0;
    std::vector<PlotLine> solid_, dashed_;
    std::vector<PlotPoint> loads_;
    std::optional<PlotPoint> governing_;
};

std::string Panel::Grid() const
{
    std::string svg;
    for (int i = 0; x_.least + i * x_.step <= x_.most + 0.5 * x_.step; ++i) {
        const double value = x_.least + i * x_.step;
        const char* look = std::fabs(value) < 1e-9 * x_.step ? "#555" : "#ddd";
        svg += fmt::format("<line x1=\"{0:.2f}\" y1=\"{1:.2f}\" x2=\"{0:.2f}\" y2=\"{2:.2f}\" stroke=\"{3}\"/>\n",
                           X(value), kTop, kTop + kPanel, look);
        svg += fmt::format("<text x=\"{:.2f}\" y=\"{:.2f}\" text-anchor=\"middle\">{:g}</text>\n", X(value),
                           kTop + kPanel + 16, value);
    }
    for (int i = 0; y_.least + i * y_.step <= y_.most + 0.5 * y_.step; ++i) {
        const double value = y_.least + i * y_.step;
        const char* look = std::fabs(value) < 1e-9 * y_.step ? "#555" : "#ddd";
        svg += fmt::format("<line x1=\"{1:.2f}\" y1=\"{0:.2f}\" x2=\"{2:.2f}\" y2=\"{0:.2f}\" stroke=\"{3}\"/>\n",
                           Y(value), origin_, origin_ + kPanel, look);
        svg += fmt::format("<text x=\"{:.2f}\" y=\"{:.2f}\" text-anchor=\"end\">{:g}</text>\n", origin_ - 6,
                           Y(value) + 4, value);
    }
    return svg;
}

std::string Panel::Labels() const
{
    const double middle = origin_ + kPanel / 2;
    const double side = origin_ - 52;
    return fmt::format("<text x=\"{:.2f}\" y=\"{:.2f}\" text-anchor=\"middle\" font-weight=\"bold\">{}</text>\n",
                       middle, kTop - 12, EscapedHtml(heading_)) +
           fmt::format("<text x=\"{:.2f}\" y=\"{:.2f}\" text-anchor=\"middle\">{}</text>\n", middle, kTop + kPanel + 36,
                       EscapedHtml(xLabel_)) +
           fmt::format("<text x=\"{0:.2f}\" y=\"{1:.2f}\" text-anchor=\"middle\" transform=\"rotate(-90 {0:.2f} "
                       "{1:.2f})\">{2}</text>\n",
                       side, kTop + kPanel / 2, EscapedHtml(yLabel_));
}

std::string Panel::Path(const PlotLine& line, const char* look) const
{
    std::string points;
    for (const PlotPoint& p : line)
        points += fmt::format("{}{:.2f},{:.2f}", points.empty() ? "" : " ", X(p.x), Y(p.y));
    return fmt::format("<polyline points=\"{}\" fill=\"none\" {}/>\n", points, look);
}

std::string Panel::Svg(int place)
{
    x_.Round();
    y_.Round();
    origin_ = kLeft + place * (kPanel + kGap);
    std::string svg = Grid() + Labels();
    for (const PlotLine& line : dashed_)
        svg += Path(line, "stroke=\"#1f3a5f\" stroke-dasharray=\"5 4\"");
    for (const PlotLine& line : solid_)
        svg += Path(line, "stroke=\"#1f3a5f\" stroke-width=\"2\"");
    for (const PlotPoint& p : loads_)
        svg += fmt::format("<circle class=\"load\" cx=\"{:.2f}\" cy=\"{:.2f}\" r=\"2.5\" fill=\"#2a7fb8\"/>\n", X(p.x),
                           Y(p.y));
    if (governing_)
        svg += fmt::format("<circle class=\"governing\" cx=\"{:.2f}\" cy=\"{:.2f}\" r=\"5\" fill=\"#d62728\" "
                           "stroke=\"white\"/>\n",
                           X(governing_->x), Y(governing_->y));
    return svg;
}

/// Where a falling line of (M, P) passes P.
std::optional<P_M_Point> PointAtP(const P_M_Int& curve, double P)
{
    for (std::size_t i = 1; i < curve.points.size(); ++i) {
        const P_M_Point& above = curve.points[i - 1];
        const P_M_Point& below = curve.points[i];
        if (above.P < P || below.P > P || above.P == below.P)
            continue;
        const double t = (above.P - P) / (above.P - below.P);
        return P_M_Point{P, above.M3 + t * (below.M3 - above.M3), above.M2 + t * (below.M2 - above.M2)};
    }
    return std::nullopt;
}

/// Both curves of bending about one axis, up to the cap of the code and, dashed, beyond.
void AddBending(Panel& panel, const P_M_Sect& surface, std::size_t first, double P_M_Point::*moment)
{
    for (const std::size_t k : {first, first + surface.curves.size() / 2}) {
        const P_M_Int& curve = surface.curves[k];
        PlotLine within, beyond;
        const std::optional<P_M_Point> atCap = PointAtP(curve, surface.cap);
        for (const P_M_Point& p : curve.points)
            (p.P > surface.cap ? beyond : within).push_back({p.*moment, p.P});
        if (atCap) {
            beyond.push_back({(*atCap).*moment, surface.cap});
            within.insert(within.begin(), {PlotPoint{0, surface.cap}, PlotPoint{(*atCap).*moment, surface.cap}});
        }
        panel.AddLine(std::move(within), false);
        panel.AddLine(std::move(beyond), true);
    }
}

/// Strengths of all directions at one axial force, closed.
PlotLine SliceAt(const P_M_Sect& surface, double P)
{
    PlotLine slice;
    for (const P_M_Int& curve : surface.curves)
        if (const std::optional<P_M_Point> p = PointAtP(curve, P))
            slice.push_back({p->M3, p->M2});
    if (!slice.empty())
        slice.push_back(slice.front());
    return slice;
}

std::string Legend()
{
    const double y = kTop + kPanel + 66;
    return fmt::format(
        "<circle cx=\"{0}\" cy=\"{1}\" r=\"2.5\" fill=\"#2a7fb8\"/><text x=\"{2}\" y=\"{3}\">loads of all "
        "combinations and stations</text>\n"
        "<circle cx=\"{4}\" cy=\"{1}\" r=\"5\" fill=\"#d62728\"/><text x=\"{5}\" y=\"{3}\">governing "
        "load</text>\n"
        "<line x1=\"{6}\" y1=\"{1}\" x2=\"{7}\" y2=\"{1}\" stroke=\"#1f3a5f\" stroke-width=\"2\"/><text "
        "x=\"{8}\" y=\"{3}\">design strength</text>\n"
        "<line x1=\"{9}\" y1=\"{1}\" x2=\"{10}\" y2=\"{1}\" stroke=\"#1f3a5f\" stroke-dasharray=\"5 "
        "4\"/><text x=\"{11}\" y=\"{3}\">beyond the largest axial strength</text>\n",
        kLeft, y, kLeft + 12, y + 4, kLeft + 290, kLeft + 302, kLeft + 420, kLeft + 450, kLeft + 458, kLeft + 590,
        kLeft + 620, kLeft + 628);
}

}  // namespace

std::string InteractionPicture(const ColumnPicture& picture, const std::string& title)
{
    const P_M_Sect& surface = picture.surface;
    assert(surface.curves.size() % 4 == 0 && "both planes of bending are sampled");
    const jxSectionLoad& governing = picture.governing;
    Panel about3("P - M3", "phi Mn3, Mc3 [kip-ft]", "phi Pn, Pu [kip]");
    Panel about2("P - M2", "phi Mn2, Mc2 [kip-ft]", "phi Pn, Pu [kip]");
    Panel slice(fmt::format("M3 - M2 at P = {:.5g} kip", governing.P), "phi Mn3, Mc3 [kip-ft]",
                "phi Mn2, Mc2 [kip-ft]");
    AddBending(about3, surface, 0, &P_M_Point::M3);
    AddBending(about2, surface, surface.curves.size() / 4, &P_M_Point::M2);
    slice.AddLine(SliceAt(surface, governing.P), governing.P > surface.cap);
    for (const jxSectionLoad& load : picture.loads) {
        about3.AddLoad({load.M3, load.P});
        about2.AddLoad({load.M2, load.P});
        slice.AddLoad({load.M3, load.M2});
    }
    about3.SetGoverning({governing.M3, governing.P});
    about2.SetGoverning({governing.M2, governing.P});
    slice.SetGoverning({governing.M3, governing.M2});
    std::string svg =
        fmt::format("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"{0}\" height=\"{1}\" viewBox=\"0 0 "
                    "{0} {1}\" font-family=\"sans-serif\" font-size=\"12\">\n"
                    "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n",
                    kWidth, kHeight);
    svg += fmt::format("<text x=\"{}\" y=\"26\" font-size=\"16\" font-weight=\"bold\">{}</text>\n", kLeft,
                       EscapedHtml(VisibleText(title)));
    svg += fmt::format("<text x=\"{}\" y=\"48\">{}, ratio {:.4g}</text>\n", kLeft,
                       EscapedHtml(ToUtf8(VisibleText(std::wstring_view(picture.section.name)))), picture.ratio);
    return svg + about3.Svg(0) + about2.Svg(1) + slice.Svg(2) + Legend() + "</svg>\n";
}

void WriteInteractionPicture(const std::filesystem::path& path, const ColumnPicture& picture, const std::string& title)
{
    AtomicFile file(path);
    file.Write(InteractionPicture(picture, title));
    file.Commit();
}

}  // namespace qvx
