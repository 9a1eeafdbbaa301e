#pragma once

#include <cassert>

#include "model/jx_struct.h"

namespace qvx {

/// Progress of a loop over records: on every change of the percentage the abort key is looked at and "%d%%" goes to
/// the status line and the log. So a loop over any number of records stops within one percent of its time, and writes a
/// hundred lines at most.
class PercentCounter
{
public:
    /// @param count  records of the loop, more than 0 once something is shown
    PercentCounter(CjxStruct& model, std::size_t count) : model_(model), count_(count) {}

    /// @param done  records finished so far, 0 to count
    /// @throws jxException "SOLUTION ABORTED!" when the user stops the run
    void Show(std::size_t done)
    {
        assert(done <= count_ && count_ > 0 && "a share of what there is");
        const int percent = static_cast<int>(done * 100 / count_);
        if (percent == shown_)
            return;
        shown_ = percent;
        model_.peek_msg();
        CString text;
        text.Format(L"%d%%", percent);
        model_.status_msg(text);
    }

private:
    CjxStruct& model_;
    std::size_t count_;
    int shown_ = -1;
};

}  // namespace qvx
