#pragma once

#include "model/records/record_order.h"

/// Elastic spring of a node, a member (per length) or a shell (per area), to the ground, along global axes.
struct jxSpring
{
    int id = 0;  ///< node, member or shell id
    int no = 0;
    unsigned char bSelected = 0;
    wchar_t flag[7] = L"000000";    ///< per DOF: '0' linear, '1' fails under positive, '2' under negative displacement
    double k[6] = {};               ///< Kx, Ky, Kz, Kox, Koy, Koz; members and shells use the first three
    unsigned char bFailed[6] = {};  ///< state of an iteration: discarded on its free side

    static const wchar_t* name() { return L"spring"; }  ///< in messages
};

/// Full symmetric 6x6 spring of a node to the ground, global axes; it acts both ways always.
struct jxCoupledSpring
{
    int id = 0;  ///< node id
    int no = 0;
    unsigned char bSelected = 0;
    double k[21] = {};              ///< upper triangle row by row in DOF order
    unsigned char bFailed[6] = {};  ///< of the host; stays 0

    static const wchar_t* name() { return L"coupled spring"; }  ///< in messages
};
