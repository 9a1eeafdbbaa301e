#pragma once

#include <vector>

namespace qvx {

/// Point of a cross section, from the centroid.
struct SectionPoint
{
    double y = 0;
    double z = 0;
};

/// Cross section for normal stresses: its properties about the centroid and the points where stress is wanted.
///
///        y ^
///          |        seen along the member from its start, local x away from the eye;
///     -----+----> z y is across the axis of Mz (strong), z across the axis of My
///          |
struct StressSection
{
    double A = 0;
    double Iz = 0;          ///< integral of y y dA: bending under Mz
    double Iy = 0;          ///< integral of z z dA: bending under My
    double Iyz = 0;         ///< integral of y z dA; 0 where y or z is an axis of symmetry
    double edgeRadius = 0;  ///< of a round section, whose largest stress may stand at any point of its edge; else 0
    std::vector<SectionPoint> points;
};

/// Rectangle b wide (z), h deep (y); points: its corners, counterclockwise from the one at -y, -z.
StressSection RectangleStressSection(double b, double h);

/// Solid circle; points: its quarters, clockwise from +y.
StressSection RoundStressSection(double diameter);

/// Tee with the flange on the side of +y: flange width bf, overall depth h, flange thickness hf, web width bw.
/// Points: both ends of the flange's face, from -z, then both of the web's, from +z.
StressSection TeeStressSection(double bf, double h, double hf, double bw);

/// Quarters of a circle, clockwise from +y.
std::vector<SectionPoint> RoundPoints(double diameter);
/// Corners of a rectangle h deep from z = left to z = right, counterclockwise from -y, left.
std::vector<SectionPoint> RectanglePoints(double left, double right, double h);
/// Ends of a tee whose flange's outer face lies at y = top.
std::vector<SectionPoint> TeePoints(double bf, double h, double bw, double top);

/// Normal stress at each point, tension positive.
///
/// N = int s dA, Mz = -int s y dA, My = -int s z dA for a plane s(y, z): N / A - Mz y / Iz - My z / Iy where y and z
/// are principal axes. Positive Mz pulls on the side of -y, positive My on the side of -z, as the member curves have
/// it. A round section has two more values: the least and the largest of its edge, N / A -+ sqrt(Mz^2 + My^2) R / I.
std::vector<double> NormalStresses(const StressSection& section, double N, double Mz, double My);

}  // namespace qvx

/// The least of the values below 0; 0 when there is none.
double get_min_negative(const std::vector<double>& values);
/// The largest of the values above 0; 0 when there is none.
double get_max_positive(const std::vector<double>& values);
