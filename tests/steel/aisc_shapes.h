#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "steel/aisc_basis.h"
#include "steel/steel_design_manager.h"

namespace qvx::test {

inline jxSect_AISC TableShape(const wchar_t* label)
{
    jxSect_AISC shape;
    EXPECT_TRUE(CSteelDesignManager::Instance().GetAiscSection(shape, label)) << ToUtf8(label);
    return shape;
}

/// One shape of every kind, stocky and thin ones.
inline std::vector<jxSect_AISC> SampleShapes()
{
    std::vector<jxSect_AISC> shapes;
    for (const wchar_t* label : {L"W14X90",
                                 L"W6X8.5",
                                 L"M12.5X12.4",
                                 L"S12X35",
                                 L"HP14X89",
                                 L"C12X20.7",
                                 L"MC12X40",
                                 L"WT7X34",
                                 L"WT7X15",
                                 L"MT5X3.75",
                                 L"ST6X17.5",
                                 L"L4X4X1/4",
                                 L"L6X4X3/8",
                                 L"L8X4X7/16",
                                 L"2L4X3-1/2X3/8X3/8LLBB",
                                 L"2L5X3X1/4X3/8SLBB",
                                 L"2L3X3X1/4",
                                 L"HSS12X8X3/16",
                                 L"HSS8X8X3/16",
                                 L"HSS20.000X0.250",
                                 L"PIPE8STD"})
        shapes.push_back(TableShape(label));
    return shapes;
}

}  // namespace qvx::test
