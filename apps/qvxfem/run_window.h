#pragma once

#include "platform/cwnd.h"
#include "terminal.h"

namespace qvx::app {

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
