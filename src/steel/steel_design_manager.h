#pragma once

#include <vector>

#include "platform/cstring.h"
#include "platform/export.h"
#include "steel/jx_sect_aisc.h"

class CAiscDesign;

/// Table of rolled steel shapes of the process; it stands compiled into the library and is read on first use.
/// Labels and families are looked up without regard to case and outer blanks.
class QVXFEM_API CSteelDesignManager
{
public:
    /// The one table; the first call reads it. Any thread.
    static const CSteelDesignManager& Instance();

    /// @return  true when the table has a shape with this label; out stays as it is otherwise
    bool GetAiscSection(jxSect_AISC& out, const wchar_t* label) const;
    /// Whether the table has a shape with this label.
    bool IsValidAiscSection(const wchar_t* label) const;
    /// Kind of the shape (SteelShape); kShapeNone when the table does not have it.
    int get_shape(const wchar_t* label) const;
    /// The shapes of a family, by weight and among equal weights by label.
    /// @param out     replaced; empty when the table knows no such family
    /// @param family  a kind ("W", "M", "S", "HP", "C", "MC", "WT", "MT", "ST", "L", "2L", "HSS_RECT", "HSS_SQUARE",
    ///                "HSS_ROUND", "PIPE"), "HSS" for its three kinds, or a label or its start up to an "X": "W14",
    ///                "HSS8X8", "2L4X3-1/2X3/8"
    void GenerateSections(std::vector<jxSect_AISC>& out, const CString& family) const;
    /// Check of a shape; the caller returns it to DeleteAiscDesign.
    /// @param code  steelCode: 0 AISC 360-05, 1 360-10, 2 360-16
    /// @return      null for a code or a name that does not exist
    CAiscDesign* CreateAiscDesign(int code, const wchar_t* name) const;
    void DeleteAiscDesign(CAiscDesign* design) const;
    /// All shapes in the order of the table.
    const std::vector<jxSect_AISC>& Shapes() const { return shapes_; }

private:
    CSteelDesignManager();
    const jxSect_AISC* Find(const wchar_t* name) const;

    std::vector<jxSect_AISC> shapes_;
    std::vector<int> byLabel_;  ///< positions in shapes_, ascending by label
};
