#pragma once

#include <string>
#include <vector>

#include "model/records/element_stress.h"
#include "model/records/result.h"

/// How the solution of a load combination ended.
enum class CombEnd {
    NotSolved,  ///< the run did not come to it
    Linear,     ///< one reduction with the factor shared by all linear combinations
    Converged,  ///< the iteration met its stop rules
    Limit,      ///< the iteration stopped at maxNonlinearIterations: its last result stands, unproven
    Unsettled,  ///< the iteration came to no end that holds: states that repeat, or axial forces unlike the stiffness's
    NoLoad,     ///< nonlinear combination without load: one solution, no iteration
    Failed,     ///< no element stiffness; the results are empty
};

/// A one-way spring that let go in one direction.
struct jxFailedSpring
{
    const wchar_t* owner = L"";  ///< "node", "member", "shell"
    int id = 0;
    int dof = 0;
};

/// Course of the solution of one load combination, for summaries.
struct jxCombOutcome
{
    CombEnd end = CombEnd::NotSolved;
    int iterations = 0;     ///< factorisations made for this combination alone
    bool bWarned = false;   ///< a non-positive pivot was tolerated in some iteration
    bool bBuckled = false;  ///< and in the last one: the results are of a buckled state, not ordinary results
    std::wstring text;      ///< of the failure
    /// Sum of the loads on the equations along X, Y, Z [pound, whatever the units of the model]; without the penalty
    /// terms of prescribed displacements. What a support flag of '2' or a suppressed DOF takes out is not in it.
    double appliedForce[3] = {};
    /// Sum of what holds the structure along X, Y, Z [pound]: supports, springs, those of excluded elements too,
    /// constraints, and what the elements exert where a support flag of '2' or the model type has taken the degree of
    /// freedom out. In equilibrium it is the opposite of the loads.
    double reactionForce[3] = {};
    /// Largest sum of loads and reactions along X, Y or Z over the sum of their sizes.
    double imbalance = 0;
    /// Largest force that is left over at a node, K u - f formed from the elements, over the largest load or reaction
    /// of a node; moments as forces at the arm of the model's size.
    double residual = 0;
    std::vector<int> failedMembers;             ///< ids of the one-way members that are off in the end
    std::vector<jxFailedSpring> failedSprings;  ///< one-way springs that are off in the end
};

/// Results of one load combination, in the units of the model after a run. A vector has a record per node, support,
/// spring or element in the order of the model's vector; all are empty before a solution and after one that failed.
struct QVXFEM_API jxCombResult
{
    std::vector<jxResult6Val> displacements;     ///< of every node; 0 where there is no equation
    std::vector<jxResult6Val> supportReactions;  ///< on the structure, of supports with a flag '1'
    std::vector<jxMultiDofConstraintForce> multiDofConstraintForces;
    std::vector<jxResult6Val> nodalSpringReactions;
    std::vector<jxResult6Val> coupledSpringReactions;
    std::vector<jxResult6Val> beamSpringReactions;    ///< per length
    std::vector<jxResult6Val> shell3SpringReactions;  ///< stays empty: three-node shells take no part
    std::vector<jxResult6Val> shell4SpringReactions;  ///< per area
    std::vector<jxShellStress> shell3Stresses;        ///< stays empty
    std::vector<jxShellStress> shell4Stresses;
    std::vector<jxBrickStress> brickStresses;
    std::vector<jxBmLoadVector> beamLoadVectors;
    std::vector<jxBmEndVMD> beamEndForces;
    std::vector<jxBmVMD> beamCurves;

    /// Empties every vector and frees its memory.
    void clear();
};
