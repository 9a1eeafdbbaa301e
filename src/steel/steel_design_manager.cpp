#include "steel/steel_design_manager.h"

#include <algorithm>
#include <numeric>

#include "platform/cstring.h"
#include "steel/shape_table_reader.h"

const CSteelDesignManager& CSteelDesignManager::Instance()
{
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
}

const jxSect_AISC* CSteelDesignManager::Find(const wchar_t* label) const
{
    const auto shape = [this](int position) -> const jxSect_AISC& {
        return shapes_[static_cast<std::size_t>(position)];
    };
    const auto it = std::lower_bound(byLabel_.begin(), byLabel_.end(), label, [&](int position, const wchar_t* key) {
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
