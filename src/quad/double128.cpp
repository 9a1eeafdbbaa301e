#include "quad/double128.h"

#include <cmath>

namespace qvxDouble128NS {

double128 sqrt(const double128& a)
{
    if (a.Hi() <= 0)
        return std::sqrt(a.Hi());
    const double x = std::sqrt(a.Hi());
    return double128(x) + (a - double128(x) * double128(x)) / (2 * x);
}

double128 log10(const double128& a)
{
    return std::log10(a.Hi());
}

}  // namespace qvxDouble128NS
