#include "model/solver_window.h"

#include <cassert>
#include <ctime>

#include <fmt/chrono.h>

#include "model/window_messages.h"

namespace qvx {

namespace {

WPARAM AddressOf(const CString* text)
{
    assert(text != nullptr);
    // Messages carry addresses as integers, as windows of hosts have always received them.
    return reinterpret_cast<WPARAM>(text->GetString());
}

}  // namespace

void SolverWindow::Attach(CWnd* window)
{
    window_ = window;
    // A new run begins: an abort was that of the run before.
    isAborted_ = false;
    const std::lock_guard guard(lock_);
    count_ = 0;
}

void SolverWindow::PostLine(const wchar_t* text, const wchar_t* status)
{
    if (!MayPost())
        return;
    // Two strings for one message: the window reads them after PostMessageW has returned, so they live in the table.
    CString* line = NextString();
    CString* ending = NextString();
    *line = CString(fmt::format("[{:%H:%M:%S}] ", fmt::localtime(std::time(nullptr))).c_str()) + text;
    *ending = CString(status);
    window_->PostMessageW(kListLine, AddressOf(line), static_cast<LPARAM>(AddressOf(ending)));
}

void SolverWindow::PostStatus(const wchar_t* text)
{
    if (!MayPost())
        return;
    CString* line = NextString();
    *line = CString(text);
    window_->PostMessageW(kStatusLine, AddressOf(line), 0);
}

CString* SolverWindow::NextString()
{
    // Strings are kept and handed out anew from the first on: a run of a million lines needs no million strings.
    const std::lock_guard guard(lock_);
    std::unique_ptr<CString>& text = strings_[++count_];
    if (!text)
        text = std::make_unique<CString>();
    return text.get();
}

}  // namespace qvx
