// quillet recalc.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "cli/command.h"
#include "cli/recalc/recalc.h"

namespace cli {

void addRecalc(CLI::App& program, int& exitStatus) {
    const auto file = std::make_shared<std::string>();
    CLI::App* command =
        program.add_subcommand("recalc", "Makes the results of a workbook's formulas anew, by LibreOffice");
    command->footer("Example: quillet recalc model.xlsx");
    command->add_option("file", *file, "The workbook; only results change in it")->required();
    command->callback([file, &exitStatus] { exitStatus = recalc(*file, std::cout, std::cerr); });
}

}  // namespace cli
