// A model in kN and m of parts that do not touch, one for each kind of element, whose every printed number is worked out
// by hand. E = 200,000 N/mm^2, nu = 0.25, so G = 80,000; section 1: E A = 2e6 kN, E I = 20,000 kN m^2, G J = 1,600 kN m^2;
// section 2: E I = 2e6 kN m^2. Loads in kN, kN/m, kN m along the global axes.
//
//  member 1   cantilever of 3: qy = -16, at half its length Fx = 50 and Mx = 16
//             start: Fx = -50, Fy = 16 * 3 = 48, Mx = -16, Mz = 16 * 3^2 / 2 = 72
//             end: ux = 50 * 1.5 / E A = 0.0375 mm, uy = -16 * 3^4 / (8 E I) = -8.1 mm, together 8.100087 mm;
//             rotations 16 * 1.5 / G J = 0.015 and -16 * 3^3 / (6 E I) = -0.0036, together 0.015425952
//  member 2   simple span of 8 under qy = -10: shear 40, moment in the middle 10 * 8^2 / 8 = 80, sag
//             5 q L^4 / (384 E I) = 26.6667 mm less the 8 / (5 n^2) of n = 40 intervals of its curve: 26.64 mm. (Each
//             interval counts as a kink in its middle, of the mean of its end moments: q h^3 / 12 too little of it.)
//  member 3   cantilever of 8, section 2, loads that cancel about its middle: qx and mx of opposite sign on its halves, qy on
//             0.4 m before and after. Nothing at either end but a moment 60 * 0.4; in the middle N = 20 * 4 = 80,
//             V = -150 * 0.4 = -60, T = 6 * 4 = 24
//  member 4   of 5 on a line spring of 4,000 kN/m^2, no turn of its ends, qy = -12: sinks by 12 / 4000 = 3 mm; spring
//             12 * 5 = 60
//  member 5   bar of E A / L = 5e5 kN/m beside a spring of 5e5: of 60 each takes 30
//  member 6   bar of 5e5 beside a coupled spring of kxx = 3e5, kxy = 1e5: of 40 the bar takes 25, the spring 15, and
//             5 across, which the support there takes
//  member 7, 8  bars of 5e5, u7 = 2 u8 by a constraint: P u7 = 5e5 (u7^2 + u8^2), so bar 7 takes 40 of P = 50, bar 8 20;
//             the constraint pulls -10 and 20
//  member 9, 10  columns under a rigid floor pushed by 20 at one of them
//  shell 1    plate of 2 x 2, 100 mm, stretched by 100 kN/m and bent by 10 kN m/m, the face +t/2 pressed:
//             100e3 / 100e3 -+ 6 * 10e3 / 100^2 = -5 at the top, 7 N/mm^2 at the bottom
//  shell 2    of 3 x 2 on springs of 5,000 kN/m^3 under -10 kN/m^2: sinks by 2 mm; springs 10 * 6 = 60
//  brick 1    of 1 x 1 x 1 under 1,000: -1 N/mm^2
//
// Sums: X 50 + 60 + 40 + 50 + 20 + 200 = 420, Y -48 - 80 - 60 = -188, Z -60 - 1000 = -1060.
#include "qvxfem/summary.h"

#include <regex>

#include <gtest/gtest.h>

#include "apps/summary_support.h"
#include "qvxfem/model_source.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

constexpr const char* kSummary = R"(every element  (model.json)

  model               3D Frame & Shell (6-DOF)
  size                36 nodes, 10 members, 2 shells, 1 brick, 28 supports, 4 springs, 1 constraint, 1 rigid diaphragm
  loads               1 load case, 2 combinations
  solver              Quad-precision Skyline, 192 equations, some of 31 digits lost

Findings
  note: The model does not contain self weight load [no-self-weight]
      Set selfWeightFactor to -1 if the weight is to act.

