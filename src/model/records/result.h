#pragma once

#include <vector>

/// Six values in DOF order belonging to the node, member or shell id.
struct jxResult6Val
{
    int id = 0;
    double value[6] = {};
};

/// Forces of a multi-DOF constraint on its two ends.
struct jxMultiDofConstraintForce
{
    int id = 0;
    int node[2] = {};
    int dof[2] = {};
    double force[2] = {};  ///< [force] or [moment] by dof
};

/// Station of a member curve: forces and deflections in local axes.
struct jxVMD
{
    double x = 0;  ///< fraction of the length from the start
    double Fx = 0;
    double Fy = 0;
    double Fz = 0;
    double Mx = 0;
    double My = 0;
    double Mz = 0;
    double Dy = 0;  ///< from the chord through the deflected ends
    double Dz = 0;
};

/// Member curve.
struct jxBmVMD
{
    int id = 0;
    std::vector<jxVMD> vmd;
};

/// End forces of a member: what the nodes exert on it, local axes (Fx to Mz of the two stations).
struct jxBmEndVMD
{
    int id = 0;
    jxVMD start;
    jxVMD end;
};

/// Nodal actions equivalent to the loads of one member, local axes.
struct jxBmLoadVector
{
    int id = 0;
    double value[12] = {};
};

/// Normal stresses of one member station.
struct jxSectionStress
{
    double x = 0;
    std::vector<double> values;  ///< at the section's stress points
    double minNegative = 0;
    double maxPositive = 0;
};

/// Normal stresses along a member.
struct jxBmStress
{
    int id = 0;
    std::vector<jxSectionStress> stress;
};

inline bool operator<(const jxResult6Val& a, const jxResult6Val& b)
{
    return a.id < b.id;
}
inline bool operator<(const jxBmLoadVector& a, const jxBmLoadVector& b)
{
    return a.id < b.id;
}
inline bool operator<(const jxBmEndVMD& a, const jxBmEndVMD& b)
{
    return a.id < b.id;
}
inline bool operator<(const jxBmVMD& a, const jxBmVMD& b)
{
    return a.id < b.id;
}
