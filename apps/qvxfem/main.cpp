#include <cstdio>
#include <exception>
#include <new>
#include <string>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "check_command.h"
#include "convert_command.h"
#include "edit_command.h"
#include "exit_code.h"
#include "explain_command.h"
#include "files/generate_model.h"
#include "files/model_edits.h"
#include "generate_command.h"
#include "platform/cstring.h"
#include "platform/file_error.h"
#include "platform/visible_text.h"
#include "run_command.h"
#include "schema_command.h"
#include "streams.h"
#include "tools/jx_exception.h"
#include "version.h"

namespace {

using namespace qvx::app;

void DefineRun(CLI::App& app, RunOptions& options)
{
    CLI::App* run = app.add_subcommand("run", "Analyses a model (.json or .s2k) and prints a summary");
    run->add_option("MODEL", options.model, "model file")->required();
    run->add_option("--analysis", options.analyses,
                    "what to analyse: static, frequency, spectrum, concrete, steel; default: static")
        ->delimiter(',')
        ->type_name("LIST")
        ->allow_extra_args(false);
    run->add_option("--solver", options.solver, "double, quad or sparse; default: as the model says")
        ->check(CLI::IsMember({"double", "quad", "sparse"}));
    run->add_option("--backend", options.backend, "library behind the sparse solver; default: as the preferences say")
        ->check(CLI::IsMember({"pardiso", "mumps"}));
    run->add_option("--spectra", options.spectra, "takes the response spectra from this file")->type_name("FILE");
    run->add_option("--results", options.results, "writes the results to this file")->type_name("FILE.json");
    run->add_option("--report", options.report.file, "writes the report to this file")->type_name("FILE.htm");
    run->add_option("--report-sections", options.report.sections, "only these sections; default: all")
        ->delimiter(',')
        ->type_name("LIST")
        ->allow_extra_args(false);
    run->add_flag("--report-text", options.report.isText, "the report in monospaced text instead of tables");
    run->add_option("--log", options.log, "writes the log of the run to this file")->type_name("FILE");
    run->add_option("--set", options.settings, "sets a field of the settings; may be given again")
        ->type_name("FIELD=VALUE")
        ->allow_extra_args(false);
    run->add_option("--threads", options.threads, "threads of the solver")->check(CLI::Range(1, 4096));
    run->add_flag("--interactive", options.isInteractive, "asks questions; without it they count as Yes");
    run->add_flag("--quiet", options.isQuiet, "prints no summary and no notes; warnings and errors stay");
    run->add_flag("--verbose", options.isVerbose, "prints the lines of the run as well");
    run->add_flag("--strict", options.isStrict, "refuses a model that brings a warning");
}

void DefineCheck(CLI::App& app, CheckOptions& options)
{
    CLI::App* check = app.add_subcommand("check", "Checks the input of a model and prints every finding");
    check->add_option("MODEL", options.model, "model file")->required();
    check->add_option("--log", options.log, "writes the log of the check to this file")->type_name("FILE");
    check->add_option("--set", options.settings, "sets a field of the settings; may be given again")
        ->type_name("FIELD=VALUE")
        ->allow_extra_args(false);
    check->add_flag("--json", options.isJson, "prints the findings as JSON");
    check->add_flag("--strict", options.isStrict, "refuses a model that brings a warning");
}

struct ConvertOptions
{
    std::string from;
    std::string to;
};

void DefineConvert(CLI::App& app, ConvertOptions& options)
{
    CLI::App* convert = app.add_subcommand("convert", "Reads a model (.json or .s2k) and writes it as .json");
    convert->add_option("IN", options.from, "model file to read")->required();
    convert->add_option("OUT", options.to, "model file to write")->required();
}

void DefineGenerate(CLI::App& app, GenerateOptions& options)
{
    CLI::App* generate = app.add_subcommand("generate", "Makes a regular structure and writes it as a model");
    generate->add_option("KIND", options.kind, "what to make")->required()->check(CLI::IsMember(qvx::GeneratorKinds()));
    generate->add_option("OUT", options.output, "model file to write")->required();
    generate->add_option("--args", options.arguments, "arguments as one JSON object")->type_name("JSON");
    generate->footer("Arguments of each kind; what is left out is empty or 0 where no default is told.\n\n" +
                     qvx::GeneratorUsage());
}

void DefineEdit(CLI::App& app, EditOptions& options)
{
    CLI::App* edit = app.add_subcommand("edit", "Runs one operation on a model file and prints what it changed");
    edit->add_option("OPERATION", options.operation, "what to do")
        ->required()
        ->check(CLI::IsMember(qvx::EditOperations()));
    edit->add_option("IN", options.from, "model file to read")->required();
    edit->add_option("OUT", options.to, "model file to write")->required();
    edit->add_option("--args", options.arguments, "arguments of the operation, one JSON object")->type_name("JSON");
    edit->add_option("--svg", options.svg, "area-loads: draws footprints, sub-areas and line loads to this file")
        ->type_name("FILE.svg");
    edit->add_flag("--quiet", options.isQuiet, "prints warnings alone");
}

void DefineExplain(CLI::App& app, ExplainOptions& options)
{
    CLI::App* explain = app.add_subcommand("explain", "Prints how the design of a member came about");
    explain->add_option("MODEL", options.model, "model file")->required();
    explain->add_option("--member", options.member, "id of the member")->required()->type_name("ID");
    explain->add_option("--kind", options.kind, "flexure, column, shear or steel; default: all that it is designed for")
        ->check(CLI::IsMember({"flexure", "column", "shear", "steel"}));
    explain->add_option("--json", options.json, "writes the explanation as data")->type_name("FILE.json");
    explain->add_option("--svg", options.svg, "writes the interaction diagram of a column")->type_name("FILE.svg");
    explain->add_option("--set", options.settings, "sets a field of the settings; may be given again")
        ->type_name("FIELD=VALUE")
        ->allow_extra_args(false);
    explain->add_option("--threads", options.threads, "threads of the solver")->check(CLI::Range(1, 4096));
}

void DefineSchema(CLI::App& app, std::string& file)
{
    CLI::App* schema = app.add_subcommand("schema", "Prints the JSON Schema of a file");
    schema->add_option("FILE", file, "model or results")->required()->check(CLI::IsMember({"model", "results"}));
}

int Main(int argc, char** argv)
{
    CLI::App app("qvxFEM, a structural finite-element engine", "qvxfem");
    app.set_version_flag("--version", std::string("qvxfem ") + QVXFEM_VERSION);
    app.require_subcommand(1);
    app.footer("Exit codes: 0 done, 1 model refused, 2 bad usage or unreadable file, 3 analysis failed, 4 done but at "
               "least one combination is not to be relied on, 130 stopped.");
    RunOptions run;
    CheckOptions check;
    ConvertOptions convert;
    GenerateOptions generate;
    EditOptions edit;
    ExplainOptions explain;
    std::string schema;
    DefineRun(app, run);
    DefineCheck(app, check);
    DefineConvert(app, convert);
    DefineGenerate(app, generate);
    DefineEdit(app, edit);
    DefineExplain(app, explain);
    DefineSchema(app, schema);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& fault) {
        return app.exit(fault) == 0 ? kDone : kBadUsage;
    }
    if (app.got_subcommand("check"))
        return CheckModelFile(check);
    if (app.got_subcommand("convert"))
        return ConvertModel(convert.from, convert.to);
    if (app.got_subcommand("generate"))
        return GenerateModelFile(generate);
    if (app.got_subcommand("edit"))
        return EditModelFile(edit);
    if (app.got_subcommand("explain"))
        return ExplainMember(explain);
    if (app.got_subcommand("schema"))
        return PrintSchema(schema);
    return RunModel(run);
}

}  // namespace

int main(int argc, char** argv)
{
    SecureStandardStreams();
    try {
        return Main(argc, argv);
    } catch (const qvx::FileError& fault) {
        PrintError("qvxfem: " + qvx::VisibleText(std::string_view(fault.what())));
        return kBadUsage;
    } catch (const jxException& fault) {
        PrintError("qvxfem: " + qvx::ToUtf8(qvx::VisibleText(std::wstring_view(fault.GetText()))));
        return kAnalysisFailed;
    } catch (const std::bad_alloc&) {
        PrintError("qvxfem: there is not enough memory");
        return kAnalysisFailed;
    } catch (const std::exception& fault) {
        PrintError("qvxfem: " + qvx::VisibleText(std::string_view(fault.what())));
        return kAnalysisFailed;
    }
}
