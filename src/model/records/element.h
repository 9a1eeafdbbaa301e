#pragma once

#include "model/records/record_order.h"

/// Behaviour of a member under axial force.
enum MemberBehavior : int { kLinearMember = 0, kTensionOnly = 1, kCompressionOnly = 2 };

/// Member: straight two-node element, local x from node1 to node2. The factors f_ act on the section's constants of
/// their names when bStiffnessFactors is set, each above 0.
struct jxBm
{
    int id = 0;
    int no = 0;
    unsigned char bSelected = 0;
    int node1 = 0;
    int node2 = 0;
    int material = 1;
    int section = 1;
    double angle = 0;               ///< rotation of local y, z about local x [rad]
    double axialForce = 0;          ///< of the previous iteration, tension positive [force]
    double cracking = 1;            ///< factor on the bending stiffness
    int rcCriterion = 1;            ///< beam or column criterion, by designType
    wchar_t designType = L'B';      ///< 'B' beam, 'C' column
    int bConcreteSkip = 0;          ///< nonzero leaves it out of the concrete design
    int nonlinear = kLinearMember;  ///< a MemberBehavior
    int failed = 0;                 ///< state of an iteration: 1 when it would carry what it cannot
    int steelCriterion = 1;
    int bSteelSkip = 0;  ///< nonzero leaves it out of the steel design
    int excluded = 0;
    int selfWeight = 0;  ///< nonzero leaves the self weight out
    double f_Iz = 1;
    double f_Iy = 1;
    double f_J = 1;
    double f_A = 1;
    double f_Ay = 1;
    double f_Az = 1;

    static const wchar_t* name() { return L"member"; }  ///< in messages
};

/// End releases of a member: a released DOF carries no force there.
struct jxRels
{
    int id = 0;  ///< member id
    int no = 0;
    unsigned char bSelected = 0;
    wchar_t start[7] = L"000000";  ///< per local DOF: '1' released
    wchar_t end[7] = L"000000";
    double partial[12] = {};  ///< partial release values; take no part in the stiffness

    static const wchar_t* name() { return L"release"; }  ///< in messages
};

/// Three-node shell; carried for the host, takes no part in the analysis.
/// Its springs, loads and results are carried or stay empty likewise.
struct jxShell3
{
    int id = 0;
    int no = 0;
    unsigned char bSelected = 0;
    int material = 1;
    int node[3] = {};
    int thickness = 1;
    double angle = 0;  ///< [rad]

    static const wchar_t* name() { return L"shell3"; }  ///< in messages
};

/// Four-node shell, corners in turn around it; the normal points to who sees them counterclockwise. The factors f_ act
/// on the rigidities of the force or moment of their names when bStiffnessFactors is set, each above 0.
struct jxShell4
{
    int id = 0;
    int no = 0;
    unsigned char bSelected = 0;
    int material = 1;
    int node[4] = {};
    int thickness = 1;
    double angle = 0;       ///< rotation of the user axes about the normal [rad]
    double cracking = 1;    ///< factor on the bending rigidities
    int rcCriterion = 1;    ///< plate criterion
    int bConcreteSkip = 0;  ///< nonzero leaves it out of the Wood-Armer moments
    int excluded = 0;
    int selfWeight = 0;  ///< nonzero leaves the self weight out
    double f_Fxx = 1;
    double f_Fyy = 1;
    double f_Fxy = 1;
    double f_Mxx = 1;
    double f_Myy = 1;
    double f_Mxy = 1;
    double f_Vxx = 1;
    double f_Vyy = 1;

    static const wchar_t* name() { return L"shell4"; }  ///< in messages
};

/// Eight-node solid: four nodes around one face, then the four behind them in the same turn.
struct jxBrick
{
    int id = 0;
    int no = 0;
    unsigned char bSelected = 0;
    int material = 1;
    int node[8] = {};
    int excluded = 0;
    int selfWeight = 0;  ///< nonzero leaves the self weight out

    static const wchar_t* name() { return L"brick"; }  ///< in messages
};
