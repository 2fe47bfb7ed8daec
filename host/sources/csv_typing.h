// What a field of a csv file is: a number, a boolean or a text.
#pragma once
#include <cstddef>

namespace quillet {

class CsvTable;

enum class CsvFieldKind { number, boolean, text };

struct CsvField {  // small enough for two registers
    CsvFieldKind kind;
    int boolean;    // of a boolean
    double number;  // of a number
};

/// Bytes behind a field with which short numbers are read by whole words.
constexpr std::size_t typingSlack = 32;

/// Types a field of `length` bytes, none of them NUL; `field[length]` must be writable, and the
/// separators and boolean texts are the table's. `slack` bytes behind the field can be read, and do not count. A number
/// begins with a digit or the decimal separator behind an optional sign, has no leading zero before another digit, and
/// loses nothing: integers of more than 10 characters must lie within 2^53.
CsvField typeCsvField(char* field, std::size_t length, std::size_t slack, const CsvTable& table);

}  // namespace quillet
