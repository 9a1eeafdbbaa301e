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

/// Extremes of six values of a node over combinations, in DOF order, with their combinations (-1: none).
struct jxEnvelopeValue6
{
    int id = 0;  ///< node id
    double max[6] = {-1e300, -1e300, -1e300, -1e300, -1e300, -1e300};
    double min[6] = {1e300, 1e300, 1e300, 1e300, 1e300, 1e300};
    int maxComb[6] = {-1, -1, -1, -1, -1, -1};
    int minComb[6] = {-1, -1, -1, -1, -1, -1};
};

/// Envelope station with the deflections of the curve: the six of jxMaxVMD, then Dy, Dz.
struct jxEnvelopeVMD
{
    double x = 0;
    double max[8] = {-1e300, -1e300, -1e300, -1e300, -1e300, -1e300, -1e300, -1e300};
    double min[8] = {1e300, 1e300, 1e300, 1e300, 1e300, 1e300, 1e300, 1e300};
    int maxComb[8] = {-1, -1, -1, -1, -1, -1, -1, -1};
    int minComb[8] = {-1, -1, -1, -1, -1, -1, -1, -1};
};

/// Envelope along a member, forces and deflections.
struct jxEnvelopeBmVMD
{
    int id = 0;
    std::vector<jxEnvelopeVMD> vmd;
};

/// Envelopes over one selection of combinations.
struct jxEnvelopeReport
{
    std::vector<int> selection;  ///< per combination: 1 chosen
    std::vector<jxEnvelopeValue6> displacements;
    std::vector<jxEnvelopeValue6> supportReactions;
    std::vector<jxEnvelopeBmVMD> beamEnvelopes;
    /// Of each value at each station the extreme of larger magnitude with its sign: the values of a station need not
    /// come from one combination.
    std::vector<jxBmVMD> beamCurves;

    void clear() { *this = {}; }
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
    double errorMeasure = 0;          ///< ||K x - w M x|| / ||K x||
    std::vector<jxResult6Val> shape;  ///< a row per node, of unit modal mass in internal units
};

/// Response of one mode to the spectra of the three directions X, Y, Z.
struct jxResponseSpectrumResult
{
    double eigenvalue = 0;                       ///< squared circular frequency [rad^2/s^2]
    double participation[3] = {};                ///< share of the mass that moves along X, Y, Z
    std::vector<jxResult6Val> displacements[3];  ///< per direction; zeros where it takes no part
    std::vector<jxResult6Val> forces[3];         ///< elastic forces of the displacements
};
