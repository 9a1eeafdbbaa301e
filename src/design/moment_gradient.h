#pragma once

#include "design/design_rules.h"
#include "model/records/result.h"
#include "tools/design_trace.h"

namespace qvx {

/// A stretch of a member between two braces, distances from its start in the unit of its length.
struct UnbracedSegment
{
    double start = 0;
    double end = 0;
};

/// The segment in which x lies. Braces stand Lb apart from the start; a station at a brace belongs to the segment before.
/// @param L   length of the member > 0
/// @param Lb  0: one segment
UnbracedSegment SegmentOf(double L, double Lb, double x);

/// Cb of a segment by the moments at its quarter points, 1 to 3 (AISC 360-16, F1-1).
/// @param curve  stations from 0 to 1, not empty
/// @param rules  usual: the moments enter with their signs; consistent: by magnitude, as the equation has them
double SegmentCb(const jxBmVMD& curve, double L, const UnbracedSegment& segment, DesignRules rules,
                 DesignTrace* trace = nullptr);

}  // namespace qvx
