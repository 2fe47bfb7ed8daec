// The command that loads a workbook and saves it.
#pragma once
#include <ostream>
#include <string>

namespace cli {

/// `quillet resave IN OUT`: loads a workbook and saves it in the same format. The exit status: 1, with the file and the
/// engine's text in `errors`, when either fails, or when OUT has the extension of the other format.
int resave(const std::string& in, const std::string& out, std::ostream& errors);

}  // namespace cli
