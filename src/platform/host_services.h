#pragma once

#include <cstdint>
#include <string>

#include "platform/cstring.h"
#include "platform/export.h"

namespace qvx {

/// Buttons and flags of a message box, with the values of the desktop API.
enum MessageBoxFlags : unsigned { kMbOk = 0, kMbYesNo = 4, kMbIconQuestion = 32, kMbSystemModal = 4096 };
enum MessageBoxButton : int { kIdOk = 1, kIdCancel = 2, kIdYes = 6, kIdNo = 7 };

/// Memory of the machine in bytes.
struct MemoryStatus
{
    std::uint64_t totalPhysical = 0;
    std::uint64_t availablePhysical = 0;
};

/// What the engine asks of its surroundings. The base class is the headless host: boxes are printed on the error
/// stream and answered Yes or OK, the abort key is never down, profile integers come from an INI file, memory and
/// folders from the operating system. A desktop or test host overrides what it wants.
class QVXFEM_API HostServices
{
public:
    virtual ~HostServices();

    /// Shows a message, or asks. @param flags MessageBoxFlags @return a MessageBoxButton
    virtual int MessageBox(const std::wstring& text, unsigned flags);
    /// Whether somebody reads a question before it is answered; of a host of one's own true, unless it says otherwise.
    virtual bool IsUserThere();
    /// Asked often by long loops, from the thread of the run; true makes the run ask whether to stop.
    virtual bool IsAbortKeyDown();
    /// Machine setting, the default when it is not set.
    virtual int ProfileInteger(const std::wstring& section, const std::wstring& key, int defaultValue);
    virtual MemoryStatus Memory();  ///< zeros when the system does not tell
    virtual int ProcessorCount();   ///< that threads may run on, 1 at least
    /// Folder of the running executable, without a separator at its end.
    virtual std::wstring ExecutableFolder();
    virtual std::wstring CurrentFolder();  ///< in which solver files are written
    /// True when the file existed and is gone.
    virtual bool DeleteFile(const std::wstring& path);
    virtual void DebugOutput(const std::wstring& text);  ///< for a developer; to the error stream when headless
};

/// Installs the host of this process and gives back the one before; null installs the headless host.
/// The caller keeps ownership and must outlive its use.
QVXFEM_API HostServices* SetHostServices(HostServices* services);
QVXFEM_API HostServices& Host();  ///< the host installed, else the headless one

/// The platform's folder separator.
QVXFEM_API wchar_t FolderSeparator();

/// Folder of the data files that were installed with this library; it need not exist.
QVXFEM_API std::wstring InstalledDataFolder();

}  // namespace qvx

/// Shows a message box through the host; flags as MessageBoxFlags. Returns the button.
QVXFEM_API int AfxMessageBox(const wchar_t* text, unsigned flags = 0);
/// Fills buffer (at least 260 characters) with the directory of the running executable.
QVXFEM_API void GetExecutablePath(wchar_t* buffer, std::size_t capacity);
