#pragma once

#include "model/records/record_order.h"

/// Material, isotropic: G = E / (2 (1 + nu)).
struct jxMat
{
    int id = 0;
    int no = 0;
    unsigned char bSelected = 0;
    wchar_t label[128] = {};
    double E = 0;    ///< Young's modulus [modulus]
    double nu = 0;   ///< Poisson's ratio
    double Wc = 0;   ///< weight density [weight density]
    double Tc = 0;   ///< thermal coefficient [1/temperature]
    double fc = 0;   ///< concrete strength [modulus]
    double fy = 0;   ///< yield strength [modulus]
    double fys = 0;  ///< yield strength of stirrups [modulus]

    static const wchar_t* name() { return L"material"; }  ///< in messages
};

/// General section of a member, local y and z its principal axes. The leading word of the label tells the shape of its
/// dimensions: "Rect", "Round", "Tee", ignoring case.
struct jxSect
{
    int id = 0;
    int no = 0;
    unsigned char bSelected = 0;
    wchar_t label[128] = {};
    double A = 0;        ///< area [dimension^2]
    double Ay = 0;       ///< shear area of bending in the local x-y plane; 0 leaves shear out
    double Az = 0;       ///< the same of the local x-z plane
    double Iz = 0;       ///< second moment of bending in the local x-y plane [dimension^4]
    double Iy = 0;       ///< the same of the local x-z plane
    double J = 0;        ///< torsion constant [dimension^4]
    double Cw = 0;       ///< warping constant [dimension^6]
    double dim[4] = {};  ///< shape dimensions [dimension]

    static const wchar_t* name() { return L"section"; }  ///< in messages
};

/// Shell thickness; also a named length of the host.
struct jxThick
{
    int id = 0;
    int no = 0;
    unsigned char bSelected = 0;
    wchar_t label[128] = {};
    double t = 0;  ///< [dimension]

    static const wchar_t* name() { return L"thickness"; }  ///< in messages
};
