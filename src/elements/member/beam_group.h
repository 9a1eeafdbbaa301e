#pragma once

#include "model/jx_struct.h"

/// Working copy of one member: what every element routine reads, its records found and its axes made.
struct jxBmEx
{
    int id = 0;
    jxNd nd[2];           ///< start, end
    double length = 0;    ///< distance of the nodes [length]
    double cracking = 1;  ///< on the bending stiffness; it and the six factors count only with bStiffnessFactors
    double f_Iz = 1;
    double f_Iy = 1;
    double f_J = 1;
    double f_A = 1;
    double f_Ay = 1;
    double f_Az = 1;
    double axialForce = 0;  ///< of the last iteration, tension positive [force]
    jxMat mat;
    jxSect sect;           ///< without stiffness factors
    jxRels rels;           ///< none released where the member has no record
    jxPoint localAxis[3];  ///< unit vectors x, y, z in global components; as they were without bLocalAxis
};

/// Group of all members: two nodes, twelve degrees of freedom. It holds the model and nothing else, may be made and
/// dropped at any time, and throws jxException "error finding node <id>" or "error finding <name> <id>" for a record that
/// a member names and that is not there. The model is in internal units and its equations are numbered.
class QVXFEM_API CjxBmGroup
{
public:
    /// @param model  of the caller, outlives the group
    explicit CjxBmGroup(CjxStruct* model) : model_(model) {}

    /// Finds the records of a member: nodes, material, section, and the releases where it has some. All are copied, so
    /// that a later change of the model does not reach the copy.
    /// @param bLocalAxis  not 0: makes the local axes too
    static void GetBeamEx(jxBmEx& out, const jxBm& bm, const CjxStruct* model, int bLocalAxis);
    /// Local axes as unit vectors: x from start to end, z = x x Y, y = z x x; z = Z where the run across Y is within 5e-7
    /// of the length. The angle turns y and z right-handed about x [rad]. Y is the reference whatever bZVertical says.
    static void GetLocalAxis(jxPoint axis[3], jxPoint start, jxPoint end, double angle);
    /// The section times the six factors of the member, cracking left out.
    static jxSect ApplyStiffnessFactor(const jxSect& sect, const jxBmEx& beam);

    /// Adds the stiffness of all members to the global stiffness, excluded and failed ones left out.
    ///
    /// A one-way member that carries the wrong sign is switched off first (failed = 1, told in list and log); while the
    /// combination has no results the sign is unknown, the member counts, and bNonlinear and bElementStateChanged are set.
    /// @param comb  combination whose P-Delta setting and results count; -1 in the linear stage
    /// @throws jxException "zero member length encountered", "Singular matrix in routine ludcmp" (releases)
    void ProcessStiffness(jxSolutionData& data, int comb);
    /// Adds point, line and thermal loads and self weight of a combination to its load vector, and keeps the equivalent
    /// nodal loads of each loaded member, local axes, in combResults[comb].beamLoadVectors. Loads of members that are
    /// excluded or failed act all the same.
    /// @throws jxException "unstable axial or torsional direction", "zero member length encountered"
    void ProcessElemLoads(int comb);
    /// Forces that the nodes exert on the member, local axes, ux to rz at the start and at the end: K u less the
    /// equivalent nodal loads, K with the geometric stiffness where the combination has it. A tension is negative at
    /// forces[0] and positive at forces[6]. Needs the displacements in the load vector of the combination.
    void GetBeamEndForces(double forces[12], jxBm bm, int comb);

private:
    CjxStruct* model_;
};
