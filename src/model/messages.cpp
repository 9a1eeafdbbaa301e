#include <algorithm>
#include <ctime>
#include <string>
#include <string_view>

#include <fmt/chrono.h>

#include "model/jx_struct.h"
#include "model/run_context.h"
#include "model/solver_window.h"
#include "platform/host_services.h"
#include "platform/visible_text.h"

namespace {

constexpr unsigned kYesNoQuestion = qvx::kMbSystemModal | qvx::kMbIconQuestion | qvx::kMbYesNo;

bool IsEmpty(const wchar_t* text)
{
    return text == nullptr || *text == 0;
}

// "text", separator and status, or the text alone when there is no status.
CString Joined(const wchar_t* text, const wchar_t* separator, const wchar_t* status)
{
    CString line = text;
    if (!IsEmpty(status)) {
        line += separator;
        line += status;
    }
    return line;
}

}  // namespace

qvx::RunContext CjxStruct::Context()
{
    return {.model = *this,
            .window = *window_,
            .threads = solverThreads_,
            .directSolver = directSolver_,
            .convertUnits = [this](const jxUnit& from, const jxUnit& to) { ConvertUnits(from, to); },
            .openProgressWindow =
                factorizationStarted_ == nullptr ? std::function<void()>() : [this] { factorizationStarted_(this); }};
}

void CjxStruct::set_solver_wnds(CWnd* window)
{
    window_->Attach(window);
    status_msg(L"");
}

void CjxStruct::clear_solver_wnds()
{
    window_->Detach();
}

void CjxStruct::list_msg(const wchar_t* text, const wchar_t* status)
{
    // Window and log are told the same thing, one for the user who waits, the other for whoever asks later.
    window_->PostLine(text, status);
    LogLine(Joined(text, L" - ", status));
}

void CjxStruct::list_msg0(const wchar_t* text, const wchar_t* status)
{
    list_msg(text, status);
    LogLine(CString(text) + L" - " + status);
}

void CjxStruct::list_msg_and_log(const wchar_t* text, const wchar_t* status)
{
    list_msg(text, status);
    LogLine(CString(text) + L";  " + status);
}

void CjxStruct::status_msg(const wchar_t* text)
{
    window_->PostStatus(text);
    LogLine(text);
}

void CjxStruct::peek_msg()
{
    // After an abort the run unwinds through many of these: the question is asked once.
    if (window_->IsAborted() || !qvx::Host().IsAbortKeyDown())
        return;
    if (AfxMessageBox(L"Do you want to abort the solution?", kYesNoQuestion) != qvx::kIdYes)
        return;
    constexpr const wchar_t* kAborted = L"SOLUTION ABORTED!";
    window_->Abort();
    list_msg(kAborted, L"");
    status_msg(kAborted);
    throw jxException(kAborted);
}

CString* CjxStruct::GetNextCounterString()
{
    return window_->NextString();
}

void CjxStruct::ClearCounterString()
{
    window_->ClearStrings();
}

std::ofstream& CjxStruct::GetFileLog()
{
    // Local time, as the user's watch has it beside the log.
    fileLog << fmt::format("[{:%Y-%m-%d %H:%M:%S}]: ", fmt::localtime(std::time(nullptr)));
    return fileLog;
}

void CjxStruct::LogLine(const wchar_t* text)
{
    if (!fileLog.is_open())
        return;
    // The line breaks of a message are meant; whatever else of a name would act in a terminal is shown.
    const std::wstring_view all(text);
    std::wstring visible;
    for (std::size_t first = 0; first <= all.size();) {
        const std::size_t last = std::min(all.find(L'\n', first), all.size());
        visible += qvx::VisibleText(all.substr(first, last - first));
        if (last < all.size())
            visible += L'\n';
        first = last + 1;
    }
    // Flushed line by line: the log of a run that the system ended is complete to its last message.
    GetFileLog() << qvx::ToUtf8(visible) << std::endl;
}

int CjxStruct::memcheck(std::ofstream& /*log*/, int kilobytes)
{
    constexpr int kMegabyteBits = 20;
    const qvx::MemoryStatus memory = qvx::Host().Memory();
    const auto show = [this](const wchar_t* label, std::uint64_t megabytes) {
        CString value;
        value.Format(L"%I64d %s", static_cast<long long>(megabytes), L"MB");
        list_msg(label, value);
    };
    show(L"Physical memory total", memory.totalPhysical >> kMegabyteBits);
    show(L"Physical memory available", memory.availablePhysical >> kMegabyteBits);
    show(L"Approximate memory required", static_cast<std::uint64_t>(kilobytes / 1024));
    return 1;
}

int CjxStruct::GetNumberOfCPUs() const
{
    return qvx::Host().ProcessorCount();
}
