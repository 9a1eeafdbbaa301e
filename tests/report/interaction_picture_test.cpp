#include "report/interaction_picture.h"

#include <regex>

#include <gmock/gmock.h>

#include "model/records/text_fields.h"

namespace qvx::test {
namespace {

using testing::HasSubstr;
using testing::Not;

ColumnPicture Picture(double P)
{
    jxConcreteSection s;
    s.b = 12;
    s.h = 20;
    s.fc = 4;
    s.fy = 60;
    s.barSize = 9;
    s.nx = s.ny = 2;
    s.barCount = 4;
    s.cover = 2.5;
    s.barArea = 1;
    SetText(s.name, L"Rect <12x20>");
    return {.section = s,
            .surface = InteractionSurface(s, {}),
            .loads = {{P, 40, 10}, {P / 2, -20, 5}},
            .governing = {P, 40, 10},
            .ratio = 0.5};
}

std::size_t Count(const std::string& text, const std::string& part)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

TEST(InteractionPicture, EveryDiagramShowsAllLoadsAndTheGoverningOne)
{
    const std::string svg = InteractionPicture(Picture(200), "Member 1 & its loads");
    EXPECT_EQ(Count(svg, "class=\"load\""), 3u * 2);
    EXPECT_EQ(Count(svg, "class=\"governing\""), 3u);
    for (const char* text : {"P - M3", "P - M2", "M3 - M2 at P = 200 kip", "phi Pn, Pu [kip]", "phi Mn2, Mc2 [kip-ft]",
                             "Rect &lt;12x20&gt;, ratio 0.5", "Member 1 &amp; its loads", "governing load"})
        EXPECT_THAT(svg, HasSubstr(text));
}

// Whatever the loads, nothing is drawn outside the picture.
TEST(InteractionPicture, EverythingLiesWithin)
{
    for (const double P : {200.0, -50.0, 5000.0, 1e-9}) {
        const std::string svg = InteractionPicture(Picture(P), "");
        EXPECT_THAT(svg, Not(HasSubstr("nan")));
        const std::regex circle("cx=\"([-0-9.]+)\" cy=\"([-0-9.]+)\"");
        for (std::sregex_iterator it(svg.begin(), svg.end(), circle), end; it != end; ++it) {
            EXPECT_GE(std::stod((*it)[1]), 0);
            EXPECT_LE(std::stod((*it)[1]), 1290);
            EXPECT_GE(std::stod((*it)[2]), 0);
            EXPECT_LE(std::stod((*it)[2]), 500);
        }
    }
}

// No direction has strength at an axial force above that of pure compression: the slice is empty, its axes stand.
TEST(InteractionPicture, AboveThePureCompressionTheSliceIsEmpty)
{
    const std::string svg = InteractionPicture(Picture(5000), "");
    EXPECT_THAT(svg, HasSubstr("M3 - M2 at P = 5000 kip"));
    EXPECT_THAT(svg, HasSubstr("<polyline points=\"\""));
}

}  // namespace
}  // namespace qvx::test
