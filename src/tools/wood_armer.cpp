#include "tools/wood_armer.h"

#include <algorithm>
#include <cassert>
#include <cmath>

void CalcPlateTopMu1(double& mx, double& my, double Mx, double My, double Mxy)
{
    const double twist = std::fabs(Mxy);
    // The twist is carried by both directions alike, which makes mx + my least (Wood's rule for an orthotropy factor of
    // 1).
    mx = Mx + twist;
    my = My + twist;
    if (mx < 0 && my < 0) {
        mx = my = 0;
    } else if (mx < 0) {  // then Mx < 0
        mx = 0;
        my = std::max(0.0, My + Mxy * Mxy / std::fabs(Mx));
    } else if (my < 0) {
        my = 0;
        mx = std::max(0.0, Mx + Mxy * Mxy / std::fabs(My));
    }
    assert(!(mx < 0) && !(my < 0) && "the top rule serves positive moments");
}

void CalcPlateBotMu1(double& mx, double& my, double Mx, double My, double Mxy)
{
    CalcPlateTopMu1(mx, my, -Mx, -My, Mxy);
    mx = -mx;
    my = -my;
}
