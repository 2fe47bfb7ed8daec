// What becomes of the formulas of binary workbooks as text, for checks:
//   formula_texts count FILE...     counts, one to a line: texts and failures, and what each text compiles to
//   formula_texts rewrite IN OUT    writes each formula whose text compiles back into its cell, and saves
//   formula_texts write OUT         a new workbook of the texts on standard input, down the first sheet's column F
// `write` gives each line that fails on standard error, with the reason; the cells and sheets that such texts may
// name are those of scripts/crosscheck.d/formulas_new.py.
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>

#include "biff/book/book.h"
#include "cli/workbook/book_file.h"
#include "engine/api/enums.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"
#include "formula/function_table.h"
#include "formula/token_cut.h"

namespace {

using namespace vellum;
using Sheet = SheetImplT<char>;

cli::BookPtr load(const char* path) {
    std::string error;
    cli::BookPtr book = cli::loadBook(path, error);
    if (!book) throw std::runtime_error(std::string(path) + ": " + error);
    return book;
}

void save(IBookT<char>& book, const char* path) {
    if (!book.saveFile(path)) throw std::runtime_error(book.errorMessage());
}

const FormulaCell& cellAt(const Sheet& sheet, int row, int col) {
    const CellStore& cells = sheet.parts().cells;
    return cells.get<FormulaCell>(cells.at(static_cast<std::uint16_t>(row), static_cast<std::uint16_t>(col)));
}

std::vector<std::byte> tokensAt(const Sheet& sheet, int row, int col) {
    const auto rgce = formula::tokensOf(cellAt(sheet, row, col).expressionBytes());
    return {rgce.begin(), rgce.end()};
}

/// What a stream calculates: without attributes and classes, and without the ways to write one call or one number.
/// Texts have 13 decimals of a number, so that 12 digits are compared.
std::string meaningOf(std::span<const std::byte> rgce) {
    std::string meaning;
    formula::TokenWalk walk(rgce);
    while (walk.next()) {
        const std::byte* const operands = walk.operands().data();
        const auto add = [&](std::uint8_t code, const auto& value) {
            meaning += static_cast<char>(code);
            meaning.append(reinterpret_cast<const char*>(&value), sizeof value);
        };
        const auto addNumber = [&](double value) {
            char digits[32];
            meaning.append(digits, static_cast<std::size_t>(std::snprintf(digits, sizeof digits, " %.12g ", value)));
        };
        switch (walk.base()) {
            case formula::ptg::attr:
                if (operands[0] == std::byte{formula::attributeSum}) add(formula::ptg::funcVar, std::uint16_t{4});
                break;
            case formula::ptg::func:
                add(formula::ptg::funcVar, loadLe<std::uint16_t>(operands));
                break;
            case formula::ptg::funcVar:
                add(formula::ptg::funcVar, loadLe<std::uint16_t>(operands + 1));
                break;
            case formula::ptg::integer:
                addNumber(loadLe<std::uint16_t>(operands));
                break;
            case formula::ptg::num:
                addNumber(loadLe<double>(operands));
                break;
            case formula::ptg::str: {
                const bool wide = operands[1] != std::byte{0};
                meaning += '"';
                for (std::size_t i = 2; i < walk.operands().size(); i += wide ? 2 : 1) {
                    add(0, wide ? loadLe<std::uint16_t>(operands + i) : std::to_integer<std::uint16_t>(operands[i]));
                }
                break;
            }
            case formula::ptg::memFunc:
                break;
            default:
                meaning += static_cast<char>(walk.base());
                meaning.append(reinterpret_cast<const char*>(operands), walk.operands().size());
        }
    }
    return meaning;
}

/// Texts in A1 while it lives: those of shared tokens in R1C1 count from no cell, and mean others when they are
/// written.
class PlainNotation {
public:
    explicit PlainNotation(IBookT<char>& book) {
        for (int i = 0; i < book.sheetCount(); ++i) {
            auto* const sheet = dynamic_cast<Sheet*>(book.getSheet(i));
            if (sheet == nullptr) continue;
            _before.emplace_back(sheet, sheet->usesR1C1());
            sheet->setUsesR1C1(false);
        }
    }
    PlainNotation(const PlainNotation&) = delete;
    PlainNotation& operator=(const PlainNotation&) = delete;
    ~PlainNotation() {
        for (const auto& [sheet, r1c1] : _before) sheet->setUsesR1C1(r1c1);
    }

private:
    std::vector<std::pair<Sheet*, bool>> _before;
};

template <class Visit>
void forEachFormula(IBookT<char>& book, Visit&& visit) {
    for (int i = 0; i < book.sheetCount(); ++i) {
        auto* const sheet = dynamic_cast<Sheet*>(book.getSheet(i));
        if (sheet == nullptr) continue;
        std::vector<std::pair<int, int>> places;
        for (int row = 0, col = 0; sheet->cellFrom(&row, &col); ++col) {
            if (sheet->isFormulaCell(row, col)) places.emplace_back(row, col);
        }
        for (const auto& [row, col] : places) visit(*sheet, row, col);
    }
}

/// Outside of double quotes.
bool hasSubstitute(std::string text) {
    std::string outside;
    bool quoted = false;
    for (const char c : text) {
        if (c == '"') quoted = !quoted;
        if (!quoted) outside += c;
    }
    const auto wordAt = [&](const char* word) {
        for (std::size_t at = outside.find(word); at != std::string::npos; at = outside.find(word, at + 1)) {
            const auto joins = [&](std::size_t i) {
                return i < outside.size() && std::isalnum(static_cast<unsigned char>(outside[i]));
            };
            if (!(at > 0 && joins(at - 1)) && !joins(at + std::strlen(word))) return true;
        }
        return false;
    };
    return outside.find('?') != std::string::npos || outside.find("#REF!") != std::string::npos || wordAt("ERR");
}

using Counts = std::map<std::string, long>;

// Compiles into a cell aside, so that formulas which share their tokens stay as they are.
void countText(Sheet& sheet, IBookT<char>& book, const std::string& text, std::span<const std::byte> own,
               Counts& counts) {
    constexpr int row = 65535, col = 255;
    if (!sheet.writeFormula(row, col, text.c_str(), nullptr)) {
        ++counts[std::string("refused: ") + book.errorMessage()];
        return;
    }
    ++counts["compiled"];
    const char* const again = sheet.readFormula(row, col, nullptr);
    ++counts[again != nullptr && text == again ? "same text again" : "another text"];
    if (own.empty()) return;
    const auto made = tokensAt(sheet, row, col);
    ++counts["with tokens of their own"];
    if (meaningOf(made) == meaningOf(own)) ++counts["same meaning"];
    if (std::ranges::equal(made, own)) ++counts["same bytes"];
}

void count(const char* path, Counts& counts) {
    const cli::BookPtr book = load(path);
    const PlainNotation plain(*book);
    long formulas = 0;
    forEachFormula(*book, [&](Sheet& sheet, int row, int col) {
        ++formulas;
        const char* const found = sheet.readFormula(row, col, nullptr);
        if (found == nullptr) {
            ++counts[std::string("no text: ") + book->errorMessage()];
            return;
        }
        const std::string text = found;
        ++counts["texts"];
        if (hasSubstitute(text)) ++counts["with a substitute word"];
        const bool shared = cellAt(sheet, row, col).anchor().has_value();
        countText(sheet, *book, text, shared ? std::vector<std::byte>() : tokensAt(sheet, row, col), counts);
    });
    counts["formulas"] += formulas;
    counts["files"] += formulas > 0 ? 1 : 0;
}

void rewrite(const char* in, const char* out) {
    const cli::BookPtr book = load(in);
    long written = 0;
    {
        const PlainNotation plain(*book);
        forEachFormula(*book, [&](Sheet& sheet, int row, int col) {
            const char* const found = sheet.readFormula(row, col, nullptr);
            if (found == nullptr) return;
            const std::string text = found;
            written += sheet.writeFormula(row, col, text.c_str(), nullptr) ? 1 : 0;
        });
    }
    save(*book, out);
    std::printf("%ld\n", written);
}

// Numbers, texts and others in A1 to D10, a second sheet, and a name: what the texts may name.
void write(const char* out) {
    const cli::BookPtr book(vlCreateBook<char>());
    book->setLocale("UTF-8.comma");
    ISheetT<char>* const sheet = book->addSheet("Data");
    ISheetT<char>* const other = book->addSheet("Other one");
    for (int row = 0; row < 10; ++row) {
        sheet->writeNumber(row, 0, row + 1.5);
        sheet->writeNumber(row, 1, row * row - 7.0);
        sheet->writeString(row, 2, std::string(1, static_cast<char>('k' - row)).append("x").c_str());
        sheet->writeBool(row, 3, row % 3 == 0);
        other->writeNumber(row, 0, 100.0 - row);
    }
    sheet->setNamedRangeByName("Values", 0, 9, 0, 0);
    book->setActiveSheetIndex(0);  // the one that converters take
    std::string text;
    for (int row = 0; std::getline(std::cin, text); ++row) {
        if (!sheet->writeFormula(row, 5, text.c_str())) {
            std::fprintf(stderr, "%s: %s\n", text.c_str(), book->errorMessage());
        }
    }
    save(*book, out);
}

}  // namespace

int main(int argc, char** argv) {
    const std::string task = argc > 2 ? argv[1] : "";
    try {
        if (task == "count") {
            Counts counts;
            for (int i = 2; i < argc; ++i) count(argv[i], counts);
            for (const auto& [what, n] : counts) std::printf("%s\t%ld\n", what.c_str(), n);
            return 0;
        }
        if (task == "rewrite" && argc == 4) return rewrite(argv[2], argv[3]), 0;
        if (task == "write" && argc == 3) return write(argv[2]), 0;
        std::fputs("formula_texts count FILE... | rewrite IN OUT | write OUT\n", stderr);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "formula_texts: %s\n", e.what());
    }
    return 2;
}
