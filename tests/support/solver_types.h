#pragma once

#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "model/jx_struct.h"
#include "sparse/direct_solver.h"
#include "support/recording_host.h"

namespace qvx::test {

/// One way to solve a model: the solver type and, behind the sparse one, the backend that a profile integer picks.
struct Solver
{
    const char* name;
    int type;
    int backend;  ///< 0 the engine's choice, 1 the routine pardiso, 2 MUMPS
};
inline void PrintTo(const Solver& solver, std::ostream* out)
{
    *out << solver.name;
}

inline const std::vector<Solver>& AllSolvers()
{
    static const std::vector<Solver> solvers = {{"Double", DoubleSkyline, 0},
                                                {"Quad", QuadSkyline, 0},
                                                {"Pardiso", DoubleSparse, 1},
                                                {"Mumps", DoubleSparse, 2}};
    return solvers;
}
inline std::vector<Solver> SparseSolvers()
{
    std::vector<Solver> sparse = AllSolvers();
    std::erase_if(sparse, [](const Solver& solver) { return solver.type != DoubleSparse; });
    return sparse;
}
/// MUMPS and the skyline always are; the runtime of the routine pardiso may be absent.
inline bool IsInstalled(const Solver& solver)
{
    return solver.backend != 1 || IsPardisoInstalled();
}
inline void Choose(RecordingHost& host, const Solver& solver)
{
    host.profile[{L"Preferences", L"SparseBackend"}] = solver.backend;
}

/// Suite of tests that hold for every solver, each with a host of its own.
class EverySolver : public testing::TestWithParam<Solver>
{
protected:
    void SetUp() override
    {
        if (!IsInstalled(GetParam()))
            GTEST_SKIP() << "the runtime of the routine pardiso is not installed";
        Choose(host, GetParam());
    }
    static int SolverType() { return GetParam().type; }

    RecordingHost host;
};

inline std::string SolverName(const testing::TestParamInfo<Solver>& info)
{
    return info.param.name;
}

}  // namespace qvx::test
