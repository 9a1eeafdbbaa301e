#pragma once

#include <cassert>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/export.h"
#include "quad/double128.h"
#include "sparse/row_table.h"
#include "tools/parallel.h"

namespace qvx {

/// What one look at every stored term tells.
struct TermSurvey
{
    std::int64_t nonzero = 0;  ///< terms that are not zero or stand on the diagonal
    double largest = 0;        ///< largest value, signed; 0 at least
};

/// Global stiffness for a direct sparse solver: upper triangle by rows, columns ascending, diagonal first.
///
/// It behaves as an ordered map of maps from row to column to value in which terms appear at zero when first touched,
/// but its pattern is known before the first term: two nodes that share an element get the whole block of their
/// equations, zeros included. A direct solver then finds the equations of a node to be one supervariable, which makes
/// its ordering and its dense kernels several times faster than the pattern of the nonzero terms alone.
class QVXFEM_API SparseStiffness
{
public:
    /// Lays out the pattern; all values are zero.
    /// @param nodeOfEquation  per equation (from 1; slot 0 unused) a number that tells its node; the equations of a node
    ///                        stand together and node numbers ascend with the equations
    /// @param tables          location tables of everything that adds terms
    /// @throws jxException when the terms cannot be counted in 32 bits
    void BuildPattern(std::vector<int> nodeOfEquation, std::span<const RowTable* const> tables, int threads = 1);
    void SetZero();
    /// Gives the memory back.
    void Clear();

    /// Adds value at equations 1 <= row <= column, which an element of the tables must connect.
    void Add(int row, int column, double value) { value_[Address(row, column)] += value; }
    /// Value at equations that the pattern connects, row <= column.
    double Term(int row, int column) const { return value_[Address(row, column)]; }
    /// First term of its row.
    double& Diagonal(int equation)
    {
        assert(equation >= 1 && equation <= Equations() && "equations count from 1");
        return value_[At(rowStart_[At(equation - 1)] - 1)];
    }

    /// Adds the upper triangle of an element matrix: k is n x n, row-major; loc has slots 1..n, 0 for no equation.
    /// @param share  rows of which nodes; several threads may add the shares of one element, and in each of them the sums
    ///               are those of one thread
    template <Number Real>
    void AddElement(const int* loc, int n, const Real* k, Share share = {});

    /// product += K v, formed and summed in double128; vectors by equation from 1.
    void AddProduct(const std::vector<double128>& v, std::vector<double128>& product) const;

    int Equations() const { return static_cast<int>(rowStart_.size()) - 1; }
    const std::vector<int>& RowStart() const { return rowStart_; }  ///< n + 1 entries, counting from 1
    const std::vector<int>& Column() const { return column_; }      ///< counting from 1
    const std::vector<double>& Value() const { return value_; }

    /// The arrays as a solver's routine takes them.
    int* RowStarts() { return rowStart_.data(); }
    int* Columns() { return column_.data(); }
    double* Values() { return value_.data(); }

    TermSurvey Survey(int threads = 1) const;

private:
    struct Run;

    static std::size_t At(int index) { return static_cast<std::size_t>(index); }
    /// Place of a term: within its row the own block first, then the blocks of higher nodes by binary search.
    std::size_t Address(int row, int column) const;
    /// Offset of node j's first column behind the own block in every row of node i < j.
    int BlockOffset(int i, int j) const;
    template <Number Real>
    void AddBlock(const Run& rows, const Run& columns, const int* loc, int n, const Real* k);
    void Connect(std::span<const RowTable* const> tables);
    std::size_t CountTerms();
    void LayOutRows(std::size_t terms);

    std::vector<int> nodeOf_;           ///< node of each equation, renumbered from 0
    std::vector<int> firstEquation_;    ///< per node; one more at the end
    std::vector<int> neighbourStart_;   ///< per node, into neighbour_; one more at the end
    std::vector<int> neighbour_;        ///< nodes of higher number that share an element, ascending
    std::vector<int> neighbourOffset_;  ///< offset of each neighbour's first column behind the own block
    std::vector<int> rowStart_;
    std::vector<int> column_;
    std::vector<double> value_;
};

}  // namespace qvx
