// quillet recalc.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "cli/command.h"
#include "cli/recalc/recalc.h"

namespace cli {

void addRecalc(CLI::App& program, int& exitStatus) {
    struct Arguments {
        std::string file;
        int seconds = recalcSeconds;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* command =
        program.add_subcommand("recalc", "Makes the results of a workbook's formulas anew, by LibreOffice");
    command->footer(
        "Exit status: 0 results are fresh, 2 nothing could be done\n"
        "Example: quillet recalc model.xlsx");
    command->add_option("file", arguments->file, "The workbook; only results change in it")->required();
    command->add_option("--time-limit", arguments->seconds, "Seconds that LibreOffice has")
        ->type_name("N")
        ->check(CLI::Range(1, 1000000))
        ->capture_default_str();
    command->callback(
        [arguments, &exitStatus] { exitStatus = recalc(arguments->file, arguments->seconds, std::cout, std::cerr); });
}

}  // namespace cli
