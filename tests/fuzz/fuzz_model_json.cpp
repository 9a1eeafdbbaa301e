// The model file reader: whatever the bytes, it reads a model or says why not. A model that was read is written, read
// again and written as the same text, and stays writable after its repair.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "files/model_file.h"
#include "model/jx_struct.h"
#include "quiet_host.h"

namespace {

bool Read(std::string_view text, CjxStruct& model)
{
    try {
        qvx::ReadModelText(text, model);
        return true;
    } catch (const qvx::FileError& e) {
        qvx::fuzz::Require(!std::string_view(e.what()).empty(), "an error has a text");
        return false;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static qvx::fuzz::QuietHost host;
    CjxStruct model;
    if (!Read({reinterpret_cast<const char*>(data), size}, model))
        return 0;
    const std::string written = qvx::WriteModelText(model);

    CjxStruct copy;
    qvx::fuzz::Require(Read(written, copy), "a written model can be read");
    qvx::fuzz::Require(qvx::WriteModelText(copy) == written, "reading what was written changes nothing");

    model.RepaireData();
    const std::string repaired = qvx::WriteModelText(model);
    qvx::fuzz::Require(Read(repaired, copy), "a repaired model can be read");
    return 0;
}
