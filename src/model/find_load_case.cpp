#include <algorithm>
#include <cassert>
#include <cwchar>

#include "model/jx_struct.h"

int CjxStruct::FindLoadCase(const wchar_t* label) const
{
    assert(label != nullptr);
    // By the exact label, letter case included: labels are the author's names, and "DL" and "dl" may be two load cases.
    const auto found = std::find_if(loadCases.begin(), loadCases.end(),
                                    [label](const jxLoadCase& c) { return std::wcscmp(c.label, label) == 0; });
    return found == loadCases.end() ? -1 : static_cast<int>(found - loadCases.begin());
}

int CjxStruct::Equation(int nodePosition, int dof) const
{
    assert(dof >= kX && dof <= kOZ && nodePosition >= 1);
    const std::vector<int>& row = idTable[dof];
    // Before the equations are numbered there are none; the question may be asked of a model that was never solved.
    assert((row.empty() || static_cast<std::size_t>(nodePosition) < row.size()) && "a node of the model");
    return row.empty() ? 0 : row[static_cast<std::size_t>(nodePosition)];
}
