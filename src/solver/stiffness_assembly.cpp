#include "elements/brick/brick_group.h"
#include "elements/member/beam_group.h"
#include "elements/shell/shell4_group.h"
#include "model/jx_struct.h"
#include "model/solution_data.h"

/// Adds the stiffness of all elements to the global arrays.
/// @param comb  combination whose axial forces and element states count; -1 in the linear stage
void CjxStruct::ProcessElementGroupStiffness(jxSolutionData& data, CjxBmGroup& bm, CjxShell4Group& sh,
                                             CjxBrickGroup& br, int comb)
{
    // The account of roundings belongs to one matrix, and a new one begins here.
    data.rounded.clear();
    if (!beams.empty()) {
        list_msg(L"Calculating member elements stiffness", L"...");
        bm.ProcessStiffness(data, comb);
        list_msg0(L"Calculating member elements stiffness", L"OK");
    }
    if (!shell4s.empty()) {
        list_msg(L"Calculating shell4 elements stiffness", L"...");
        sh.ProcessStiffness(data);
        list_msg0(L"Calculating shell4 elements stiffness", L"OK");
    }
    if (!bricks.empty()) {
        list_msg(L"Calculating brick elements stiffness", L"...");
        br.ProcessStiffness(data);
        list_msg0(L"Calculating brick elements stiffness", L"OK");
    }
    // Beyond 1e20 times the structure no digit of the structure is left in the sums of a double; below zero a link
    // would push where it should hold.
    if (diaphragmStiffnessFactor > 1e20 || diaphragmStiffnessFactor < 0)
        diaphragmStiffnessFactor = 10000.0;
    list_msg(L"Processing diaphragm stiffness", L"...");
    ProcessDiaphragmStiffness(data);
    list_msg0(L"Processing diaphragm stiffness", L"OK");
}
