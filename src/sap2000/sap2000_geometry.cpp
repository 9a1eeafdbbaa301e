// Tables of joints, frames and areas, and what is assigned to them.

#include <algorithm>
#include <cassert>

#include "model/find_record.h"
#include "model/jx_struct.h"
#include "sap2000/sap2000_importer.h"
#include "tools/leading_number.h"

using qvx::ImportLossKind;

namespace {

constexpr double kPi = 3.141592654;

// Local 2 of the file's frames lies a quarter turn about the member from our local y at angle 0.
constexpr double kAxesOffset = 90.0;  // [deg]

template <class Record>
void SortById(std::vector<Record>& records)
{
    std::stable_sort(records.begin(), records.end());
}

bool IsYes(const CString& item)
{
    return item.CompareNoCase(L"Yes") == 0;
}

bool IsNo(const CString& item)
{
    return item.CompareNoCase(L"No") == 0;
}

constexpr const wchar_t* kDofKeys[kDofCount] = {L"U1", L"U2", L"U3", L"R1", L"R2", L"R3"};

}  // namespace

void CSap2000Importer::Read_JOINT_COORDINATES(std::istream& stream, char* buffer, CString& line)
{
    ForEachRow(stream, buffer, line, [&] {
        jxNd node;
        node.id = GetSap2000LineItemInt(line, L"Joint");
        node.x = GetSap2000LineItemDouble(line, L"GlobalX");
        node.y = GetSap2000LineItemDouble(line, L"GlobalY");
        node.z = GetSap2000LineItemDouble(line, L"GlobalZ");
        // Global coordinates are written beside those of a local system; a file without them has joints in cylindrical
        // or other systems only.
        for (const wchar_t* key : {L"GlobalX", L"GlobalY", L"GlobalZ"})
            if (GetSap2000LineItem(line, key).IsEmpty()) {
                Note(ImportLossKind::JointWithoutGlobal, L"");
                break;
            }
        model_->nodes.push_back(node);
    });
    SortById(model_->nodes);
}

void CSap2000Importer::Read_JOINT_RESTRAINT_ASSIGNMENTS(std::istream& stream, char* buffer, CString& line)
{
    ForEachRow(stream, buffer, line, [&] {
        jxSupt support;
        support.id = GetSap2000LineItemInt(line, L"Joint");
        for (int dof = 0; dof < kDofCount; ++dof)
            support.flag[dof] = IsYes(GetSap2000LineItem(line, kDofKeys[dof])) ? L'1' : L'0';
        model_->supports.push_back(support);
    });
    SortById(model_->supports);
}

void CSap2000Importer::Read_JOINT_SPRING_ASSIGNMENTS_1_UNCOUPLED(std::istream& stream, char* buffer, CString& line)
{
    ForEachRow(stream, buffer, line, [&] {
        jxSpring spring;
        spring.id = GetSap2000LineItemInt(line, L"Joint");
        for (int dof = 0; dof < kDofCount; ++dof)
            spring.k[dof] = GetSap2000LineItemDouble(line, kDofKeys[dof]);
        model_->nodalSprings.push_back(spring);
    });
    SortById(model_->nodalSprings);
}

void CSap2000Importer::Read_CONNECTIVITY_FRAME(std::istream& stream, char* buffer, CString& line)
{
    ForEachRow(stream, buffer, line, [&] {
        if (!IsNo(GetSap2000LineItem(line, L"IsCurved"))) {
            Note(ImportLossKind::DroppedFrame, L"");
            return;
        }
        jxBm beam;
        beam.id = GetSap2000LineItemInt(line, L"Frame");
        beam.material = 1;
        beam.section = 1;
        // Labels of joints are numbers in files of such models; a label that is none reads as 0, and the frame is
        // dropped as one that refers to nothing.
        beam.node1 = qvx::TruncateToInt(GetSap2000LineItemDouble(line, L"JointI"));
        beam.node2 = qvx::TruncateToInt(GetSap2000LineItemDouble(line, L"JointJ"));
        model_->beams.push_back(beam);
    });
    SortById(model_->beams);
}

std::map<int, std::pair<CString, CString>> CSap2000Importer::ReadSectionAssignments(std::istream& stream, char* buffer,
                                                                                    CString& line,
                                                                                    const CString& elementKey,
                                                                                    const CString& sectionKey)
{
    std::map<int, std::pair<CString, CString>> assignments;
    ForEachRow(stream, buffer, line, [&] {
        const int element = GetSap2000LineItemInt(line, elementKey);
        assignments[element] = {GetSap2000LineItem(line, sectionKey), GetSap2000LineItem(line, L"MatProp")};
        const bool isThere = elementKey == L"Frame" ? qvx::FindOrNull(model_->beams, element) != nullptr
                                                    : qvx::FindOrNull(model_->shell4s, element) != nullptr;
        if (!isThere)
            Note(ImportLossKind::AssignmentToNothing, table_);
    });
    return assignments;
}

