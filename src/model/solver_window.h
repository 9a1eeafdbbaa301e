#pragma once

#include <map>
#include <memory>
#include <mutex>

#include "platform/cstring.h"
#include "platform/cwnd.h"

namespace qvx {

/// The host's solver window, the texts that were posted to it, and the user's wish to stop.
///
/// A window reads a text after PostMessageW has returned, so texts live in a table until ClearStrings. Nothing is posted
/// without a window, and nothing after an abort: what follows it is known to the user.
class SolverWindow
{
public:
    /// Posts to this window from now on, or to none. A new window begins without an abort, and the table is handed out
    /// from its start; Detach leaves both.
    void Attach(CWnd* window);
    void Detach() { window_ = nullptr; }

    /// Posts "[HH:MM:SS] text" with a status.
    void PostLine(const wchar_t* text, const wchar_t* status);
    void PostStatus(const wchar_t* text);

    void Abort() { isAborted_ = true; }
    bool IsAborted() const { return isAborted_; }

    /// Next string of the table, from any thread.
    CString* NextString();
    void ClearStrings() { strings_.clear(); }

private:
    bool MayPost() const { return window_ != nullptr && !isAborted_; }

    CWnd* window_ = nullptr;
    bool isAborted_ = false;
    int count_ = 0;
    std::mutex lock_;  ///< of the table
    std::map<int, std::unique_ptr<CString>> strings_;
};

}  // namespace qvx
