#pragma once

#include "model/jx_struct.h"

namespace qvx {

/// Stages that the linear and the nonlinear part of a run share. Each says in window and log what it does.

/// Shows a fault where the user looks: in a box, when there may be boxes, and in the solver window.
void ReportFault(CjxStruct& model, const wchar_t* text);

/// Heading of a part of the run, with a line of dashes below.
void AnnouncePart(CjxStruct& model, const wchar_t* heading);

/// Title of a combination, "LOAD COMBINATION <position>: <label>".
CString CombinationTitle(const CjxStruct& model, int comb);

/// Logs "time spent on FACTORIZATION = <time> seconds" and restarts the stopwatch. The number is milliseconds, here
/// whole ones, whatever the text says: programs that read the log know it so.
void LogFactorizationTime(CjxStruct& model);

/// Logs the time of a solution, in milliseconds with their fraction, and restarts the stopwatch.
void LogSolutionTime(CjxStruct& model);

/// Logs the time of a stiffness formation, in whole seconds, and restarts the stopwatch.
void LogStiffnessTime(CjxStruct& model);

/// Logs the time of the output of a combination; the stopwatch runs on.
void LogOutputTime(CjxStruct& model);

}  // namespace qvx
