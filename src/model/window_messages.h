#pragma once

#include "platform/cwnd.h"

namespace qvx {

/// Messages that a run posts to the windows of its host. The numbers are the host's: it has handlers for them. The
/// solver window and the progress window of a sparse factorization are two windows, so one number may mean two things.
enum WindowMessage : UINT {
    kListLine = 1124,              ///< solver window: texts of a line and of its status, as addresses of wide strings
    kFactorizationPercent = 1124,  ///< progress window: percentage, and the thread that tells it
    kFactorizationBegins = 1125,   ///< progress window: 0, 0
    kStatusLine = 1126,            ///< solver window: text of the status line, as the address of a wide string; 0
    kFactorizationEnds = 1126,     ///< progress window: 0, 0
};

}  // namespace qvx
