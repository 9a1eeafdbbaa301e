#pragma once

#include "platform/export.h"

/// Point or vector in three dimensions; right-handed axes, any unit. The operators are those of vectors.
struct jxPoint
{
    double x = 0;
    double y = 0;
    double z = 0;

    /// Adds component by component.
    jxPoint& operator+=(const jxPoint& b)
    {
        x += b.x;
        y += b.y;
        z += b.z;
        return *this;
    }
    /// Subtracts component by component.
    jxPoint& operator-=(const jxPoint& b)
    {
        x -= b.x;
        y -= b.y;
        z -= b.z;
        return *this;
    }
};

/// a + b.
inline jxPoint operator+(jxPoint a, const jxPoint& b)
{
    return a += b;
}
/// a - b: the way from b to a.
inline jxPoint operator-(jxPoint a, const jxPoint& b)
{
    return a -= b;
}
/// s times a.
inline jxPoint operator*(double s, const jxPoint& a)
{
    return {s * a.x, s * a.y, s * a.z};
}
/// Scalar product.
inline double dot(const jxPoint& a, const jxPoint& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

/// Equality component by component within 1e-9 [the points' own unit].
QVXFEM_API bool operator==(const jxPoint& a, const jxPoint& b);

/// |a - b| <= tolerance.
QVXFEM_API bool is_equal(double a, double b, double tolerance);

/// Euclidean distance of two points.
QVXFEM_API double calc_distance(const jxPoint& a, const jxPoint& b);

/// out = a x b (right-handed).
QVXFEM_API void cross(jxPoint& out, const jxPoint& a, const jxPoint& b);

/// Scales v to unit length; the zero vector stays as it is.
QVXFEM_API void normalize(jxPoint& v);

/// v turned by angle [rad], right-handed, about axis (any length but 0). Source: Rodrigues' rotation formula.
QVXFEM_API jxPoint arbitrary_rotate(const jxPoint& v, double angle, const jxPoint& axis);

/// Direction cosines of three unit axes: c[r][k] is component k of local axis r, so that local = c * global.
QVXFEM_API void calc_cos(double c[3][3], const jxPoint axis[3]);
