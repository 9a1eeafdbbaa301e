#include <cassert>

#include "model/find_record.h"
#include "model/jx_struct.h"

namespace {

/// Degrees of freedom without an equation, per model type.
const bool kSuppressed[][kDofCount] = {
    // clang-format off
    // X  Y  Z  OX OY OZ
    {  0, 0, 0, 0, 0, 0 },  // Frame3D
    {  0, 0, 1, 1, 1, 0 },  // Frame2D
    {  0, 0, 0, 1, 1, 1 },  // Truss3D
    {  0, 0, 1, 1, 1, 1 },  // Truss2D
    {  1, 1, 0, 0, 0, 1 },  // PlateBending2D
    {  0, 0, 1, 1, 1, 1 },  // PlaneStress2D
    {  0, 0, 0, 1, 1, 1 },  // Brick3D
    {  1, 0, 1, 0, 1, 0 },  // Grillage2D
    // clang-format on
};

template <class Record>
void NumberByPosition(std::vector<Record>& records)
{
    int position = 0;
    for (Record& record : records)
        record.no = ++position;
}

constexpr int kNoEquation = 1;  // mark in the id table before the equations are counted

}  // namespace

/// Positions only: the profile of the skyline follows the order of the nodes, and that order is the host's means of
/// controlling the band.
void CjxStruct::AutoRenumberNodesAndElements()
{
    list_msg(L"Renumbering nodes and elements", L"...");
    NumberByPosition(nodes);
    NumberByPosition(beams);
    NumberByPosition(links);
    NumberByPosition(multiDofConstraints);
    NumberByPosition(coupledSprings);
    NumberByPosition(shell3s);
    NumberByPosition(shell4s);
    NumberByPosition(bricks);
    list_msg0(L"Renumbering nodes and elements", L"OK");
}

void CjxStruct::FindSuppressedDofs()
{
    assert(modelType >= Frame3D && modelType <= Grillage2D);
    for (int dof = 0; dof < kDofCount; ++dof)
        dofSuppressed[dof] = kSuppressed[modelType][dof] ? 1 : 0;
}

/// Fills the id table, which stands allocated and at zero, and counts the equations node by node.
///
/// Only '2' of a support takes the equation away. A degree of freedom held by '1' keeps it, since its restraint and
/// its prescribed displacement are penalty terms.
void CjxStruct::GetIds()
{
    FindSuppressedDofs();
    assert(idTable[0].size() == nodes.size() + 1 && "allocated, slot 0 unused");
    for (int dof = 0; dof < kDofCount; ++dof)
        if (dofSuppressed[dof])
            std::fill(idTable[dof].begin(), idTable[dof].end(), kNoEquation);

    for (const jxSupt& support : supports) {
        const auto node = static_cast<std::size_t>(qvx::NodePosition(nodes, support.id));
        for (int dof = 0; dof < kDofCount; ++dof)
            if (support.flag[dof] == L'2')
                idTable[dof][node] = kNoEquation;
    }

    // All directions of a node before those of the next: columns of a node then begin at the same neighbors, which
    // keeps the profile short and lets solvers work on blocks of six.
    for (std::size_t node = 1; node <= nodes.size(); ++node) {
        for (std::vector<int>& row : idTable)
            row[node] = row[node] == kNoEquation ? 0 : ++numberOfEquations;
    }
}

/// A node has at most six equations, so that equation e cannot stand at a position before e / 6.
void CjxStruct::FindDof(int& node, int& dof, int nNodes, int equation) const
{
    for (int position = equation < 12 ? 1 : equation / 6; position <= nNodes; ++position) {
        for (int d = 0; d < kDofCount; ++d) {
            if (Equation(position, d) == equation) {
                node = nodes[static_cast<std::size_t>(position) - 1].id;
                dof = d + 1;
                return;
            }
        }
    }
}
