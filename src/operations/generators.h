#pragma once

#include <vector>

#include "model/records/element.h"
#include "model/records/node.h"
#include "platform/export.h"
#include "tools/jx_point.h"

// Regular structures from a few numbers. Each function replaces the vectors that it is given by records with ids from 1,
// sorted by id, unless it returns at once; material, section and thickness are 1. Lengths are in the unit of the model
// that takes the records, angles in degrees. Steps are distances between neighbours: positions are their running sums.
//
// Each throws jxException, before it changes anything, when the structure has more nodes or elements than there are ids.
// "Tells" means a message box with both numbers, "Total nodes generated = ...\nTotal members generated = ...".

/// Rectangular frame with nodes at all positions of three lists of steps, each list beginning at 0.
///
///      y |  z       nodes count along x, then along y, then along z;
///        | /        members level by level of z: along x, then along z to the next level, then along y
///        |/___ x
/// @param makeMembers   else nodes and supports alone, and nothing is told
/// @param makeSupports  every node with y = 0 is held in all six DOF
/// Returns at once when all three lists are empty. With nx, ny, nz steps there are (nx+1)(ny+1)(nz+1) nodes and
/// nx(ny+1)(nz+1) + (nx+1)ny(nz+1) + (nx+1)(ny+1)nz members.
QVXFEM_API void GenerateFrame(std::vector<jxNd>& nodes, std::vector<jxSupt>& supports, std::vector<jxBm>& beams,
                              const std::vector<double>& xSteps, const std::vector<double>& ySteps,
                              const std::vector<double>& zSteps, bool makeMembers, bool makeSupports);

/// Plane grid of shells in z = 0, cells counting along x, then along y; the normals point along +z. Tells.
/// @param kind  4: a four-node shell per cell; else two three-node shells, cut along the diagonal from the cell's origin
/// Returns at once when both lists are empty; with one of them the nodes stand in line and there are no shells.
QVXFEM_API void GenerateShell(std::vector<jxNd>& nodes, std::vector<jxShell3>& shell3s, std::vector<jxShell4>& shell4s,
                              const std::vector<double>& xSteps, const std::vector<double>& ySteps, int kind);

/// Surface lofted through polylines of equally many points: a shell between each two neighbouring points of a line and
/// the same points of the next line. Nodes count along the lines.
/// @param wrapJ  the last point of each line is joined to its first; the lines do not repeat that point
/// The vectors are emptied first and stay so with fewer than two lines or fewer than two points.
/// @throws std::runtime_error  "GenerateShell: wrapJ requires >= 3 points per line (no duplicate closing point).",
///                             "GenerateShell: all lines must have the same number of points."
QVXFEM_API void GenerateShell(std::vector<jxNd>& nodes, std::vector<jxShell4>& shell4s,
                              const std::vector<std::vector<jxPoint>>& lines, bool wrapJ);

/// Polygon of members inscribed in a circular arc about the Z axis in z = 0, angles from +x towards +y. A full turn
/// (360 degrees within 0.001) is closed: its last member ends at the first node. Tells.
/// Returns at once without a segment. A full turn of one segment would end where it begins and has no member.
QVXFEM_API void GenerateArcBeam(std::vector<jxNd>& nodes, std::vector<jxBm>& beams, double startAngle, double endAngle,
                                double radius, int segments);

/// Frame on a cylindrical grid about the Y axis: nodes level by level, line by line, outwards; members of a level along
/// its radial lines, then along its rings, then the columns to the next level.
/// @param radialSteps  the first leads from the axis to the first ring
/// @param angleSteps   the first leads from +x to the first line, angles turn from +x towards -z. A first step of 0 and
///                     a sum of 360 close the rings: the last angle falls on the first line and makes none of its own
/// @param heightSteps  from level 0 at y = 0 upwards; none leaves one level
/// @param makeMembers   else nodes and supports alone, and nothing is told
/// @param makeSupports  every node of level 0 is held in all six DOF
/// Returns at once with fewer than two angles or without a radius. A ring of one line has no member.
QVXFEM_API void GenerateCircularFrame(std::vector<jxNd>& nodes, std::vector<jxSupt>& supports, std::vector<jxBm>& beams,
                                      const std::vector<double>& radialSteps, const std::vector<double>& angleSteps,
                                      const std::vector<double>& heightSteps, bool makeMembers, bool makeSupports);

/// Divides a four-node shell into nx by ny by the bilinear map of its corners: equal parts along each edge, straight
/// lines between opposite edges; exact on a hyperbolic paraboloid.
/// @param nodes       receives the new nodes at its end, ids from firstNode, row by row of the second direction
/// @param shell4s     receives the new shells at its end, copies of the shell with ids from firstShell, row by row
/// @param corners     places of the shell's four nodes, in their order
/// @param shell       becomes the part at its first corner; its other corners change
/// @param nx          parts along the edge from the first corner to the second
/// @param ny          parts along the edge from the first corner to the fourth
/// With nx = ny = 1, or fewer, nothing changes. shell may stand in shell4s and the corners in nodes; whether the new ids
/// are free is the caller's concern.
/// @throws jxException  when ids would go beyond those of an int; nothing has changed
/// Source of the map: Zienkiewicz, Taylor & Zhu, The Finite Element Method, 6th ed. (2005), section 5.3.
QVXFEM_API void submesh_shell4(std::vector<jxNd>& nodes, std::vector<jxShell4>& shell4s, const jxNd corners[4],
                               jxShell4& shell, int nx, int ny, int firstNode, int firstShell);
