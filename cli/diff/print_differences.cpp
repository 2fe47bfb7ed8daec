#include "cli/diff/print_differences.h"

#include <algorithm>
#include <string_view>

#include "cli/formats/display_width.h"
#include "cli/workbook/json_lines.h"

namespace cli {
namespace {

/// What a cell's change is called, for one and for several; all other words tell the whole.
struct CellWord {
    std::string_view what, one, several;
};
constexpr CellWord cellWords[] = {
    {"number", "number changed", "numbers changed"},
    {"text", "text changed", "texts changed"},
    {"boolean", "boolean changed", "booleans changed"},
    {"error", "error changed", "errors changed"},
    {"date", "date changed", "dates changed"},
    {"nothing", "result changed", "results changed"},
    {"kind", "kind of value changed", "kinds of values changed"},
    {"formula", "formula changed", "formulas changed"},
    {"format", "number format changed", "number formats changed"},
    {"look", "look changed", "looks changed"},
    {"cell added", "cell added", "cells added"},
    {"cell removed", "cell removed", "cells removed"},
};

std::string sheetPrefix(const std::string& sheet) {
    const auto plain = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c < 0;
    };
    return std::all_of(sheet.begin(), sheet.end(), plain) ? sheet + "!" : "'" + std::string(sheet).append("'!");
}

std::string shortened(const std::string& text) {
    constexpr int longest = 60;
    return cutToWidth(onOneLine(text), longest);
}

/// " 3.5 -> 3.7", and what there is of it.
void printValues(const Difference& d, std::ostream& out) {
    if (!d.before.empty()) out << ' ' << shortened(d.before);
    if (!d.before.empty() && !d.after.empty()) out << " ->";
    if (!d.after.empty()) out << ' ' << shortened(d.after);
}

/// "rows 3:5 inserted", "name Prices changed", "zoom changed", "sheet added".
std::string sentence(const Difference& d) {
    if (d.place.empty()) return d.what;
    const std::size_t verb = d.what.rfind(' ');
    const std::string noun = d.what.substr(0, verb);
    const bool named = noun != "feature" && noun != "setting" && noun != "rows" && noun != "columns";
    return (named ? noun + " " : std::string()) + d.place + d.what.substr(verb);
}

void printOne(const Difference& d, std::ostream& out) {
    const auto word = std::find_if(std::begin(cellWords), std::end(cellWords),
                                   [&](const CellWord& each) { return each.what == d.what; });
    if (word != std::end(cellWords)) {
        out << sheetPrefix(d.sheet) << d.place << "  " << d.count << ' ' << (d.count == 1 ? word->one : word->several)
            << (d.count == 1 ? ":" : ", first");
    } else {
        out << d.sheet << (d.sheet.empty() ? "" : ": ") << sentence(d);
        if (!d.before.empty() || !d.after.empty()) out << ':';
    }
    printValues(d, out);
    out << '\n';
}

}  // namespace

void printDifferences(const Differences& list, std::ostream& out) {
    for (const Difference& each : list) printOne(each, out);
}

void printDifferencesJson(const Differences& list, std::ostream& out) {
    JsonLines lines(out);
    for (const Difference& d : list) {
        lines.raw(R"({"sheet":)").text(d.sheet).raw(R"(,"place":)").text(d.place).raw(R"(,"what":)").text(d.what);
        lines.raw(R"(,"count":)").integer(d.count).raw(R"(,"before":)").text(d.before);
        lines.raw(R"(,"after":)").text(d.after).raw("}").endLine();
    }
}

}  // namespace cli
