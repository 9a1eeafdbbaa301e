#include <algorithm>
#include <cassert>
#include <cwchar>

#include "model/jx_struct.h"

int CjxStruct::FindLoadCase(const wchar_t* label) const
{
    assert(label != nullptr);
    const auto found = std::find_if(loadCases.begin(), loadCases.end(),
                                    [label](const jxLoadCase& c) { return std::wcscmp(c.label, label) == 0; });
    return found == loadCases.end() ? -1 : static_cast<int>(found - loadCases.begin());
}

int CjxStruct::Equation(int nodePosition, int dof) const
{
    assert(dof >= kX && dof <= kOZ && nodePosition >= 1);
    const std::vector<int>& row = idTable[dof];
    return row.empty() ? 0 : row[static_cast<std::size_t>(nodePosition)];
}
