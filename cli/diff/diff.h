// The command that compares two files.
#pragma once
#include <ostream>

#include "cli/diff/book_differences.h"

namespace cli {

/// `quillet diff A B [LABEL]`. The exit status: 0 when the files are equal, 1 when they differ, 2 with the reason in
/// `errors` when a file does not load or there is no such area.
int diff(const DiffOptions& options, std::ostream& out, std::ostream& errors);

}  // namespace cli
