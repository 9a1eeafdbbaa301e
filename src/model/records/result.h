#pragma once

#include <vector>

#include "model/records/record_order.h"

/// Six values in DOF order belonging to the node, member or shell id: displacements, or reactions, global axes.
struct jxResult6Val
{
    int id = 0;
    double value[6] = {};  ///< [translation x 3, rad x 3] or [force x 3, moment x 3], springs per length or area
};

/// Forces of a multi-DOF constraint on its two ends; id, nodes and DOFs are those of the constraint.
struct jxMultiDofConstraintForce
{
    int id = 0;
    int node[2] = {};
    int dof[2] = {};
    double force[2] = {};  ///< [force] or [moment] by dof
};

/// Station of a member curve: forces [force], moments [moment] and deflections [translation] in local axes. Fx is
/// positive in tension, Mz where the -y face is in tension, My where the -z face is; the normal stress at (y, z) of
/// the section is Fx / A - Mz y / Iz - My z / Iy. Fy and Fz at the start are those that the node exerts.
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
    double Dz = 0;  ///< likewise
};

/// Member curve, stations ascending from 0 to 1.
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
    double value[12] = {};  ///< in DOF order at the start, then at the end, as they act on the nodes
};

/// Normal stresses of one member station, tension positive [stress].
struct jxSectionStress
{
    double x = 0;                ///< fraction of the length from the start
    std::vector<double> values;  ///< at the section's stress points
    double minNegative = 0;      ///< largest compression, 0 without
    double maxPositive = 0;      ///< largest tension, 0 without
};

/// Normal stresses along a member.
struct jxBmStress
{
    int id = 0;
    std::vector<jxSectionStress> stress;
};
