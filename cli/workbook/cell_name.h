// Cells by their names.
#pragma once
#include <string>

namespace cli {

/// "A1" for row and column 0.
inline std::string cellName(int row, int col) {
    std::string name;
    for (int rest = col + 1; rest > 0; rest = (rest - 1) / 26) {
        name.insert(name.begin(), static_cast<char>('A' + (rest - 1) % 26));
    }
    return name + std::to_string(row + 1);
}

}  // namespace cli
