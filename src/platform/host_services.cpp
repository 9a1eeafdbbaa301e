#include "platform/host_services.h"

#include <algorithm>
#include <atomic>
#include <cassert>
#include <charconv>
#include <cwchar>
#include <filesystem>
#include <iostream>
#include <thread>

#if !defined(_WIN32)
#include <dlfcn.h>
#include <unistd.h>
#endif

#include "platform/ini_file.h"
#include "platform/preferences_file.h"
#include "platform/process_memory.h"
#include "platform/wide_path.h"

namespace qvx {

namespace {

int IntegerOr(const std::string& text, int defaultValue)
{
    int value = 0;
    const char* last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, value);
    // Whole or not at all: "4x" is a misspelling, and half of it no setting.
    return error == std::errc() && end == last ? value : defaultValue;
}

HostServices& HeadlessHost()
{
    // On first use, and never destroyed before it: threads may still ask while the process ends.
    static HostServices headless;
    return headless;
}

std::atomic<HostServices*>& Installed()
{
    static std::atomic<HostServices*> installed{nullptr};
    return installed;
}

}  // namespace

HostServices::~HostServices() = default;

int HostServices::MessageBox(const std::wstring& text, unsigned flags)
{
    constexpr unsigned kButtons = 0xF;
    // The error stream: what a program prints as its result stays clean. Nobody is there to say No.
    std::cerr << ToUtf8(text) << std::endl;
    return (flags & kButtons) == kMbYesNo ? kIdYes : kIdOk;
}

bool HostServices::IsUserThere()
{
    return this != &HeadlessHost();
}

bool HostServices::IsAbortKeyDown()
{
    return false;
}

int HostServices::ProfileInteger(const std::wstring& section, const std::wstring& key, int defaultValue)
{
    // Read anew each time it is asked, which is a few times a run: a user may change it meanwhile.
    const auto sections = ReadIniFile(PreferencesFile());
    const IniSection* found = sections ? FindSection(*sections, section) : nullptr;
    const std::wstring* value = found == nullptr ? nullptr : found->Find(key);
    return value == nullptr ? defaultValue : IntegerOr(ToUtf8(*value), defaultValue);
}

MemoryStatus HostServices::Memory()
{
    MemoryStatus status{.totalPhysical = KernelTableBytes("/proc/meminfo", "MemTotal:"),
                        .availablePhysical = KernelTableBytes("/proc/meminfo", "MemAvailable:")};
#if defined(_SC_PHYS_PAGES) && defined(_SC_PAGESIZE)
    // Systems without the table of the kernel tell at least what is built in.
    if (status.totalPhysical == 0)
        status.totalPhysical =
            static_cast<std::uint64_t>(sysconf(_SC_PHYS_PAGES)) * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
#endif
    return status;
}

int HostServices::ProcessorCount()
{
    return static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
}

std::wstring HostServices::ExecutableFolder()
{
    std::error_code error;
    const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? CurrentFolder() : TextOf(executable.parent_path());
}

std::wstring HostServices::CurrentFolder()
{
    std::error_code error;
    return TextOf(std::filesystem::current_path(error));
}

std::wstring InstalledDataFolder()
{
    Dl_info library{};
    if (dladdr(reinterpret_cast<const void*>(&InstalledDataFolder), &library) == 0 || library.dli_fname == nullptr)
        return L"";
    std::error_code error;
    // From the library's own place, of a link its target: <prefix>/lib/libqvxFEM.so has <prefix>/share/qvxfem.
    const std::filesystem::path file = std::filesystem::canonical(library.dli_fname, error);
    return error ? L"" : TextOf(file.parent_path().parent_path() / "share" / "qvxfem");
}

bool HostServices::DeleteFile(const std::wstring& path)
{
    std::error_code error;
    return std::filesystem::remove(PathOf(path), error) && !error;
}

void HostServices::DebugOutput(const std::wstring& text)
{
    std::cerr << ToUtf8(text) << std::flush;
}

/// Atomic, because solver threads may ask the host while a test or a second model installs another.
HostServices* SetHostServices(HostServices* services)
{
    return Installed().exchange(services);
}

HostServices& Host()
{
    HostServices* installed = Installed().load();
    return installed == nullptr ? HeadlessHost() : *installed;
}

wchar_t FolderSeparator()
{
    return static_cast<wchar_t>(std::filesystem::path::preferred_separator);
}

}  // namespace qvx

int AfxMessageBox(const wchar_t* text, unsigned flags)
{
    return qvx::Host().MessageBox(text, flags);
}

void GetExecutablePath(wchar_t* buffer, std::size_t capacity)
{
    if (capacity == 0)
        return;
    const std::wstring folder = qvx::Host().ExecutableFolder();
    assert(buffer != nullptr);
    const std::size_t length = std::min(folder.size(), capacity - 1);
    std::wmemcpy(buffer, folder.data(), length);
    buffer[length] = 0;
}
