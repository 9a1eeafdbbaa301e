#include "files/results_file.h"

#include <functional>
#include <string_view>
#include <utility>

#include "files/combination_results.h"
#include "files/json_output.h"
#include "files/json_writer.h"
#include "model/units.h"

namespace qvx {
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
}

void WriteCombinations(JsonWriter& out, const CjxStruct& model)
{
    static const jxCombResult kNoResult;
    static const jxCombOutcome kNoOutcome;
    out.Key("combinations");
    out.BeginArray(Layout::Lines);
    for (std::size_t i = 0; i < model.loadCombs.size(); ++i) {
        const jxCombResult& result = i < model.combResults.size() ? model.combResults[i] : kNoResult;
        const jxCombOutcome& outcome = i < model.combOutcomes.size() ? model.combOutcomes[i] : kNoOutcome;
        const bool hasCurves = !result.beamCurves.empty() && outcome.end != CombEnd::Failed;
        WriteCombination(out, model.loadCombs[i].label, outcome, result,
                         hasCurves ? model.GetBeamStresses(static_cast<int>(i)) : std::vector<jxBmStress>());
    }
    out.EndArray();
}

void WriteModal(JsonWriter& out, const CjxStruct& model)
{
    out.Key("modal");
    if (model.modalResult.displacements.empty())
        return out.Null();
    jxCombOutcome outcome;
    outcome.end = CombEnd::Linear;
    WriteCombination(out, L"modal", outcome, model.modalResult, {});
}

void WriteEigen(JsonWriter& out, const CjxStruct& model)
{
    out.Key("eigen");
    out.BeginArray(Layout::Lines);
    for (const jxEigenResult& mode : model.eigenResults) {
        out.BeginObject(Layout::Lines);
        out.Key("eigenvalue");
        out.Number(mode.eigenvalue);
        out.Key("errorMeasure");
        out.Number(mode.errorMeasure);
        out.Key("shape");
        WriteSixValues(out, mode.shape);
        out.EndObject();
    }
    out.EndArray();
}

void WriteDerivedMasses(JsonWriter& out, const CjxStruct& model)
{
    out.Key("derivedMasses");
    out.BeginArray(Layout::Lines);
    for (const jxNdLoad& mass : model.derivedMasses) {
        out.BeginObject(Layout::Line);
        out.Key("id");
        out.Number(mass.id);
        out.Key("dof");
        out.Number(mass.dof);
        out.Key("value");
        out.Number(mass.value);
        out.EndObject();
    }
    out.EndArray();
}

void WriteDirections(JsonWriter& out, std::string_view key, const std::vector<jxResult6Val> (&values)[3])
{
    out.Key(key);
    out.BeginArray(Layout::Lines);
    for (const std::vector<jxResult6Val>& direction : values)
        WriteSixValues(out, direction);
    out.EndArray();
}

void WriteSpectrumResponse(JsonWriter& out, const CjxStruct& model)
{
    out.Key("responseSpectrum");
    out.BeginArray(Layout::Lines);
    for (const jxResponseSpectrumResult& mode : model.spectrumResults) {
        out.BeginObject(Layout::Lines);
        out.Key("eigenvalue");
        out.Number(mode.eigenvalue);
        out.Key("participation");
        out.Numbers(mode.participation, 3);
        WriteDirections(out, "displacements", mode.displacements);
        WriteDirections(out, "forces", mode.forces);
        out.EndObject();
    }
    out.EndArray();
}

void WriteEnvelopeStation(JsonWriter& out, const jxMaxVMD& station)
{
    out.BeginObject(Layout::Line);
    out.Key("x");
    out.Number(station.x);
    out.Key("max");
    out.Numbers(station.max, 6);
    out.Key("min");
    out.Numbers(station.min, 6);
    out.Key("maxComb");
    out.Numbers(station.maxComb, 6);
    out.Key("minComb");
    out.Numbers(station.minComb, 6);
    out.EndObject();
}

void WriteEnvelope(JsonWriter& out, const CjxStruct& model)
{
    out.Key("concreteEnvelope");
    out.BeginArray(Layout::Lines);
    for (const jxMaxBmVMD& member : model.concreteEnvelope) {
        out.BeginObject(Layout::Line);
        out.Key("id");
        out.Number(member.id);
        out.Key("stations");
        out.BeginArray(Layout::Lines);
        for (const jxMaxVMD& station : member.vmd)
            WriteEnvelopeStation(out, station);
        out.EndArray();
        out.EndObject();
    }
    out.EndArray();
}

void WriteWoodArmer(JsonWriter& out, const CjxStruct& model)
{
    out.Key("woodArmer");
    out.BeginArray(Layout::Lines);
    for (const jxWoodArmer& shell : model.woodArmer) {
        out.BeginObject(Layout::Line);
        out.Key("id");
        out.Number(shell.id);
        out.Key("moments");
        out.BeginArray(Layout::Line);
        for (const auto& location : shell.moments)
            out.Numbers(location, 4);
        out.EndArray();
        out.Key("combs");
        out.BeginArray(Layout::Line);
        for (const auto& location : shell.combs)
            out.Numbers(location, 4);
        out.EndArray();
        out.EndObject();
    }
    out.EndArray();
}

// No run fills design results yet: their lists are empty.
void WriteDesign(JsonWriter& out)
{
    for (const char* list : {"concreteBeams", "concreteColumns", "concreteShear", "concretePlates", "steel"}) {
        out.Key(list);
        out.BeginArray(Layout::Line);
        out.EndArray();
    }
}

void WriteResults(JsonWriter& out, const CjxStruct& model)
{
    out.BeginObject(Layout::Lines);
    out.Key("format");
    out.Text("qvxfem-results");
    out.Key("version");
    out.Number(1);
    out.Key("model");
    out.Text(std::wstring_view(model.modelName.Text()));
    WriteUnits(out, model.units);
    WriteCombinations(out, model);
    WriteModal(out, model);
    WriteEigen(out, model);
    WriteDerivedMasses(out, model);
    WriteSpectrumResponse(out, model);
    WriteEnvelope(out, model);
    WriteWoodArmer(out, model);
    WriteDesign(out);
    out.EndObject();
    out.Finish();
}

}  // namespace

void WriteResultsFile(const std::filesystem::path& path, const CjxStruct& model, const std::function<void()>& onPiece)
{
    WriteJsonFile(
        path, [&](JsonWriter& out) { WriteResults(out, model); }, onPiece);
}

std::string WriteResultsText(const CjxStruct& model)
{
    return WriteJsonText([&](JsonWriter& out) { WriteResults(out, model); });
}

}  // namespace qvx
