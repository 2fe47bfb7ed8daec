// The command that prints cells.
#pragma once
#include <ostream>
#include <string>

#include "cli/dump/dump_options.h"
#include "engine/api/ibook.h"

namespace cli {

/// Prints all cells of the book as JSON lines: for each sheet in tab order
/// {"sheet":{"index":0,"name":"Sheet1"}}, with "kind" for a chart or another sheet without cells, then for each cell
/// in row order {"r":0,"c":0,"k":"n","v":1.5}. "k" is n, s, b, e (v the error's text), z (a blank with a format, no v)
/// or d (the date cell of a Strict package, v its text). A formula cell has "f":true, and "v":null when it has no
/// cached value. A text that cannot be shown is null too and stands in `errors` with its cell. What the options ask for
/// comes besides.
void dumpBook(vellum::IBookT<char>& book, const DumpOptions& options, std::ostream& out, std::ostream& errors);

/// `quillet dump FILE`. The exit status: 1 when the file does not load, with the engine's text in `errors`, or when
/// `out` does not take what is written.
int dump(const std::string& path, const DumpOptions& options, std::ostream& out, std::ostream& errors);

}  // namespace cli
