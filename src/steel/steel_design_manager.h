#pragma once

#include <vector>

#include "platform/export.h"
#include "steel/jx_sect_aisc.h"

/// Table of rolled steel shapes of the process; it stands compiled into the library and is read on first use.
/// Labels are looked up without regard to case.
class QVXFEM_API CSteelDesignManager
{
public:
    static const CSteelDesignManager& Instance();

    /// @return  true when the table has a shape with this label; out stays as it is otherwise
    bool GetAiscSection(jxSect_AISC& out, const wchar_t* label) const;
    bool IsValidAiscSection(const wchar_t* label) const;
    /// Kind of the shape (SteelShape); kShapeNone when the table does not have it.
    int get_shape(const wchar_t* label) const;
    /// All shapes in the order of the table.
    const std::vector<jxSect_AISC>& Shapes() const { return shapes_; }

private:
    CSteelDesignManager();
    const jxSect_AISC* Find(const wchar_t* label) const;

    std::vector<jxSect_AISC> shapes_;
    std::vector<int> byLabel_;  ///< positions in shapes_, ascending by label
};
