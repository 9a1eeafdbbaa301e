// Times the results file of a generated model that has been solved (frame:N, shells:N:STOREYS, bricks:N).
//
//     text_output MODEL [RUNS]
//
// A number is whatever stands between separators and starts with a digit or a sign. The file goes to the current folder
// and is removed.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "files/results_file.h"
#include "generated_models.h"
#include "sparse_measure.h"

namespace {

using namespace qvx::bench;

/// Numbers of a text in which strings hold no digits after a separator.
double CountNumbers(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    double count = 0;
    char before = ' ';
    std::vector<char> piece(1 << 20);
    while (file.read(piece.data(), static_cast<std::streamsize>(piece.size())), file.gcount() > 0)
        for (std::streamsize i = 0; i < file.gcount(); ++i) {
            const char c = piece[static_cast<std::size_t>(i)];
            count += ((c >= '0' && c <= '9') || c == '-') && (before == ' ' || before == '[');
            before = c;
        }
    return count;
}

void Measure(const std::string& name, int runs)
{
    const BenchHost host(qvx::SparseBackend::Pardiso, 2);
    CjxStruct model;
    BuildNamed(model, name);
    if (model.ExecuteStatic() != 1)
        throw std::runtime_error("the run failed");
    const std::filesystem::path path = "text_output.results.json";
    std::vector<double> seconds, processorSeconds;
    const double peakBefore = PeakMegabytes();
    for (int run = 0; run < runs; ++run) {
        const std::clock_t processor = std::clock();
        const auto start = Clock::now();
        qvx::WriteResultsFile(path, model);
        seconds.push_back(SecondsSince(start));
        processorSeconds.push_back(static_cast<double>(std::clock() - processor) / CLOCKS_PER_SEC);
    }
    const double numbers = CountNumbers(path);
    Print("numbers", numbers);
    Print("megabytes", static_cast<double>(std::filesystem::file_size(path)) / (1 << 20));
    Print("seconds", Median(seconds));
    Print("processorSeconds", Median(processorSeconds));
    Print("millionNumbersPerSecond", numbers / Median(seconds) * 1e-6);
    Print("peakGrowthMegabytes", PeakMegabytes() - peakBefore);
    std::filesystem::remove(path);
}

}  // namespace

int main(int argc, char** argv)
try {
    if (argc < 2) {
        std::fprintf(stderr, "usage: text_output MODEL [RUNS]\n");
        return 2;
    }
    Measure(argv[1], argc > 2 ? std::max(1, std::atoi(argv[2])) : 5);
    return 0;
} catch (const std::exception& e) {
    std::fprintf(stderr, "%s\n", e.what());
    return 2;
} catch (const jxException& e) {
    std::fprintf(stderr, "%s\n", qvx::ToUtf8(e.GetText()).c_str());
    return 3;
}
