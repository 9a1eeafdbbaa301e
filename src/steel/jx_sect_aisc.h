#pragma once

/// Kinds of rolled shapes.
enum SteelShape : int {
    kShapeNone = -1,  ///< no shape of the table
    kShapeW = 0,      ///< I shapes, down to HP
    kShapeM,
    kShapeS,
    kShapeHP,
    kShapeC,  ///< channels
    kShapeMC,
    kShapeWT,  ///< tees cut from the shape of the other letter
    kShapeMT,
    kShapeST,
    kShapeL,        ///< angles
    kShape2L,       ///< double angles, legs back to back
    kShapeHssRect,  ///< hollow sections
    kShapeHssSquare,
    kShapeHssRound,
    kShapePipe,
};

/// One shape of the table of rolled steel shapes, inches throughout; 0 where the table has no value.
///
/// x is the strong axis of I shapes, channels and HSS; of tees the axis parallel to the flange, of angles the axis
/// parallel to the short leg, of double angles the axis across the gap.
struct jxSect_AISC
{
    wchar_t label[128] = {};
    int shape = kShapeNone;  ///< SteelShape
    double weight = 0;       ///< nominal [lb/ft]
    double A = 0;            ///< [in2]
    double d = 0;            ///< depth; outer diameter; long leg; legs back to back [in]
    double b = 0;            ///< flange width; outer diameter; short leg; outstanding legs [in]
    double tw = 0;           ///< web or stem [in]
    double tf = 0;           ///< flange [in]
    double t = 0;            ///< leg; design wall of HSS and pipe [in]
    double tnom = 0;         ///< nominal wall [in]
    double k = 0;            ///< fillet distance for design [in]
    double lambda_f = 0;     ///< slenderness of flange or short wall
    double lambda_w = 0;     ///< slenderness of web, stem, long leg, long wall or round wall
    double x = 0;            ///< centroid from the back of the web, from the back of the long leg [in]
    double y = 0;            ///< centroid from the flange's outer face, from the back of the short leg [in]
    double xp = 0;           ///< plastic neutral axis, from the same faces [in]
    double yp = 0;
    double eo = 0;  ///< shear centre of channels, outward from the back of the web [in]
    double Ix = 0;  ///< [in4]
    double Zx = 0;  ///< plastic modulus [in3]
    double Sx = 0;  ///< elastic modulus [in3]
    double rx = 0;  ///< [in]
    double Iy = 0;
    double Zy = 0;
    double Sy = 0;
    double ry = 0;
    double Iw = 0;         ///< major principal axis of angles [in4]
    double Iz = 0;         ///< minor principal axis of angles [in4]
    double rz = 0;         ///< [in]
    double Sz = 0;         ///< least elastic modulus about z [in3]
    double Sw = 0;         ///< least elastic modulus about w [in3]
    double Szt = 0;        ///< least elastic modulus about z at the leg tips [in3]
    double tan_alpha = 0;  ///< slope of the z axis against the y axis
    double J = 0;          ///< torsion constant [in4]
    double Cw = 0;         ///< warping constant [in6]
    double C = 0;          ///< torsional modulus of HSS [in3]
    double ro = 0;         ///< polar radius about the shear centre [in]
    double H = 0;          ///< flexural constant
    double rts = 0;        ///< effective radius of lateral buckling [in]
    double ho = 0;         ///< distance of the flange centroids [in]
    double sep = 0;        ///< gap of double angles [in]
};
