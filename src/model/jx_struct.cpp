#include "model/jx_struct.h"

#include "model/solver_window.h"
#include "platform/cwin_app.h"
#include "platform/host_services.h"
#include "rc/rc_manager.h"
#include "sparse/direct_solver.h"

namespace {

constexpr const wchar_t* kBarDatabase = L"RcSections.ini";

CString FileIn(const wchar_t* folder, const wchar_t* name)
{
    CString path = folder;
    path += qvx::FolderSeparator();
    path += name;
    return path;
}

// The tables of bars: the host's own beside its executable, else those installed with the library.
bool LoadBars(std::vector<jxBarDatabase>& databases, int& current)
{
    // The executable's folder first: a host may bring tables of its own country beside itself.
    constexpr std::size_t kLongestPath = 4096;
    wchar_t folder[kLongestPath];
    GetExecutablePath(folder, kLongestPath);
    return CjxRcManager::bLoadBarDatabase(databases, current, FileIn(folder, kBarDatabase)) ||
           CjxRcManager::bLoadBarDatabase(databases, current, FileIn(qvx::InstalledDataFolder().c_str(), kBarDatabase));
}

}  // namespace

CjxStruct::CjxStruct() : window_(std::make_unique<qvx::SolverWindow>())
{
    // A new model takes the user's habit; a stored one has the axis among its settings.
    if (AfxGetApp().GetProfileInt(L"Preferences", L"bUseZAsVertical", 0) != 0) {
        selfWeightDir = 2;
        bZVertical = 1;
    }
    if (!LoadBars(rebarDatabases, currentRebarDatabase)) {
        CString text;
        text.Format(L"Error opening file \\%s", kBarDatabase);
        AfxMessageBox(text, qvx::kMbSystemModal);
    }
}

CjxStruct::~CjxStruct() = default;

bool CjxStruct::IsEmptyDocument() const
{
    return bEmptyDocument != 0;
}

void CjxStruct::OnAddMoreLoadCase()
{
    caseLoads.resize(loadCases.size());
}

void CjxStruct::OnAddMoreLoadCombination()
{
    combResults.resize(loadCombs.size());
}
