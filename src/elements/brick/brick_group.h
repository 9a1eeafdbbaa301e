#pragma once

#include "model/jx_struct.h"

/// Group of all eight-node solids. It holds the model and nothing else, may be made and dropped at any time, and throws
/// jxException "error finding node <id>" or "error finding <name> <id>" for a record that a solid names and that is not
/// there. The model is in internal units and its equations are numbered.
class QVXFEM_API CjxBrickGroup
{
public:
    // Stiffness and recovery form each solid anew, in the number type of the run (WithNumberType): nothing of a solid
    // is kept between the stages.
    /// @param model  of the caller, outlives the group
    explicit CjxBrickGroup(CjxStruct* model) : model_(model) {}

    /// Adds the stiffness of all solids to the global stiffness, excluded ones left out. One with a negative diagonal
    /// term, inside out, gets a line of the log.
    /// @throws jxException "Negative diagonal terms in brick stiffness...." after the last solid when there was one;
    ///         "Singular matrix in routine ludcmp" for one whose incompatible modes have no stiffness
    void ProcessStiffness(jxSolutionData& data);
    /// Adds thermal loads and self weight of a combination to its load vector, of excluded solids too.
    void ProcessElemLoads(int comb);
    /// Stresses at the centre (0) and the nodes (1 to 8), global axes, the thermal share taken off, and the nodal forces
    /// K u. Needs the displacements in the load vector of the combination.
    /// @param S  out: Sxx, Syy, Szz, Sxy, Syz, Sxz, tension positive [stress]
    /// @param f  out: ux, uy, uz per node [force], with the thermal share
    void GetBrickStresses(double S[9][6], double f[24], const jxBrick& brick, int comb);

private:
    CjxStruct* model_;
};
