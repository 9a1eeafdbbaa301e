#pragma once

#include <cmath>

#include "steel/jx_sect_aisc.h"
#include "tools/design_trace.h"

namespace qvx {

/// Editions of ANSI/AISC 360, structural steel buildings.
enum AiscEdition : int { kAisc05 = 0, kAisc10 = 1, kAisc16 = 2 };

inline constexpr double kSteelE = 29000;      ///< [ksi]
inline constexpr double kSteelG = 11200;      ///< [ksi]
inline constexpr double kInchesPerFoot = 12;  ///< moments come in kip-ft, strengths are worked out in kip-in

/// What every limit state needs to know beside the shape.
struct AiscBasis
{
    int edition = kAisc16;  ///< AiscEdition
    double Fy = 0;          ///< yield stress > 0 [ksi]
    DesignTrace* trace = nullptr;

    /// sqrt(E / Fy), the measure of every slenderness limit (Table B4.1).
    double Root() const { return std::sqrt(kSteelE / Fy); }
    bool Is16() const { return edition >= kAisc16; }
    /// Number of a clause or an equation in the edition.
    const char* Number(const char* of16, const char* of10, const char* of05) const
    {
        return Is16() ? of16 : edition == kAisc10 ? of10 : of05;
    }
    const char* Number(const char* of16, const char* before) const { return Is16() ? of16 : before; }
};

inline bool IsIShape(int shape)
{
    return shape == kShapeW || shape == kShapeM || shape == kShapeS || shape == kShapeHP;
}
inline bool IsChannel(int shape)
{
    return shape == kShapeC || shape == kShapeMC;
}
inline bool IsTee(int shape)
{
    return shape == kShapeWT || shape == kShapeMT || shape == kShapeST;
}
inline bool IsBox(int shape)
{
    return shape == kShapeHssRect || shape == kShapeHssSquare;
}
inline bool IsRoundTube(int shape)
{
    return shape == kShapeHssRound || shape == kShapePipe;
}

/// Straight line between two limits of slenderness: from at lambda <= p, to at lambda >= r.
inline double BetweenLimits(double lambda, double p, double r, double from, double to)
{
    const double t = (lambda - p) / (r - p);
    return t <= 0 ? from : t >= 1 ? to : from - (from - to) * t;
}

}  // namespace qvx
