#pragma once

#include "model/records/record_order.h"
#include "model/records/text_fields.h"
#include "tools/jx_point.h"

/// Degrees of freedom of a node, in the order used everywhere.
enum Dof : int { kX = 0, kY, kZ, kOX, kOY, kOZ, kDofCount };

/// Names of the degrees of freedom in messages.
inline constexpr const wchar_t* kDofNames[kDofCount] = {L"X", L"Y", L"Z", L"OX", L"OY", L"OZ"};

/// One node. The order of the nodes is the host's means of controlling the band of a skyline.
struct jxNd
{
    int id = 0;
    int no = 0;                   ///< 1-based position in the node vector
    unsigned char bSelected = 0;  ///< bit 0 selected, bit 1 hidden
    double x = 0;                 ///< [length]
    double y = 0;                 ///< [length]
    double z = 0;                 ///< [length]

    /// Its place as a vector from the origin.
    jxPoint Point() const { return {x, y, z}; }
    static const wchar_t* name() { return L"node"; }  ///< in messages
};

/// Support of one node. '1' holds the DOF by a spring penaltyFactor times as stiff as the stiffest term of the model
/// and has a reaction; '2' takes the equation out, exactly and without a reaction.
struct jxSupt
{
    int id = 0;  ///< node id
    int no = 0;
    unsigned char bSelected = 0;
    wchar_t flag[7] = L"000000";  ///< per DOF: '0' free, '1' restrained by a penalty term, '2' no equation
    double value[6] = {};         ///< prescribed displacement [length x 3, rad x 3]

    static const wchar_t* name() { return L"support"; }  ///< in messages
};

/// Linear relation between two DOFs, held by a penalty spring:
/// factor[0] * u(node[0], dof[0]) = factor[1] * u(node[1], dof[1]).
struct jxMultiDofConstraint
{
    int id = 0;
    int no = 0;  ///< 1-based position, used in solver tables
    unsigned char bSelected = 0;
    int node[2] = {};           ///< node ids
    int dof[2] = {};            ///< a Dof each
    double factor[2] = {1, 1};  ///< of u at node[0], node[1]

    static const wchar_t* name() { return L"multi-DOF constraint"; }  ///< in messages
};

/// Rigid diaphragm: the nodes in its plane keep their distances in that plane and are free out of it.
struct jxDiaphragm
{
    int id = 0;
    int no = 0;
    unsigned char bSelected = 0;
    int type = 0;      ///< 0 generic, 1 XZ plane, 2 YZ plane, 3 XY plane
    int reserved = 0;  ///< kept for the host
    int node[4] = {};  ///< corners (generic), or the reference node first

    static const wchar_t* name() { return L"diaphragm"; }  ///< in messages
};

/// Generated rigid link of a diaphragm: a bar stiff against shortening and against bending about the normal.
struct jxLink
{
    int id = -1;
    int no = 0;
    unsigned char bSelected = 0;
    int node1 = 0;  ///< node ids
    int node2 = 0;
    jxPoint normal;  ///< of the diaphragm's plane, unit vector

    static const wchar_t* name() { return L"link"; }  ///< in messages
};
