#pragma once

#include <set>
#include <string>
#include <vector>

#include "model/records/record_order.h"
#include "platform/cstring.h"

/// One reinforcing bar of a database, named by its size ("#5", "16").
struct jxBar
{
    int size = 0;         ///< size id, as it is called: 8 for a No. 8, 25 for a 25M
    double diameter = 0;  ///< [in]
    double area = 0;      ///< [in^2]
};

/// A table of reinforcing bars, ascending by size. Always in inches, whatever the units of the model.
struct jxBarDatabase
{
    std::wstring name;
    std::vector<jxBar> bars;
};

/// Concrete beam criterion. Axes of all criteria: 3 strong-axis bending (moment Mz, shear Fy, stiffness Iz), 2
/// weak-axis bending (My, Fz, Iy). Defaults are plain numbers, in inches where the model is.
struct jxBmRcCrit
{
    int id = 0;
    int no = 0;
    unsigned char bSelected = 0;
    wchar_t label[128] = {};
    double topCover = 2.5;     ///< from the top face to the centre of the top bars [dimension]
    double bottomCover = 2.5;  ///< from the bottom face to the centre of the bottom bars [dimension]
    int stirrupBar = 0;        ///< index of the stirrup's bar in the current database
    int stirrupLegs = 2;

    static const wchar_t* name() { return L"beam RC criteria"; }  ///< in messages
};

/// Bars that a column layout may have along the sides of a rectangle.
enum ColumnBarPattern : int {
    kAnyBarPattern = 0,
    kBarsOnWidthFaces = 1,  ///< two bars along the depth (ny = 2)
    kBarsOnDepthFaces = 2,  ///< two bars along the width (nx = 2)
    kEqualBarsPerSide = 3,  ///< nx = ny
};

/// Concrete column criterion.
struct jxColRcCrit
{
    int id = 0;
    int no = 0;
    unsigned char bSelected = 0;
    wchar_t label[128] = {};
    double cover = 1.5;   ///< clear, from the face to the outside of the tie [dimension]
    int stirrupBar = 0;   ///< index of the tie's or spiral's bar in the current database
    int stirrupLegs = 2;  ///< ties crossing a section
    int startBar = 5;     ///< indices of the smallest and the largest longitudinal bar in the current database
    int endBar = 8;
    int pattern = kAnyBarPattern;
    int bSpiral = 0;    ///< round columns: spiral, else ties
    int minBarsLR = 0;  ///< bars along the left and the right face, in all of a round section; 0: no limit
    int maxBarsLR = 0;  ///< 0: no limit
    int minBarsTB = 0;  ///< bars along the top and the bottom face; 0: no limit
    int maxBarsTB = 0;  ///< 0: no limit
    double lu3 = 0;     ///< unbraced lengths; 0: the member's length [length]
    double lu2 = 0;
    double K3 = 1;  ///< effective length factors; at most 1 braced, at least 1 with sway
    double K2 = 1;
    int bSway3 = 0;
    int bSway2 = 0;

    static const wchar_t* name() { return L"column RC criteria"; }  ///< in messages
};

/// Concrete plate criterion: covers from the face to the centre of the bars [dimension].
struct jxPlateRcCrit
{
    int id = 0;
    int no = 0;
    unsigned char bSelected = 0;
    wchar_t label[128] = {};
    double topCoverX = 1.5;
    double topCoverY = 1.5;
    double bottomCoverX = 1.5;
    double bottomCoverY = 1.5;

    static const wchar_t* name() { return L"plate RC criteria"; }  ///< in messages
};

/// Steel criterion.
struct jxSteelCrit
{
    int id = 0;
    int no = 0;
    unsigned char bSelected = 0;
    wchar_t label[128] = {};
    wchar_t family[128] = L"Default";  ///< candidate shapes; "" or "Default": the member's own section alone
    double L3 = 0;                     ///< unbraced lengths; 0: the member's length [length]
    double L2 = 0;
    double Lz = 0;  ///< of torsion [length]
    double K3 = 1;  ///< effective length factors; at most 1 braced, at least 1 with sway
    double K2 = 1;
    double Kz = 1;  ///< of torsion
    int bSway3 = 0;
    int bSway2 = 0;
    double Lb = 0;        ///< between points that hold the compression flange; 0: the member's length [length]
    int bContinuous = 0;  ///< the compression flange is held all along; Lb is 0
    double Cb = 0;        ///< moment gradient factor, 1 to 3; 0: from the member's moments
    double maxRatio = 1;  ///< largest unity check ratio of a candidate, above 0 and at most 1

    static const wchar_t* name() { return L"steel criteria"; }  ///< in messages
};

namespace qvx {

/// Order of names that takes capital and lower-case letters as equal.
struct NoCaseLess
{
    /// Whether a stands before b.
    bool operator()(const std::wstring& a, const std::wstring& b) const
    {
        return CompareNoCase(a.c_str(), b.c_str()) < 0;
    }
};

}  // namespace qvx

/// Settings of the design runs.
struct jxDesignSettings
{
    int bConsistentDesign = 0;  ///< design by the mechanics where the usual rule is unsafe or surprises
    // Concrete
    int concreteCode = 6;                     ///< index of the code table; 1 to 6 may be designed by
    int columnSolverSteps[3] = {16, 50, 20};  ///< of an interaction surface: angles (multiple of 4), axis divisions
    int bExcludeDisplaced = 1;                ///< the concrete that bars displace carries nothing
    double minColumnRho = 0.01;               ///< bounds of bar area over gross area
    double maxColumnRho = 0.08;
    int sustainedLoadComb = -1;           ///< index of the combination of sustained loads; -1: not chosen
    int bSkipMagnification = 0;           ///< columns: Cm is 1
    int bIgnoreColumnCompression = 0;     ///< columns: compression does not raise the shear strength
    int bColumnEndsOnly = 0;              ///< columns are checked at their ends only
    int bMinimumEccentricity = 1;         ///< columns carry at least the minimum moment
    double minPlateRho[2] = {0.18, 0.0};  ///< least plate steel, top and bottom [% of thickness]
    int bUseBeamFaceMoments = 1;          ///< beams are designed for the moments at the support faces
    int shearOption = 1;                  ///< of the stirrup spacing
    int bShearUsesFlexuralSteel = 0;      ///< shear takes the steel of the flexural design
    // Steel
    int steelCode = 2;             ///< 0 to 2
    int bSteelCmOne = 0;           ///< Cm is 1
    int bSteelEndsOnly = 0;        ///< members are checked at their ends only
    double connectorDistance = 0;  ///< of the connectors of double angles [length]
    int bSteelParam1 = 1;          ///< general parameters of the steel code
    int bSteelParam2 = 1;
    int bUseSectionPool = 0;  ///< candidates come from sectionPool only
    std::set<std::wstring, qvx::NoCaseLess> sectionPool;
    int maxCandidates = 10;                   ///< results kept per member
    double totalLoadDeflectionRatio = 240.0;  ///< limits: length over deflection
    double liveLoadDeflectionRatio = 360.0;
    int bAdjustDeflectionRatios = 1;  ///< deflections of candidates by their moments of inertia
    // Items of the criteria lists that the host shows, indices
    int currentBeamRcCriterion = 0;
    int currentColumnRcCriterion = 0;
    int currentPlateRcCriterion = 0;
    int currentSteelCriterion = 0;
};
