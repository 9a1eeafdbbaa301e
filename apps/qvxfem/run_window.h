#pragma once

#include "platform/cwnd.h"
#include "terminal.h"

#include <optional>
#include <string>

namespace qvx::app {

/// A list line of the engine, without its time.
struct ListLine
{
    std::string text;
    std::string status;
};

/// The list line that a message to a solver window holds, if it does.
std::optional<ListLine> ListLineOf(UINT message, WPARAM wParam, LPARAM lParam);

/// The solver window of a run: shows on the progress line what the engine posts.
class RunWindow : public CWnd
{
public:
    explicit RunWindow(Progress& progress) : progress_(progress) {}

    int PostMessageW(UINT message, WPARAM wParam, LPARAM lParam) override;
    void* GetSafeHwnd() const override { return const_cast<RunWindow*>(this); }
    void BringWindowToTop() override {}

private:
    Progress& progress_;
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

}  // namespace qvx::app
