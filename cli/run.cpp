// quillet run: executes a script.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <optional>
#include <utility>

#include "cli/backup/backups.h"
#include "cli/command.h"
#include "cli/explain/stale_run.h"
#include "cli/read_script.h"
#include "cli/recalc/calculated_copy.h"
#include "cli/recalc/recalc.h"
#include "refhost/operations/module.h"
#include "refhost/run/script_run.h"

namespace cli {
namespace {

struct RunArguments {
    std::string script, catalogue, module;
    bool json = false, backup = false, keep = false, stale = false, recalc = false;
    int seconds = recalcSeconds;
};

void keepBackups(refhost::Host& host, Backups& backups) {
    host.beforeChange = [&backups](const std::string& path, bool workbook, std::string& why) {
        return backups.keep(path, workbook, why);
    };
}

/// `backups` has the files before the run; null when the run keeps none.
void keepFresh(refhost::Host& host, Backups* backups, int seconds) {
    host.afterSave = [backups, seconds](const std::string& path,
                                        std::string& why) -> std::optional<refhost::FreshResults> {
        std::optional<Recalculated> made = makeResultsAnew(path, seconds, backups, why);
        if (!made) return std::nullopt;
        return refhost::FreshResults{made->formulas, made->changed, std::move(made->notCalculated)};
    };
}

refhost::RunStatus run(const RunArguments& arguments, const std::string& script, const std::string& module) {
    refhost::Host host;
    if (!arguments.stale) host.load(module, arguments.catalogue);
    refhost::RunOptions options;
    if (arguments.script != "-") options.name = arguments.script;
    options.json = arguments.json;
    options.progress = !arguments.json && isatty(STDERR_FILENO);
    Backups backups;
    if (arguments.backup) keepBackups(host, backups);
    if (arguments.recalc) keepFresh(host, arguments.backup ? &backups : nullptr, arguments.seconds);
    const auto runIt = [&] { return refhost::runScript(host, script, options, std::cout, std::cerr); };
    const refhost::RunStatus status = arguments.stale ? explain::runWatched(host, options, runIt) : runIt();
    const bool good = backups.finish(status == refhost::runOk, arguments.keep, std::cerr);
    return status == refhost::runOk && !good ? refhost::runFailed : status;
}

int run(const RunArguments& arguments) {
    std::string script;
    if (!readScript(arguments.script, script)) {
        std::cerr << "cannot read '" << arguments.script << "'\n";
        return refhost::runNotUnderstood;
    }
    if (const std::string missing = arguments.recalc ? calculatorMissing() : ""; !missing.empty()) {
        std::cerr << missing << "; nothing was run\n";
        return refhost::runFailed;
    }
    try {
        std::string module = arguments.module;
        if (module.empty() && !arguments.stale) module = refhost::findModule();
        if (module.empty() && !arguments.stale) {
            std::cerr << "cannot find quillet.dso beside this program; use --module\n";
            return refhost::runFailed;
        }
        return run(arguments, script, module);
    } catch (const std::exception& e) {
        std::cerr << e.what() << '\n';
        return refhost::runFailed;
    }
}

}  // namespace

void addRun(CLI::App& program, int& exitStatus) {
    const auto arguments = std::make_shared<RunArguments>();
    CLI::App* command = program.add_subcommand("run", "Executes a script");
    command->add_option("script", arguments->script, "The script; - for standard input")->required();
    command->add_flag("--json", arguments->json, "One JSON object a line instead of text for people");
    CLI::Option* backup = command->add_flag("--backup", arguments->backup,
                                            "Copies files to NAME.before; puts them back unless all goes well");
    command->add_flag("--keep", arguments->keep, "Leaves the copies after a good run")->needs(backup);
    command->footer(
        "Exit status: 0 every statement succeeded, 1 one failed, 2 the script is not understood\n"
        "Example: quillet run --backup update.quillet");
    CLI::Option* stale = command->add_flag("--stale", arguments->stale,
                                           "Tells of results of formulas that are older than what the script wrote");
    CLI::Option* recalc = command
                              ->add_flag("--recalc", arguments->recalc,
                                         "After each save of a workbook LibreOffice makes its results anew")
                              ->excludes(stale);
    command->add_option("--time-limit", arguments->seconds, "Seconds that LibreOffice has for a workbook")
        ->type_name("N")
        ->check(CLI::Range(1, 1000000))
        ->capture_default_str()
        ->needs(recalc);
    command->add_option("--catalogue", arguments->catalogue, "Texts for the message catalogue")
        ->type_name("FILE")
        ->excludes(stale);
    command->add_option("--module", arguments->module, "The module to load instead of the installed one")
        ->type_name("FILE")
        ->excludes(stale);
    command->callback([arguments, &exitStatus] { exitStatus = run(*arguments); });
}

}  // namespace cli
