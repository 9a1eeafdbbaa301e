#pragma once

#include <vector>

#include "model/records/element_stress.h"
#include "model/records/result.h"

/// Results of one load combination.
struct QVXFEM_API jxCombResult
{
    std::vector<jxResult6Val> displacements;
    std::vector<jxResult6Val> supportReactions;
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

    void clear();
};
