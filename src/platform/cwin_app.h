#pragma once

#include "platform/export.h"

/// Application object of the host framework: profile access. It holds nothing: settings are the host's.
class QVXFEM_API CWinApp
{
public:
    virtual ~CWinApp();
    /// Machine setting of the host (HostServices::ProfileInteger).
    int GetProfileInt(const wchar_t* section, const wchar_t* key, int defaultValue) const;
};

/// The library's own application object.
class QVXFEM_API CqvxFEMApp : public CWinApp
{
};

/// The one application object of the process.
QVXFEM_API CqvxFEMApp& AfxGetApp();
