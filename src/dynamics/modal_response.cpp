#include "dynamics/modal_response.h"

#include <cassert>
#include <cmath>
#include <utility>

#include "dynamics/response_spectrum_manager.h"
#include "model/physical_constants.h"

namespace qvx {

namespace {

using std::sqrt;

/// Values by equation as one record per node; zero where there is no equation.
/// @param factor  times each value
template <Number Real>
std::vector<jxResult6Val> NodalRecords(const CjxStruct& model, const std::vector<Real>& values, const Real& factor)
{
    std::vector<jxResult6Val> records;
    records.reserve(model.nodes.size());
    for (const jxNd& node : model.nodes) {
        jxResult6Val& record = records.emplace_back(jxResult6Val{.id = node.id});
        const int position = static_cast<int>(records.size());
        for (int dof = 0; dof < kDofCount; ++dof)
            if (const int e = model.Equation(position, dof); e > 0)
                record.value[dof] = static_cast<double>(factor * values[static_cast<std::size_t>(e)]);
    }
    return records;
}

/// Sums of a mode over the masses.
template <Number Real>
struct ModeSums
{
    Real excitation = 0;  ///< L
    Real modalMass = 0;   ///< M*
    Real totalMass = 0;   ///< Mt
};

template <Number Real>
ModeSums<Real> SumsOf(const CjxStruct& model, const std::vector<Real>& masses, const std::vector<Real>& shape,
                      int direction)
{
    ModeSums<Real> sums;
    for (std::size_t e = 1; e < shape.size(); ++e)
        sums.modalMass += shape[e] * shape[e] * masses[e];
    for (int position = 1; position <= static_cast<int>(model.nodes.size()); ++position)
        if (const auto e = static_cast<std::size_t>(model.Equation(position, direction)); e > 0) {
            sums.excitation += shape[e] * masses[e];
            sums.totalMass += masses[e];
        }
    return sums;
}

/// Displacement of a mode per unit of its shape, in one direction.
template <Number Real>
Real Amplitude(const CjxStruct& model, const ModeSums<Real>& sums, const Real& eigenvalue, int direction)
{
    const auto period = static_cast<double>(Real(kTwoPi) / sqrt(eigenvalue));
    const double acceleration = CResponseSpectrumManager::Instance().GetValue(model.spectra[direction], period);
    return sums.excitation / sums.modalMass * (Real(acceleration) * Real(kGravity) / eigenvalue);
}

template <Number Real>
std::vector<Real> ElasticForces(const EigenSystem& stiffness, const std::vector<Real>& shape)
{
    std::vector<double128> product(shape.size());
    stiffness.AddProduct(std::vector<double128>(shape.begin(), shape.end()), product);
    std::vector<Real> forces(shape.size());
    for (std::size_t e = 1; e < shape.size(); ++e)
        forces[e] = static_cast<Real>(product[e]);
    return forces;
}

}  // namespace

template <Number Real>
std::vector<jxEigenResult> EigenRecords(const CjxStruct& model, const SubspaceResult<Real>& modes)
{
    std::vector<jxEigenResult> records;
    for (std::size_t mode = 0; mode < modes.shapes.size(); ++mode)
        records.push_back({.eigenvalue = static_cast<double>(modes.eigenvalues[mode + 1]),
                           .errorMeasure = modes.errorMeasures[mode + 1],
                           .shape = NodalRecords(model, modes.shapes[mode], Real(1))});
    return records;
}

template <Number Real>
std::vector<jxResponseSpectrumResult> SpectrumRecords(const CjxStruct& model, const EigenSystem& stiffness,
                                                      const std::vector<Real>& masses,
                                                      const SubspaceResult<Real>& modes)
{
    std::vector<jxResponseSpectrumResult> records;
    for (std::size_t mode = 0; mode < modes.shapes.size(); ++mode) {
        const std::vector<Real>& shape = modes.shapes[mode];
        const Real& eigenvalue = modes.eigenvalues[mode + 1];
        const std::vector<Real> forces = ElasticForces(stiffness, shape);
        jxResponseSpectrumResult& record = records.emplace_back();
        record.eigenvalue = static_cast<double>(eigenvalue);
        for (int direction = 0; direction < 3; ++direction) {
            Real amplitude = 0;
            if (model.IsPerformingSpectrumAnalysisInDirection(direction)) {
                const ModeSums<Real> sums = SumsOf(model, masses, shape, direction);
                assert(sums.modalMass > Real(0) && "a mode moves mass");
                amplitude = Amplitude(model, sums, eigenvalue, direction);
                if (sums.totalMass > Real(0))
                    record.participation[direction] =
                        static_cast<double>(sums.excitation * sums.excitation / sums.modalMass / sums.totalMass);
            }
            record.displacements[direction] = NodalRecords(model, shape, amplitude);
            record.forces[direction] = NodalRecords(model, forces, amplitude);
        }
    }
    return records;
}

template std::vector<jxEigenResult> EigenRecords(const CjxStruct&, const SubspaceResult<double>&);
template std::vector<jxEigenResult> EigenRecords(const CjxStruct&, const SubspaceResult<double128>&);
template std::vector<jxResponseSpectrumResult>
SpectrumRecords(const CjxStruct&, const EigenSystem&, const std::vector<double>&, const SubspaceResult<double>&);
template std::vector<jxResponseSpectrumResult>
SpectrumRecords(const CjxStruct&, const EigenSystem&, const std::vector<double128>&, const SubspaceResult<double128>&);

}  // namespace qvx