void CSap2000Importer::AssignMaterial(int& material, const CString& section, const CString& name,
                                      const std::map<CString, CString>& materialOfSection)
{
    CString materialName = name;
    if (name.CompareNoCase(L"Default") == 0) {
        const auto ofSection = materialOfSection.find(section);
        // "Default" stands for the material of the section.
        materialName = ofSection == materialOfSection.end() ? CString() : ofSection->second;
    }
    const auto found = materials_.find(materialName);
    assert(material >= 0 && "an id, or none yet");
    if (found != materials_.end())
        material = found->second.id;
    else
        Note(ImportLossKind::UnknownMaterial, materialName);
}

void CSap2000Importer::Read_FRAME_SECTION_ASSIGNMENTS(std::istream& stream, char* buffer, CString& line)
{
    const auto assignments = ReadSectionAssignments(stream, buffer, line, L"Frame", L"AnalSect");
    for (jxBm& beam : model_->beams) {
        const auto assignment = assignments.find(beam.id);
        beam.section = 1;
        if (assignment == assignments.end())
            continue;
        const auto& [sectionName, materialName] = assignment->second;
        const auto section = frameSections_.find(sectionName);
        if (section == frameSections_.end()) {
            Note(ImportLossKind::UnknownSection, sectionName);
            continue;
        }
        beam.section = section->second.id;
        AssignMaterial(beam.material, sectionName, materialName, sectionMaterial_);
    }
}

void CSap2000Importer::Read_FRAME_LOCAL_AXES_ASSIGNMENTS_1_TYPICAL(std::istream& stream, char* buffer, CString& line)
{
    std::map<int, double> angles;
    ForEachRow(stream, buffer, line, [&] {
        if (IsNo(GetSap2000LineItem(line, L"AdvanceAxes")))
            angles[GetSap2000LineItemInt(line, L"Frame")] = GetSap2000LineItemDouble(line, L"Angle");
        else
            Note(ImportLossKind::AdvancedAxes, L"");
    });
    // The turn brings loads along local 2 and 3 where they belong and takes the sections with it: NoteAxes tells.
    isTurned_ = true;
    for (jxBm& beam : model_->beams) {
        const auto found = angles.find(beam.id);
        // All frames, those without a row too: the table lists only angles other than zero.
        beam.angle = ((found == angles.end() ? 0.0 : found->second) + kAxesOffset) * kPi / 180.0;
    }
}

void CSap2000Importer::Read_CONNECTIVITY_AREA(std::istream& stream, char* buffer, CString& line)
{
    ForEachRow(stream, buffer, line, [&] {
        jxShell4 shell;
        shell.id = GetSap2000LineItemInt(line, L"Area");
        const wchar_t* const keys[4] = {L"Joint1", L"Joint2", L"Joint3", L"Joint4"};
        for (int i = 0; i < 4; ++i)
            shell.node[i] = qvx::TruncateToInt(GetSap2000LineItemDouble(line, keys[i]));
        if (std::find(shell.node, shell.node + 4, 0) != shell.node + 4)
            Note(ImportLossKind::MissingJoint, L"");
        model_->shell4s.push_back(shell);
    });
    SortById(model_->shell4s);
}

void CSap2000Importer::Read_AREA_SECTION_ASSIGNMENTS(std::istream& stream, char* buffer, CString& line)
{
    const auto assignments = ReadSectionAssignments(stream, buffer, line, L"Area", L"Section");
    for (jxShell4& shell : model_->shell4s) {
        const auto assignment = assignments.find(shell.id);
        shell.thickness = 1;
        if (assignment == assignments.end())
            continue;
        const auto& [sectionName, materialName] = assignment->second;
        const auto section = areaSections_.find(sectionName);
        if (section == areaSections_.end()) {
            Note(ImportLossKind::UnknownSection, sectionName);
            continue;
        }
        shell.thickness = section->second.id;
        AssignMaterial(shell.material, sectionName, materialName, areaSectionMaterial_);
    }
}

void CSap2000Importer::NoteAxes()
{
    if (isTurned_) {
        for (const jxBm& beam : model_->beams) {
            const jxSect* section = qvx::FindOrNull(model_->sections, beam.section);
            // A square or a circle looks the same after a quarter turn.
            if (section != nullptr && section->dim[0] != section->dim[1])
                Note(ImportLossKind::TurnedSection, L"");
        }
        return;
    }
    const auto isAcross = [](int coordSys, int dir) { return coordSys == kLocal && dir % 3 != 0; };
    for (const jxCaseLoad& loads : model_->caseLoads) {
        for (const jxPtLoad& load : loads.ptLoads)
            if (isAcross(load.coordSys, load.dir))
                Note(ImportLossKind::LocalLoadNotTurned, L"");
        for (const jxLnLoad& load : loads.lnLoads)
            if (isAcross(load.coordSys, load.dir))
                Note(ImportLossKind::LocalLoadNotTurned, L"");
    }
}
