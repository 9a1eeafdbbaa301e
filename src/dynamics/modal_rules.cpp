#include "dynamics/modal_rules.h"

#include <cassert>

namespace {

template <class Record>
Record Combine(qvx::ModalRule rule, const std::vector<Record>& modes, const std::vector<double>& omegas, double damping,
               int dominant)
{
    assert(!modes.empty());
    std::vector<const Record*> records;
    for (const Record& mode : modes)
        records.push_back(&mode);
    Record combined = modes.front();
    qvx::SetZero(combined);
    qvx::AddCombined(combined, 1.0, records, qvx::ModalCombiner(rule, omegas, damping, dominant));
    return combined;
}

}  // namespace

template <class Record>
Record calc_modal_cqc(const std::vector<Record>& modes, const std::vector<double>& omegas, double damping, int dominant)
{
    return Combine(qvx::CompleteQuadratic, modes, omegas, damping, dominant);
}

template <class Record>
Record calc_modal_srss(const std::vector<Record>& modes, const std::vector<double>& omegas, double damping,
                       int dominant)
{
    return Combine(qvx::RootOfSquares, modes, omegas, damping, dominant);
}

template <class Record>
Record calc_modal_abssum(const std::vector<Record>& modes, const std::vector<double>& omegas, double damping,
                         int dominant)
{
    return Combine(qvx::AbsoluteSum, modes, omegas, damping, dominant);
}

// clang-format off
template QVXFEM_API jxResult6Val calc_modal_cqc(const std::vector<jxResult6Val>&, const std::vector<double>&, double, int);
template QVXFEM_API jxResult6Val calc_modal_srss(const std::vector<jxResult6Val>&, const std::vector<double>&, double, int);
template QVXFEM_API jxResult6Val calc_modal_abssum(const std::vector<jxResult6Val>&, const std::vector<double>&, double, int);
template QVXFEM_API jxVMD calc_modal_cqc(const std::vector<jxVMD>&, const std::vector<double>&, double, int);
template QVXFEM_API jxVMD calc_modal_srss(const std::vector<jxVMD>&, const std::vector<double>&, double, int);
template QVXFEM_API jxVMD calc_modal_abssum(const std::vector<jxVMD>&, const std::vector<double>&, double, int);
template QVXFEM_API jxShellStress calc_modal_cqc(const std::vector<jxShellStress>&, const std::vector<double>&, double, int);
template QVXFEM_API jxShellStress calc_modal_srss(const std::vector<jxShellStress>&, const std::vector<double>&, double, int);
template QVXFEM_API jxShellStress calc_modal_abssum(const std::vector<jxShellStress>&, const std::vector<double>&, double, int);
template QVXFEM_API jxBrickStress calc_modal_cqc(const std::vector<jxBrickStress>&, const std::vector<double>&, double, int);
template QVXFEM_API jxBrickStress calc_modal_srss(const std::vector<jxBrickStress>&, const std::vector<double>&, double, int);
template QVXFEM_API jxBrickStress calc_modal_abssum(const std::vector<jxBrickStress>&, const std::vector<double>&, double, int);
template QVXFEM_API jxMultiDofConstraintForce calc_modal_cqc(const std::vector<jxMultiDofConstraintForce>&, const std::vector<double>&, double, int);
template QVXFEM_API jxMultiDofConstraintForce calc_modal_srss(const std::vector<jxMultiDofConstraintForce>&, const std::vector<double>&, double, int);
template QVXFEM_API jxMultiDofConstraintForce calc_modal_abssum(const std::vector<jxMultiDofConstraintForce>&, const std::vector<double>&, double, int);
// clang-format on
