#pragma once

#include <memory>
#include <set>
#include <vector>

#include "solver/equation_solver.h"
#include "solver/out_of_core_file.h"

namespace qvx {

/// The system of a sparse run: patterned store, direct sparse solver, positive definite throughout. However the run
/// ends, factor and files of the solver go with it.
class SparseSystem : public EquationSolver
{
public:
    SparseSystem(CjxStruct& model, jxSolutionData& data) : model_(model), data_(data) {}
    ~SparseSystem() override;

    void Allocate(int nTerms) override;
    void Clear() override;
    void AddBoundary(int comb) override;
    bool Factorize(bool bAllowNonPositivePivot) override;
    void AnnounceFactor(bool) override {}
    bool NamesCombinationOfFault() const override { return true; }
    void CheckStability() override {}
    void Solve(std::vector<double128>& load) override;
    bool SolvesTogether() const override { return true; }
    void SolveAll(const std::vector<std::vector<double128>*>& loads) override;
    void Release() override;

private:
    void FinishDisplacements(const std::vector<double128>& force, std::vector<double128>& displacements);

    CjxStruct& model_;
    jxSolutionData& data_;
    double* a_ = nullptr;
    int* ia_ = nullptr;
    int* ja_ = nullptr;
    std::set<const std::vector<double128>*> solved_;
    std::unique_ptr<OutOfCoreFile> configuration_;  ///< of an out-of-core run
};

}  // namespace qvx
