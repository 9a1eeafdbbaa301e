#include <ctime>

#include <fmt/chrono.h>

#include "model/message_recorder.h"
#include "platform/host_services.h"

namespace {

enum SolverMessage : UINT { kListLine = 1124, kStatusLine = 1126 };

constexpr unsigned kYesNoQuestion = qvx::kMbSystemModal | qvx::kMbIconQuestion | qvx::kMbYesNo;

WPARAM TextParameter(const CString* text)
{
    return reinterpret_cast<WPARAM>(text->GetString());
}

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

void CjxStruct::set_solver_wnds(CWnd* window)
{
    solverWindow_ = window;
    {
        const std::lock_guard guard(counterLock_);
        messageCounter_ = 0;
    }
    bAborted_ = false;
    status_msg(L"");
}

void CjxStruct::clear_solver_wnds()
{
    solverWindow_ = nullptr;
}

bool CjxStruct::Record(int kind, const wchar_t* text, const wchar_t* status)
{
    if (recording_ == nullptr)
        return false;
    recording_->push_back({static_cast<qvx::RecordedMessage::Kind>(kind), text == nullptr ? L"" : text,
                           status == nullptr ? L"" : status});
    return true;
}

void qvx::MessageRecorder::Replay(CjxStruct& model, const std::vector<RecordedMessage>& messages)
{
    for (const auto& [kind, text, status] : messages) {
        if (kind == RecordedMessage::ListLine)
            model.list_msg(text.c_str(), status.c_str());
        else if (kind == RecordedMessage::StatusLine)
            model.status_msg(text.c_str());
        else
            model.LogLine(text.c_str());
    }
}

void CjxStruct::list_msg(const wchar_t* text, const wchar_t* status)
{
    if (Record(qvx::RecordedMessage::ListLine, text, status))
        return;
    if (MayPost()) {
        CString* line = GetNextCounterString();
        CString* ending = GetNextCounterString();
        *line = CString(fmt::format("[{:%H:%M:%S}] ", fmt::localtime(std::time(nullptr))).c_str()) + text;
        *ending = CString(status);
        solverWindow_->PostMessageW(kListLine, TextParameter(line), static_cast<LPARAM>(TextParameter(ending)));
    }
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
    if (Record(qvx::RecordedMessage::StatusLine, text, L""))
        return;
    if (MayPost()) {
        CString* line = GetNextCounterString();
        *line = CString(text);
        solverWindow_->PostMessageW(kStatusLine, TextParameter(line), 0);
    }
    LogLine(text);
}

void CjxStruct::peek_msg()
{
    if (bAborted_ || !qvx::Host().IsAbortKeyDown())
        return;
    if (AfxMessageBox(L"Do you want to abort the solution?", kYesNoQuestion) != qvx::kIdYes)
        return;
    constexpr const wchar_t* kAborted = L"SOLUTION ABORTED!";
    bAborted_ = true;
    list_msg(kAborted, L"");
    status_msg(kAborted);
    throw jxException(kAborted);
}

CString* CjxStruct::GetNextCounterString()
{
    const std::lock_guard guard(counterLock_);
    std::unique_ptr<CString>& text = counterStrings_[++messageCounter_];
    if (!text)
        text = std::make_unique<CString>();
    return text.get();
}

void CjxStruct::ClearCounterString()
{
    counterStrings_.clear();
}

std::ofstream& CjxStruct::GetFileLog()
{
    fileLog << fmt::format("[{:%Y-%m-%d %H:%M:%S}]: ", fmt::localtime(std::time(nullptr)));
    return fileLog;
}

void CjxStruct::LogLine(const wchar_t* text)
{
    if (Record(qvx::RecordedMessage::LogEntry, text, L""))
        return;
    if (fileLog.is_open())
        GetFileLog() << text << std::endl;
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
