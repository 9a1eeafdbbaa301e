#pragma once

#include <vector>

#include "model/records/result.h"

/// Envelope station: extremes of axial force, V2, V3, torsion, M2, M3 [force, moment] with their combinations. The
/// starting extremes lose against any value; a station that no combination has keeps them.
struct jxMaxVMD
{
    double x = 0;  ///< fraction of the length from the start
    double max[6] = {-1e300, -1e300, -1e300, -1e300, -1e300, -1e300};
    double min[6] = {1e300, 1e300, 1e300, 1e300, 1e300, 1e300};
    int maxComb[6] = {-1, -1, -1, -1, -1, -1};
    int minComb[6] = {-1, -1, -1, -1, -1, -1};
};

/// Envelope along a member, stations ascending: every place where one of the curves has one.
struct jxMaxBmVMD
{
    int id = 0;
    std::vector<jxMaxVMD> vmd;
};

/// Wood-Armer moments of one shell at its centre and four corners, extremes over the concrete combinations
/// (R. H. Wood, The reinforcement of slabs in accordance with a pre-determined field of moments, Concrete 2, 1968).
struct jxWoodArmer
{
    int id = 0;
    double moments[5][4] = {};  ///< top x, top y, bottom x, bottom y [moment/length]
    int combs[5][4] = {};       ///< index of the combination of each
};

/// One natural mode.
struct jxEigenResult
{
    double eigenvalue = 0;            ///< squared circular frequency [rad^2/s^2]
    double errorMeasure = 0;          ///< of the eigensolver
    std::vector<jxResult6Val> shape;  ///< a row per node
};

/// Response of one mode to the spectra of the three directions X, Y, Z.
struct jxResponseSpectrumResult
{
    double eigenvalue = 0;  ///< squared circular frequency [rad^2/s^2]
    double participation[3] = {};
    std::vector<jxResult6Val> displacements[3];
    std::vector<jxResult6Val> forces[3];
};
