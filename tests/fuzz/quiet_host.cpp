#include "quiet_host.h"

#include <cstdio>
#include <cstdlib>

namespace qvx::fuzz {

QuietHost::QuietHost()
{
    SetHostServices(this);
}

int QuietHost::MessageBox(const std::wstring&, unsigned flags)
{
    return (flags & kMbYesNo) != 0 ? kIdYes : kIdOk;
}

int QuietHost::ProfileInteger(const std::wstring&, const std::wstring&, int defaultValue)
{
    return defaultValue;
}

void QuietHost::DebugOutput(const std::wstring&) {}

void Require(bool holds, const char* property)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", property);
    std::abort();
}

}  // namespace qvx::fuzz
