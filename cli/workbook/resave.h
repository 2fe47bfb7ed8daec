#pragma once

#include <ostream>
#include <string>

namespace cli {

/// `quillet resave IN OUT`: loads a workbook and saves it. The exit status: 1, with the engine's text in `errors`,
/// when either fails.
int resave(const std::string& in, const std::string& out, std::ostream& errors);

}  // namespace cli
