#include "model/find_record.h"

#include <cassert>

#include "model/input_check.h"

namespace qvx {

namespace {

bool IsReleased(const wchar_t* mask, int dof)
{
    assert(mask != nullptr && dof >= kX && dof < kDofCount);
    return mask[dof] == L'1';
}

// Whether what is released in one plane leaves the member no two holds to carry a force across itself. Condensing such
// releases divides by a pivot that is zero or its round-off: what comes out is no stiffness of the released member, and
// its end forces balance no load.
bool IsLooseInPlane(const jxRels& rels, int shear, int moment)
{
    // A plane has four end freedoms and two rigid motions; what is left must hold both.
    const bool isStartSheared = IsReleased(rels.start, shear);
    const bool isEndSheared = IsReleased(rels.end, shear);
    const int released = isStartSheared + isEndSheared + IsReleased(rels.start, moment) + IsReleased(rels.end, moment);
    return released > 2 || (isStartSheared && isEndSheared);
}

bool IsReleasedTwice(const jxRels& rels, int dof)
{
    return IsReleased(rels.start, dof) && IsReleased(rels.end, dof);
}

}  // namespace

void CheckReleases(InputCheck& check)
{
    const CjxStruct& m = check.model;
    FindingOfMany across(check, FindingCode::MemberLooseAcross);
    FindingOfMany along(check, FindingCode::MemberReleasedTwice);
    for (const jxRels& rels : m.releases) {
        if (FindOrNull(m.beams, rels.id) == nullptr)
            continue;
        if (IsLooseInPlane(rels, kY, kOZ) || IsLooseInPlane(rels, kZ, kOY))
            across.Add(jxBm::name(), rels.id, [] {
                return L"members cannot carry a force across themselves, with shear released at both ends or three of "
                       L"shear and moment in one plane; their forces are no results";
            });
        // Along and about its axis a member has one stiffness term with two ends: with both released it would be loose,
        // so the run keeps them, and the author is told.
        if (IsReleasedTwice(rels, kX) || IsReleasedTwice(rels, kOX))
            along.Add(jxBm::name(), rels.id, [] {
                return L"axial force or torsion is released at both ends; the members keep that stiffness";
            });
    }
}

}  // namespace qvx
