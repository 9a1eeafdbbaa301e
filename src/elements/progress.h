#pragma once

#include "model/jx_struct.h"

namespace qvx {

/// Progress of a loop over records: on every change of the percentage the abort key is looked at and "%d%%" goes to
/// the status line and the log.
class PercentCounter
{
public:
    PercentCounter(CjxStruct& model, std::size_t count) : model_(model), count_(count) {}

    /// @param done  records finished so far, 0 to count
    void Show(std::size_t done)
    {
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
