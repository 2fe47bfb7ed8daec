// The command `quillet`.
#include <CLI/CLI.hpp>
#include <clocale>
#include <iostream>

#include "cli/command.h"

int main(int argc, char** argv) {
    // Texts of Strict packages pass through the process's encoding, and names are compared by its letters.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    CLI::App program("Moves data between spreadsheets and models.", "quillet");
    program.set_version_flag("--version", "quillet " QUILLET_VERSION);
    program.require_subcommand(0, 1);
    int exitStatus = 0;
    cli::addRun(program, exitStatus);
    cli::addExplain(program, exitStatus);
    cli::addRecalc(program, exitStatus);
    cli::addDump(program, exitStatus);
    cli::addResave(program, exitStatus);
    cli::addInfo(program, exitStatus);
    cli::addPictures(program, exitStatus);
    cli::addDiff(program, exitStatus);
    cli::addShow(program, exitStatus);
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        const int status = program.exit(e);
        return status == 0 ? 0 : 2;
    }
    if (program.get_subcommands().empty()) {
        std::cerr << program.help();
        return 2;
    }
    return exitStatus;
}
