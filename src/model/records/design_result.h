#pragma once

#include <vector>

#include "model/records/record_order.h"

// Results of the design runs. Combinations are 0-based indices, -1 none; distances are fractions of the member's
// length. Axial forces P and N are compression positive. Axis 3 is strong-axis bending (Mz, Fy), axis 2 weak-axis
// bending.

/// Flexural steel at one station of a concrete beam.
struct jxBmRcStation
{
    double distance = 0;
    double momentNeg = 0;  ///< the minimum moment used [moment]
    double momentPos = 0;  ///< the maximum moment used [moment]
    double asTop = 0;      ///< steel at the face of positive local y; negative: the section fails [bar area]
    double asBottom = 0;
};

/// Flexural steel along a concrete beam.
struct jxBmRcResult
{
    int id = 0;     ///< member id
    int flags = 0;  ///< the status bits of all stations together
    std::vector<jxBmRcStation> stations;

    static const wchar_t* name() { return L"beam RC result"; }  ///< in messages
};

/// A candidate reinforced column section: bars of one size in a rectangle or a circle.
struct jxConcreteSection
{
    /// Codes of type.
    enum Type : int { kRect = 1, kRound = 2 };

    int type = kRect;
    wchar_t name[128] = {};
    double b = 0;  ///< width; of a round section its diameter, as h [in]
    double h = 0;
    double fc = 0;  ///< [ksi]
    double fy = 0;
    int barSize = 0;  ///< size id of the bar database
    int barCount = 0;
    int nx = 0;  ///< bars along the top and the bottom side, corners included
    int ny = 0;  ///< bars along the left and the right side, corners included
    int bSpiral = 0;
    double cover = 0;      ///< face to bar centre [in]
    double steelArea = 0;  ///< of all bars [in^2]
    double barArea = 0;    ///< of one [in^2]
};

/// The section chosen for a concrete column and the load that governs it. A column that was never checked: section "",
/// comb -1, all else 0.
struct jxColRcResult
{
    int id = 0;  ///< member id
    wchar_t section[128] = {};
    double ratio = 0;  ///< of the load to the capacity on the ray through it
    int comb = -1;
    double distance = 0;
    double P = 0;   ///< [force]
    double M3 = 0;  ///< after the minimum moment, before the magnification [moment]
    double M2 = 0;
    double delta3 = 0;  ///< moment magnification factors
    double delta2 = 0;
    double betaD = 0;  ///< sustained part of the axial load
    double Cm3 = 0;
    double Cm2 = 0;

    static const wchar_t* name() { return L"column RC result"; }  ///< in messages
};

/// Stirrups at one station of a concrete member.
struct jxRcShearStation
{
    double distance = 0;
    double spacing = 0;  ///< 0 none needed, -1 the section fails [dimension]
    double reqAv = 0;    ///< area of stirrups per length of the member [bar area/dimension]
    double V = 0;        ///< magnitude [force]
    double N = 0;        ///< [force]
    double comb = -1;
    double reserved[2] = {};
};

/// Stirrups along a concrete member.
struct jxRcShearResult
{
    int id = 0;      ///< member id
    int status = 0;  ///< the status bits of all stations together
    std::vector<jxRcShearStation> stations;

    static const wchar_t* name() { return L"RC shear result"; }  ///< in messages
};

/// Steel of a concrete plate: rows centre and corners 1 to 4, columns top x, top y, bottom x, bottom y.
struct jxPlateRcResult
{
    int id = 0;  ///< shell id
    int status[5][4] = {};
    double as[5][4] = {};  ///< per length of the section; negative: the section fails [bar area/dimension]

    static const wchar_t* name() { return L"plate RC result"; }  ///< in messages
};

/// One candidate section of a steel member with the load that governs it. Never checked: comb -1, all else 0.
struct jxSteelSectionResult
{
    wchar_t label[128] = {};
    double ratio = 0;
    int comb = -1;
    double distance = 0;
    double P = 0;   ///< [force]
    double M3 = 0;  ///< [moment]
    double M2 = 0;
    double V2 = 0;  ///< [force]
    double V3 = 0;
    double Dy = 0;  ///< of the analysis [translation]
    double Dz = 0;
    double Cm3 = 0;
    double Cm2 = 0;
    double Cb = 0;
    /// Capacities Pc [force], Mc3, Mc2 [moment], Vc2, Vc3 [force], largest KL/r, interaction ratio, shear ratio.
    double results[8] = {};
    double deflectionRatioTotal = 0;
    double deflectionRatioLive = 0;
    double limitTotal = 0;  ///< allowed deflections [translation]
    double limitLive = 0;
};

/// Candidate sections of a steel member and the design parameters as used.
struct jxSteelResult
{
    int id = 0;         ///< member id
    double length = 0;  ///< [length]
    int node1 = 0;
    int node2 = 0;
    double fy = 0;                 ///< [modulus]
    int bParam1 = 0;               ///< 1: load and resistance factors, else allowable strength
    int bParam2 = 0;               ///< 1: shear counts in the ratio
    double K[3] = {};              ///< K3, K2, Kz
    double Lu[3] = {};             ///< L3, L2, Lz [length]
    double connectorDistance = 0;  ///< [length]
    double Lb = 0;                 ///< [length]
    double Cb = 0;                 ///< of the criterion
    double totalLoadDeflectionRatio = 0;
    double liveLoadDeflectionRatio = 0;
    std::vector<jxSteelSectionResult> sections;

    static const wchar_t* name() { return L"steel result"; }  ///< in messages
};
