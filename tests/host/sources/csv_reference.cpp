#include "tests/host/sources/csv_reference.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <set>

#include "host/sources/table_ops.h"

namespace quillet {
namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool asNumber(const std::string& field, char decimalSep, double& value) {
    const std::size_t sign = field[0] == '+' || field[0] == '-' ? 1 : 0;
    const std::string rest = field.substr(sign);
    if (rest.empty() || (!isDigit(rest[0]) && rest[0] != decimalSep)) return false;
    if (rest[0] == '0' && rest.size() > 1 && isDigit(rest[1])) return false;
    const auto other = std::find_if_not(rest.begin(), rest.end(), isDigit);
    std::string converted = field;
    if (other != rest.end() && *other == decimalSep) {
        converted[sign + static_cast<std::size_t>(other - rest.begin())] = '.';
    }
    if (other == rest.end() && field.size() <= 10) {
        value = static_cast<double>(std::strtol(field.c_str(), nullptr, 10));
        return true;
    }
    char* end;
    errno = 0;
    value = std::strtod(converted.c_str(), &end);
    if (errno != 0 || *end != '\0') return false;
    return other != rest.end() || (value > -9007199254740992.0 && value < 9007199254740992.0);
}

ReferenceCell cellOf(const std::string& gathered, const CsvTable& settings, bool allText) {
    const std::string field = gathered.c_str();  // up to its first NUL
    ReferenceCell cell;
    if (field.empty()) return cell;
    if (!allText && asNumber(field, static_cast<char>(settings.decimalSep), cell.number)) {
        cell.kind = cellNumber;
    } else if (!allText && (field == settings.trueText || field == settings.falseText)) {
        cell.kind = cellBoolean;
        cell.boolean = field == settings.trueText;
    } else {
        cell.kind = cellText;
        cell.text = field;
    }
    return cell;
}

std::string place(int row, int col) {
    return " at " + std::to_string(row) + "," + std::to_string(col);
}

std::string cellDifference(const ReferenceCell& cell, CsvTable& table, int row, int col) {
    const TableOps& ops = csvTableOps;
    if (ops.cellKind(&table, row, col) != cell.kind) return "kind" + place(row, col);
    if (cell.kind == cellText && ops.readText(&table, row, col, nullptr) != cell.text) return "text" + place(row, col);
    if (cell.kind == cellBoolean && ops.readBool(&table, row, col, nullptr) != cell.boolean) {
        return "boolean" + place(row, col);
    }
    const double number = ops.readReal(&table, row, col, nullptr);
    if (cell.kind == cellNumber && std::memcmp(&number, &cell.number, sizeof number) != 0) {
        return "number" + place(row, col);
    }
    // The same from a look at a stretch of the row that ends with it.
    const int from = std::max(col - 70, 0), count = col - from + 1;
    std::uint8_t kinds[71] = {};
    double numbers[71] = {};
    csvRowCells(&table, row, from, count, kinds, numbers);
    if (kinds[count - 1] != cell.kind) return "seen kind" + place(row, col);
    if (cell.kind == cellNumber && std::memcmp(&numbers[count - 1], &cell.number, sizeof number) != 0) {
        return "seen number" + place(row, col);
    }
    if (count > 1 && kinds[count - 2] != ops.cellKind(&table, row, col - 1)) return "seen neighbour" + place(row, col);
    return "";
}

}  // namespace

ReferenceTable readByReference(const std::string& text, const CsvTable& settings, bool allText) {
    ReferenceTable table;
    int row = 0, col = 0;
    std::string field;
    bool quoted = false, afterQuote = false, wasQuoted = false;
    const auto endField = [&] {
        if (!field.empty()) table.cells[{row, col}] = cellOf(field, settings, allText);
        field.clear();
        wasQuoted = false;
    };
    for (const char c : text) {
        if (quoted && c == '"') {
            quoted = false;
            afterQuote = true;
            continue;
        }
        if (afterQuote && c == '"') quoted = true;
        afterQuote = false;
        if (!quoted) {
            if (c == '"' && field.empty() && !wasQuoted) {
                quoted = wasQuoted = true;
                continue;
            }
            if (c == '\n') {
                if (!field.empty() && field.back() == '\r') field.pop_back();
                endField();
                ++row;
                col = 0;
                continue;
            }
            if (static_cast<unsigned char>(c) == settings.fieldSep) {
                endField();
                ++col;
                continue;
            }
        }
        field += c;
        if (field.size() == static_cast<std::size_t>(settings.bufferSize)) {
            table.loaded = false;
            table.overflowLine = row + 1;
            return table;
        }
    }
    endField();
    return table;
}

std::string differenceFrom(const ReferenceTable& reference, CsvTable& table) {
    int firstRow = notGiven, lastRow = 0, firstCol = notGiven, lastCol = 0;
    std::int64_t memory = 136 + std::int64_t{16} * table.rowCapacity;
    std::set<std::pair<int, int>> blocks;
    for (const auto& [at, cell] : reference.cells) {
        const auto [row, col] = at;
        firstRow = std::min(firstRow, row);
        lastRow = std::max(lastRow, row);
        firstCol = std::min(firstCol, col);
        lastCol = std::max(lastCol, col);
        blocks.insert({row, col / columnsPerBlock});
        if (cell.text.size() > 7) memory += static_cast<std::int64_t>(cell.text.size()) + 1;
        if (const std::string fault = cellDifference(cell, table, row, col); !fault.empty()) return fault;
        for (const int beside : {col - 1, col + 1}) {
            if (!reference.cells.contains({row, beside}) && csvTableOps.cellKind(&table, row, beside) != cellEmpty) {
                return "a cell too many" + place(row, beside);
            }
        }
    }
    memory += 600 * static_cast<std::int64_t>(blocks.size());
    if (table.firstRow != firstRow || table.lastRow != lastRow) return "rows";
    if (table.firstCol != firstCol || table.lastCol != lastCol) return "columns";
    return table.memorySize() == memory ? "" : "memory";
}

}  // namespace quillet
