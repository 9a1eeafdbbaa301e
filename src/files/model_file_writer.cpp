#include "files/json_output.h"
#include "files/model_file.h"
#include "files/record_writer.h"
#include "model/struct_fields.h"
#include "model/units.h"

namespace qvx {

// An empty slot of the three spectra is null.
void WriteValue(JsonWriter& out, const jxSpectrum (&spectra)[3])
{
    out.BeginArray(Layout::Line);
    for (const jxSpectrum& spectrum : spectra) {
        if (spectrum.name[0] == L'\0' && spectrum.points.empty() && spectrum.type == 0)
            out.Null();
        else
            WriteValue(out, spectrum);
    }
    out.EndArray();
}

namespace {

// Every quantity is named, though a system may cover them: a later version may name its systems otherwise, and the
// reader warns of quantities left out.
void WriteUnits(JsonWriter& out, const jxUnit& units)
{
    out.Key("units");
    out.BeginObject(Layout::Line);
    for (int k = 0; k < kQuantityCount; ++k) {
        out.Key(ToUtf8(QuantityLabel(static_cast<Quantity>(k))));
        out.Text(std::wstring_view(UnitName(units.unit[k])));
    }
    out.EndObject();
    out.Key("formats");
    out.BeginObject(Layout::Line);
    for (int k = 0; k < kQuantityCount; ++k) {
        out.Key(ToUtf8(QuantityLabel(static_cast<Quantity>(k))));
        out.Text(std::wstring_view(FormatName(units.format[k])));
    }
    out.EndObject();
}

void WriteSettings(JsonWriter& out, const CjxStruct& model)
{
    out.Key("settings");
    out.BeginObject(Layout::Lines);
    // Settings are always written, whatever their defaults: a file then solves the same with a later version.
    WriteMembers(out, model, model, kAnalysisSettings);
    WriteMembers(out, model.design, model.design, FieldsOf<jxDesignSettings>::list);
    out.EndObject();
}

void WriteModel(JsonWriter& out, const CjxStruct& model)
{
    out.BeginObject(Layout::Lines);
    out.Key("format");
    out.Text("qvxfem-model");
    out.Key("version");
    out.Number(1);
    WriteMembers(out, model, model, kDocumentFields);
    // The order of the members is that in which a person reads a model: what it is, in which units, how it is analysed,
    // then its lists.
    WriteUnits(out, model.units);
    WriteSettings(out, model);
    WriteMembers(out, model, model, kModelLists);
    WriteMembers(out, model, model, kClosingFields);
    out.EndObject();
    // Ends the text and hands it on; without it the file is not complete and does not replace the one that stands
    // there.
    out.Finish();
}

}  // namespace

void WriteModelFile(const std::filesystem::path& path, const CjxStruct& model)
{
    WriteJsonFile(path, [&](JsonWriter& out) { WriteModel(out, model); });
}

std::string WriteModelText(const CjxStruct& model)
{
    return WriteJsonText([&](JsonWriter& out) { WriteModel(out, model); });
}

}  // namespace qvx
