#pragma once

#include <map>

#include "platform/cstring.h"
#include "platform/export.h"

/// Sawn lumber section, dressed on four sides [in]: what a section record named by a nominal size stands for.
struct jxSect_NDS
{
    wchar_t label[128] = {};  ///< nominal size: "2x4"
    double b = 0;             ///< thickness, along local z
    double d = 0;             ///< depth, along local y
};

/// Fills the map with the standard dressed (S4S) sawn lumber sizes, by nominal size ("2x4", thickness first).
/// Source: NDS Supplement, Design Values for Wood Construction, 2015 edition, tables 1A and 1B.
QVXFEM_API void load_nds_sections(std::map<CString, jxSect_NDS>& sections);
