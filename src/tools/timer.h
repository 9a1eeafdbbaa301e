#pragma once

#include "platform/export.h"

/// The stopwatch of the calling thread. timer(1) restarts it and returns 0, any other mode returns the time since the
/// last restart in milliseconds (0 before the first).
QVXFEM_API double timer(int mode);
