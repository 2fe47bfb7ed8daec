// quillet explain.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "cli/command.h"
#include "cli/explain/explain.h"
#include "cli/read_script.h"

namespace cli {
namespace {

int explainFile(const std::string& path, const explain::ExplainOptions& options) {
    std::string script;
    if (!readScript(path, script)) {
        std::cerr << "cannot read '" << path << "'\n";
        return explain::explainNotUnderstood;
    }
    try {
        return explain::explainScript(script, options, std::cout, std::cerr);
    } catch (const std::exception& e) {
        std::cerr << e.what() << '\n';
        return explain::explainFails;
    }
}

}  // namespace

void addExplain(CLI::App& program, int& exitStatus) {
    struct Wanted {
        std::string script;
        explain::ExplainOptions options;
    };
    const auto wanted = std::make_shared<Wanted>();
    CLI::App* command = program.add_subcommand("explain", "Tells what a script would do, and changes no file");
    command->footer(
        "Example: quillet explain --rows 3 model.quillet\n"
        "Exit status: 0 no warnings, 1 warnings, 2 a statement would fail, 3 the script is not understood");
    command->add_option("script", wanted->script, "The script; - for standard input")->required();
    command->add_flag("--json", wanted->options.json, "One JSON object a line instead of text for people");
    command->add_option("--html", wanted->options.htmlFile, "A page for a browser as well")->type_name("FILE");
    command->add_option("--rows", wanted->options.rows, "Rows of each item that are shown")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    command->callback([wanted, &exitStatus] {
        wanted->options.colours = isatty(STDOUT_FILENO) != 0;
        if (wanted->script != "-") wanted->options.name = wanted->script;
        exitStatus = explainFile(wanted->script, wanted->options);
    });
}

}  // namespace cli
