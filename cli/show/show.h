// The command that shows a range.
#pragma once
#include <ostream>
#include <string>

namespace cli {

struct ShowOptions {
    std::string file, label;
    bool fit = false;  // columns as wide as their content
    int rows = 0;      // at most so many; 0: all
    std::string html;  // the file of a page for a browser, instead of a picture
    int width = 0;     // places of a line; 0: as many as it takes
};

/// `quillet show FILE [LABEL]`. The exit status: 2, with the reason in `errors`, when there is nothing to show.
int show(const ShowOptions& options, std::ostream& out, std::ostream& errors);

}  // namespace cli
