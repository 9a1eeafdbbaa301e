// The reader of bar tables: whatever the bytes, it reads tables that hold what they promise, or none at all.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "quiet_host.h"
#include "rc/bar_file.h"

namespace {

void RequireSound(const jxBarDatabase& table)
{
    for (std::size_t i = 0; i < table.bars.size(); ++i) {
        const jxBar& bar = table.bars[i];
        qvx::fuzz::Require(bar.diameter > 0 && bar.area > 0, "a bar has a diameter and an area");
        qvx::fuzz::Require(i == 0 || table.bars[i - 1].size < bar.size, "bars stand in the order of their sizes");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::optional<qvx::BarTables> tables = qvx::ReadBarTables({reinterpret_cast<const char*>(data), size});
    if (!tables)
        return 0;
    const int count = static_cast<int>(tables->databases.size());
    qvx::fuzz::Require(count == 0 ? tables->current == -1 : tables->current >= 0 && tables->current < count,
                       "the table in use is one of those read");
    for (const jxBarDatabase& table : tables->databases)
        RequireSound(table);
    return 0;
}
