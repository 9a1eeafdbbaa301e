// Tables of loads on joints, frames and areas.

#include <algorithm>
#include <cassert>

#include "model/find_record.h"
#include "model/jx_struct.h"
#include "sap2000/sap2000_importer.h"

using qvx::ImportLossKind;

namespace {

/// What a direction word of a frame load means.
struct Direction
{
    const wchar_t* word = nullptr;
    int coordSys = kLocal;
    int dir = 1;  ///< of a force; a moment's is 3 more
    double sign = 1;
};

constexpr Direction kFrameDirections[] = {
    {L"Gravity", kGlobal, 2, -1.0},
    {L"X", kGlobal, 0},
    {L"Y", kGlobal, 1},
    {L"Z", kGlobal, 2},
    {L"1", kLocal, 0},
    {L"2", kLocal, 1},
    {L"3", kLocal, 2},
};

/// What is not among the words is local 2; its word is null.
Direction FrameDirection(const CString& word)
{
    // Gravity acts along -Z of the file, whose Z points up.
    for (const Direction& direction : kFrameDirections)
        if (word.CompareNoCase(direction.word) == 0)
            return direction;
    return {};
}

/// The words for area loads count in capitals only, and gravity is not among them; anything else is local 1.
Direction AreaDirection(const CString& word)
{
    constexpr Direction kAreaDirections[] = {
        {L"X", kGlobal, 0}, {L"Y", kGlobal, 1}, {L"Z", kGlobal, 2},
        {L"1", kLocal, 0},  {L"2", kLocal, 1},  {L"3", kLocal, 2},
    };
    for (const Direction& direction : kAreaDirections)
        if (word == direction.word)
            return direction;
    return {.dir = 0};
}

/// Sorts one list of every case by the node or element it loads.
template <class Load>
void SortLoads(std::vector<jxCaseLoad>& cases, std::vector<Load> jxCaseLoad::*list)
{
    for (jxCaseLoad& loads : cases)
        std::stable_sort((loads.*list).begin(), (loads.*list).end());
}

}  // namespace

jxCaseLoad* CSap2000Importer::LoadsOfPattern(const CString& line)
{
    assert(model_ != nullptr);
    const CString name = GetSap2000LineItem(line, L"LoadPat");
    const auto found = loadPatterns_.find(name);
    if (found == loadPatterns_.end())
        Note(ImportLossKind::UnknownLoadPattern, name);
    const std::size_t index = found == loadPatterns_.end() ? 0 : static_cast<std::size_t>(found->second);
    // The host may have its own way of adding a case, which is asked once.
    if (index >= model_->caseLoads.size())
        model_->OnAddMoreLoadCase();
    if (index >= model_->caseLoads.size()) {
        Note(ImportLossKind::DroppedLoad, table_);
        return nullptr;
    }
    return &model_->caseLoads[index];
}

bool CSap2000Importer::ConvertAbsDistance2RelDistance(double& relative, int member, double absolute) const
{
    const jxBm* beam = qvx::FindOrNull(model_->beams, member);
    if (beam == nullptr)
        return false;
    const jxNd* start = qvx::FindOrNull(model_->nodes, beam->node1);
    const jxNd* end = qvx::FindOrNull(model_->nodes, beam->node2);
    if (start == nullptr || end == nullptr)
        return false;
    const double L = calc_distance(start->Point(), end->Point());
    if (L == 0.0)
        return false;
    assert(L > 0 && "a member has a length");
    relative = absolute / L;
    return true;
}

bool CSap2000Importer::ReadDistance(double& distance, const CString& line, const CString& relativeKey,
                                    const CString& absoluteKey)
{
    if (GetSap2000LineItem(line, L"DistType").CompareNoCase(L"AbsDist") != 0) {
        distance = GetSap2000LineItemDouble(line, relativeKey);
        return true;
    }
    return ConvertAbsDistance2RelDistance(distance, GetSap2000LineItemInt(line, L"Frame"),
                                          GetSap2000LineItemDouble(line, absoluteKey));
}

void CSap2000Importer::Read_JOINT_LOADS_FORCE(std::istream& stream, char* buffer, CString& line)
{
    ForEachRow(stream, buffer, line, [&] {
        jxCaseLoad* loads = LoadsOfPattern(line);
        if (loads == nullptr)
            return;
        jxNdLoad load;
        load.id = GetSap2000LineItemInt(line, L"Joint");
        const wchar_t* const keys[kDofCount] = {L"F1", L"F2", L"F3", L"M1", L"M2", L"M3"};
        // One row holds six components; those that are zero make no load.
        for (load.dof = 0; load.dof < kDofCount; ++load.dof) {
            load.value = GetSap2000LineItemDouble(line, keys[load.dof]);
            if (load.value != 0)
                loads->ndLoads.push_back(load);
        }
    });
    SortLoads(model_->caseLoads, &jxCaseLoad::ndLoads);
}

