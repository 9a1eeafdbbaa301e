#include <algorithm>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "elements/stiffness_sink.h"
#include "model/jx_struct.h"
#include "model/solution_data.h"
#include "platform/cwin_app.h"
#include "platform/host_services.h"
#include "solver/out_of_core_file.h"
#include "sparse/direct_solver.h"

using qvx::double128;

namespace {

enum ProgressMessage : UINT { kFactorizationPercent = 1124, kProgressActivated = 1125, kStatus = 1126 };

constexpr int kDefaultMaxCore = 2000;  // megabytes
constexpr int kLeastMaxCore = 20;

int Preference(const wchar_t* key, int defaultValue)
{
    return AfxGetApp().GetProfileInt(L"Preferences", key, defaultValue);
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

qvx::SymmetricMatrix View(int n, const double* a, const int* ia, const int* ja)
{
    return {.n = n, .rowStart = ia, .column = ja, .value = a};
}

}  // namespace

void CjxStruct::configure_pardiso()
{
    const int processors = std::max(1, GetNumberOfCPUs());
    solverThreads_ = std::clamp(Preference(L"SolverCPUs", processors), 1, processors);
    CString text;
    text.Format(L"%d (out of %d)", solverThreads_, processors);
    list_msg(L"CPUs available for parallel computing", text);
    const int maxCore = std::max(kLeastMaxCore, Preference(L"OocMaxCore", kDefaultMaxCore));
    if (bOutOfCore)
        qvx::OutOfCoreFile::Write(maxCore);

    // A solver's other threads call too: only the caller's may post and ask.
    const auto isCaller = [caller = std::this_thread::get_id()] { return std::this_thread::get_id() == caller; };
    directSolver_ =
        qvx::MakeDirectSolver(ChosenBackend(), {.isOutOfCore = bOutOfCore != 0,
                                                .folder = qvx::ToUtf8(qvx::Host().CurrentFolder()),
                                                .maxCoreMegabytes = maxCore,
                                                .threads = solverThreads_,
                                                .isRefinedByCaller = !multiDofConstraints.empty(),
                                                .progress =
                                                    [this, isCaller](int percent, int thread) {
                                                        if (isCaller())
                                                            PostFactorizationPercent(percent, thread);
                                                    },
                                                .isToGoOn = [this, isCaller] { return !isCaller() || IsToGoOn(); }});
    if (!directSolver_)
        throw jxException(L"The sparse solver PARDISO is not installed on this machine. Set the preference "
                          L"SparseBackend to 0 (automatic) or 2 (MUMPS), or install its runtime library.");
}

double CjxStruct::prepare_pardiso(double*& a, int*& ia, int*& ja, jxSolutionData& data)
{
    const std::wstring stars(101, L'*');
    list_msg(stars.c_str(), L"");
    list_msg(L"RUNNING DOUBLE-PRECISION SPARSE SOLVER ******************************** ", L"");
    list_msg(stars.c_str(), L"");
    list_msg(L"Prepare sparse stiffness matrix", L"...");

    const auto [count, largest] = data.sparseK.Survey(solverThreads_);
    CString text;
    text.Format(L"%I64d", static_cast<long long>(count));
    list_msg(L"The number of nonzero terms in global stiffness matrix", text);
    memcheck(fileLog, static_cast<int>((count * 12 * 2 + numberOfEquations * 4LL) / 1024));
    a = data.sparseK.Values();
    ia = data.sparseK.RowStarts();
    ja = data.sparseK.Columns();
    return largest;
}

/// Lets the host's progress window come up. The abort key ends the wait for a window that never does.
void CjxStruct::WaitForProgressWindow()
{
    if (factorizationStarted_ != nullptr && progressWindow == nullptr) {
        factorizationStarted_(this);
        while (progressWindow == nullptr || progressWindow->GetSafeHwnd() == nullptr) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            peek_msg();
        }
    }
    if (progressWindow != nullptr) {
        progressWindow->PostMessageW(kProgressActivated, 0, 0);
        progressWindow->BringWindowToTop();
    }
}

void CjxStruct::PostFactorizationPercent(int percent, int thread)
{
    if (progressWindow != nullptr)
        progressWindow->PostMessageW(kFactorizationPercent, static_cast<WPARAM>(percent), thread);
}

/// Asked by the solver. No exception may cross it: ThrowIfAborted throws it again behind the solver.
bool CjxStruct::IsToGoOn()
{
    try {
        peek_msg();
    } catch (const jxException&) {
        return false;
    }
    return !bAborted_;
}

void CjxStruct::ThrowIfAborted() const
{
    if (bAborted_)
        throw jxException(L"SOLUTION ABORTED!");
}

int CjxStruct::pardiso_factorize(jxSolutionData& data, int n, double* a, int* ia, int* ja)
{
    list_msg(L"FACTORIZATION", L"...");
    status_msg(L"");
    WaitForProgressWindow();

    const qvx::SymmetricMatrix matrix = View(n, a, ia, ja);
    if (!data.bAnalysed) {
        const qvx::SparseStatus status = directSolver_->Analyse(matrix);
        ThrowIfAborted();
        if (!status)
            throw jxException(get_pardiso_error(status.error));
        data.bAnalysed = 1;
    }
    const qvx::SparseStatus status = directSolver_->Factorise(matrix);
    ThrowIfAborted();
    if (!status) {
        if (status.equation > 0) {
            int node = 0;
            int dof = 1;
            FindDof(node, dof, static_cast<int>(nodes.size()), status.equation);
            CString text;
            text.Format(L"Zero or negative pivot at equation number = %d, at node %d, DOF %s", status.equation, node,
                        kDofNames[dof - 1]);
            list_msg(text, L"NOT OK");
        }
        throw jxException(get_pardiso_error(status.error));
    }

    list_msg0(L"FACTORIZATION", L"OK");
    CString text;
    text.Format(bOutOfCore ? L"%d MB [Out-Of-Core]" : L"%d MB [In-Core]",
                static_cast<int>(directSolver_->PeakKilobytes() / 1024));
    list_msg(L"Peak memory usage", text);
    if (progressWindow != nullptr)
        progressWindow->PostMessageW(kStatus, 0, 0);
    return 0;
}

int CjxStruct::pardiso_substitution(double* a, int* ia, int* ja, double128* load)
{
    return pardiso_substitution_many(a, ia, ja, {load});
}

int CjxStruct::pardiso_substitution_many(double* a, int* ia, int* ja, const std::vector<double128*>& loads)
{
    const auto n = static_cast<std::size_t>(numberOfEquations);
    std::vector<double> b(n * loads.size()), x(n * loads.size());
    for (std::size_t k = 0; k < loads.size(); ++k)
        for (std::size_t i = 0; i < n; ++i)
            b[k * n + i] = static_cast<double>(loads[k][i + 1]);
    const qvx::SparseStatus status =
        directSolver_->Solve(View(numberOfEquations, a, ia, ja), b.data(), x.data(), static_cast<int>(loads.size()));
    ThrowIfAborted();
    if (!status) {
        CString text;
        text.Format(L"ERROR [%d] during sparse matrix substitution", status.error);
        throw jxException(text);
    }
    for (std::size_t k = 0; k < loads.size(); ++k)
        std::copy_n(x.begin() + static_cast<std::ptrdiff_t>(k * n), n, loads[k] + 1);
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
