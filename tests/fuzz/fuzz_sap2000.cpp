// The SAP2000 reader: any bytes are read, every loss has a text, and the repaired model can be written unless one of
// its numbers is not finite.

#include <cstddef>
#include <cstdint>
#include <numeric>
#include <sstream>
#include <string>

#include "files/model_file.h"
#include "model/jx_struct.h"
#include "quiet_host.h"
#include "sap2000/sap2000_importer.h"

namespace {

// Ids may repeat in a file and then stand twice in the written model, which its reader refuses.
void WriteAndReadBack(const CjxStruct& model)
{
    try {
        const std::string text = qvx::WriteModelText(model);
        CjxStruct copy;
        qvx::ReadModelText(text, copy);
        qvx::fuzz::Require(qvx::WriteModelText(copy) == text, "reading what was written changes nothing");
    } catch (const qvx::FileError&) {
    }
}

// Writing and reading back costs more than the import: one input in eight, by its bytes, goes that far.
bool IsChosen(const std::uint8_t* data, std::size_t size)
{
    return std::accumulate(data, data + size, 0u) % 8 == 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static qvx::fuzz::QuietHost host;
    CjxStruct model;
    model.RepaireData();
    CSap2000Importer importer(L"", &model);
    std::istringstream stream(std::string(reinterpret_cast<const char*>(data), size));

    importer.Process(stream);

    for (const qvx::ImportLoss& loss : importer.Losses())
        qvx::fuzz::Require(loss.count > 0 && !loss.Text().IsEmpty(), "a loss is counted and has a text");
    model.RepaireData();
    if (IsChosen(data, size))
        WriteAndReadBack(model);
    return 0;
}
