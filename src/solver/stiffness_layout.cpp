#include <algorithm>
#include <array>
#include <cassert>
#include <cstdint>
#include <exception>
#include <limits>
#include <string>

#include "model/find_record.h"
#include "model/jx_struct.h"
#include "model/solution_data.h"

using qvx::RowTable;

namespace {

constexpr std::int64_t kMaxTerms = std::numeric_limits<int>::max();

constexpr wchar_t kRenumberAdvice[] =
    L"Out of memory.\nTry to re-number nodes to minimize memory usage by reducing half-band width."
    L"\nTo do that, go to menu Edit | Re-Number | Re-Number Nodes...";

/// Fills location rows from the id table and lets every row raise the columns of its equations.
class LocationBuilder
{
public:
    LocationBuilder(const CjxStruct& model, std::vector<int>& columnHeight) : model_(model), columnHeight_(columnHeight)
    {
    }

    /// @param nDofs    degrees of freedom that the element uses at each of its nodes, from X on
    /// @param nodesOf  node ids of a record, in the order of its degrees of freedom
    template <class Record, class NodesOf>
    RowTable Build(const std::vector<Record>& records, int nNodes, int nDofs, NodesOf&& nodesOf)
    {
        RowTable table(static_cast<int>(records.size()), nNodes * nDofs);
        for (int r = 1; r <= table.Rows(); ++r) {
            int slot = 0;
            for (const int id : nodesOf(records[static_cast<std::size_t>(r) - 1])) {
                const int position = qvx::NodePosition(model_.nodes, id);
                for (int dof = 0; dof < nDofs; ++dof)
                    table[r][++slot] = model_.Equation(position, dof);
            }
            RaiseColumns(table[r], slot);
        }
        return table;
    }

    RowTable BuildConstraints(const std::vector<jxMultiDofConstraint>& constraints)
    {
        RowTable table(static_cast<int>(constraints.size()), 2);
        for (int r = 1; r <= table.Rows(); ++r) {
            const jxMultiDofConstraint& constraint = constraints[static_cast<std::size_t>(r) - 1];
            for (int end = 0; end < 2; ++end)
                table[r][end + 1] =
                    model_.Equation(qvx::NodePosition(model_.nodes, constraint.node[end]), constraint.dof[end]);
            RaiseColumns(table[r], 2);
        }
        return table;
    }

private:
    /// The element couples all its equations: each column must reach up to the smallest of them.
    void RaiseColumns(const int* row, int n)
    {
        int top = std::numeric_limits<int>::max();
        assert(std::all_of(row + 1, row + n + 1, [&](int e) { return e < static_cast<int>(columnHeight_.size()); }) &&
               "location rows stay inside the equations");
        for (int slot = 1; slot <= n; ++slot)
            if (row[slot] > 0)
                top = std::min(top, row[slot]);
        for (int slot = 1; slot <= n; ++slot) {
            if (row[slot] > 0) {
                int& height = columnHeight_[static_cast<std::size_t>(row[slot])];
                height = std::max(height, row[slot] - top);
            }
        }
    }

    const CjxStruct& model_;
    std::vector<int>& columnHeight_;
};

void BuildLocationTables(const CjxStruct& model, jxSolutionData& data)
{
    LocationBuilder builder(model, data.columnHeight);
    const auto ends = [](const auto& r) { return std::array{r.node1, r.node2}; };
    const auto corners = [](const auto& r) { return std::to_array(r.node); };
    const auto itself = [](const jxCoupledSpring& r) { return std::array{r.id}; };

    if (!model.beams.empty())
        data.lmBeams = builder.Build(model.beams, 2, 6, ends);
    if (!model.links.empty())
        data.lmLinks = builder.Build(model.links, 2, 6, ends);
    if (!model.multiDofConstraints.empty())
        data.lmConstraints = builder.BuildConstraints(model.multiDofConstraints);
    if (!model.coupledSprings.empty())
        data.lmCoupledSprings = builder.Build(model.coupledSprings, 1, 6, itself);
    if (!model.shell4s.empty())
        data.lmShell4s = builder.Build(model.shell4s, 4, 6, corners);
    if (!model.bricks.empty())
        data.lmBricks = builder.Build(model.bricks, 8, 3, corners);
}

/// Diagonal addresses by summing the column heights. The 32-bit table wraps where the 64-bit one does not.
/// @return  largest column height
int FillDiagonalAddresses(jxSolutionData& data, int nEquations)
{
    int highest = 0;
    data.maxa64[1] = 1;
    data.maxa[1] = 1;
    for (std::size_t j = 1; j <= static_cast<std::size_t>(nEquations); ++j) {
        assert(data.columnHeight[j] >= 0 && data.columnHeight[j] < static_cast<int>(j) &&
               "a column ends at row 1 at most");
        data.maxa64[j + 1] = data.maxa64[j] + data.columnHeight[j] + 1;
        data.maxa[j + 1] = static_cast<int>(data.maxa64[j + 1]);
        highest = std::max(highest, data.columnHeight[j]);
    }
    return highest;
}

[[noreturn]] void ThrowTooManyTerms(std::int64_t nTerms)
{
    CString text;
    text.Format(L"The number of terms in global stiffness matrix (%I64d) is greater than its limit (%d). Please try to "
                L"renumber the nodes to reduce stiffness band width or use the sparse solver.  Solution aborts!",
                nTerms, static_cast<int>(kMaxTerms));
    throw jxException(text);
}

CString Count(std::int64_t value)
{
    CString text;
    text.Format(L"%I64d", value);
    return text;
}

}  // namespace

