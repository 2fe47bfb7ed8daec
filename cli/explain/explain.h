// quillet explain: what a script would do, told without doing it.
#pragma once
#include <iosfwd>
#include <string>
#include <string_view>

namespace cli::explain {

/// Exit statuses of `quillet explain`.
enum ExplainStatus : int { explainClean = 0, explainWarned = 1, explainFails = 2, explainNotUnderstood = 3 };

struct ExplainOptions {
    std::string name;  // of the script's file, which stands in front of a place in it; may be empty
    bool json = false, colours = false;
    std::string htmlFile;   // empty: none
    int rows = 5;           // of each item that are shown
    std::string directory;  // relative names start there; empty: where the process is
};

/// Runs the statements of a script on data in memory and changes no file. One at a time in a process.
int explainScript(std::string_view script, const ExplainOptions& options, std::ostream& out, std::ostream& err);

}  // namespace cli::explain
