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
    WriteUnits(out, model.units);
    WriteSettings(out, model);
    WriteMembers(out, model, model, kModelLists);
    WriteMembers(out, model, model, kClosingFields);
    out.EndObject();
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
