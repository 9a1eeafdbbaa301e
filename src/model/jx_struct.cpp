#include "model/jx_struct.h"

#include "platform/cwin_app.h"
#include "platform/host_services.h"
#include "rc/rc_manager.h"
#include "sparse/direct_solver.h"

namespace {

// Path of a file beside the running executable; the name begins with the separator of its message text.
CString BesideExecutable(const wchar_t* name)
{
    constexpr std::size_t kLongestPath = 4096;
    wchar_t folder[kLongestPath];
    GetExecutablePath(folder, kLongestPath);
    CString path = folder;
    path += qvx::FolderSeparator();
    path += name + 1;
    return path;
}

}  // namespace

CjxStruct::CjxStruct()
{
    if (AfxGetApp().GetProfileInt(L"Preferences", L"bUseZAsVertical", 0) != 0) {
        selfWeightDir = 2;
        bZVertical = 1;
    }
    constexpr const wchar_t* kBarDatabase = L"\\RcSections.ini";
    if (!CjxRcManager::bLoadBarDatabase(rebarDatabases, currentRebarDatabase, BesideExecutable(kBarDatabase))) {
        CString text;
        text.Format(L"Error opening file %s", kBarDatabase);
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
