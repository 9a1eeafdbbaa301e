// Published problems of natural vibration, each with its source and target, and the value P of exactly this
// discretisation (masses lumped at the nodes, translations only) by an independent program.
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

#include <gtest/gtest.h>

#include "dynamics/participation.h"
#include "support/vibrating_model.h"
#include "verification/shell_grid.h"

namespace {

using namespace qvx::test;
using qvx::kGravity;

/// A model whose masses are those of its own weight, of density rho. Numbers are of any consistent set of units.
template <class Base>
class Heavy : public Base
{
public:
    explicit Heavy(double rho, int vertical)
    {
        this->model.selfWeightFactor = -1;
        this->model.selfWeightDir = vertical;
        this->model.bZVertical = vertical == kZ ? 1 : 0;
        density_ = rho * kGravity;
    }
    int Material(double E, double nu) { return Base::Material(E, nu, density_); }
    void SolveModes(int count, int solverType = DoubleSparse)
    {
        this->model.solverType = solverType;
        this->model.numberOfModes = count;
        this->model.eigenTolerance = 1e-7;
        this->model.maxSubspaceIterations = 100;
        this->model.iterationVectors = 2 * count + 8;
        ASSERT_EQ(this->model.ExecuteFrequency(false), 1);
        EXPECT_EQ(this->model.frequencyOutcome.sturmCounted, this->model.frequencyOutcome.sturmExpected);
    }
    double Hertz(std::size_t mode) const
    {
        return std::sqrt(this->model.eigenResults.at(mode - 1).eigenvalue) / (2 * std::numbers::pi);
    }

private:
    double density_;
};

// --- Beams -----------------------------------------------------------------------------------------------------------

struct LumpedBeam
{
    const char* name;
    int elements;
    bool isCantilever;
    std::vector<double> omegas;  ///< in sqrt(EI/(m L^4))
};
void PrintTo(const LumpedBeam& beam, std::ostream* out)
{
    *out << beam.name;
}

class LumpedBeams : public testing::TestWithParam<LumpedBeam>
{
};

// Clough & Penzien, Dynamics of Structures; Paz, Structural Dynamics: uniform beams with masses lumped at their nodes.
TEST_P(LumpedBeams, HaveTheFrequenciesOfTheTextbook)
{
    const LumpedBeam& beam = GetParam();
    HostFirst host;
    Heavy<ModelBuilder> m(1, kY);
    m.model.bInteractive = 0;
    m.model.modelType = Frame2D;
    m.model.bShearDeformation = 0;
    m.Material(1000, 0.25);
    m.Section({.A = 0.5, .Iz = 3, .Iy = 3, .J = 1});
    const double L = 10, massPerLength = 0.5;
    m.Node(0, 0);
    for (int i = 1; i <= beam.elements; ++i) {
        m.Node(L * i / beam.elements, 0);
        m.Member(i, i + 1);
    }
    m.Support(1, beam.isCantilever ? L"222222" : L"220000");
    if (!beam.isCantilever)
        m.Support(beam.elements + 1, L"020000");
    for (int i = 2; i <= beam.elements + (beam.isCantilever ? 1 : 0); ++i)
        m.Support(i, L"200000");  // bending alone

    m.SolveModes(static_cast<int>(beam.omegas.size()));

    const double unit = std::sqrt(1000.0 * 3 / (massPerLength * L * L * L * L));
    for (std::size_t mode = 1; mode <= beam.omegas.size(); ++mode)
        EXPECT_NEAR(m.Hertz(mode) * 2 * std::numbers::pi / unit, beam.omegas[mode - 1],
                    6e-5 + 1e-6 * beam.omegas[mode - 1]);  // four printed digits
}

INSTANTIATE_TEST_SUITE_P(All, LumpedBeams,
                         testing::Values(LumpedBeam{"simple2", 2, false, {9.7980}},
                                         LumpedBeam{"simple3", 3, false, {9.8590, 38.1838}},
                                         LumpedBeam{"simple4", 4, false, {9.8666, 39.1918, 83.2128}},
                                         LumpedBeam{"simple8", 8, false, {9.8694, 39.4664, 88.6636}},
                                         LumpedBeam{"cantilever1", 1, true, {2.4495}},
                                         LumpedBeam{"cantilever2", 2, true, {3.1562, 16.258}},
                                         LumpedBeam{"cantilever3", 3, true, {3.3457, 18.8859, 47.0284}},
                                         LumpedBeam{"cantilever4", 4, true, {3.4180, 20.0904, 53.2017}},
                                         LumpedBeam{"cantilever8", 8, true, {3.4910, 21.5016, 59.2789}}),
                         [](const auto& beam) { return beam.param.name; });

/// Storeys of one column each that shear alone: stiffness 12 EI / h^3, floors that do not turn.
class ShearBuilding : public VibratingModel
{
public:
    ShearBuilding(const std::vector<double>& stiffness, const std::vector<double>& masses)
    {
        model.modelType = Frame2D;
        model.bShearDeformation = 0;
        const double h = 144;
        Node(0, 0);
        Support(1, L"222222");
        for (std::size_t i = 0; i < masses.size(); ++i) {
            const int top = Node(0, h * static_cast<double>(i + 1));
            const int section = Section({.A = 1, .Iz = stiffness[i] * h * h * h / (12 * 1000), .Iy = 1, .J = 1});
            Member(top - 1, top, section);
            Support(top, L"022222");
            Mass(top, kX, masses[i]);
        }
        model.numberOfModes = static_cast<int>(masses.size());
    }
};

// Chopra, Dynamics of Structures: two storeys of stiffness 2k and k, masses 2m and m.
TEST(ShearBuildings, ChoprasTwoStoreys)
{
    const double k = 31, m = 7;
    ShearBuilding building({2 * k, k}, {2 * m, m});
    ASSERT_EQ(building.model.ExecuteFrequency(false), 1);
    EXPECT_NEAR(building.Omega(1) / std::sqrt(k / (2 * m)), 1, 1e-9);
    EXPECT_NEAR(building.Omega(2) / std::sqrt(2 * k / m), 1, 1e-9);
}

// Chopra, Dynamics of Structures: the uniform five-storey building, m = 100 kip/g, k = 31.54 kip/in, g = 386.4 in/s^2.
// Effective modal masses to the printed digits too.
TEST(ShearBuildings, ChoprasFiveStoreys)
{
    ShearBuilding building(std::vector<double>(5, 31.54), std::vector<double>(5, 100 / 386.4));
    ASSERT_EQ(building.model.ExecuteFrequency(false), 1);

    const double periods[] = {1.99963, 0.68504, 0.43456, 0.33828, 0.29659};
    const double masses[] = {0.87953, 0.08718, 0.02422, 0.00751, 0.00157};
    const auto shares = qvx::ModalParticipation(building.model);
    double sum = 0;
    for (std::size_t mode = 1; mode <= 5; ++mode) {
        EXPECT_NEAR(1 / building.Hertz(mode), periods[mode - 1], 6e-6);
        EXPECT_NEAR(shares[mode - 1][0], masses[mode - 1], 6e-6);
        sum += shares[mode - 1][0];
    }
    EXPECT_NEAR(sum, 1, 1e-9);  // all modes move all mass
}

// NAFEMS, Selected Benchmarks for Natural Frequency Analysis (1987), FV2: eight arms of 5 m, pinned at their outer ends.
// Reference 11.336, 17.709 (seven), 45.345, 57.390 (seven) Hz; P with four elements an arm.
TEST(Nafems, PinnedDoubleCrossHasItsMultipleFrequencies)
{
    HostFirst host;
    Heavy<ModelBuilder> m(8000, kY);
    m.model.modelType = Frame2D;
    m.Material(200e9, 0.3);
    const double side = 0.125;
    m.Section({.A = side * side, .Iz = std::pow(side, 4) / 12, .Iy = std::pow(side, 4) / 12, .J = 1e-5});
    const int centre = m.Node(0, 0);
    for (int arm = 0; arm < 8; ++arm) {
        const double angle = arm * std::numbers::pi / 4;
        int from = centre;
        for (int i = 1; i <= 4; ++i) {
            const int to = m.Node(1.25 * i * std::cos(angle), 1.25 * i * std::sin(angle));
            m.Member(from, to);
            from = to;
        }
        m.Support(from, L"110000");
    }

    m.SolveModes(16);

    const double P[] = {11.333, 17.662, 17.662, 17.690, 17.690, 17.690, 17.690, 17.690,
                        45.016, 56.058, 56.058, 56.344, 56.344, 56.344, 56.344, 56.344};
    const double reference[] = {11.336, 17.709, 45.345, 57.390};
    for (std::size_t mode = 1; mode <= 16; ++mode) {
        EXPECT_NEAR(m.Hertz(mode), P[mode - 1], 1.5e-3) << "mode " << mode;
        EXPECT_NEAR(m.Hertz(mode) / reference[(mode > 1) + (mode > 8) + (mode > 9)], 1, 0.025) << "mode " << mode;
    }
}

// NAFEMS FV5: deep beam 10 m long, 2 x 2 m, simply supported. Exact without rotary inertia, which the lumped masses do not
// have: bending 43.183 (2), 152.718, axial 125.00 Hz (with it 42.649). P for five and ten elements.
TEST(Nafems, DeepSimplySupportedBeam)
{
    for (const auto& [elements, P] : {std::pair{5, std::array{43.111, 43.111, 124.487, 149.391, 149.391}},
                                      std::pair{10, std::array{43.166, 43.166, 124.872, 151.965, 151.965}}}) {
        HostFirst host;
        Heavy<ModelBuilder> m(8000, kY);
        m.Material(200e9, 0.3);
        m.Section({.A = 4, .Ay = 5.0 / 6 * 4, .Az = 5.0 / 6 * 4, .Iz = 16.0 / 12, .Iy = 16.0 / 12, .J = 2.25});
        m.Node(0, 0, 0);
        for (int i = 1; i <= elements; ++i) {
            m.Node(10.0 * i / elements, 0, 0);
            m.Member(i, i + 1);
        }
        m.Support(1, L"111100");
        m.Support(elements + 1, L"011000");

        m.SolveModes(5);

        for (std::size_t mode = 1; mode <= 5; ++mode)
            EXPECT_NEAR(m.Hertz(mode), P[mode - 1], 2e-3) << elements << " elements, mode " << mode;
    }
}

// --- Plates and solids --------------------------------------------------------------------------------------------------

/// Rhombic plate n x n of side 10, in bending.
class Plate : public Heavy<ShellGrid>
{
public:
    Plate(int n, double t, double skew) : Heavy<ShellGrid>(8000, kZ), n_(n)
    {
        model.modelType = PlateBending2D;
        Material(200e9, 0.3);
        Thickness(t);
        const double c = std::cos(skew), s = std::sin(skew), h = 10.0 / n;
        Mesh(n, n, [&](int i, int j) { return jxPoint{h * (i + j * s), h * j * c, 0}; });
    }
    void HoldEdges(std::initializer_list<int> alongI, std::initializer_list<int> alongJ)
    {
        for (int k = 0; k <= n_; ++k) {
            Hold(At(k, 0), alongI);
            Hold(At(k, n_), alongI);
            Hold(At(0, k), alongJ);
            Hold(At(n_, k), alongJ);
        }
        ApplyHolds();
    }

private:
    int n_;
};

// NAFEMS test 13, thin square plate on hard simple supports: 2.377, 5.942 (2), 9.507, 11.884 (2) Hz. P of MITC4, n = 8.
TEST(Nafems, SimplySupportedThinPlate)
{
    HostFirst host;
    Plate m(8, 0.05, 0);
    m.HoldEdges({kZ, kOY}, {kZ, kOX});
    m.SolveModes(6);
    const double P[] = {2.357, 5.939, 5.939, 9.198, 12.311, 12.311};
    const double reference[] = {2.377, 5.942, 5.942, 9.507, 11.884, 11.884};
    for (std::size_t mode = 1; mode <= 6; ++mode) {
        EXPECT_NEAR(m.Hertz(mode), P[mode - 1], 1.5e-3) << "mode " << mode;
        EXPECT_NEAR(m.Hertz(mode) / reference[mode - 1], 1, 0.04) << "mode " << mode;
    }
}

// NAFEMS test 21, thick square plate: 45.897, 109.44 (2), 167.89, 204.51 (2) Hz. P of MITC4, n = 8.
TEST(Nafems, SimplySupportedThickPlate)
{
    HostFirst host;
    Plate m(8, 1, 0);
    m.HoldEdges({kZ, kOY}, {kZ, kOX});
    m.SolveModes(6);
    const double P[] = {45.833, 110.612, 110.612, 164.814, 211.764, 211.764};
    const double reference[] = {45.897, 109.44, 109.44, 167.89, 204.51, 204.51};
    for (std::size_t mode = 1; mode <= 6; ++mode) {
        EXPECT_NEAR(m.Hertz(mode), P[mode - 1], 2e-2) << "mode " << mode;
        EXPECT_NEAR(m.Hertz(mode) / reference[mode - 1], 1, 0.04) << "mode " << mode;
    }
}

// NAFEMS FV15, clamped thin rhombic plate of 45 degrees: 7.938, 12.835, 17.941, 19.133 Hz. P 12 x 12.
TEST(Nafems, ClampedThinRhombicPlate)
{
    HostFirst host;
    Plate m(12, 0.05, std::numbers::pi / 4);
    m.HoldEdges({kZ, kOX, kOY}, {kZ, kOX, kOY});
    m.SolveModes(4);
    const double P[] = {8.001, 13.305, 18.684, 19.436};
    for (std::size_t mode = 1; mode <= 4; ++mode)
        EXPECT_NEAR(m.Hertz(mode), P[mode - 1], 2e-3) << "mode " << mode;
    EXPECT_NEAR(m.Hertz(1) / 7.938, 1, 0.02);
}

// NAFEMS FV22, the same 1 m thick: 133.95, 201.41, 265.81, 283.68 Hz. P 10 x 10.
TEST(Nafems, ClampedThickRhombicPlate)
{
    HostFirst host;
    Plate m(10, 1, std::numbers::pi / 4);
    m.HoldEdges({kZ, kOX, kOY}, {kZ, kOX, kOY});
    m.SolveModes(4);
    const double P[] = {136.463, 211.058, 279.435, 290.39};
    for (std::size_t mode = 1; mode <= 4; ++mode)
        EXPECT_NEAR(m.Hertz(mode), P[mode - 1], 3e-2) << "mode " << mode;
    EXPECT_NEAR(m.Hertz(1) / 133.95, 1, 0.03);
}

}  // namespace
