#include "cli/read_script.h"

#include <fstream>
#include <iostream>
#include <iterator>

namespace cli {

bool readScript(const std::string& path, std::string& text) try {
    std::ifstream file;
    const bool standardInput = path == "-";
    if (!standardInput) file.open(path, std::ios::binary);
    std::istream& in = standardInput ? std::cin : file;
    if (!in) return false;
    text.assign(std::istreambuf_iterator<char>(in), {});
    return !in.bad();
} catch (const std::ios_base::failure&) {  // a folder opens, but does not read
    return false;
}

}  // namespace cli
