#pragma once

#include <vector>

#include "model/records/result.h"

/// Envelope station: extremes of axial force, V2, V3, torsion, M2, M3 with their combinations.
struct jxMaxVMD
{
    double x = 0;
    double max[6] = {-1e300, -1e300, -1e300, -1e300, -1e300, -1e300};
    double min[6] = {1e300, 1e300, 1e300, 1e300, 1e300, 1e300};
    int maxComb[6] = {-1, -1, -1, -1, -1, -1};
    int minComb[6] = {-1, -1, -1, -1, -1, -1};
};

/// Envelope along a member.
struct jxMaxBmVMD
{
    int id = 0;
    std::vector<jxMaxVMD> vmd;
};

/// Wood-Armer moments of one shell at its five locations.
struct jxWoodArmer
{
    int id = 0;
    double moments[5][4] = {};  ///< top x, top y, bottom x, bottom y [moment/length]
    int combs[5][4] = {};
};

/// One natural mode.
struct jxEigenResult
{
    double eigenvalue = 0;  ///< squared circular frequency [rad^2/s^2]
    double errorMeasure = 0;
    std::vector<jxResult6Val> shape;
};

/// Response of one mode to the spectra of the three directions.
struct jxResponseSpectrumResult
{
    double eigenvalue = 0;
    double participation[3] = {};
    std::vector<jxResult6Val> displacements[3];
    std::vector<jxResult6Val> forces[3];
};
