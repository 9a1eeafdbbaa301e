#include "findings.h"

#include <algorithm>
#include <initializer_list>

#include <fmt/format.h>

#include "platform/cstring.h"

namespace qvx::app {
namespace {

constexpr std::size_t kTimeWidth = 11;         // "[HH:MM:SS] " before a list line
constexpr std::size_t kMostDetails = 1000000;  // kept of one finding

enum EngineMessage : UINT { kListLine = 1124, kStatusLine = 1126 };
enum FactorizationMessage : UINT { kPercent = 1124 };

std::string TextOf(std::uintptr_t buffer)
{
    const auto* text = reinterpret_cast<const wchar_t*>(buffer);
    return text == nullptr ? std::string() : ToUtf8(text);
}

bool BeginsWithOneOf(const std::string& text, std::initializer_list<const char*> beginnings)
{
    return std::any_of(beginnings.begin(), beginnings.end(), [&](const char* b) { return text.starts_with(b); });
}

// Entries that tell of the course of a run, not of the model.
bool IsCourse(const std::string& entry)
{
    if (BeginsWithOneOf(entry, {"CHECKING ", "CHECK ", "time spent on ", "total time ", "Solving...", "PROCESS ",
                                "Total number of "}))
        return true;
    for (const char* ending : {" - OK", "...", "%", ";  "})
        if (entry.ends_with(ending))
            return true;
    return std::all_of(entry.begin(), entry.end(), [](char c) { return c == ' ' || c == '-' || c == '\r'; });
}

// Questions of the input check whose lines bear no other mark than a start does. Its other questions repeat a warning.
bool IsQuestion(const std::string& text, const std::string& status)
{
    return status == "..." &&
           BeginsWithOneOf(text, {"Duplicate nodes are found", "Excessive member length", "Excessive shell length",
                                  "Maximum nonlinear iterations is less than 2"});
}

// A question in one line, without its last sentence: it counts as answered.
std::string Statement(std::string question)
{
    if (const std::size_t asked = question.find("\nDo you want"); asked != std::string::npos)
        question.erase(asked);
    std::replace(question.begin(), question.end(), '\n', ' ');
    return question;
}

// Entries that follow the line they belong to.
bool IsAfterword(const std::string& entry)
{
    return entry.ends_with(" duplicate nodes are found in the model.") ||
           BeginsWithOneOf(entry, {"Self weight load case not valid", "No valid combination defined.",
                                   "The model contains nonlinear load combinations or elements."});
}

// The first half of a warning that comes in two lines.
bool IsFirstHalf(const std::string& text)
{
    return text.starts_with("The model contains elements with stiffness modifications or cracking factors.");
}

}  // namespace

void Findings::TakeLine(const std::string& text, const std::string& status)
{
    Expect(status.empty() ? text : text + " - " + status, text);
    const bool isError = status == "NOT OK" || status == "ERROR";
    const bool isQuestion = IsQuestion(text, status);
    const bool isWarning = status == "WARNING" || status == "NOT SURE" || isQuestion;
    if (isError || isWarning) {
        ++(isError ? errors_ : warnings_);
        Close(isError ? "error: " : "warning: ", isQuestion ? Statement(text) : text);
    } else if (IsFirstHalf(text)) {
        AddDetail(Open(), text);
    }
}

// Details that say no more than the line do not stay.
void Findings::Close(const std::string& severity, const std::string& text)
{
    Finding& finding = Open();
    finding.nDetails -= std::erase(finding.details, text);
    finding.text = severity + text;
}

void Findings::AddDetail(Finding& finding, const std::string& detail)
{
    if (++finding.nDetails <= kMostDetails)
        finding.details.push_back(detail);
}

void Findings::TakeStatus(const std::string& text)
{
    Expect(text, text);
}

// The log repeats what is posted, each line of it as an entry here.
void Findings::Expect(const std::string& echo, const std::string& beginning)
{
    echo_.clear();
    for (std::size_t first = 0; first <= echo.size();) {
        const std::size_t last = std::min(echo.find('\n', first), echo.size());
        echo_.push_back(echo.substr(first, last - first));
        first = last + 1;
    }
    echoBeginning_ = beginning.substr(0, beginning.find('\n'));
}

void Findings::TakeLogEntry(const std::string& entry)
{
    const bool isEcho = std::find(echo_.begin(), echo_.end(), entry) != echo_.end() ||
                        (!echoBeginning_.empty() && entry.starts_with(echoBeginning_));
    if (isEcho || IsCourse(entry))
        return;
    const bool belongsToTheLast = IsAfterword(entry) && !findings_.empty() && !findings_.back().text.empty();
    AddDetail(belongsToTheLast ? findings_.back() : Open(), entry);
}

Findings::Finding& Findings::Open()
{
    if (findings_.empty() || !findings_.back().text.empty())
        findings_.emplace_back();
    return findings_.back();
}

std::vector<std::string> Findings::Lines(std::size_t mostDetails) const
{
    std::vector<std::string> lines;
    for (const Finding& finding : findings_) {
        const std::size_t nShown = std::min(mostDetails, finding.details.size());
        if (!finding.text.empty())
            lines.push_back(finding.text);
        const char* indent = finding.text.empty() ? "" : "    ";
        for (std::size_t i = 0; i < nShown; ++i)
            lines.push_back(indent + finding.details[i]);
        if (nShown < finding.nDetails)
            lines.push_back(fmt::format("{}... and {} more", indent, finding.nDetails - nShown));
    }
    return lines;
}

int FactorizationWindow::PostMessageW(UINT message, WPARAM wParam, LPARAM)
{
    if (message == kPercent)
        progress_.ShowStatus(fmt::format("{}%", wParam));
    return 1;
}

int RunWindow::PostMessageW(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == kListLine) {
        std::string text = TextOf(wParam);
        if (text.size() >= kTimeWidth && text.front() == '[')
            text.erase(0, kTimeWidth);
        const std::string status = TextOf(static_cast<std::uintptr_t>(lParam));
        findings_.TakeLine(text, status);
        progress_.ShowStep(text, status);
    } else if (message == kStatusLine) {
        const std::string text = TextOf(wParam);
        findings_.TakeStatus(text);
        progress_.ShowStatus(text);
    }
    return 1;
}

}  // namespace qvx::app
