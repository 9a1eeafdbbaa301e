#pragma once

/// Elastic spring of a node, a member (per length) or a shell (per area).
struct jxSpring
{
    int id = 0;  ///< node, member or shell id
    int no = 0;
    unsigned char bSelected = 0;
    wchar_t flag[7] = L"000000";  ///< per DOF: '0' linear, '1' fails under positive, '2' under negative displacement
    double k[6] = {};             ///< Kx, Ky, Kz, Kox, Koy, Koz; members and shells use the first three
    unsigned char bFailed[6] = {};

    static const wchar_t* name() { return L"spring"; }
};

/// Full symmetric 6x6 spring of a node.
struct jxCoupledSpring
{
    int id = 0;  ///< node id
    int no = 0;
    unsigned char bSelected = 0;
    double k[21] = {};  ///< upper triangle row by row in DOF order
    unsigned char bFailed[6] = {};

    static const wchar_t* name() { return L"coupled spring"; }
};

inline bool operator<(const jxSpring& a, const jxSpring& b)
{
    return a.id < b.id;
}
inline bool operator<(const jxCoupledSpring& a, const jxCoupledSpring& b)
{
    return a.id < b.id;
}
