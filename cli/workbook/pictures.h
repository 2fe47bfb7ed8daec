#pragma once

#include <ostream>
#include <string>

namespace cli {

/// `quillet pictures FILE OUTDIR`: writes each picture of a workbook as a file that a viewer opens, and prints a line
/// for each: name, bytes, pixels, where it stands. The folder is made when it is not there. The exit status: 1 when the
/// workbook does not load, a file cannot be written or a picture's data are damaged, with texts in `errors`.
int pictures(const std::string& path, const std::string& folder, std::ostream& out, std::ostream& errors);

}  // namespace cli
