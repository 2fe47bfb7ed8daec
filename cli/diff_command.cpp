// quillet diff: what differs between two files.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "cli/command.h"
#include "cli/diff/diff.h"

namespace cli {

void addDiff(CLI::App& program, int& exitStatus) {
    const auto options = std::make_shared<DiffOptions>();
    CLI::App* command = program.add_subcommand("diff", "Tells what differs between two workbooks or csv files");
    command->add_option("a", options->first, "The first file; csv:OPTIONS;NAME for csv with options")->required();
    command->add_option("b", options->second, "The second file")->required();
    command->add_option("label", options->label, "Only the cells of a range, such as Sales!A1:C9");
    command->add_flag("--json", options->json, "A JSON object a line instead of text for people");
    CLI::Option* const values = command->add_flag("--values", options->values, "Values of cells only");
    command->add_flag("--all", options->all, "Looks of cells and what is kept as bytes, too")->excludes(values);
    command->footer(
        "Exit status: 0 equal, 1 different, 2 trouble.\nExample: quillet diff old.xlsx new.xlsx 'Sales!A1:C9'");
    command->callback([options, &exitStatus] { exitStatus = diff(*options, std::cout, std::cerr); });
}

}  // namespace cli
