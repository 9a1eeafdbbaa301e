#include "design/rule_difference.h"

#include <algorithm>
#include <cmath>

#include "platform/cstring.h"

namespace qvx {

void RuleDifference::Compare(const wchar_t* what, const wchar_t* unit, const std::wstring& place, double usual,
                             double consistent)
{
    constexpr double kWorthTelling = 0.01;
    const double larger = std::max(std::fabs(usual), std::fabs(consistent));
    const double difference = larger > 0 ? std::fabs(usual - consistent) / larger : 0;
    if (!(difference > kWorthTelling))
        return;
    ++count_;
    if (difference <= most_)
        return;
    most_ = difference;
    const wchar_t* space = *unit == 0 ? L"" : L" ";
    CString text;
    text.Format(L"%s %.5g%s%s %s, %.5g%s%s with bConsistentDesign 1", what, usual, space, unit, place.c_str(),
                consistent, space, unit);
    text_ = text.Text();
}

std::wstring RuleDifference::Text() const
{
    return count_ > 1 ? text_ + L" (" + std::to_wstring(count_) + L" figures differ)" : text_;
}

std::wstring AtDistance(double x)
{
    CString text;
    text.Format(L"at %.4g of its length", x);
    return text.Text();
}

}  // namespace qvx
