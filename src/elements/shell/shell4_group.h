#pragma once

#include "model/jx_struct.h"

/// Group of all four-node shells. It holds the model and nothing else, may be made and dropped at any time, and throws
/// jxException "error finding node <id>" or "error finding <name> <id>" for a record that a shell names and that is not
/// there. The model is in internal units and its equations are numbered.
class QVXFEM_API CjxShell4Group
{
public:
    /// @param model  of the caller, outlives the group
    explicit CjxShell4Group(CjxStruct* model) : model_(model) {}

    /// User axes as unit vectors: see qvx::QuadLocalAxes, where x of a gently sloping plane leans out of it. Stiffness,
    /// loads and results use these axes made square to the plane.
    static void GetLocalAxis(jxPoint axis[3], jxPoint p1, jxPoint p2, jxPoint p3, jxPoint p4, double angle);
    /// Axes of the mixed-interpolation plate: x along side 3-4.
    static void GetMITC4StiffnessReferenceAxis(jxPoint axis[3], jxPoint p1, jxPoint p2, jxPoint p3, jxPoint p4);
    /// Angle [rad] from the user x axis at angle 0 to the one along which the stiffness is formed: 0 for a rectangle when
    /// bThinPlate is not 0, else that of side 3-4.
    static double GetStiffnessReferenceLocalAngle(jxPoint p1, jxPoint p2, jxPoint p3, jxPoint p4, int bThinPlate);
    /// Whether the corners make a strictly convex quadrilateral as seen along its normal.
    static bool IsGoodQuadShape(const jxPoint& p1, const jxPoint& p2, const jxPoint& p3, const jxPoint& p4,
                                double angle);

    /// Adds the stiffness of all shells to the global stiffness, excluded ones left out. A shellOzFactor that is not
    /// above 0 and at most 0.001 becomes 1e-7 in the model.
    /// @throws jxException "Singular matrix in routine ludcmp" for a shell whose incompatible modes have no stiffness
    void ProcessStiffness(jxSolutionData& data);
    /// Adds surface and thermal loads and self weight of a combination to its load vector, of excluded shells too.
    void ProcessElemLoads(int comb);
    /// Forces and moments of a shell in its user axes, at its centre (0) and its corners (1 to 4); signs as in
    /// qvx::RecoverShellForces. Needs the displacements in the load vector of the combination.
    /// @param F   out: Fxx, Fyy, Fxy [force/length], the thermal share taken off
    /// @param fm  out: membrane nodal forces, ux, uy per node [force], with the thermal share
    /// @param P   out: Mxx, Myy, Mxy [moment/length], Vxx, Vyy [force/length]
    /// @param fp  out: plate nodal forces, w [force], thx, thy [moment] per node
    void ElemStresses(double F[5][3], double fm[8], double P[5][5], double fp[12], const jxShell4& shell, int comb);

private:
    CjxStruct* model_;
};
