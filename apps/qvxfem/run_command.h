#pragma once

#include <string>
#include <vector>

#include "model/jx_struct.h"
#include "report_output.h"
#include "terminal.h"

namespace qvx::app {

/// What `qvxfem run` was asked for.
struct RunOptions
{
    std::string model;
    std::vector<std::string> analyses = {"static"};
    std::string solver;   ///< double, quad, sparse; empty: as the model says
    std::string backend;  ///< of the sparse solver: pardiso, mumps; empty: as the preferences say
    std::string spectra;  ///< file of the library of spectra; empty: those of the model
    std::string results;  ///< file; empty: none
    ReportRequest report;
    std::string log;                    ///< file; empty: none
    std::vector<std::string> settings;  ///< FIELD=VALUE
    int threads = 0;
    bool isInteractive = false;
    bool isQuiet = false;    ///< findings of severity warning and error only
    bool isVerbose = false;  ///< the engine's lines too
    bool isStrict = false;   ///< warnings refuse the model
};

/// Runs the analyses on a model that is loaded, and tells what ends them.
/// @param host  installed, on the same progress
/// @return      kDone, or the exit code of what ended them
int SolveModel(const RunOptions& options, CjxStruct& model, Progress& progress, const TerminalHost& host);

/// Analyses a model and writes what was asked for. Returns the exit code.
int RunModel(const RunOptions& options);

}  // namespace qvx::app