int CjxStruct::ProcessElementConnectivity(jxSolutionData& data)
{
    numberOfEquations = 0;
    CString text;
    text.Format(L"%d nodes, %d members, %d shell4s, %d bricks", static_cast<int>(nodes.size()),
                static_cast<int>(beams.size()), static_cast<int>(shell4s.size()), static_cast<int>(bricks.size()));
    list_msg(text, L"OK");
    text.Format(L"%d rigid links created for diaphragms", static_cast<int>(links.size()));
    list_msg(text, L"OK");

    for (std::vector<int>& row : idTable)
        row.assign(nodes.size() + 1, 0);
    GetIds();
    if (numberOfEquations == 0)
        throw jxException(L"No degrees of freedom (DOFs) to analyze");

    const auto n = static_cast<std::size_t>(numberOfEquations);
    data.columnHeight.assign(n + 1, 0);
    LogLine(CString(L"Total number of equations: ") + Count(numberOfEquations));
    list_msg(L"Total number of equations", Count(numberOfEquations));
    list_msg(L"allocating diagonal address", L"...");
    data.maxa.assign(n + 2, 0);
    list_msg(L"allocating diagonal address64", L"...");
    data.maxa64.assign(n + 2, 0);

    list_msg(L"Process elements connectivity", L"...");
    BuildLocationTables(*this, data);
    list_msg0(L"Process elements connectivity", L"OK");

    // Addresses are made for a sparse run too: the skyline form can be asked for in place of it, and they are two
    // tables of one number per equation.
    const int highest = FillDiagonalAddresses(data, numberOfEquations);
    const std::int64_t nTerms = data.maxa64[n + 1] - data.maxa64[1];
    assert(nTerms >= numberOfEquations && "every column has its diagonal");
    const bool bSkyline = solverType != DoubleSparse || data.bForceSkyline;
    if (bSkyline && nTerms > kMaxTerms)
        ThrowTooManyTerms(nTerms);
    if (bSkyline || data.bTellSkyline) {
        list_msg(L"The number of terms in global stiffness matrix in compact form", Count(nTerms));
        list_msg(L"Half-band width", Count(highest + 1));
        if (bSkyline && data.maxa[n + 1] < 0)  // the address after the last term leaves 32 bits with exactly kMaxTerms
            throw jxException(kRenumberAdvice);
    }
    return static_cast<int>(nTerms);
}

namespace {

/// Makes the arrays of one skyline run. Sizes count slot 0.
template <class Real>
void AllocateArrays(std::vector<Real>& stiffness, std::vector<Real>& diagonals, std::size_t nTerms,
                    std::size_t nEquations)
{
    stiffness.assign(nTerms + 1, Real());
    diagonals.assign(nEquations + 2, Real());
}

const wchar_t* Banner(int solverType, int mode)
{
    assert(solverType >= DoubleSkyline && solverType <= DoubleSparse && (mode == 0 || mode == 1));
    static const wchar_t* const kBanners[3][2] = {
        {L"RUNNING  DOUBLE-PRECISION SKYLINE SOLVER *******************************",
         L"RUNNING  DOUBLE-PRECISION EIGEN SOLVER *******************************"},
        {L"RUNNING QUAD-PRECISION SKYLINE SOLVER ******************************** ",
         L"RUNNING QUAD-PRECISION EIGEN SOLVER ******************************** "},
        {L"RUNNING DOUBLE-PRECISION SPARSE SOLVER ******************************** ",
         L"RUNNING  DOUBLE-PRECISION SPARSE EIGEN SOLVER *******************************"},
    };
    return kBanners[solverType][mode == 0 ? 0 : 1];
}

}  // namespace

/// A run for modes needs room for the matrix and its factor side by side; the second of them is made by the solver. A
/// sparse solver has stores of its own, of nTerms terms with their columns: only their size is told.
void CjxStruct::AllocateStiffnessMemory(jxSolutionData& data, int mode, int nTerms)
{
    list_msg(L"Allocating memory for global stiffness matrix", L"...");
    const bool bDouble = solverType == DoubleSkyline;
    const bool bSparse = solverType == DoubleSparse && mode == 1 && !data.bForceSkyline;
    const std::int64_t nMatrices = mode == 1 ? 2 : 1;
    const std::int64_t bytesPerTerm = bDouble ? 8 : bSparse ? 12 : 16;
    memcheck(fileLog, static_cast<int>(nMatrices * nTerms * bytesPerTerm / 1024));
    try {
        const auto terms = static_cast<std::size_t>(nTerms);
        const auto equations = static_cast<std::size_t>(numberOfEquations);
        if (bDouble)
            AllocateArrays(data.K, data.origDiag, terms, equations);
        else if (!bSparse)
            AllocateArrays(data.KQ, data.origDiagQ, terms, equations);
    } catch (const std::exception&) {  // bad_alloc, or length_error of a count beyond any memory
        list_msg(L"Unable to allocate memory for global stiffness matrix", L"NOT OK");
        throw jxException(CString(kRenumberAdvice) +
                          L"\nOr you may try to use the sparse solver with out-of-core option.");
    }
    list_msg(L"Allocating memory for global stiffness matrix", L"OK");

    const std::wstring stars(101, L'*');
    list_msg(L"", L"");
    list_msg(stars.c_str(), L"");
    list_msg(Banner(solverType, mode), L"");
    list_msg(stars.c_str(), L"");
}
