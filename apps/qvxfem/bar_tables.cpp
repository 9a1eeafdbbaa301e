#include "bar_tables.h"

#include <filesystem>
#include <system_error>

#include "platform/host_services.h"
#include "rc/bar_file.h"

namespace qvx::app {
namespace {

constexpr const wchar_t* kBarFile = L"RcSections.ini";

}  // namespace

void TakeBuiltInBars(CjxStruct& model)
{
    if (!model.rebarDatabases.empty())
        return;
    const BarTables& tables = BuiltInBarTables();
    model.rebarDatabases = tables.databases;
    model.currentRebarDatabase = tables.current;
}

bool IsAboutMissingBarFile(const std::wstring& message)
{
    if (!message.ends_with(kBarFile))
        return false;
    constexpr std::size_t kLongestPath = 4096;
    wchar_t folder[kLongestPath];
    GetExecutablePath(folder, kLongestPath);
    std::error_code ignored;
    return !std::filesystem::exists(std::filesystem::path(folder) / kBarFile, ignored);
}

}  // namespace qvx::app
