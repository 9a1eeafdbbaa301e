#pragma once

#include "platform/host_services.h"

namespace qvx::fuzz {

/// Host that says nothing, installed on construction: a million inputs would print a million boxes.
class QuietHost : public HostServices
{
public:
    QuietHost();

    int MessageBox(const std::wstring& text, unsigned flags) override;
    int ProfileInteger(const std::wstring& section, const std::wstring& key, int defaultValue) override;
    void DebugOutput(const std::wstring& text) override;
};

/// Ends the program, as a finding of the fuzzer, when a property of the code under test does not hold.
void Require(bool holds, const char* property);

}  // namespace qvx::fuzz
