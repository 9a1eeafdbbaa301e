#include "extremes.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <map>

#include <fmt/format.h>

namespace qvx::app {
namespace {

// Keeps the value of largest magnitude; its place is spelled once, at the end.
template <class Place>
class Largest
{
public:
    void Take(double value, const Place& place)
    {
        // Of equal ones the first; NaN compares as not larger and is told by UnusableResult.
        if (std::fabs(value) > std::fabs(value_)) {
            value_ = value;
            place_ = place;
        }
    }
    // With its sign: whether a member is pulled or pushed matters more than how hard.
    double Value() const { return value_; }
    const Place& Where() const { return place_; }

private:
    double value_ = 0;
    Place place_{};
};

template <class Place, class Spell>
void Append(std::vector<Extreme>& out, const char* what, Quantity unit, const Largest<Place>& largest, Spell spell)
{
    if (largest.Value() != 0)
        out.push_back({what, unit, largest.Value(), spell(largest.Where())});
}

// Component of a translation or a rotation; what is round-off beside the others reads better as 0.
std::string Component(const jxResult6Val& d, std::size_t dof)
{
    assert(dof < 6 && "three translations, three rotations");
    const double* const v = d.value + (dof < 3 ? 0 : 3);
    constexpr double kRoundOff = 1e-9;
    const bool isZero = std::fabs(d.value[dof]) <= kRoundOff * std::hypot(v[0], v[1], v[2]);
    return fmt::format("{:.4g}", isZero ? 0.0 : d.value[dof]);
}

void AppendDisplacements(std::vector<Extreme>& out, const std::vector<jxResult6Val>& displacements)
{
    Largest<const jxResult6Val*> translation;
    Largest<const jxResult6Val*> rotation;
    for (const jxResult6Val& d : displacements) {
        translation.Take(std::hypot(d.value[0], d.value[1], d.value[2]), &d);
        rotation.Take(std::hypot(d.value[3], d.value[4], d.value[5]), &d);
    }
    Append(out, "displacement", kTranslationalDisplacement, translation, [](const jxResult6Val* d) {
        return fmt::format("node {} (X {}, Y {}, Z {})", d->id, Component(*d, 0), Component(*d, 1), Component(*d, 2));
    });
    Append(out, "rotation", kRotationalDisplacement, rotation, [](const jxResult6Val* d) {
        return fmt::format("node {} (OX {}, OY {}, OZ {})", d->id, Component(*d, 3), Component(*d, 4),
                           Component(*d, 5));
    });
}

struct MemberPlace
{
    int id = 0;
    double x = 0;  // of the length
    const char* component = "";
};

std::string Spelled(const MemberPlace& place)
{
    assert(place.component != nullptr && "a force has its name");
    const std::string at = place.x == 0 ? "start" : place.x == 1 ? "end" : fmt::format("at {:.3g} L", place.x);
    return fmt::format("member {}, {} ({})", place.id, at, place.component);
}

// Both shears share a line and both moments: the summary names the worse and says which it is.
struct MemberForces
{
    Largest<MemberPlace> axial;
    Largest<MemberPlace> shear;
    Largest<MemberPlace> torsion;
    Largest<MemberPlace> bending;

