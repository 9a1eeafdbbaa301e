#pragma once

#include "steel/aisc_elastic_buckling.h"

namespace qvx {

/// Nominal tensile strength by yielding of the gross section, Fy A (D2-1) [kip]. Rupture is not looked at.
double TensileStrength(const jxSect_AISC& shape, const AiscBasis& basis);

/// Nominal compressive strength [kip]: the least of flexural, torsional and flexural-torsional buckling (E3, E4), with
/// slender elements by effective widths (360-16, E7) or the factor Q = Qs Qa (360-05 and -10, E7).
///
/// | shape | buckling |
/// | all but L | flexure about 3 and 2 (E3); double angles with the slip of their connectors |
/// | W, M, S, HP | torsion (E4-2) |
/// | C, MC | flexure about 3 with torsion (E4-3) |
/// | tees, 2L | flexure about 2 with torsion: E4-3; of 360-05 and -10 of the inelastic stresses (E4-2) |
/// | L | flexure about z with the larger length; thin legs: E4-4 |
double CompressionStrength(const jxSect_AISC& shape, const AiscBasis& basis, const EffectiveLengths& lengths);

/// Stress of a column whose elastic stress is Fe (E3-2, E3-3; with Q those of E7) [ksi]; Q Fy at an infinite Fe.
double ColumnStress(double Fy, double Fe, double Q);

}  // namespace qvx
