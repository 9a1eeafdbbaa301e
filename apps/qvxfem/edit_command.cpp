#include "edit_command.h"

#include <fmt/format.h>

#include "exit_code.h"
#include "files/model_edits.h"
#include "interrupt.h"
#include "model/findings.h"
#include "model_source.h"
#include "output_paths.h"
#include "platform/atomic_file.h"
#include "platform/visible_text.h"
#include "run_window.h"
#include "tell_findings.h"
#include "terminal.h"

namespace qvx::app {
namespace {

// What the engine lists while it works, on the output, with the message boxes as lines among it.
class LinePrinter : public CWnd
{
public:
    int PostMessageW(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (const auto line = ListLineOf(message, wParam, lParam))
            fmt::print("{}{}{}\n", line->text, line->status.empty() ? "" : " - ", line->status);
        return 1;
    }
    void* GetSafeHwnd() const override { return const_cast<LinePrinter*>(this); }
    void BringWindowToTop() override {}
};

void WriteText(const std::string& path, const std::string& text)
{
    AtomicFile file{std::filesystem::path(path)};
    file.Write(text);
    file.Commit();
}

}  // namespace

int EditModelFile(const EditOptions& options)
{
    RequireKnownOutput(options.to);
    RequireDistinct(options.from, {options.to, options.svg});
    if (!options.svg.empty() && options.operation != "area-loads")
        throw FileError("", "--svg", "only area-loads draws a picture");
    Progress progress(Telling::Nothing);
    TerminalHost host(progress, false, 0);
    CjxStruct model;
    LoadModel(options.from, model);
    LinePrinter printer;
    if (!options.isQuiet)
        model.set_solver_wnds(&printer);
    const ModelEdit edit = EditModel(model, options.operation, options.arguments, !options.svg.empty());
    model.clear_solver_wnds();
    for (const std::string& line : FindingLines(model, options.isQuiet ? Severity::Warning : Severity::Note))
        fmt::print("{}\n", line);
    CatchInterrupt();  // a signal waits until the files are whole
    SaveModel(options.to, model);
    if (!options.svg.empty())
        WriteText(options.svg, edit.picture);
    if (options.isQuiet)
        return kDone;
    fmt::print("{}\n", options.to);
    for (const std::string& line : edit.lines)
        fmt::print("  {}\n", VisibleText(line));
    if (edit.lines.empty())
        fmt::print("  nothing has changed\n");
    return kDone;
}

}  // namespace qvx::app
