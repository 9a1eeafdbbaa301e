#pragma once

#include <memory>
#include <sstream>
#include <string>

#include "model/jx_struct.h"
#include "sap2000/sap2000_importer.h"

namespace qvx::test {

/// A model as a host hands it to the importer: empty but for its default records with id 1.
inline std::unique_ptr<CjxStruct> EmptyDocument()
{
    auto model = std::make_unique<CjxStruct>();
    model->bInteractive = 0;
    model->RepaireData();
    return model;
}

/// A model with its default records into which a text was read.
struct Imported
{
    explicit Imported(const std::string& text) : model(EmptyDocument()), importer(L"", model.get())
    {
        std::istringstream stream(text);
        importer.Process(stream);
    }

    /// Lines that were lost in this way, over all subjects.
    int LostLines(ImportLossKind kind) const
    {
        int count = 0;
        for (const ImportLoss& loss : importer.Losses())
            count += loss.kind == kind ? loss.count : 0;
        return count;
    }

    std::unique_ptr<CjxStruct> model;
    CSap2000Importer importer;
};

}  // namespace qvx::test
