#pragma once

#include <ostream>

#include "tools/jx_point.h"

/// Points in the messages of failed expectations.
inline void PrintTo(const jxPoint& p, std::ostream* out)
{
    *out << "(" << p.x << ", " << p.y << ", " << p.z << ")";
}