void CSap2000Importer::Read_FRAME_LOADS_POINT(std::istream& stream, char* buffer, CString& line)
{
    ForEachRow(stream, buffer, line, [&] {
        const bool isMoment = GetSap2000LineItem(line, L"Type").CompareNoCase(L"Moment") == 0;
        const CString word = GetSap2000LineItem(line, L"Dir");
        const Direction direction = FrameDirection(word);
        jxPtLoad load;
        load.id = GetSap2000LineItemInt(line, L"Frame");
        load.coordSys = direction.coordSys;
        assert(direction.dir >= 0 && direction.dir < 3 && "a direction of a force");
        load.dir = direction.dir + (isMoment ? 3 : 0);
        load.value = direction.sign * GetSap2000LineItemDouble(line, isMoment ? L"Moment" : L"Force");
        if (!ReadDistance(load.distance, line, L"RelDist", L"AbsDist")) {
            Note(ImportLossKind::DroppedLoad, table_);
            return;
        }
        if (direction.word == nullptr)
            Note(ImportLossKind::UnknownDirection, word);
        if (jxCaseLoad* loads = LoadsOfPattern(line))
            loads->ptLoads.push_back(load);
    });
    SortLoads(model_->caseLoads, &jxCaseLoad::ptLoads);
}

void CSap2000Importer::Read_FRAME_LOADS_DISTRIBUTED(std::istream& stream, char* buffer, CString& line)
{
    ForEachRow(stream, buffer, line, [&] {
        const CString word = GetSap2000LineItem(line, L"Dir");
        const Direction direction = FrameDirection(word);
        jxLnLoad load;
        load.id = GetSap2000LineItemInt(line, L"Frame");
        load.coordSys = direction.coordSys;
        load.dir = direction.dir;
        load.value1 = direction.sign * GetSap2000LineItemDouble(line, L"FOverLA");
        load.value2 = direction.sign * GetSap2000LineItemDouble(line, L"FOverLB");
        if (GetSap2000LineItem(line, L"Type").CompareNoCase(L"Moment") == 0 ||
            !ReadDistance(load.distance1, line, L"RelDistA", L"AbsDistA") ||
            !ReadDistance(load.distance2, line, L"RelDistB", L"AbsDistB")) {
            Note(ImportLossKind::DroppedLoad, table_);
            return;
        }
        if (direction.word == nullptr)
            Note(ImportLossKind::UnknownDirection, word);
        if (jxCaseLoad* loads = LoadsOfPattern(line))
            loads->lnLoads.push_back(load);
    });
    SortLoads(model_->caseLoads, &jxCaseLoad::lnLoads);
}

void CSap2000Importer::Read_AREA_LOADS_UNIFORM(std::istream& stream, char* buffer, CString& line)
{
    ForEachRow(stream, buffer, line, [&] {
        const CString word = GetSap2000LineItem(line, L"Dir");
        const Direction direction = AreaDirection(word);
        jxSurfaceLoad load;
        load.id = GetSap2000LineItemInt(line, L"Area");
        load.coordSys = direction.coordSys;
        load.dir = direction.dir;
        load.value = GetSap2000LineItemDouble(line, L"UnifLoad");
        if (direction.word == nullptr)
            Note(ImportLossKind::UnknownDirection, word);
        if (jxCaseLoad* loads = LoadsOfPattern(line))
            loads->shell4SurfaceLoads.push_back(load);
    });
    SortLoads(model_->caseLoads, &jxCaseLoad::shell4SurfaceLoads);
}

// The pressure acts with the mean of the pattern's values at the four joints.
void CSap2000Importer::Read_AREA_LOADS_SURFACE_PRESSURE(std::istream& stream, char* buffer, CString& line)
{
    ForEachRow(stream, buffer, line, [&] {
        jxSurfaceLoad load;
        load.id = GetSap2000LineItemInt(line, L"Area");
        const jxShell4* shell = qvx::FindOrNull(model_->shell4s, load.id);
        if (shell == nullptr) {
            Note(ImportLossKind::DroppedLoad, table_);
            return;
        }
        const CString pattern = GetSap2000LineItem(line, L"JtPattern");
        double sum = 0;
        for (const int node : shell->node) {
            CString key;
            key.Format(L"%d***", node);
            const auto value = jointPatterns_.find(key + pattern);
            sum += 0.25 * (value == jointPatterns_.end() ? 0.0 : value->second);
        }
        const bool isTop = GetSap2000LineItem(line, L"Face").CompareNoCase(L"Top") == 0;
        load.value = GetSap2000LineItemDouble(line, L"Pressure") * sum;
        // A pressure on the top face pushes against local 3, one on the bottom along it.
        if (isTop)
            load.value = -load.value;
        load.coordSys = kLocal;
        load.dir = 2;
        if (jxCaseLoad* loads = LoadsOfPattern(line))
            loads->shell4SurfaceLoads.push_back(load);
    });
    SortLoads(model_->caseLoads, &jxCaseLoad::shell4SurfaceLoads);
}
