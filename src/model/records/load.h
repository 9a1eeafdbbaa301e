#pragma once

#include <vector>

#include "model/records/record_order.h"

/// Axes of a load. Projected: along a global axis, per length or area of the projection across that axis.
enum CoordinateSystem : int { kLocal = 0, kGlobal = 1, kProjected = 2 };

/// Nodal load, also a nodal mass; along, or about, a global axis.
struct jxNdLoad
{
    int id = 0;  ///< node id
    int no = 0;
    unsigned char bSelected = 0;
    int dof = 0;
    double value = 0;  ///< [force] or [moment]

    static const wchar_t* name() { return L"nodal load"; }  ///< in messages
};

/// Concentrated load on a member.
struct jxPtLoad
{
    int id = 0;  ///< member id; -1 for an end force
    int no = 0;
    unsigned char bSelected = 0;
    int coordSys = 0;           ///< a CoordinateSystem
    int bAbsoluteDistance = 0;  ///< 0: distance is a fraction of the length, else a length
    int dir = 0;                ///< 0..2 forces along, 3..5 moments about the axes
    double value = 0;           ///< [force] or [moment] by dir
    double distance = 0;        ///< from the start

    static const wchar_t* name() { return L"point load"; }  ///< in messages
};

/// Trapezoidal load on a member between two places, distance1 before distance2.
struct jxLnLoad
{
    int id = 0;  ///< member id
    int no = 0;
    unsigned char bSelected = 0;
    int coordSys = 0;
    int bAbsoluteDistance = 0;
    int dir = 0;
    double distance1 = 0;
    double distance2 = 1;
    double value1 = 0;  ///< at distance1 [force/length] or [moment/length]
    double value2 = 0;  ///< at distance2

    static const wchar_t* name() { return L"line load"; }  ///< in messages
};

/// Uniform temperature rise of an element: expansion where it is free, compression where it is held.
struct jxThermalLoad
{
    int id = 0;  ///< element id
    int no = 0;
    unsigned char bSelected = 0;
    double dT = 0;  ///< [temperature]

    static const wchar_t* name() { return L"thermal load"; }  ///< in messages
};

/// Uniform load on a shell, along a global axis or an axis of the shell.
struct jxSurfaceLoad
{
    int id = 0;  ///< shell id
    int no = 0;
    unsigned char bSelected = 0;
    int coordSys = 0;
    int dir = 0;
    double value = 0;  ///< [pressure]

    static const wchar_t* name() { return L"surface load"; }  ///< in messages
};

/// Load on the area between four nodes, to be carried by members. The order of area loads is the host's.
struct jxAreaload
{
    int id = 0;
    int no = 0;
    unsigned char bSelected = 0;
    int node[4] = {};
    int coordSys = 0;
    int dir = 0;
    int distribution = 0;  ///< 0 two way, 1 short sides, 2 long sides, 3 AB and CD, 4 BC and AD, 5 centroid, 6 edge
    double value = 0;      ///< [pressure]

    static const wchar_t* name() { return L"area load"; }  ///< in messages
};

/// All loads of one load case, each vector sorted by the id of the node or element.
struct jxCaseLoad
{
    std::vector<jxNdLoad> ndLoads;
    std::vector<jxPtLoad> ptLoads;
    std::vector<jxLnLoad> lnLoads;
    std::vector<jxThermalLoad> bmThermalLoads;
    std::vector<jxThermalLoad> shell4ThermalLoads;
    std::vector<jxThermalLoad> brickThermalLoads;
    std::vector<jxSurfaceLoad> shell3SurfaceLoads;
    std::vector<jxSurfaceLoad> shell4SurfaceLoads;
    std::vector<jxAreaload> areaLoads;
};

/// Load case; its loads stand at the same position of CjxStruct::caseLoads.
struct jxLoadCase
{
    int id = 0;
    int no = 0;
    unsigned char bSelected = 0;
    wchar_t label[128] = {};
    wchar_t type[128] = {};  ///< nature of the load, "Dead-D" and the like
    int bIncluded = 1;       ///< the report lists the loads of the case

    static const wchar_t* name() { return L"load case"; }  ///< in messages
};

/// One term of a combination.
struct jxCaseFactor
{
    wchar_t label[128] = {};  ///< of the load case
    double factor = 1;
};

/// Load combination: the sum of its load cases times their factors.
struct jxLoadComb
{
    wchar_t label[128] = {};
    int bPDelta = 0;           ///< axial forces of members act on their displacements: solved by iteration
    int bSteel = 0;            ///< takes part in the steel design
    int bCheckTLD = 0;         ///< deflections are checked as those of the total load
    int bCheckLLD = 0;         ///< deflections are checked as those of the live load
    int bConcrete = 0;         ///< takes part in the concrete design, its envelope and the Wood-Armer moments
    double susLoadFactor = 0;  ///< part of it that is sustained
    double rsFactor = 0;       ///< factor on the response to the spectra
    int bSolve = 1;            ///< the report lists its results
    std::vector<jxCaseFactor> cases;

    static const wchar_t* name() { return L"load combination"; }  ///< in messages
};

/// Ranges of loads, as the kernels of one member take them.
using jxPtLoadIterator = std::vector<jxPtLoad>::const_iterator;
using jxLnLoadIterator = std::vector<jxLnLoad>::const_iterator;
using jxThermalLoadIterator = std::vector<jxThermalLoad>::const_iterator;