    void Take(int id, double x, const jxVMD& forces)
    {
        axial.Take(forces.Fx, {id, x, "Fx"});
        shear.Take(forces.Fy, {id, x, "Fy"});
        shear.Take(forces.Fz, {id, x, "Fz"});
        torsion.Take(forces.Mx, {id, x, "Mx"});
        bending.Take(forces.My, {id, x, "My"});
        bending.Take(forces.Mz, {id, x, "Mz"});
    }
};

// Ends first and apart: they are exact, while stations along a member may miss a peak between them.
MemberForces LargestEndForces(const std::vector<jxBmEndVMD>& members)
{
    MemberForces forces;
    for (const jxBmEndVMD& member : members) {
        forces.Take(member.id, 0, member.start);
        forces.Take(member.id, 1, member.end);
    }
    return forces;
}

void AppendEndForces(std::vector<Extreme>& out, const MemberForces& ends)
{
    Append(out, "end axial force", kForce, ends.axial, Spelled);
    Append(out, "end shear", kForce, ends.shear, Spelled);
    Append(out, "end torsion", kMoment, ends.torsion, Spelled);
    Append(out, "end moment", kMoment, ends.bending, Spelled);
}

// A value along members that is larger than those at their ends.
void AppendLarger(std::vector<Extreme>& out, const char* what, Quantity unit, const Largest<MemberPlace>& along,
                  const Largest<MemberPlace>& atEnds)
{
    constexpr double kRoundOff = 1e-9;
    // What is largest at an end stands among the end forces already.
    if (std::fabs(along.Value()) > (1 + kRoundOff) * std::fabs(atEnds.Value()))
        Append(out, what, unit, along, Spelled);
}

void AppendCurves(std::vector<Extreme>& out, const std::vector<jxBmVMD>& members, const MemberForces& ends)
{
    MemberForces forces;
    Largest<MemberPlace> deflection;
    for (const jxBmVMD& member : members) {
        for (const jxVMD& station : member.vmd) {
            forces.Take(member.id, station.x, station);
            deflection.Take(station.Dy, {member.id, station.x, "Dy"});
            deflection.Take(station.Dz, {member.id, station.x, "Dz"});
        }
    }
    AppendLarger(out, "span axial force", kForce, forces.axial, ends.axial);
    AppendLarger(out, "span shear", kForce, forces.shear, ends.shear);
    AppendLarger(out, "span torsion", kMoment, forces.torsion, ends.torsion);
    AppendLarger(out, "span moment", kMoment, forces.bending, ends.bending);
    Append(out, "sag from the chord", kTranslationalDisplacement, deflection, Spelled);
}

struct Location
{
    int id = 0;
    std::size_t location = 0;  // 0 the centre, else the corner
    const char* component = "";
};

std::string ShellPlace(const Location& place)
{
    assert(place.location <= 4 && "centre and corners");
    const std::string at = place.location == 0 ? "centre" : fmt::format("corner {}", place.location);
    return fmt::format("shell {}, {} ({})", place.id, at, place.component);
}

std::string BrickPlace(const Location& place)
{
    assert(place.location <= 8 && "centre and corners");
    const std::string at = place.location == 0 ? "centre" : fmt::format("corner {}", place.location);
    return fmt::format("brick {}, {} ({})", place.id, at, place.component);
}

// Forces and moments are per unit length of the shell. Location 0 is the centre, 1 to 4 the corners.
void AppendShells(std::vector<Extreme>& out, const std::vector<jxShellStress>& shells)
{
    constexpr const char* kMembrane[3] = {"Fxx", "Fyy", "Fxy"};
    constexpr const char* kPlate[5] = {"Mxx", "Myy", "Mxy", "Vxx", "Vyy"};
    constexpr const char* kFaces[2] = {"von Mises, top", "von Mises, bottom"};
    Largest<Location> membrane;
    Largest<Location> moment;
    Largest<Location> shear;
    Largest<Location> stress;
    for (const jxShellStress& shell : shells) {
        for (std::size_t l = 0; l < 5; ++l) {
            for (std::size_t k = 0; k < 3; ++k) {
                membrane.Take(shell.F[l][k], {shell.id, l, kMembrane[k]});
                moment.Take(shell.P[l][k], {shell.id, l, kPlate[k]});
            }
            for (std::size_t k = 3; k < 5; ++k)
                shear.Take(shell.P[l][k], {shell.id, l, kPlate[k]});
            for (std::size_t face = 0; face < 2; ++face)
                stress.Take(shell.derived[l].vonMises[face], {shell.id, l, kFaces[face]});
        }
    }
    Append(out, "shell membrane", kLinearForce, membrane, ShellPlace);
    Append(out, "shell moment", kLinearMoment, moment, ShellPlace);
    Append(out, "shell shear", kLinearForce, shear, ShellPlace);
    Append(out, "shell stress", kStress, stress, ShellPlace);
}

void AppendBricks(std::vector<Extreme>& out, const std::vector<jxBrickStress>& bricks)
{
    constexpr const char* kComponents[6] = {"Sxx", "Syy", "Szz", "Sxy", "Syz", "Sxz"};
    Largest<Location> component;
    Largest<Location> equivalent;
    for (const jxBrickStress& brick : bricks) {
        for (std::size_t l = 0; l < 9; ++l) {
            const auto& s = brick.S[l];
            for (std::size_t k = 0; k < 6; ++k)
                component.Take(s[k], {brick.id, l, kComponents[k]});
            // von Mises (Mechanik der festen Koerper im plastisch-deformablen Zustand, 1913): half the squares of the
            // differences of the normal stresses and three times those of the shears.
            const double normal = std::pow(s[0] - s[1], 2) + std::pow(s[1] - s[2], 2) + std::pow(s[2] - s[0], 2);
            const double shear = s[3] * s[3] + s[4] * s[4] + s[5] * s[5];
            assert(!(normal < 0) && !(shear < 0) && "sums of squares");
            equivalent.Take(std::sqrt(normal / 2 + 3 * shear), {brick.id, l, "von Mises"});
        }
    }
    Append(out, "brick stress", kStress, component, BrickPlace);
    Append(out, "brick stress", kStress, equivalent, BrickPlace);
}

// What is round-off beside another value of the same unit is not worth a line.
void DropRoundOff(std::vector<Extreme>& extremes)
{
    constexpr double kRoundOff = 1e-9;
    // By unit: a moment of 1e-9 says nothing about a force, and the other way round.
    std::map<Quantity, double> largest;
    for (const Extreme& e : extremes)
        largest[e.unit] = std::max(largest[e.unit], std::fabs(e.value));
    std::erase_if(extremes, [&](const Extreme& e) { return std::fabs(e.value) < kRoundOff * largest[e.unit]; });
}

}  // namespace

std::vector<Extreme> ExtremesOf(const jxCombResult& result)
{
    std::vector<Extreme> extremes;
    AppendDisplacements(extremes, result.displacements);
    const MemberForces ends = LargestEndForces(result.beamEndForces);
    AppendEndForces(extremes, ends);
    // Along a member only what exceeds its ends adds a line.
    AppendCurves(extremes, result.beamCurves, ends);
    AppendShells(extremes, result.shell4Stresses);
    AppendBricks(extremes, result.brickStresses);
    DropRoundOff(extremes);
    return extremes;
}

}  // namespace qvx::app
