#pragma once

#include <cstdint>

#include "platform/export.h"

using UINT = unsigned int;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;

/// A window of the host, as far as the engine needs one: it posts messages to it. A host derives from it.
class QVXFEM_API CWnd
{
public:
    virtual ~CWnd();
    /// Queues a message and returns at once; nonzero when it was queued.
    virtual int PostMessageW(UINT message, WPARAM wParam, LPARAM lParam) = 0;
    /// Handle of the window; null when it was closed.
    virtual void* GetSafeHwnd() const = 0;
    /// Shows the window above others; nothing when that is not possible.
    virtual void BringWindowToTop() = 0;
};
