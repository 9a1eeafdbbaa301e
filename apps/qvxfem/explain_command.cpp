#include "explain_command.h"

#include <algorithm>
#include <cstdio>
#include <optional>

#include <fmt/format.h>

#include "design/explanation.h"
#include "exit_code.h"
#include "files/explanation_file.h"
#include "interrupt.h"
#include "model/find_record.h"
#include "model/findings.h"
#include "model_source.h"
#include "output_paths.h"
#include "platform/cstring.h"
#include "platform/file_error.h"
#include "report/explanation_text.h"
#include "report/interaction_picture.h"
#include "run_command.h"
#include "settings.h"
#include "tell_findings.h"
#include "terminal.h"

namespace qvx::app {
namespace {

constexpr DesignKind kKinds[] = {DesignKind::Flexure, DesignKind::Column, DesignKind::Shear, DesignKind::Steel};

const jxBm& MemberOf(const CjxStruct& model, int id)
{
    const jxBm* beam = FindOrNull(model.beams, id);
    if (beam == nullptr)
        throw FileError("", fmt::format("--member {}", id), "the model has no such member");
    return *beam;
}

// The kinds that are asked for and that the member has; those that it has not are told when none is left.
std::vector<DesignKind> KindsOf(const CjxStruct& model, const jxBm& beam, const std::string& asked, Progress& progress)
{
    std::vector<DesignKind> kinds;
    std::vector<std::string> reasons;
    for (const DesignKind kind : kKinds) {
        if (!asked.empty() && asked != NameOf(kind))
            continue;
        const std::wstring reason = WhyNotExplained(model, beam, kind);
        if (reason.empty())
            kinds.push_back(kind);
        else
            reasons.push_back(fmt::format("  {}: it {}", NameOf(kind), ToUtf8(reason)));
    }
    if (!kinds.empty())
        return kinds;
    progress.Say(fmt::format("Member {} has no design to be explained:", beam.id));
    for (const std::string& reason : reasons)
        progress.Say(reason);
    return kinds;
}

RunOptions AnalysesFor(const std::vector<DesignKind>& kinds)
{
    RunOptions run;
    const auto isAsked = [&](bool isSteel) {
        return std::any_of(kinds.begin(), kinds.end(),
                           [isSteel](DesignKind kind) { return (kind == DesignKind::Steel) == isSteel; });
    };
    if (isAsked(false))
        run.analyses.push_back("concrete");
    if (isAsked(true))
        run.analyses.push_back("steel");
    return run;
}

void WritePicture(const std::string& file, const std::vector<DesignExplanation>& explanations)
{
    for (const DesignExplanation& explanation : explanations) {
        if (!explanation.isOfModel || !explanation.picture)
            continue;
        WriteInteractionPicture(file, *explanation.picture,
                                fmt::format("Member {}, {}", explanation.member, ToUtf8(explanation.edition)));
        return;
    }
    throw FileError(file, "", "cannot be written: only a column that was checked has an interaction diagram");
}

int Explain(const ExplainOptions& options, CjxStruct& model, const std::vector<DesignKind>& kinds, Progress& progress)
{
    std::vector<DesignExplanation> explanations;
    for (const DesignKind kind : kinds)
        for (DesignExplanation& explanation : ExplainDesign(model, options.member, kind))
            explanations.push_back(std::move(explanation));
    fmt::print("{}", ExplanationText(explanations));
    if (!options.json.empty())
        WriteExplanationFile(options.json, explanations);
    if (!options.svg.empty())
        WritePicture(options.svg, explanations);
    for (const std::string& line : FindingLines(model, Severity::Error))
        progress.Say(line);
    return AreAllReliable(model) ? kDone : kNotReliable;
}

}  // namespace

int ExplainMember(const ExplainOptions& options)
{
    RequireDistinct(options.model, {options.json, options.svg});
    Progress progress(Telling::Progress);
    TerminalHost host(progress, false, options.threads);
    CjxStruct model;
    LoadModel(options.model, model);
    ApplySettings(options.settings, model);
    RequireFolderOf(options.json);
    RequireFolderOf(options.svg);
    const std::vector<DesignKind> kinds = KindsOf(model, MemberOf(model, options.member), options.kind, progress);
    if (kinds.empty())
        return kRefused;
    CatchInterrupt();
    if (const int ended = SolveModel(AnalysesFor(kinds), model, progress, host); ended != kDone)
        return ended;
    return Explain(options, model, kinds, progress);
}

}  // namespace qvx::app
