#include "steel/steel_design_manager.h"

#include <algorithm>
#include <cassert>
#include <cwchar>
#include <numeric>
#include <string>
#include <string_view>

#include "steel/aisc_design.h"
#include "steel/shape_table_reader.h"

namespace {

CString Normalized(const wchar_t* name)
{
    CString text(name);
    return text.Trim().MakeUpper();
}

bool IsHss(int shape)
{
    return shape == kShapeHssRect || shape == kShapeHssSquare || shape == kShapeHssRound;
}

/// The family as the beginning of labels: it ends where the label ends or goes on with an "X".
bool BeginsLabel(std::wstring_view family, std::wstring_view label)
{
    // "W12" takes W12X26 and not W120: the X ends the depth.
    return !family.empty() && label.substr(0, family.size()) == family &&
           (label.size() == family.size() || label[family.size()] == L'X');
}

bool IsLighter(const jxSect_AISC& a, const jxSect_AISC& b)
{
    return a.weight != b.weight ? a.weight < b.weight : std::wcscmp(a.label, b.label) < 0;
}

}  // namespace

const CSteelDesignManager& CSteelDesignManager::Instance()
{
    // Read once, when it is first asked for; constant afterwards, so that threads need no lock.
    static const CSteelDesignManager manager;
    return manager;
}

CSteelDesignManager::CSteelDesignManager()
    : shapes_(qvx::ReadSteelShapes(qvx::SteelShapeLines())), byLabel_(shapes_.size())
{
    std::iota(byLabel_.begin(), byLabel_.end(), 0);
    std::stable_sort(byLabel_.begin(), byLabel_.end(), [this](int a, int b) {
        return qvx::CompareNoCase(shapes_[static_cast<std::size_t>(a)].label,
                                  shapes_[static_cast<std::size_t>(b)].label) < 0;
    });
    assert(byLabel_.size() == shapes_.size() && !shapes_.empty());
}

const jxSect_AISC* CSteelDesignManager::Find(const wchar_t* name) const
{
    assert(name != nullptr);
    const CString label = Normalized(name);
    const auto shape = [this](int position) -> const jxSect_AISC& {
        return shapes_[static_cast<std::size_t>(position)];
    };
    const auto it =
        std::lower_bound(byLabel_.begin(), byLabel_.end(), label.GetString(), [&](int position, const wchar_t* key) {
            return qvx::CompareNoCase(shape(position).label, key) < 0;
        });
    if (it == byLabel_.end() || qvx::CompareNoCase(shape(*it).label, label) != 0)
        return nullptr;
    return &shape(*it);
}

bool CSteelDesignManager::GetAiscSection(jxSect_AISC& out, const wchar_t* label) const
{
    const jxSect_AISC* shape = Find(label);
    if (shape != nullptr)
        out = *shape;
    return shape != nullptr;
}

bool CSteelDesignManager::IsValidAiscSection(const wchar_t* label) const
{
    return Find(label) != nullptr;
}

int CSteelDesignManager::get_shape(const wchar_t* label) const
{
    const jxSect_AISC* shape = Find(label);
    return shape != nullptr ? shape->shape : kShapeNone;
}

void CSteelDesignManager::GenerateSections(std::vector<jxSect_AISC>& out, const CString& family) const
{
    const CString name = Normalized(family);
    const int kind = qvx::FindSteelKind(name.Text());
    const bool isAnyHss = name == L"HSS";
    out.clear();
    for (const jxSect_AISC& shape : shapes_) {
        const bool isOfKind = kind != kShapeNone ? shape.shape == kind : isAnyHss && IsHss(shape.shape);
        const bool isByLabel = kind == kShapeNone && !isAnyHss && BeginsLabel(name.Text(), shape.label);
        if (isOfKind || isByLabel)
            out.push_back(shape);
    }
    std::sort(out.begin(), out.end(), IsLighter);  // labels differ, so the order is one only
}

CAiscDesign* CSteelDesignManager::CreateAiscDesign(int code, const wchar_t* name) const
{
    const jxSect_AISC* shape = Find(name);
    const bool isKnown = code >= qvx::kAisc05 && code <= qvx::kAisc16;
    // Owned by the host, which gives it back to DeleteAiscDesign: library and host may have heaps of their own.
    return shape != nullptr && isKnown ? new CAiscDesign(code, *shape) : nullptr;
}

void CSteelDesignManager::DeleteAiscDesign(CAiscDesign* design) const
{
    delete design;
}
