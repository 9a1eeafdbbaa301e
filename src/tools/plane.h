#pragma once

#include "platform/export.h"
#include "tools/jx_point.h"

/// Plane through three points. Its axes: x from the first to the second point, z along the normal
/// (b - a) x (c - a), y = z x x.
class QVXFEM_API jxPlane
{
public:
    /// @param offset  moves the plane along its normal
    jxPlane(const jxPoint& a, const jxPoint& b, const jxPoint& c, double offset);

    /// Direction cosines of its axes, one axis a row.
    void calc_cos(double c[3][3]) const;
    /// Distance of a point from the plane, never negative.
    double distance(const jxPoint& p) const;

private:
    jxPoint origin_;
    jxPoint axes_[3];
};

/// Point in the axes whose direction cosines are given: rows of c times p.
QVXFEM_API jxPoint transform_point(const jxPoint& p, const double c[3][3]);

/// Distance of p from the infinite line through a and b.
QVXFEM_API double calc_distance(const jxPoint& p, const jxPoint& a, const jxPoint& b);

/// Whether p lies inside a polygon of the x-y plane, by the parity of the edges that a ray from it crosses; a point on
/// the boundary may count either way. Source: Shimrat, Algorithm 112, CACM 5 (1962).
QVXFEM_API bool inpolygon(const jxPoint* polygon, int n, const jxPoint& p);

/// Whether p lies within the tolerance of an edge of a polygon.
QVXFEM_API bool onpolygon(const jxPoint* polygon, int n, const jxPoint& p, double tolerance);
