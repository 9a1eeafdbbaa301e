// Tables of the program, materials, sections, joint patterns and load patterns.

#include <cassert>
#include <utility>

#include "model/jx_struct.h"
#include "model/records/text_fields.h"
#include "platform/host_services.h"
#include "sap2000/sap2000_importer.h"
#include "tools/section_constants.h"

using qvx::ImportLossKind;

namespace {

constexpr double kPi = 3.141592654;

// Record 1 of each kind is the default record that the model holds already.
constexpr int kFirstImportedId = 2;

// The depth t3 lies along local z, the width t2 along local y: right for frames whose depth stands upright, as our
// local z does at angle 0 (test BeamsStandOnEdgeWithoutALocalAxesTable).
void SetRectangle(jxSect& section, double t3, double t2)
{
    section.dim[0] = t3;
    section.dim[1] = t2;
    section.Iz = t2 * t2 * t2 * t3 / 12;
    section.Iy = t3 * t3 * t3 * t2 / 12;
    section.J = calc_rect_J(t3, t2);
    section.A = t2 * t3;
    section.Ay = section.Az = section.A / 1.2;  // shear coefficient of a rectangle: 6/5
}

void SetCircle(jxSect& section, double d)
{
    section.dim[0] = section.dim[1] = d;
    section.Iz = section.Iy = d * d * d * d * kPi * 0.015625;  // pi d^4 / 64
    // Polar moment of a circle, which is its torsion constant exactly.
    section.J = 2 * section.Iz;
    section.A = d * d * kPi * 0.25;
    section.Ay = section.Az = 0.9 * section.A;  // shear coefficient of a circle: 10/9
}

// A quoted value whole, blanks included, without its quotes: "KN, m, C".
CString QuotedItem(const CString& line, const wchar_t* key)
{
    const CString start = CString(key) + L"=\"";
    const int at = line.Find(start);
    if (at < 0)
        return {};
    const int first = at + start.GetLength();
    const int last = line.Find(L'"', first);
    return last < 0 ? CString() : line.Mid(first, last - first);
}

// Load case type of a design type, null for one that is not among them.
const wchar_t* CaseType(const CString& designType)
{
    constexpr std::pair<const wchar_t*, const wchar_t*> kTypes[] = {
        {L"Dead", L"Dead-D"}, {L"Live", L"Live-L"}, {L"Roof Live", L"RoofLive-Lr"},
        {L"Snow", L"Snow-S"}, {L"Wind", L"Wind-W"}, {L"Quake", L"Earthquake-E"},
    };
    for (const auto& [name, type] : kTypes)
        if (designType.CompareNoCase(name) == 0)
            return type;
    return nullptr;
}

}  // namespace

void CSap2000Importer::Read_PROGRAM_CONTROL(std::istream& stream, char* buffer, CString& line)
{
    if (!ReadLine(stream, buffer, line) || line.IsEmpty() || IsTableHeaderLine(line))
        return;
    version_ = GetSap2000LineItemInt(line, L"Version");
    fileUnits_ = QuotedItem(line, L"CurrUnits");
    // Told and read all the same: most tables have kept their keys.
    if (version_ < 15)
        AfxMessageBox(L"Your .s2k file version number is older than 15.  Data may not be imported correctly");
}

void CSap2000Importer::Read_MATERIAL_PROPERTIES_02_BASIC_MECHANICAL_PROPERTIES(std::istream& stream, char* buffer,
                                                                               CString& line)
{
    int id = kFirstImportedId;
    ForEachRow(stream, buffer, line, [&] {
        const CString name = GetSap2000LineItem(line, L"Material");
        NoteCutName(name);
        jxMat material;
        material.id = id++;
        SetText(material.label, name.Text());
        material.E = GetSap2000LineItemDouble(line, L"E1");
        material.nu = GetSap2000LineItemDouble(line, L"U12");
        material.Wc = GetSap2000LineItemDouble(line, L"UnitWeight");
        material.Tc = GetSap2000LineItemDouble(line, L"A1");
        model_->materials.push_back(material);
        materials_[name] = material;
    });
}

void CSap2000Importer::Read_FRAME_SECTION_PROPERTIES_01_GENERAL(std::istream& stream, char* buffer, CString& line)
{
    int id = kFirstImportedId;
    ForEachRow(stream, buffer, line, [&] {
        const CString shape = GetSap2000LineItem(line, L"Shape");
        const CString name = GetSap2000LineItem(line, L"SectionName");
        const double t3 = GetSap2000LineItemDouble(line, L"t3");
        jxSect section;
        if (shape.CompareNoCase(L"Rectangular") == 0)
            SetRectangle(section, t3, GetSap2000LineItemDouble(line, L"t2"));
        else if (shape.CompareNoCase(L"Circle") == 0)
            SetCircle(section, t3);
        else {
            if (!name.IsEmpty())
                Note(ImportLossKind::SkippedShape, shape);
            return;
        }
        NoteCutName(name);
        section.id = id++;
        SetText(section.label, name.Text());
        model_->sections.push_back(section);
        frameSections_[name] = section;
        sectionMaterial_[name] = GetSap2000LineItem(line, L"Material");
    });
}

void CSap2000Importer::Read_AREA_SECTION_PROPERTIES(std::istream& stream, char* buffer, CString& line)
{
    int id = kFirstImportedId;
    ForEachRow(stream, buffer, line, [&] {
        const CString name = GetSap2000LineItem(line, L"Section");
        NoteCutName(name);
        jxThick thickness;
        thickness.id = id++;
        SetText(thickness.label, name.Text());
        thickness.t = GetSap2000LineItemDouble(line, L"Thickness");
        model_->thicknesses.push_back(thickness);
        areaSections_[name] = thickness;
        areaSectionMaterial_[name] = GetSap2000LineItem(line, L"Material");
    });
}

void CSap2000Importer::Read_JOINT_PATTERN_ASSIGNMENTS(std::istream& stream, char* buffer, CString& line)
{
    ForEachRow(stream, buffer, line, [&] {
        const CString pattern = GetSap2000LineItem(line, L"Pattern");
        NoteCutName(pattern);
        jointPatterns_[GetSap2000LineItem(line, L"Joint") + L"***" + pattern] =
            GetSap2000LineItemDouble(line, L"Value");
    });
}

void CSap2000Importer::Read_LOAD_PATTERN_DEFINITIONS(std::istream& stream, char* buffer, CString& line)
{
    int id = kFirstImportedId;
    ForEachRow(stream, buffer, line, [&] {
        const CString name = GetSap2000LineItem(line, L"LoadPat");
        const CString designType = GetSap2000LineItem(line, L"DesignType");
        NoteCutName(name);
        const wchar_t* type = CaseType(designType);
        if (type == nullptr)
            Note(ImportLossKind::UnknownDesignType, designType);
        // The engine has one load case with self weight, and the file may have several with factors: none is guessed.
        if (GetSap2000LineItemDouble(line, L"SelfWtMult") != 0)
            Note(ImportLossKind::SelfWeight, name);
        jxLoadCase loadCase;
        loadCase.id = id++;
        SetText(loadCase.label, name.Text());
        SetText(loadCase.type, type != nullptr ? type : L"Dead-D");
        model_->loadCases.push_back(loadCase);
        model_->OnAddMoreLoadCase();
    });
    assert(model_->caseLoads.size() >= model_->loadCases.size() && "each case has its loads");
    // The default case is found by its name too.
    for (std::size_t i = 0; i < model_->loadCases.size(); ++i)
        loadPatterns_[model_->loadCases[i].label] = static_cast<int>(i);
}
