// quillet show: a range as a person would see it.
#include <sys/ioctl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "cli/command.h"
#include "cli/show/show.h"

namespace cli {
namespace {

/// 0 when the output goes elsewhere.
int terminalWidth() {
    winsize size = {};
    if (!isatty(STDOUT_FILENO) || ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0) return 0;
    return size.ws_col;
}

}  // namespace

void addShow(CLI::App& program, int& exitStatus) {
    const auto options = std::make_shared<ShowOptions>();
    options->width = terminalWidth();
    CLI::App* command = program.add_subcommand("show", "Shows a range as a person would see it");
    command->add_option("file", options->file, "The workbook or csv file; csv:OPTIONS;NAME for csv with options")
        ->required();
    command->add_option("label", options->label, "[Sales$A1:C9], Sales!A1:C9, a name; else the first sheet");
    command->add_flag("--fit", options->fit, "Columns as wide as what they show");
    command->add_option("--rows", options->rows, "At most so many rows")->type_name("N");
    command->add_option("--width", options->width, "Places of a line, for 0 as many as it takes")->type_name("N");
    command->add_option("--html", options->html, "Writes a page for a browser instead")->type_name("FILE");
    command->footer("Example: quillet show sales.xlsx '[2024$A1:F20]'");
    command->callback([options, &exitStatus] { exitStatus = show(*options, std::cout, std::cerr); });
}

}  // namespace cli
