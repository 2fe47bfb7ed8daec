// What a workbook is and holds, for programs.
#pragma once
#include <ostream>
#include <string>

namespace cli {

/// `quillet info --json FILE`: one line with an object that has all that the report for people tells. Cells and areas
/// are texts ("A1:C9"), null where there is none. The exit status: 1, with the file and the engine's text in `errors`,
/// when the file does not load.
int infoJson(const std::string& path, std::ostream& out, std::ostream& errors);

}  // namespace cli
