#include "files/explanation_file.h"

#include <cmath>
#include <string_view>

#include "files/json_output.h"

namespace qvx {

namespace {

void WriteFigure(JsonWriter& out, const ExplainedFigure& figure)
{
    out.BeginObject(Layout::Line);
    out.Key("name");
    out.Text(figure.name);
    if (!figure.text.empty()) {
        out.Key("text");
        out.Text(std::wstring_view(figure.text));
    } else {
        out.Key("value");
        if (std::isfinite(figure.value))
            out.Number(figure.value);
        else
            out.Null();  // such as the Euler stress of a member that is held all along
    }
    if (!figure.clause.empty()) {
        out.Key("clause");
        out.Text(figure.clause);
    }
    if (!figure.equation.empty()) {
        out.Key("equation");
        out.Text(figure.equation);
    }
    out.EndObject();
}

void WriteGroup(JsonWriter& out, const ExplainedGroup& group)
{
    out.BeginObject(Layout::Lines);
    out.Key("title");
    out.Text(group.title);
    out.Key("figures");
    out.BeginArray(Layout::Lines);
    for (const ExplainedFigure& figure : group.figures)
        WriteFigure(out, figure);
    out.EndArray();
    out.EndObject();
}

void WriteExplanation(JsonWriter& out, const DesignExplanation& explanation)
{
    out.BeginObject(Layout::Lines);
    out.Key("member");
    out.Number(explanation.member);
    out.Key("kind");
    out.Text(NameOf(explanation.kind));
    out.Key("edition");
    out.Text(std::wstring_view(explanation.edition));
    out.Key("bConsistentDesign");
    out.Number(explanation.isConsistent ? 1 : 0);
    out.Key("isOfModel");
    out.Bool(explanation.isOfModel);
    out.Key("verdict");
    out.Text(explanation.verdict);
    out.Key("groups");
    out.BeginArray(Layout::Lines);
    for (const ExplainedGroup& group : explanation.groups)
        WriteGroup(out, group);
    out.EndArray();
    out.EndObject();
}

void WriteAll(JsonWriter& out, const std::vector<DesignExplanation>& explanations)
{
    out.BeginObject(Layout::Lines);
    out.Key("format");
    out.Text("qvxfem-explanation");
    out.Key("version");
    out.Number(1);
    out.Key("units");
    out.Text("kip, in, ksi; moments kip-ft");
    out.Key("explanations");
    out.BeginArray(Layout::Lines);
    for (const DesignExplanation& explanation : explanations)
        WriteExplanation(out, explanation);
    out.EndArray();
    out.EndObject();
    out.Finish();
}

}  // namespace

std::string ExplanationJson(const std::vector<DesignExplanation>& explanations)
{
    return WriteJsonText([&](JsonWriter& out) { WriteAll(out, explanations); });
}

void WriteExplanationFile(const std::filesystem::path& path, const std::vector<DesignExplanation>& explanations)
{
    WriteJsonFile(path, [&](JsonWriter& out) { WriteAll(out, explanations); });
}

}  // namespace qvx
