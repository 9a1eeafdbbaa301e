#include "solver/sparse_solver.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "model/window_messages.h"
#include "platform/cwin_app.h"
#include "platform/host_services.h"
#include "solver/out_of_core_file.h"
#include "solver/run_findings.h"
#include "solver/sparse_system.h"

using qvx::double128;

namespace {

constexpr int kDefaultMaxCore = 2000;  // megabytes
// Below it a solver has no room to work, whatever the model.
constexpr int kLeastMaxCore = 20;

int Preference(const wchar_t* key, int defaultValue)
{
    return AfxGetApp().GetProfileInt(L"Preferences", key, defaultValue);
}

int MaxCoreMegabytes()
{
    return std::max(kLeastMaxCore, Preference(L"OocMaxCore", kDefaultMaxCore));
}

/// Profile integer SparseBackend: 0 the best that is installed, 1 PARDISO, 2 MUMPS.
qvx::SparseBackend ChosenBackend()
{
    switch (Preference(L"SparseBackend", 0)) {
    case 1:
        return qvx::SparseBackend::Pardiso;
    case 2:
        return qvx::SparseBackend::Mumps;
    default:
        return qvx::SparseBackend::Automatic;
    }
}

/// Posts to the host's progress window, if there is one.
void PostProgress(const CjxStruct& model, UINT message, int percent = 0, int thread = 0)
{
    if (model.progressWindow != nullptr)
        model.progressWindow->PostMessageW(message, static_cast<WPARAM>(percent), thread);
}

/// Lets the host's progress window come up. The abort key ends the wait for a window that never does.
void WaitForProgressWindow(const qvx::RunContext& context)
{
    CjxStruct& model = context.model;
    if (context.openProgressWindow && model.progressWindow == nullptr) {
        context.openProgressWindow();
        while (model.progressWindow == nullptr || model.progressWindow->GetSafeHwnd() == nullptr) {
            // The window is made by the host's own thread; polling asks nothing of it but to store the pointer.
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            model.peek_msg();
        }
    }
    PostProgress(model, qvx::kFactorizationBegins);
    if (model.progressWindow != nullptr)
        model.progressWindow->BringWindowToTop();
}

/// Asked by the solver. No exception may cross it: ThrowIfAborted throws it again behind the solver.
bool IsToGoOn(const qvx::RunContext& context)
{
    try {
        context.model.peek_msg();
    } catch (const jxException&) {
        return false;
    }
    return !context.IsAborted();
}

void ThrowIfAborted(const qvx::RunContext& context)
{
    if (context.IsAborted())
        throw jxException(L"SOLUTION ABORTED!");
}

void TellBadPivot(CjxStruct& model, int equation)
{
    int node = 0;
    int dof = 1;
    model.FindDof(node, dof, static_cast<int>(model.nodes.size()), equation);
    CString text;
    text.Format(L"Zero or negative pivot at equation number = %d, at node %d, DOF %s", equation, node,
                kDofNames[dof - 1]);
    model.list_msg(text, L"NOT OK");
    qvx::FindUnstable(model, {{node, dof}});
}

}  // namespace

namespace qvx {

std::unique_ptr<DirectSolver> MakeRunSolver(const RunContext& context)
{
    // A solver's other threads call too: only the caller's may post and ask.
    const auto isCaller = [caller = std::this_thread::get_id()] { return std::this_thread::get_id() == caller; };
    std::unique_ptr<DirectSolver> solver = MakeDirectSolver(
        ChosenBackend(), {.isOutOfCore = context.model.bOutOfCore != 0,
                          .folder = ToUtf8(Host().CurrentFolder()),
                          .maxCoreMegabytes = MaxCoreMegabytes(),
                          .threads = context.threads,
                          .isRefinedByCaller = !context.model.multiDofConstraints.empty(),
                          .progress =
                              [context, isCaller](int percent, int thread) {
                                  if (isCaller())
                                      PostProgress(context.model, kFactorizationPercent, percent, thread);
                              },
                          .isToGoOn = [context, isCaller] { return !isCaller() || IsToGoOn(context); }});
    if (!solver)
        throw jxException(L"The sparse solver PARDISO is not installed on this machine. Set the preference "
                          L"SparseBackend to 0 (automatic) or 2 (MUMPS), or install its runtime library.");
    return solver;
}

void TellAndFactorize(const RunContext& context, EquationSolver& solver)
{
    CjxStruct& model = context.model;
    model.list_msg(L"FACTORIZATION", L"...");
    model.status_msg(L"");
    WaitForProgressWindow(context);

    ThrowFactorizationFault(context, solver.Factorize());
    model.list_msg0(L"FACTORIZATION", L"OK");
    CString text;
    text.Format(model.bOutOfCore ? L"%d MB [Out-Of-Core]" : L"%d MB [In-Core]",
                static_cast<int>(context.directSolver->PeakKilobytes() / 1024));
    model.list_msg(L"Peak memory usage", text);
    PostProgress(model, kFactorizationEnds);
}

void ThrowFactorizationFault(const RunContext& context, const FactorOutcome& outcome)
{
    ThrowIfAborted(context);
    if (outcome.error == 0)
        return;
    if (outcome.equation > 0)
        TellBadPivot(context.model, outcome.equation);
    throw jxException(context.model.get_pardiso_error(outcome.error));
}

void ThrowSolutionFault(const RunContext& context, int error)
{
    ThrowIfAborted(context);
    if (error == 0)
        return;
    CString text;
    text.Format(L"ERROR [%d] during sparse matrix substitution", error);
    throw jxException(text);
}

}  // namespace qvx

