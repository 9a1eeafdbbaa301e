#pragma once

namespace qvx {

/// Part of a section's gross area under the rectangular stress block.
struct CompressionBlock
{
    double area = 0;  ///< [in^2]
    double z = 0;     ///< centroid from the middle of the section, z along the width, y along the depth [in]
    double y = 0;
};

/// Direction across a section, of unit length: depth is measured against it from the extreme compression fibre.
struct CompressionDirection
{
    double z = 0;
    double y = 1;
};

/// Depth of a rectangle b wide and h deep along the direction.
double RectangleDepth(double b, double h, CompressionDirection direction);

/// The part of a rectangle within `depth` of its extreme fibre in the direction, a polygon cut exactly.
/// @param depth  [in]; all of the section from RectangleDepth on
CompressionBlock RectangleBlock(double b, double h, CompressionDirection direction, double depth);

/// The same of a circle: a circular segment.
CompressionBlock CircleBlock(double diameter, CompressionDirection direction, double depth);

}  // namespace qvx
