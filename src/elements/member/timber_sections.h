#pragma once

#include <map>

#include "platform/cstring.h"
#include "platform/export.h"

/// Sawn timber section [in].
struct jxSect_NDS
{
    wchar_t label[128] = {};  ///< of the section records that it stands for
    double b = 0;             ///< thickness, along local z
    double d = 0;             ///< depth, along local y
};

/// Fills the map with the timber sections by label: none, as no table of timber is built in. A member of timber gets
/// its stresses by the dimensions of its section record.
QVXFEM_API void load_nds_sections(std::map<CString, jxSect_NDS>& sections);