Combination 1 "loads": linear
                                           X            Y            Z
  sum of loads        kN                 420         -188        -1060
  sum of reactions    kN                -420          188         1060
  difference          kN       nothing
  displacement        mm             8.10009   node 2 (X 0.0375, Y -8.1, Z 0)
  rotation            rad           0.015426   node 2 (OX 0.015, OY 0, OZ -0.0036)
  end axial force     kN                 -50   member 1, start (Fx)
  end shear           kN                  48   member 1, start (Fy)
  end torsion         kN-m               -16   member 1, start (Mx)
  end moment          kN-m                72   member 1, start (Mz)
  span axial force    kN                  80   member 3, at 0.5 L (Fx)
  span shear          kN                 -60   member 3, at 0.5 L (Fy)
  span torsion        kN-m                24   member 3, at 0.5 L (Mx)
  span moment         kN-m                80   member 2, at 0.5 L (Mz)
  sag from the chord  mm              -26.64   member 2, at 0.5 L (Dy)
  shell membrane      kN/m               100   shell 1, anywhere (Fxx)
  shell moment        kN-m/m              10   shell 1, anywhere (Mxx)
  shell stress        N/mm^2               7   shell 1, anywhere (von Mises, bottom)
  brick stress        N/mm^2              -1   brick 1, anywhere (Szz)
  brick stress        N/mm^2               1   brick 1, anywhere (von Mises)

Combination 2 "half, reversed": linear
                                           X            Y            Z
  sum of loads        kN                -210           94          530
  sum of reactions    kN                 210          -94         -530
  difference          kN       nothing
  displacement        mm             4.05004   node 2 (X -0.01875, Y 4.05, Z 0)
  rotation            rad         0.00771298   node 2 (OX -0.0075, OY 0, OZ 0.0018)
  end axial force     kN                  25   member 1, start (Fx)
  end shear           kN                 -24   member 1, start (Fy)
  end torsion         kN-m                 8   member 1, start (Mx)
  end moment          kN-m               -36   member 1, start (Mz)
  span axial force    kN                 -40   member 3, at 0.5 L (Fx)
  span shear          kN                  30   member 3, at 0.5 L (Fy)
  span torsion        kN-m               -12   member 3, at 0.5 L (Mx)
  span moment         kN-m               -40   member 2, at 0.5 L (Mz)
  sag from the chord  mm               13.32   member 2, at 0.5 L (Dy)
  shell membrane      kN/m               -50   shell 1, anywhere (Fxx)
  shell moment        kN-m/m              -5   shell 1, anywhere (Mxx)
  shell stress        N/mm^2             3.5   shell 1, anywhere (von Mises, bottom)
  brick stress        N/mm^2             0.5   brick 1, anywhere (Szz)
  brick stress        N/mm^2             0.5   brick 1, anywhere (von Mises)

  time, memory        some
)";

// Uniform stress is the largest wherever round-off has it; what is round-off itself, and what a run takes, is no text
// to compare.
std::string WithoutChance(std::string text)
{
    const std::pair<const char*, const char*> masks[] = {
        {R"((shell 1|brick 1), (centre|corner \d))", "$1, anywhere"},
        {R"(\d+ of 31 digits)", "some of 31 digits"},
        {R"(( +[-\d.]+e-1\d| +-?0\.0e\+00){3}\n)", "       nothing\n"},
        {R"([-+.\de]+ s, at most \d+ MB)", "some"},
    };
    for (const auto& [pattern, by] : masks)
        text = std::regex_replace(text, std::regex(pattern), by);
    return text;
}

TEST(EveryElement, SummaryIsThatOfTheClosedForms)
{
    RecordingHost host;
    CjxStruct model;
    app::LoadModel(QVXFEM_SOURCE_DIR "/tests/apps/every_element.json", model);
    ASSERT_EQ(model.ExecuteStatic(), 1);

    const std::string text = Printed([&](std::FILE* out) { app::PrintSummary(out, model, {.file = "model.json"}); });

    EXPECT_EQ(WithoutChance(text), kSummary);
}

}  // namespace
}  // namespace qvx::test
