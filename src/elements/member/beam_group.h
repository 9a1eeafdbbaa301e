#pragma once

#include "model/jx_struct.h"
#include "model/solution_data.h"

/// Working copy of one member: what every element routine reads.
struct jxBmEx
{
    int id = 0;
    jxNd nd[2];
    double length = 0;
    double cracking = 1;
    double f_Iz = 1;
    double f_Iy = 1;
    double f_J = 1;
    double f_A = 1;
    double f_Ay = 1;
    double f_Az = 1;
    double axialForce = 0;
    jxMat mat;
    jxSect sect;
    jxRels rels;
    jxPoint localAxis[3];
};

/// Group of all members: two nodes, twelve degrees of freedom.
class QVXFEM_API CjxBmGroup
{
public:
    explicit CjxBmGroup(CjxStruct* model) : model_(model) {}

    static void GetBeamEx(jxBmEx& out, const jxBm& bm, const CjxStruct* model, int bLocalAxis);
    static void GetLocalAxis(jxPoint axis[3], jxPoint start, jxPoint end, double angle);
    static jxSect ApplyStiffnessFactor(const jxSect& sect, const jxBmEx& beam);

    void ProcessStiffness(jxSolutionData& data, int comb);
    void ProcessElemLoads(int comb);
    void GetBeamEndForces(double forces[12], jxBm bm, int comb);

private:
    CjxStruct* model_;
};
