#pragma once

#include <string>

namespace qvx {

/// Collects where the usual rules of a design and the consistent ones give figures of one member that differ by more than
/// 1 %, and keeps the place where they differ most.
class RuleDifference
{
public:
    /// @param what   "top steel"
    /// @param unit   "in^2"; empty for a ratio
    /// @param place  "at 0.5 of its length"
    void Compare(const wchar_t* what, const wchar_t* unit, const std::wstring& place, double usual, double consistent);

    /// "top steel 1.2 in^2 at 0.5 of its length, 0 in^2 with bConsistentDesign 1 (3 figures differ)"; empty when none does.
    std::wstring Text() const;

private:
    int count_ = 0;
    double most_ = 0;  ///< difference over the larger figure
    std::wstring text_;
};

/// "at 0.5 of its length"
std::wstring AtDistance(double x);

}  // namespace qvx
