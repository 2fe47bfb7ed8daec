// The sub-commands of `quillet`. Each adds itself and its options to the program, and sets the exit status when it
// runs.
#pragma once

namespace CLI {
class App;
}

namespace cli {

void addRun(CLI::App& program, int& exitStatus);
void addExplain(CLI::App& program, int& exitStatus);
void addRecalc(CLI::App& program, int& exitStatus);
void addDump(CLI::App& program, int& exitStatus);
void addResave(CLI::App& program, int& exitStatus);
void addInfo(CLI::App& program, int& exitStatus);
void addPictures(CLI::App& program, int& exitStatus);
void addDiff(CLI::App& program, int& exitStatus);
void addShow(CLI::App& program, int& exitStatus);

}  // namespace cli
