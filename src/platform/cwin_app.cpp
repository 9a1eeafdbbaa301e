#include "platform/cwin_app.h"

#include <cassert>

#include "platform/host_services.h"

CWinApp::~CWinApp() = default;

int CWinApp::GetProfileInt(const wchar_t* section, const wchar_t* key, int defaultValue) const
{
    assert(section != nullptr && key != nullptr);
    return qvx::Host().ProfileInteger(section, key, defaultValue);
}

CqvxFEMApp& AfxGetApp()
{
    // Made on first use: a host may ask from the constructor of a global of its own.
    static CqvxFEMApp application;
    return application;
}
