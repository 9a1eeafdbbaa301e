#include "terminal.h"

#include <algorithm>
#include <iostream>

#include <unistd.h>

#include "bar_tables.h"
#include "interrupt.h"
#include "platform/visible_text.h"
#include "streams.h"

namespace qvx::app {
namespace {

constexpr std::size_t kLineWidth = 79;
constexpr auto kDrawInterval = std::chrono::milliseconds(100);
// "text - status"; a status of "..." marks a start.
std::string Joined(const std::string& text, const std::string& status)
{
    if (status.empty())
        return text;
    return status == "..." ? text + " ..." : text + " - " + status;
}

}  // namespace

bool IsTerminal(std::FILE* stream)
{
    return isatty(fileno(stream)) != 0;
}

Progress::Progress(Telling telling)
    : telling_(telling == Telling::Progress && !IsTerminal(stderr) ? Telling::Nothing : telling)
{
}

Progress::~Progress()
{
    Clear();
}

void Progress::ShowStep(const std::string& text, const std::string& status)
{
    if (telling_ == Telling::Lines)
        Say(Joined(text, status));
    if (telling_ != Telling::Progress)
        return;
    step_ = text;
    status_.clear();
    Draw(status != "OK");
}

void Progress::ShowStatus(const std::string& text)
{
    status_ = text;
    if (telling_ == Telling::Progress && !step_.empty())
        Draw(false);
}

void Progress::Say(const std::string& line)
{
    Clear();
    for (std::size_t first = 0; first <= line.size();) {  // the line breaks of a message are meant
        const std::size_t last = std::min(line.find('\n', first), line.size());
        PrintError(VisibleText(std::string_view(line).substr(first, last - first)));
        first = last + 1;
    }
}

void Progress::Clear()
{
    if (!isDrawn_)
        return;
    std::fputs("\r\x1b[K", stderr);
    std::fflush(stderr);
    isDrawn_ = false;
}

// Redrawn ten times a second at most: kernels report far more often than anybody can read.
void Progress::Draw(bool isDue)
{
    const auto now = std::chrono::steady_clock::now();
    if (!isDue && now - drawnAt_ < kDrawInterval)
        return;
    drawnAt_ = now;
    std::string line = VisibleText(status_.empty() ? step_ : step_ + "  " + status_);
    // One line of any terminal: a wrapped one could not be taken back.
    if (line.size() > kLineWidth)
        line.resize(kLineWidth);
    std::fputs(("\r\x1b[K" + line).c_str(), stderr);
    std::fflush(stderr);
    isDrawn_ = true;
}

TerminalHost::TerminalHost(Progress& progress, bool isInteractive, int threads, int sparseBackend)
    : progress_(progress), isInteractive_(isInteractive), threads_(threads), sparseBackend_(sparseBackend),
      previous_(SetHostServices(this))
{
}

TerminalHost::~TerminalHost()
{
    SetHostServices(previous_);
}

int TerminalHost::MessageBox(const std::wstring& text, unsigned flags)
{
    // The engine asks with Yes and No only.
    const bool isQuestion = (flags & kMbYesNo) != 0;
    if (!isQuestion && IsAboutMissingBarFile(text))
        return kIdOk;
    // A model is constructed more than once in a run and would tell the same about a missing file each time.
    const bool isRepeated = !isQuestion && text == lastText_;
    lastText_ = text;
    if (!isQuestion) {
        if (!isRepeated)
            progress_.Say(ToUtf8(text));
        return kIdOk;
    }
    if (IsInterrupted())
        return kIdYes;  // Ctrl-C is the answer to the question whether to abort
    if (isInteractive_)
        return Ask(ToUtf8(text));
    progress_.Say(ToUtf8(text) + " Yes.");
    return kIdYes;
}

// Asks until the answer is clear; the end of the input is a No.
int TerminalHost::Ask(const std::string& question)
{
    for (;;) {
        progress_.Clear();
        std::fputs((VisibleText(std::string_view(question)) + " [y/n] ").c_str(), stderr);
        std::fflush(stderr);
        std::string answer;
        if (!std::getline(std::cin, answer))
            return kIdNo;
        if (answer == "y" || answer == "Y" || answer == "yes")
            return kIdYes;
        if (answer == "n" || answer == "N" || answer == "no")
            return kIdNo;
    }
}

bool TerminalHost::IsAbortKeyDown()
{
    return IsInterrupted();
}

int TerminalHost::ProfileInteger(const std::wstring& section, const std::wstring& key, int defaultValue)
{
    // What the command line names stands over the preferences of the machine; everything else is asked of them.
    if (threads_ > 0 && section == L"Preferences" && key == L"SolverCPUs")
        return threads_;
    if (sparseBackend_ > 0 && section == L"Preferences" && key == L"SparseBackend")
        return sparseBackend_;
    return HostServices::ProfileInteger(section, key, defaultValue);
}

}  // namespace qvx::app
