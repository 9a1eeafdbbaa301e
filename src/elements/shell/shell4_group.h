#pragma once

#include "model/jx_struct.h"
#include "model/solution_data.h"

/// Group of all four-node shells.
class QVXFEM_API CjxShell4Group
{
public:
    explicit CjxShell4Group(CjxStruct* model) : model_(model) {}

    static void GetLocalAxis(jxPoint axis[3], jxPoint p1, jxPoint p2, jxPoint p3, jxPoint p4, double angle);
    static void GetMITC4StiffnessReferenceAxis(jxPoint axis[3], jxPoint p1, jxPoint p2, jxPoint p3, jxPoint p4);
    static double GetStiffnessReferenceLocalAngle(jxPoint p1, jxPoint p2, jxPoint p3, jxPoint p4, int bThinPlate);
    static bool IsGoodQuadShape(const jxPoint& p1, const jxPoint& p2, const jxPoint& p3, const jxPoint& p4,
                                double angle);

    void ProcessStiffness(jxSolutionData& data);
    void ProcessElemLoads(int comb);
    void ElemStresses(double F[5][3], double fm[8], double P[5][5], double fp[12], const jxShell4& shell, int comb);

private:
    CjxStruct* model_;
};
