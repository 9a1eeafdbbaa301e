#include "model/input_check.h"

#include <cassert>

namespace qvx {

namespace {

bool IsRigidLink(const jxSect& s)
{
    return CompareNoCase(s.label, L"RIGID_LINK") == 0;
}

bool IsValid(const jxMat& m)
{
    return m.E > 0 && m.nu >= 0 && m.nu < 0.5 && m.Wc >= 0 && m.Tc > 0;
}

/// The reserved section of rigid links gets its values below.
bool IsValid(const jxSect& s)
{
    return IsRigidLink(s) || (s.A > 0 && s.Ay >= 0 && s.Az >= 0 && s.Iz > 0 && s.Iy > 0 && s.J > 0);
}

bool IsValid(const jxThick& t)
{
    return t.t > 0;
}

/// Logs every invalid record; true when there is none.
template <class Record>
bool AllValid(InputCheck& check, const std::vector<Record>& records)
{
    bool areValid = true;
    for (const Record& r : records) {
        if (IsValid(r))
            continue;
        check.Log(L"%s %d [%s]: invalid properties", Record::name(), r.id, r.label);
        areValid = false;
    }
    return areValid;
}

/// The sections that mark members as rigid links are as stiff as the model's stiffest section makes them.
void FillRigidLinkSections(CjxStruct& m)
{
    const jxSect rigid = m.GetRigidLinkSection();
    for (jxSect& s : m.sections) {
        if (!IsRigidLink(s))
            continue;
        const jxSect named = s;
        s = rigid;
        s.id = named.id;
        s.no = named.no;
        s.bSelected = named.bSelected;
        SetText(s.label, named.label);
    }
}

}  // namespace

void CheckProperties(InputCheck& check)
{
    CjxStruct& m = check.model;
    check.Heading(L"CHECKING MATERIAL PROPERTIES");
    if (!AllValid(check, m.materials))
        check.Refuse(L"Invalid material properties found");
    check.Heading(L"CHECKING SECTIONS");
    if (!AllValid(check, m.sections))
        check.Refuse(L"Invalid section properties found");
    FillRigidLinkSections(m);
    check.Heading(L"CHECKING THICKNESSES");
    if (!AllValid(check, m.thicknesses))
        check.Refuse(L"Invalid thickness properties found");
    AllValid(check, m.namedLengths);  // of the host: told, but no reason to refuse
}

}  // namespace qvx
