#pragma once

#include "model/jx_struct.h"
#include "model/solution_data.h"

/// Group of all eight-node solids.
class QVXFEM_API CjxBrickGroup
{
public:
    explicit CjxBrickGroup(CjxStruct* model) : model_(model) {}

    void ProcessStiffness(jxSolutionData& data);
    void ProcessElemLoads(int comb);
    void GetBrickStresses(double S[9][6], double f[24], const jxBrick& brick, int comb);

private:
    CjxStruct* model_;
};
