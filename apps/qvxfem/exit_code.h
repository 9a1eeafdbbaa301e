#pragma once

namespace qvx::app {

/// Exit codes of qvxfem.
enum ExitCode : int {
    kDone = 0,
    kRefused = 1,         ///< the input check refused the model
    kBadUsage = 2,        ///< bad usage, an unreadable file, an output that cannot be written
    kAnalysisFailed = 3,  ///< jxException
    kNotReliable = 4,     ///< done, but at least one combination is not to be relied on
    kStopped = 130,       ///< Ctrl-C; another signal gives 128 and its number
};

}  // namespace qvx::app
