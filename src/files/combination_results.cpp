#include "files/combination_results.h"

#include <string_view>

namespace qvx {
namespace {

std::string_view EndWord(CombEnd end)
{
    switch (end) {
    case CombEnd::NotSolved:
        return "not solved";
    case CombEnd::Linear:
        return "linear";
    case CombEnd::Converged:
        return "converged";
    case CombEnd::Limit:
        return "stopped at maximum iterations";
    case CombEnd::NoLoad:
        return "no load";
    case CombEnd::Failed:
        return "failed";
    }
    return "";
}

// How the solution went: a state that buckled or did not converge must not look like an ordinary result.
void WriteCourse(JsonWriter& out, const jxCombOutcome& outcome, bool isSolved)
{
    out.Key("solved");
    out.Bool(isSolved);
    out.Key("converged");
    out.Bool(isSolved && outcome.end != CombEnd::Limit);
    out.Key("course");
    out.Text(EndWord(outcome.end));
    out.Key("iterations");
    out.Number(outcome.iterations);
    out.Key("buckled");
    out.Bool(outcome.bBuckled);
    if (!outcome.text.empty()) {
        out.Key("failure");
        out.Text(std::wstring_view(outcome.text));
    }
}

void WriteConstraintForces(JsonWriter& out, const std::vector<jxMultiDofConstraintForce>& forces)
{
    out.Key("multiDofConstraintForces");
    out.BeginArray(Layout::Lines);
    for (const jxMultiDofConstraintForce& force : forces) {
        out.BeginObject(Layout::Line);
        out.Key("id");
        out.Number(force.id);
        out.Key("node");
        out.Numbers(force.node, 2);
        out.Key("dof");
        out.Numbers(force.dof, 2);
        out.Key("force");
        out.Numbers(force.force, 2);
        out.EndObject();
    }
    out.EndArray();
}

void WriteEnd(JsonWriter& out, std::string_view key, const jxVMD& end)
{
    const double forces[6] = {end.Fx, end.Fy, end.Fz, end.Mx, end.My, end.Mz};
    out.Key(key);
    out.Numbers(forces, 6);
}

void WriteEndForces(JsonWriter& out, const std::vector<jxBmEndVMD>& members)
{
    out.Key("beamEndForces");
    out.BeginArray(Layout::Lines);
    for (const jxBmEndVMD& member : members) {
        out.BeginObject(Layout::Line);
        out.Key("id");
        out.Number(member.id);
        WriteEnd(out, "start", member.start);
        WriteEnd(out, "end", member.end);
        out.EndObject();
    }
    out.EndArray();
}

void WriteCurves(JsonWriter& out, const std::vector<jxBmVMD>& members)
{
    out.Key("beamCurves");
    out.BeginArray(Layout::Lines);
    for (const jxBmVMD& member : members) {
        out.BeginObject(Layout::Line);
        out.Key("id");
        out.Number(member.id);
        out.Key("stations");
        out.BeginArray(Layout::Line);
        for (const jxVMD& s : member.vmd) {
            const double station[9] = {s.x, s.Fx, s.Fy, s.Fz, s.Mx, s.My, s.Mz, s.Dy, s.Dz};
            out.Numbers(station, 9);
        }
        out.EndArray();
        out.EndObject();
    }
    out.EndArray();
}

void WriteMemberStresses(JsonWriter& out, const std::vector<jxBmStress>& members)
{
    out.Key("beamStresses");
    out.BeginArray(Layout::Lines);
    for (const jxBmStress& member : members) {
        out.BeginObject(Layout::Line);
        out.Key("id");
        out.Number(member.id);
        out.Key("stations");
        out.BeginArray(Layout::Line);
        for (const jxSectionStress& station : member.stress) {
            out.BeginObject(Layout::Line);
            out.Key("x");
            out.Number(station.x);
            out.Key("values");
            out.Numbers(station.values.data(), static_cast<int>(station.values.size()));
            out.Key("minNegative");
            out.Number(station.minNegative);
            out.Key("maxPositive");
            out.Number(station.maxPositive);
            out.EndObject();
        }
        out.EndArray();
        out.EndObject();
    }
    out.EndArray();
}

template <std::size_t Rows, std::size_t Columns>
void WriteRows(JsonWriter& out, std::string_view key, const double (&rows)[Rows][Columns])
{
    out.Key(key);
    out.BeginArray(Layout::Line);
    for (const auto& row : rows)
        out.Numbers(row, Columns);
    out.EndArray();
}

void WriteShellStresses(JsonWriter& out, const std::vector<jxShellStress>& shells)
{
    out.Key("shell4Stresses");
    out.BeginArray(Layout::Lines);
    for (const jxShellStress& shell : shells) {
        out.BeginObject(Layout::Line);
        out.Key("id");
        out.Number(shell.id);
        WriteRows(out, "F", shell.F);
        WriteRows(out, "P", shell.P);
        out.Key("fm");
        out.Numbers(shell.fm, 8);
        out.Key("fp");
        out.Numbers(shell.fp, 12);
        out.EndObject();
    }
    out.EndArray();
}

void WriteBrickStresses(JsonWriter& out, const std::vector<jxBrickStress>& bricks)
{
    out.Key("brickStresses");
    out.BeginArray(Layout::Lines);
    for (const jxBrickStress& brick : bricks) {
        out.BeginObject(Layout::Line);
        out.Key("id");
        out.Number(brick.id);
        WriteRows(out, "S", brick.S);
        out.Key("f");
        out.Numbers(brick.f, 24);
        out.EndObject();
    }
    out.EndArray();
}

void WriteFamily(JsonWriter& out, std::string_view key, const std::vector<jxResult6Val>& values)
{
    out.Key(key);
    WriteSixValues(out, values);
}

void WriteFamilies(JsonWriter& out, const jxCombResult& result, const std::vector<jxBmStress>& beamStresses)
{
    WriteFamily(out, "displacements", result.displacements);
    WriteFamily(out, "supportReactions", result.supportReactions);
    WriteConstraintForces(out, result.multiDofConstraintForces);
    WriteFamily(out, "nodalSpringReactions", result.nodalSpringReactions);
    WriteFamily(out, "coupledSpringReactions", result.coupledSpringReactions);
    WriteFamily(out, "beamSpringReactions", result.beamSpringReactions);
    WriteFamily(out, "shell4SpringReactions", result.shell4SpringReactions);
    WriteEndForces(out, result.beamEndForces);
    WriteCurves(out, result.beamCurves);
    WriteMemberStresses(out, beamStresses);
    WriteShellStresses(out, result.shell4Stresses);
    WriteBrickStresses(out, result.brickStresses);
}

}  // namespace

void WriteSixValues(JsonWriter& out, const std::vector<jxResult6Val>& values)
{
    out.BeginArray(Layout::Lines);
    for (const jxResult6Val& value : values) {
        out.BeginObject(Layout::Line);
        out.Key("id");
        out.Number(value.id);
        out.Key("value");
        out.Numbers(value.value, 6);
        out.EndObject();
    }
    out.EndArray();
}

void WriteCombination(JsonWriter& out, const wchar_t* label, const jxCombOutcome& outcome, const jxCombResult& result,
                      const std::vector<jxBmStress>& beamStresses)
{
    const bool isSolved = !result.displacements.empty() && outcome.end != CombEnd::Failed;
    out.BeginObject(Layout::Lines);
    out.Key("label");
    out.Text(std::wstring_view(label));
    WriteCourse(out, outcome, isSolved);
    if (isSolved)
        WriteFamilies(out, result, beamStresses);
    else
        WriteFamilies(out, jxCombResult{}, {});
    out.EndObject();
}

}  // namespace qvx
