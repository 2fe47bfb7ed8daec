// quillet dump, resave, info, pictures: a workbook looked at without the module.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "cli/command.h"
#include "cli/dump/dump.h"
#include "cli/info/info_json.h"
#include "cli/workbook/info.h"
#include "cli/workbook/pictures.h"
#include "cli/workbook/resave.h"

namespace cli {

void addDump(CLI::App& program, int& exitStatus) {
    struct Wanted {
        std::string file;
        DumpOptions options;
        bool all = false, noCells = false;
    };
    const auto wanted = std::make_shared<Wanted>();
    CLI::App* command = program.add_subcommand("dump", "Prints the content of a workbook as JSON lines");
    command->add_option("file", wanted->file, "The workbook")->required();
    command->add_flag("--formulas", wanted->options.formulas, "The text of each formula");
    command->add_flag("--names", wanted->options.names, "The defined names");
    command->add_flag("--features", wanted->options.features, "What each sheet holds beside its cells");
    command->add_flag("--objects", wanted->options.objects, "Pictures, comments, controls and other shapes");
    command->add_flag("--all", wanted->all, "All of these");
    command->add_flag("--no-cells", wanted->noCells, "Leaves the cells out");
    command->footer("Example: quillet dump --formulas sales.xls");
    command->callback([wanted, &exitStatus] {
        if (wanted->all) wanted->options.addAll();
        wanted->options.cells = !wanted->noCells;
        exitStatus = dump(wanted->file, wanted->options, std::cout, std::cerr);
    });
}

void addResave(CLI::App& program, int& exitStatus) {
    struct Files {
        std::string in, out;
    };
    const auto files = std::make_shared<Files>();
    CLI::App* command = program.add_subcommand("resave", "Loads a workbook and saves it");
    command->add_option("in", files->in, "The workbook")->required();
    command->add_option("out", files->out, "The file to write, of the same format")->required();
    command->footer("Example: quillet resave sales.xlsx copy.xlsx");
    command->callback([files, &exitStatus] { exitStatus = resave(files->in, files->out, std::cerr); });
}

void addInfo(CLI::App& program, int& exitStatus) {
    struct Wanted {
        std::string file;
        bool json = false;
    };
    const auto wanted = std::make_shared<Wanted>();
    CLI::App* command = program.add_subcommand("info", "Tells what a workbook is and holds");
    command->add_option("file", wanted->file, "The workbook")->required();
    command->add_flag("--json", wanted->json, "A JSON object instead of text for people");
    command->footer("Example: quillet info --json sales.xlsx");
    command->callback(
        [wanted, &exitStatus] { exitStatus = (wanted->json ? infoJson : info)(wanted->file, std::cout, std::cerr); });
}

void addPictures(CLI::App& program, int& exitStatus) {
    struct Names {
        std::string file, folder;
    };
    const auto names = std::make_shared<Names>();
    CLI::App* command = program.add_subcommand("pictures", "Writes the pictures of a workbook as files");
    command->add_option("file", names->file, "The workbook")->required();
    command->add_option("outdir", names->folder, "The folder to write to")->required();
    command->footer("Example: quillet pictures sales.xlsx images");
    command->callback(
        [names, &exitStatus] { exitStatus = pictures(names->file, names->folder, std::cout, std::cerr); });
}

}  // namespace cli
