#include <algorithm>
#include <cassert>
#include <vector>

#include "model/input_check.h"

namespace qvx {

namespace {

bool IsRigidLink(const jxSect& s)
{
    return CompareNoCase(s.label, L"RIGID_LINK") == 0;
}

// A value of a record and the range in which it may lie.
struct Property
{
    const wchar_t* field;
    double value;
    bool isValid;
    const wchar_t* rule;
};

// Poisson's ratio 0.5 would divide by zero in a solid (1 - 2 nu); negative ones exist and are no building material.
std::vector<Property> PropertiesOf(const jxMat& m)
{
    return {{L"E", m.E, m.E > 0, L"above 0"},
            {L"nu", m.nu, m.nu >= 0 && m.nu < 0.5, L"at least 0 and below 0.5"},
            {L"Wc", m.Wc, m.Wc >= 0, L"at least 0"},
            {L"Tc", m.Tc, m.Tc > 0, L"above 0"}};
}

// The reserved section of rigid links gets its values below.
std::vector<Property> PropertiesOf(const jxSect& s)
{
    if (IsRigidLink(s))
        return {};
    return {{L"A", s.A, s.A > 0, L"above 0"},        {L"Ay", s.Ay, s.Ay >= 0, L"at least 0"},
            {L"Az", s.Az, s.Az >= 0, L"at least 0"}, {L"Iz", s.Iz, s.Iz > 0, L"above 0"},
            {L"Iy", s.Iy, s.Iy > 0, L"above 0"},     {L"J", s.J, s.J > 0, L"above 0"}};
}

std::vector<Property> PropertiesOf(const jxThick& t)
{
    return {{L"t", t.t, t.t > 0, L"above 0"}};
}

/// Logs every invalid record; true when there is none.
template <class Record>
bool LogInvalid(InputCheck& check, const std::vector<Record>& records)
{
    bool areValid = true;
    for (const Record& r : records) {
        const std::vector<Property> properties = PropertiesOf(r);
        if (std::all_of(properties.begin(), properties.end(), [](const Property& p) { return p.isValid; }))
            continue;
        check.Log(L"%s %d [%s]: invalid properties", Record::name(), r.id, r.label);
        areValid = false;
    }
    return areValid;
}

// Refuses the model when a record is invalid, with one finding for each field that is out of its range: the fault is
// mostly the same in many records.
template <class Record>
void CheckRecords(InputCheck& check, const std::vector<Record>& records, FindingCode code, const wchar_t* text)
{
    if (LogInvalid(check, records))
        return;
    check.RefuseOnly(text);
    check.model.LogLine(text);
    // Property by property and not record by record, so that one fault of a hundred records is one finding.
    const std::size_t nProperties = PropertiesOf(Record{}).size();
    for (std::size_t k = 0; k < nProperties; ++k) {
        CString fault;
        for (const Record& r : records) {
            const std::vector<Property> properties = PropertiesOf(r);
            assert((properties.empty() || properties.size() == nProperties) && "the same properties of every record");
            if (properties.empty() || properties[k].isValid)
                continue;
            const Property& p = properties[k];
            if (fault.IsEmpty())
                fault.Format(L"%s: %s = %g of %s %d \"%s\", must be %s", text, p.field, p.value, Record::name(), r.id,
                             r.label, p.rule);
            check.AboutField(ToUtf8(p.field));
            check.About(Record::name(), r.id);
        }
        if (!fault.IsEmpty())
            check.Find(code, fault.Text());
    }
}

// The sections that mark members as rigid links are as stiff as the model's stiffest section makes them.
void FillRigidLinkSections(CjxStruct& m)
{
    const jxSect rigid = m.GetRigidLinkSection();
    for (jxSect& s : m.sections) {
        if (!IsRigidLink(s))
            continue;
        // Its own id, position, selection and label stay: members refer to them.
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
    CheckRecords(check, m.materials, FindingCode::MaterialInvalid, L"Invalid material properties found");
    check.Heading(L"CHECKING SECTIONS");
    CheckRecords(check, m.sections, FindingCode::SectionInvalid, L"Invalid section properties found");
    FillRigidLinkSections(m);
    check.Heading(L"CHECKING THICKNESSES");
    CheckRecords(check, m.thicknesses, FindingCode::ThicknessInvalid, L"Invalid thickness properties found");
    LogInvalid(check, m.namedLengths);  // of the host: told, but no reason to refuse
}

}  // namespace qvx
