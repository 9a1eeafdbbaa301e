#pragma once

#include <cmath>
#include <ostream>

#include "quad/double128.h"

namespace qvxDouble128NS {

/// Numbers in the messages of failed expectations: both parts, to the last digit.
inline void PrintTo(const double128& value, std::ostream* out)
{
    const auto digits = out->precision(17);
    *out << value.Hi() << (value.Lo() < 0 ? " - " : " + ") << std::fabs(value.Lo());
    out->precision(digits);
}

}  // namespace qvxDouble128NS
