#include "tools/design_trace.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

using qvx::DesignFigure;
using qvx::DesignTrace;
using qvx::Noted;

namespace {

class Notebook : public DesignTrace
{
public:
    void Note(const DesignFigure& figure) override { figures.push_back(figure); }

    std::vector<DesignFigure> figures;
};

// Plastic moment of a strip, 12 in wide and 1 in thick: Fy b t^2 / 4.
double PlasticMoment(double fy, DesignTrace* trace)
{
    const double Z = Noted(trace, {"Z [in3]", 12.0 / 4, "", ""});
    return Noted(trace, {"Mp [kip-in]", fy * Z, "F11.1", "F11-1"});
}

}  // namespace

TEST(DesignTraceTest, ListeningLeavesTheResultAsItIs)
{
    Notebook notebook;
    EXPECT_EQ(PlasticMoment(50, &notebook), 150);
    EXPECT_EQ(PlasticMoment(50, nullptr), 150);
}

TEST(DesignTraceTest, FiguresComeInTheOrderInWhichTheyAreFound)
{
    Notebook notebook;
    PlasticMoment(36, &notebook);
    ASSERT_EQ(notebook.figures.size(), 2U);
    EXPECT_EQ(std::string(notebook.figures[0].name), "Z [in3]");
    EXPECT_EQ(notebook.figures[0].value, 3);
    EXPECT_EQ(std::string(notebook.figures[1].name), "Mp [kip-in]");
    EXPECT_EQ(notebook.figures[1].value, 108);
    EXPECT_EQ(std::string(notebook.figures[1].clause), "F11.1");
    EXPECT_EQ(std::string(notebook.figures[1].equation), "F11-1");
}
