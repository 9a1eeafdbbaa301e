#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/cwnd.h"
#include "terminal.h"

namespace qvx::app {

/// What the engine found worth telling. Its warnings and errors come as list lines; which nodes and members they are
/// about stands in the log alone, mostly before the line that sums them up. A question is a warning here.
class Findings
{
public:
    void TakeLine(const std::string& text, const std::string& status);
    void TakeStatus(const std::string& text);
    void TakeLogEntry(const std::string& entry);

    /// "error: text" and "warning: text", the details before each, indented.
    /// @param mostDetails  shown of one warning or error; the number of the others is told
    std::vector<std::string> Lines(std::size_t mostDetails) const;
    int Errors() const { return errors_; }
    int Warnings() const { return warnings_; }

private:
    struct Finding
    {
        std::string text;                  ///< empty while the details stand open
        std::vector<std::string> details;  ///< the first of them
        std::size_t nDetails = 0;
    };

    Finding& Open();
    void Close(const std::string& severity, const std::string& text);
    static void AddDetail(Finding& finding, const std::string& detail);
    void Expect(const std::string& echo, const std::string& beginning);

    std::vector<Finding> findings_;
    std::vector<std::string> echo_;  ///< list or status line, as the log repeats it
    std::string echoBeginning_;
    int errors_ = 0;
    int warnings_ = 0;
};

/// The progress window of a factorisation: percent on the progress line.
class FactorizationWindow : public CWnd
{
public:
    explicit FactorizationWindow(Progress& progress) : progress_(progress) {}

    int PostMessageW(UINT message, WPARAM wParam, LPARAM lParam) override;
    void* GetSafeHwnd() const override { return const_cast<FactorizationWindow*>(this); }
    void BringWindowToTop() override {}

private:
    Progress& progress_;
};

/// The solver window of a run: shows progress and hands list lines to the findings.
class RunWindow : public CWnd
{
public:
    RunWindow(Progress& progress, Findings& findings) : progress_(progress), findings_(findings) {}

    int PostMessageW(UINT message, WPARAM wParam, LPARAM lParam) override;
    void* GetSafeHwnd() const override { return const_cast<RunWindow*>(this); }
    void BringWindowToTop() override {}

private:
    Progress& progress_;
    Findings& findings_;
};

}  // namespace qvx::app
