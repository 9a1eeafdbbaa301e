#pragma once

#include "model/records/text_fields.h"
#include "tools/jx_point.h"

/// Degrees of freedom of a node, in the order used everywhere.
enum Dof : int { kX = 0, kY, kZ, kOX, kOY, kOZ, kDofCount };

/// Names of the degrees of freedom in messages.
inline constexpr const wchar_t* kDofNames[kDofCount] = {L"X", L"Y", L"Z", L"OX", L"OY", L"OZ"};

/// One node.
struct jxNd
{
    int id = 0;
    int no = 0;                   ///< 1-based position in the node vector
    unsigned char bSelected = 0;  ///< bit 0 selected, bit 1 hidden
    double x = 0;                 ///< [length]
    double y = 0;
    double z = 0;

    jxPoint Point() const { return {x, y, z}; }
    static const wchar_t* name() { return L"node"; }
};

/// Support of one node.
struct jxSupt
{
    int id = 0;  ///< node id
    int no = 0;
    unsigned char bSelected = 0;
    wchar_t flag[7] = L"000000";  ///< per DOF: '0' free, '1' restrained by a penalty term, '2' no equation
    double value[6] = {};         ///< prescribed displacement [length x 3, rad x 3]

    static const wchar_t* name() { return L"support"; }
};

/// Linear relation factor[0] * u(node[0], dof[0]) = factor[1] * u(node[1], dof[1]).
struct jxMultiDofConstraint
{
    int id = 0;
    int no = 0;  ///< 1-based position, used in solver tables
    unsigned char bSelected = 0;
    int node[2] = {};
    int dof[2] = {};
    double factor[2] = {1, 1};

    static const wchar_t* name() { return L"multi-DOF constraint"; }
};

/// Rigid diaphragm.
struct jxDiaphragm
{
    int id = 0;
    int no = 0;
    unsigned char bSelected = 0;
    int type = 0;      ///< 0 generic, 1 XZ plane, 2 YZ plane, 3 XY plane
    int reserved = 0;  ///< kept for the host
    int node[4] = {};  ///< corners (generic), or the reference node first

    static const wchar_t* name() { return L"diaphragm"; }
};

/// Generated rigid link of a diaphragm.
struct jxLink
{
    int id = -1;
    int no = 0;
    unsigned char bSelected = 0;
    int node1 = 0;
    int node2 = 0;
    jxPoint normal;  ///< normal of the diaphragm's plane

    static const wchar_t* name() { return L"link"; }
};

inline bool operator<(const jxNd& a, const jxNd& b)
{
    return a.id < b.id;
}
inline bool operator<(const jxSupt& a, const jxSupt& b)
{
    return a.id < b.id;
}
inline bool operator<(const jxMultiDofConstraint& a, const jxMultiDofConstraint& b)
{
    return a.id < b.id;
}
inline bool operator<(const jxDiaphragm& a, const jxDiaphragm& b)
{
    return a.id < b.id;
}
inline bool operator<(const jxLink& a, const jxLink& b)
{
    return a.id < b.id;
}