void CjxStruct::configure_pardiso()
{
    const int processors = std::max(1, GetNumberOfCPUs());
    // Never more threads than processors: threads of a dense kernel that wait for each other at every block lose more
    // than they bring.
    solverThreads_ = std::clamp(Preference(L"SolverCPUs", processors), 1, processors);
    CString text;
    text.Format(L"%d (out of %d)", solverThreads_, processors);
    list_msg(L"CPUs available for parallel computing", text);
    if (bOutOfCore && !qvx::OutOfCoreFile::Write(MaxCoreMegabytes()))
        list_msg(L"The file pardiso_ooc.cfg of the current folder is not of this program: it stays, and counts",
                 L"...");
    directSolver_ = qvx::MakeRunSolver(Context());
}

double CjxStruct::prepare_pardiso(double*& a, int*& ia, int*& ja, jxSolutionData& data)
{
    const std::wstring stars(101, L'*');
    list_msg(stars.c_str(), L"");
    list_msg(L"RUNNING DOUBLE-PRECISION SPARSE SOLVER ******************************** ", L"");
    list_msg(stars.c_str(), L"");
    list_msg(L"Prepare sparse stiffness matrix", L"...");

    // One pass counts and finds the largest: of a matrix of gigabytes the reading is what takes the time.
    const auto [count, largest] = data.sparseK.Survey(solverThreads_);
    CString text;
    text.Format(L"%I64d", static_cast<long long>(count));
    list_msg(L"The number of nonzero terms in global stiffness matrix", text);
    // Value and column of a term are 12 bytes; twice, as solvers make a copy of their own. The row starts are 4 bytes
    // each.
    memcheck(fileLog, static_cast<int>((count * 12 * 2 + numberOfEquations * 4LL) / 1024));
    a = data.sparseK.Values();
    ia = data.sparseK.RowStarts();
    ja = data.sparseK.Columns();
    return largest;
}

int CjxStruct::pardiso_factorize(jxSolutionData& data, int /*n*/, double* /*a*/, int* /*ia*/, int* /*ja*/)
{
    qvx::SparseSystem system(data, *directSolver_);
    qvx::TellAndFactorize(Context(), system);
    return 0;
}

int CjxStruct::pardiso_substitution(double* a, int* ia, int* ja, double128* load)
{
    double128* const loads[] = {load};
    const qvx::SymmetricMatrix matrix{.n = numberOfEquations, .rowStart = ia, .column = ja, .value = a};
    qvx::ThrowSolutionFault(Context(), qvx::SolveInPlace(*directSolver_, matrix, loads).error);
    return 0;
}

int CjxStruct::pardiso_delete(int*, int*)
{
    if (directSolver_)
        directSolver_->Release();
    return 0;
}

CString CjxStruct::get_pardiso_error(int error) const
{
    switch (error) {
    case -1:
        return L"Input inconsistency during sparse matrix symbolic factorization.";
    case -2:
        return L"Out of memory during sparse matrix symbolic factorization.";
    case -3:
        return L"Reordering problem during sparse matrix symbolic factorization.";
    case -4:
        return L"Error was encountered during sparse matrix numerical factorization.\n"
               L"The structure may not be stable.\n"
               L"Try to run the Skyline solver and check the log file for more details.";
    case -5:
        return L"Unclassified (internal) error.";
    case -6:
        return L"Matrix preordering failed.";
    case -7:
        return L"Diagonal matrix problem.";
    case -8:
        return L"32-bit integer overflow problem.";
    case -9:
        return L"Not enough memory for Out-Of-Core (OOC).  Please adjust the setting from Settings->Preferences menu.";
    case -10:
        return L"problems with opening OOC temporary files.";
    case -11:
        return L"read/write problems with the OOC data file.";
    default:
        break;
    }
    CString text;
    text.Format(L"ERROR [%d] during sparse matrix symbolic factorization", error);
    return text;
}

CString CjxStruct::SparseSolverName() const
{
    return directSolver_ ? CString(directSolver_->Name()) : CString();
}

void CjxStruct::SetPardisoFactorizationStartedCallback(void (*callback)(CjxStruct*))
{
    factorizationStarted_ = callback;
}
