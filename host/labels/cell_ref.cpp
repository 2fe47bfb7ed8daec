#include "host/labels/cell_ref.h"

#include "host/sources/table_ops.h"
#include "host/text/text_compare.h"

namespace quillet {
namespace {

constexpr int maxDigits = 9;  // what fits 32 bits whatever the digits are

/// Reads the digits at `*at` and moves behind them. False for more than `maxDigits`.
bool readNumber(const char** at, int* number) {
    const char* const start = *at;
    *number = 0;
    for (; isDigit(**at); ++*at) {
        if (*at - start >= maxDigits) return false;
        *number = *number * 10 + (**at - '0');
    }
    return true;
}

/// Whether the text has the form R1C1, which needs a digit behind each letter.
bool isRowColumnForm(const char* text) {
    if (lowerAscii(text[0]) != 'r' || !isDigit(text[1])) return false;
    const char* at = text + 1;
    while (isDigit(*at)) ++at;
    return lowerAscii(at[0]) == 'c' && isDigit(at[1]);
}

int parseRowColumnForm(const char* text, const char** end, int* row, int* col) {
    *end = text + 1;
    if (!readNumber(end, row)) return 1;
    ++*end;
    if (!readNumber(end, col) || *col > largestColumn + 1) return 1;
    --*row;
    --*col;
    return 0;
}

int parseRowAlone(const char* text, const char** end, int* row, int* col) {
    *end = text;
    if (!readNumber(end, row) || isLetter(**end) || isDigit(**end)) return 1;
    --*row;
    *col = notGiven;
    return 0;
}

int parseLetterForm(const char* text, const char** end, int* row, int* col) {
    constexpr int maxLetters = 3;
    int column = 0;
    const char* at = text;
    for (; isLetter(*at); ++at) {
        if (at - text >= maxLetters) return 1;
        column = column * 26 + (lowerAscii(*at) - 'a' + 1);
    }
    if (at == text || column > largestColumn + 1) return 1;
    *col = column - 1;
    *row = notGiven;
    if (isDigit(*at)) {
        if (!readNumber(&at, row)) return 1;
        --*row;
    }
    *end = at;
    return 0;
}

}  // namespace

int parseCellRef(const char* text, const char** end, int* row, int* col) {
    if (isRowColumnForm(text)) return parseRowColumnForm(text, end, row, col);
    if (isDigit(*text)) return parseRowAlone(text, end, row, col);
    return parseLetterForm(text, end, row, col);
}

}  // namespace quillet
