#include <cmath>
#include <optional>

#include "cli/explain/facts/sheet_view.h"
#include "cli/explain/facts/texts.h"
#include "cli/explain/rules/rules.h"
#include "engine/api/isheet_rules.h"
#include "host/text/c_locale.h"

namespace cli::explain {
namespace {

using vellum::EntryRule;

enum Type : int { whole = 1, decimal = 2, list = 3, date = 4, time = 5, textLength = 6 };

bool covers(const EntryRule& rule, int row, int col) {
    for (const EntryRule::Area& area : rule.areas) {
        const bool inRows = row >= area.rowFirst && row <= area.rowLast;
        if (inRows && col >= area.colFirst && col <= area.colLast) return true;
    }
    return false;
}

/// A limit that is a plain number; limits that are formulas are not known.
std::optional<double> limitIn(const std::string& formula) {
    if (!isNumber(formula, '.')) return std::nullopt;
    return quillet::strtodC(formula.c_str(), nullptr);
}

bool keepsLimits(const EntryRule& rule, double value) {
    const auto first = limitIn(rule.formula1), second = limitIn(rule.formula2);
    if (!first || (rule.op <= 1 && !second)) return true;
    switch (rule.op) {
        case 0:
            return value >= *first && value <= *second;
        case 1:
            return value < *first || value > *second;
        case 2:
            return value == *first;
        case 3:
            return value != *first;
        case 4:
            return value < *first;
        case 5:
            return value <= *first;
        case 6:
            return value > *first;
        default:
            return value >= *first;
    }
}

/// A list that stands in the rule itself, in quotes with commas between; lists in cells are not known.
bool isListed(const std::string& formula, const std::string& text) {
    if (formula.size() < 2 || formula.front() != '"' || formula.back() != '"') return true;
    std::string_view rest(formula.data() + 1, formula.size() - 2);
    for (;;) {
        const std::size_t comma = rest.find(',');
        if (withoutBlanks(rest.substr(0, comma)) == text) return true;
        if (comma == rest.npos) return false;
        rest.remove_prefix(comma + 1);
    }
}

std::string textOf(const WrittenCell& cell) {
    if (cell.now.kind == quillet::cellText) return cell.now.text;
    return shownText(cell.range, cell.row, cell.col);
}

bool breaks(const EntryRule& rule, const WrittenCell& cell) {
    if (cell.now.kind == quillet::cellEmpty) return !rule.allowBlank && rule.type != 0;
    const bool isNumberCell = cell.now.kind == quillet::cellNumber;
    switch (rule.type) {
        case whole:
            return !isNumberCell || cell.now.number != std::trunc(cell.now.number) ||
                   !keepsLimits(rule, cell.now.number);
        case decimal:
        case date:
        case time:
            return !isNumberCell || !keepsLimits(rule, cell.now.number);
        case list:
            return !isListed(rule.formula1, textOf(cell));
        case textLength:
            return !keepsLimits(rule, static_cast<double>(textOf(cell).size()));
        default:
            return false;
    }
}

void look(const WrittenCell& cell, Finding& finding) {
    auto* const sheet = dynamic_cast<vellum::ISheetRules*>(worksheetOf(cell.range));
    if (!cell.done || sheet == nullptr) return;
    for (const EntryRule& rule : sheet->entryRules()) {
        if (covers(rule, cell.row, cell.col) && breaks(rule, cell)) finding.at(cell.row, cell.col);
    }
}

}  // namespace

const Rule validationBroken = {
    .name = "validation-broken",
    .text = "a value is written that the cell's validation rule forbids",
    .advice = "Write a value that the rule allows, or ask who made it: the module does not enforce it.",
    .onWrite = look,
};

}  // namespace cli::explain
