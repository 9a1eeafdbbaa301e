#include "model_source.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <fstream>
#include <system_error>

#include "bar_tables.h"
#include "files/model_file.h"
#include "model/findings.h"
#include "platform/wide_path.h"
#include "sap2000/sap2000_file.h"

namespace qvx::app {
namespace {

std::string EndingOf(const std::filesystem::path& path)
{
    std::string ending = path.extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char c) { return static_cast<char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c); });
    return ending;
}

void RequireReadable(const std::filesystem::path& path)
{
    // Told here with the system's reason: a message box of the reader would know neither.
    if (std::filesystem::is_directory(path))
        throw FileError(path.string(), "", "is a folder");
    if (!std::ifstream(path))
        throw FileError(path.string(), "", "cannot be opened: " + std::generic_category().message(errno));
}

void ImportSap2000(const std::filesystem::path& path, CjxStruct& model)
{
    assert(EndingOf(path) == ".s2k");
    RequireReadable(path);
    model.bZVertical = 1;  // the global Z axis of such a file points up
    model.selfWeightDir = 2;
    std::vector<CString> told;
    if (!ReadSap2000File(TextOf(path), model, told))
        throw FileError(path.string(), "", "cannot be read");
    // What the importer left out is a finding like any other, so that --strict and exit codes see it.
    for (const CString& line : told)
        model.findings.Add(MakeFinding(FindingCode::ImportLoss, line.Text()));
}

}  // namespace

void LoadModel(const std::filesystem::path& path, CjxStruct& model)
{
    // By the ending and not by the content: a broken file of one kind must not be read as one of the other.
    const std::string ending = EndingOf(path);
    model.documentPath = CString(TextOf(path));
    TakeBuiltInBars(model);
    if (ending == ".s2k")
        return ImportSap2000(path, model);
    if (ending != ".json")
        throw FileError(path.string(), "", "cannot be read: the name of a model ends in .json or .s2k");
    ReadModelFile(path, model);
}

void RequireKnownOutput(const std::filesystem::path& path)
{
    if (EndingOf(path) != ".json")
        throw FileError(path.string(), "", "cannot be written: the name of a model to write ends in .json");
}

void SaveModel(const std::filesystem::path& path, const CjxStruct& model)
{
    RequireKnownOutput(path);
    WriteModelFile(path, model);
}

}  // namespace qvx::app
