#pragma once

#include "support/static_model.h"

namespace qvx::test {

/// A simple span of rolled steel, in the internal units: W18X50, E 29000 ksi, Fy 50 ksi, 240 in, under a uniform load
/// against y. One combination, marked for steel; run before it is designed.
class SteelSpan : public StaticModel
{
public:
    static constexpr double kLength = 240;

    explicit SteelSpan(const wchar_t* label = L"W18X50", double load = 200)
    {
        model.materials.clear();
        model.sections.clear();
        Material(29e6, 0.3);
        model.materials[0].fy = model.materials[0].fys = 50e3;
        jxSect section{.A = 14.7, .Iz = 800, .Iy = 40.1, .J = 1.24};
        SetText(section.label, label);
        Section(section);
        const int start = Node(0, 0, 0), end = Node(kLength, 0, 0);
        Support(start, L"111100");
        Support(end, L"011000");
        Member(start, end);
        LineLoad(1, kGlobal, kY, -load, -load);
        model.numberOfSegments = 8;
        model.loadCombs[0].bSteel = 1;
        model.steelCriteria.push_back({.id = 1});
    }

    /// Static run and steel design; the result of the latter.
    int Design()
    {
        EXPECT_EQ(model.ExecuteStatic(), 1);
        return model.ExecuteSteelDesign();
    }
    jxSteelCrit& Criterion() { return model.steelCriteria[0]; }
    const jxSteelResult& Result() const { return model.steelResults.at(0); }
};

}  // namespace qvx::test
