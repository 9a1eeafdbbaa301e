// The reserved section by which a host marks members as rigid links.

#include <algorithm>
#include <cassert>

#include "model/jx_struct.h"

namespace {

constexpr const wchar_t* kRigidLink = L"RIGID_LINK";
constexpr double kStiffening = 100000.0;  // a rigid link over the stiffest ordinary section

bool IsRigidLink(const jxSect& s)
{
    return qvx::CompareNoCase(s.label, kRigidLink) == 0;
}

}  // namespace

jxSect CjxStruct::GetRigidLinkSection() const
{
    jxSect rigid;
    rigid.id = -1;
    double largestI = 0;
    double largestA = 0;
    for (const jxSect& s : sections) {
        if (IsRigidLink(s)) {
            rigid = s;
            continue;
        }
        largestI = std::max({largestI, s.Iz, s.Iy});
        largestA = std::max(largestA, s.A);
    }
    assert(largestA >= 0 && largestI >= 0);
    rigid.A = rigid.Ay = rigid.Az = largestA * kStiffening;
    rigid.Iz = rigid.Iy = rigid.J = largestI * kStiffening;
    return rigid;
}

bool CjxStruct::SafeCreateRigidLinkSection()
{
    if (std::any_of(sections.begin(), sections.end(), IsRigidLink))
        return false;
    const auto isTaken = [this](int id) {
        return std::any_of(sections.begin(), sections.end(), [id](const jxSect& s) { return s.id == id; });
    };
    jxSect rigid;
    rigid.id = static_cast<int>(sections.size()) + 1;
    if (isTaken(rigid.id))  // ids with gaps
        rigid.id = std::max_element(sections.begin(), sections.end())->id + 1;
    SetText(rigid.label, kRigidLink);
    sections.insert(std::upper_bound(sections.begin(), sections.end(), rigid), rigid);
    return true;
}
