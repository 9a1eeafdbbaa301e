#include "support/recording_host.h"

#include <algorithm>
#include <cwctype>

namespace qvx::test {

namespace {

std::wstring WithoutTime(const std::wstring& line)
{
    constexpr std::size_t kPrefix = 11;  // "[HH:MM:SS] "
    const bool hasTime = line.size() >= kPrefix && line[0] == L'[' && line[9] == L']' && line[10] == L' ';
    return hasTime ? line.substr(kPrefix) : line;
}

std::wstring TextAt(std::uintptr_t buffer)
{
    return buffer == 0 ? std::wstring() : std::wstring(reinterpret_cast<const wchar_t*>(buffer));
}

}  // namespace

RecordingHost::RecordingHost() : previous_(SetHostServices(this)) {}

RecordingHost::~RecordingHost()
{
    SetHostServices(previous_);
}

std::vector<std::wstring> RecordingHost::BoxTexts() const
{
    std::vector<std::wstring> texts;
    for (const Box& box : boxes)
        texts.push_back(box.text);
    return texts;
}

int RecordingHost::MessageBox(const std::wstring& text, unsigned flags)
{
    boxes.push_back({text, flags});
    if (answers.empty())
        return (flags & 0xF) == kMbYesNo ? kIdYes : kIdOk;
    const int answer = answers.front();
    answers.pop_front();
    return answer;
}

bool RecordingHost::IsAbortKeyDown()
{
    ++abortKeyLooks;
    return isAbortKeyDown || (abortKey && abortKey()) || (looksUntilAbort >= 0 && abortKeyLooks > looksUntilAbort);
}

int RecordingHost::ProfileInteger(const std::wstring& section, const std::wstring& key, int defaultValue)
{
    const auto found = profile.find({section, key});
    return found == profile.end() ? defaultValue : found->second;
}

std::wstring RecordingHost::ExecutableFolder()
{
    return executableFolder.empty() ? HostServices::ExecutableFolder() : executableFolder;
}

std::wstring RecordingHost::CurrentFolder()
{
    return currentFolder.empty() ? HostServices::CurrentFolder() : currentFolder;
}

bool RecordingHost::DeleteFile(const std::wstring& path)
{
    deletedFiles.push_back(path);
    return HostServices::DeleteFile(path);
}

bool RecordingWindow::HasLine(const std::wstring& text, const std::wstring& status) const
{
    return std::find(lines.begin(), lines.end(), Line{text, status}) != lines.end();
}

int RecordingWindow::PostMessageW(UINT message, WPARAM wParam, LPARAM lParam)
{
    messages.push_back(message);
    const std::wstring text = message == 1125 ? std::wstring() : TextAt(wParam);
    if (message == 1124) {
        rawTexts.push_back(text);
        lines.push_back({WithoutTime(text), TextAt(static_cast<std::uintptr_t>(lParam))});
    } else if (message == 1126) {
        statusLines.push_back(text);
    }
    return 1;
}

}  // namespace qvx::test
