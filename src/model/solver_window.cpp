#include "model/solver_window.h"

#include <ctime>

#include <fmt/chrono.h>

#include "model/window_messages.h"

namespace qvx {

namespace {

WPARAM AddressOf(const CString* text)
{
    return reinterpret_cast<WPARAM>(text->GetString());
}

}  // namespace

void SolverWindow::Attach(CWnd* window)
{
    window_ = window;
    isAborted_ = false;
    const std::lock_guard guard(lock_);
    count_ = 0;
}

void SolverWindow::PostLine(const wchar_t* text, const wchar_t* status)
{
    if (!MayPost())
        return;
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
    const std::lock_guard guard(lock_);
    std::unique_ptr<CString>& text = strings_[++count_];
    if (!text)
        text = std::make_unique<CString>();
    return text.get();
}

}  // namespace qvx
