#include "tools/section_constants.h"

#include <algorithm>
#include <cassert>

double calc_rect_J(double a, double b)
{
    if (!(a > 0 && b > 0))
        return 0;
    const double longSide = std::max(a, b);
    const double shortSide = std::min(a, b);
    const double ratio = shortSide / longSide;
    assert(ratio > 0 && ratio <= 1);
    const double ratio4 = ratio * ratio * ratio * ratio;
    return longSide * shortSide * shortSide * shortSide * (1.0 / 3.0 - 0.21 * ratio * (1 - ratio4 / 12));
}
