#pragma once

#include <vector>

/// Axes of a load.
enum CoordinateSystem : int { kLocal = 0, kGlobal = 1, kProjected = 2 };

/// Nodal load, also a nodal mass.
struct jxNdLoad
{
    int id = 0;  ///< node id
    int no = 0;
    unsigned char bSelected = 0;
    int dof = 0;
    double value = 0;  ///< [force] or [moment]

    static const wchar_t* name() { return L"nodal load"; }
};

/// Concentrated load on a member.
struct jxPtLoad
{
    int id = 0;  ///< member id; -1 for an end force
    int no = 0;
    unsigned char bSelected = 0;
    int coordSys = 0;
    int bAbsoluteDistance = 0;  ///< 0: distance is a fraction of the length
    int dir = 0;                ///< 0..2 forces along, 3..5 moments about the axes
    double value = 0;
    double distance = 0;  ///< from the start

    static const wchar_t* name() { return L"point load"; }
};

/// Trapezoidal load on a member.
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

    static const wchar_t* name() { return L"line load"; }
};

/// Uniform temperature rise of an element.
struct jxThermalLoad
{
    int id = 0;  ///< element id
    int no = 0;
    unsigned char bSelected = 0;
    double dT = 0;  ///< [temperature]

    static const wchar_t* name() { return L"thermal load"; }
};

/// Uniform load on a shell.
struct jxSurfaceLoad
{
    int id = 0;  ///< shell id
    int no = 0;
    unsigned char bSelected = 0;
    int coordSys = 0;
    int dir = 0;
    double value = 0;  ///< [pressure]

    static const wchar_t* name() { return L"surface load"; }
};

/// Load on the area between four nodes, to be carried by members.
struct jxAreaload
{
    int id = 0;
    int no = 0;
    unsigned char bSelected = 0;
    int node[4] = {};
    int coordSys = 0;
    int dir = 0;
    int distribution = 0;
    double value = 0;  ///< [pressure]

    static const wchar_t* name() { return L"area load"; }
};

/// All loads of one load case.
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
    wchar_t type[128] = {};
    int bIncluded = 1;  ///< the report lists the loads of the case

    static const wchar_t* name() { return L"load case"; }
};

/// One term of a combination.
struct jxCaseFactor
{
    wchar_t label[128] = {};  ///< of the load case
    double factor = 1;
};

/// Load combination.
struct jxLoadComb
{
    wchar_t label[128] = {};
    int bPDelta = 0;
    int bSteel = 0;
    int bCheckTLD = 0;
    int bCheckLLD = 0;
    int bConcrete = 0;
    double susLoadFactor = 0;
    double rsFactor = 0;
    int bSolve = 1;
    std::vector<jxCaseFactor> cases;

    static const wchar_t* name() { return L"load combination"; }
};

// Ranges of loads, as the kernels of one member take them.
using jxPtLoadIterator = std::vector<jxPtLoad>::const_iterator;
using jxLnLoadIterator = std::vector<jxLnLoad>::const_iterator;
using jxThermalLoadIterator = std::vector<jxThermalLoad>::const_iterator;

inline bool operator<(const jxNdLoad& a, const jxNdLoad& b)
{
    return a.id < b.id;
}
inline bool operator<(const jxPtLoad& a, const jxPtLoad& b)
{
    return a.id < b.id;
}
inline bool operator<(const jxLnLoad& a, const jxLnLoad& b)
{
    return a.id < b.id;
}
inline bool operator<(const jxThermalLoad& a, const jxThermalLoad& b)
{
    return a.id < b.id;
}
inline bool operator<(const jxSurfaceLoad& a, const jxSurfaceLoad& b)
{
    return a.id < b.id;
}
inline bool operator<(const jxLoadCase& a, const jxLoadCase& b)
{
    return a.id < b.id;
}
