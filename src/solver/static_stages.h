#pragma once

#include <vector>

#include "model/jx_struct.h"
#include "model/solution_data.h"

namespace qvx {

/// Stages that the linear and the nonlinear part of a skyline run share. Each says in window and log what it does.

/// Shows a fault where the user looks: in a box, when there may be boxes, and in the solver window.
void ReportFault(CjxStruct& model, const wchar_t* text);

/// Heading of a part of the run, with a line of dashes below.
void AnnouncePart(CjxStruct& model, const wchar_t* heading);

/// Title of a combination, "LOAD COMBINATION <position>: <label>".
CString CombinationTitle(const CjxStruct& model, int comb);

/// Logs "time spent on <activity> = <time> seconds" and restarts the stopwatch. The time is whole milliseconds.
void LogTimeSpent(CjxStruct& model, const wchar_t* activity);

/// Logs the time of a stiffness formation, in whole seconds, and restarts the stopwatch.
void LogStiffnessTime(CjxStruct& model);

/// Logs the time of the output of a combination; the stopwatch runs on.
void LogOutputTime(CjxStruct& model);

/// Sets all stored terms of the stiffness to zero.
void ClearStiffness(jxSolutionData& data);

/// Penalty stiffness of supports and constraints of the assembled model, kept for the recovery of reactions.
void SetPenaltyStiffness(CjxStruct& model, jxSolutionData& data);

/// Turns the stiffness into its factor L D L^t.
/// @return  false when a pivot was zero or negative and bAllowNonPositivePivot let it pass
/// @throws  jxException of an unstable structure, node and DOF in the log, when it did not
bool FactorizeStiffness(CjxStruct& model, jxSolutionData& data, bool bAllowNonPositivePivot);

/// Load vector in, displacements out.
void ReduceAndSubstitute(CjxStruct& model, jxSolutionData& data, std::vector<double128>& load);

}  // namespace qvx
