// The command that tells what a workbook is.
#pragma once
#include <ostream>
#include <string>

namespace cli {

/// `quillet info FILE`: what a workbook is and holds, for people. The exit status: 1, with the file and the engine's
/// text in `errors`, when the file does not load.
int info(const std::string& path, std::ostream& out, std::ostream& errors);

}  // namespace cli
