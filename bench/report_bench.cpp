// Speed of the report: numbers written a second, in tables and as text, of displacements and of member curves. Each
// benchmark first checks that a known number stands in the file. The file is written to the folder for temporary files.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <benchmark/benchmark.h>

#include "model/jx_struct.h"
#include "platform/wide_path.h"
#include "report/report.h"

namespace {

using namespace qvx;

// One combination of n nodes with displacements of every size that occurs: 1e-6 to 10, both signs.
void FillNodes(CjxStruct& model, int n)
{
    model.loadCombs.resize(1);
    model.combResults.resize(1);
    std::uint64_t state = 88172645463325252ULL;
    for (int i = 1; i <= n; ++i) {
        model.nodes.push_back({.id = i, .x = 1.0 * i});
        jxResult6Val d{.id = i};
        for (double& value : d.value) {
            state ^= state << 13, state ^= state >> 7, state ^= state << 17;  // Marsaglia's xorshift
            value = (static_cast<double>(state >> 11) * 0x1p-53 - 0.5) * (state % 3 == 0 ? 20 : 0.02);
        }
        model.combResults[0].displacements.push_back(d);
    }
    model.combResults[0].displacements[0].value[0] = 0.12345678;
}

void SetFormat(CjxStruct& model, int format)
{
    for (int& f : model.units.format)
        f = format;
}

std::string TextOf(const std::filesystem::path& file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// @param bHtmlTables  1 tables, 0 text
/// @param format       of all quantities: 2 "#.000", 8 "#.000E+00"
void WriteDisplacements(benchmark::State& state, int bHtmlTables, int format)
{
    const int n = static_cast<int>(state.range(0));
    CjxStruct model;
    FillNodes(model, n);
    SetFormat(model, format);
    const std::filesystem::path document = std::filesystem::temp_directory_path() / "qvx-report-bench";
    const std::filesystem::path file = document.string() + ".htm";
    model.documentPath = CString(FromUtf8(document.string()));
    CjxReport report;
    report.model = &model;
    report.bHtmlTables = bHtmlTables;
    SelectReportSections(report, {"nodal_displacements"});
    const auto write = [&] {
        report.open_file();
        report.list_nodal_displacements();
        report.close_file();
    };
    write();
    if (TextOf(file).find(format == 2 ? "0.123" : "1.235e-01") == std::string::npos)
        state.SkipWithError("the first displacement is not in the report");
    for (auto _ : state)
        write();
    state.counters["numbers/s"] =
        benchmark::Counter(6.0 * n * static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
    state.SetBytesProcessed(static_cast<std::int64_t>(std::filesystem::file_size(file)) * state.iterations());
    std::filesystem::remove(file);
}

BENCHMARK_CAPTURE(WriteDisplacements, text_fixed, 0, 2)->Arg(200000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WriteDisplacements, text_exponent, 0, 8)->Arg(200000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WriteDisplacements, tables_fixed, 1, 2)->Arg(200000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WriteDisplacements, tables_exponent, 1, 8)->Arg(200000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
