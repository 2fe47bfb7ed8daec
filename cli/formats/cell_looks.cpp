#include "cli/formats/cell_looks.h"

#include <functional>

#include "engine/api/ifont.h"

namespace cli {
namespace {

using Format = vellum::IFormatT<char>;
using Font = vellum::IFontT<char>;

struct FontProperty {
    const char* name;
    int (*of)(Font&);
};
constexpr FontProperty fontProperties[] = {
    {"size", [](Font& f) { return f.size(); }},
    {"bold", [](Font& f) { return int{f.isBold()}; }},
    {"italic", [](Font& f) { return int{f.isItalic()}; }},
    {"underline", [](Font& f) { return f.underline(); }},
    {"strike-out", [](Font& f) { return int{f.isStrikeOut()}; }},
    {"script", [](Font& f) { return f.script(); }},
    {"font colour", [](Font& f) { return f.color(); }},
};

struct FormatProperty {
    const char* name;
    int (*of)(Format&);
};
constexpr FormatProperty formatProperties[] = {
    {"fill", [](Format& f) { return f.fillPattern(); }},
    {"fill colour", [](Format& f) { return f.patternForeColor(); }},
    {"fill background", [](Format& f) { return f.patternBackColor(); }},
    {"left border", [](Format& f) { return f.borderLeft(); }},
    {"left border's colour", [](Format& f) { return f.borderLeftColor(); }},
    {"right border", [](Format& f) { return f.borderRight(); }},
    {"right border's colour", [](Format& f) { return f.borderRightColor(); }},
    {"top border", [](Format& f) { return f.borderTop(); }},
    {"top border's colour", [](Format& f) { return f.borderTopColor(); }},
    {"bottom border", [](Format& f) { return f.borderBottom(); }},
    {"bottom border's colour", [](Format& f) { return f.borderBottomColor(); }},
    {"diagonals", [](Format& f) { return f.borderDiagonal(); }},
    {"diagonals' border", [](Format& f) { return f.borderDiagonalStyle(); }},
    {"diagonals' colour", [](Format& f) { return f.borderDiagonalColor(); }},
    {"horizontal alignment", [](Format& f) { return f.alignHorizontal(); }},
    {"vertical alignment", [](Format& f) { return f.alignVertical(); }},
    {"wrapped", [](Format& f) { return int{f.wrapsText()}; }},
    {"rotation", [](Format& f) { return f.rotation(); }},
    {"indent", [](Format& f) { return f.indent(); }},
    {"shrunk to fit", [](Format& f) { return int{f.shrinksToFit()}; }},
    {"locked", [](Format& f) { return int{f.isLocked()}; }},
    {"formula hidden", [](Format& f) { return int{f.isFormulaHidden()}; }},
};

/// Names of the values of a look, the font's name first.
const char* propertyName(std::size_t index) {
    constexpr std::size_t ofFont = 1 + std::size(fontProperties);
    if (index == 0) return "font";
    return index < ofFont ? fontProperties[index - 1].name : formatProperties[index - ofFont].name;
}

Look lookOf(Format* format) {
    Look look;
    Font* const font = format != nullptr ? format->font() : nullptr;
    const char* const name = font != nullptr ? font->name() : nullptr;
    look.values.emplace_back(name != nullptr ? name : "");
    for (const FontProperty& each : fontProperties) {
        look.values.push_back(font != nullptr ? std::to_string(each.of(*font)) : "0");
    }
    for (const FormatProperty& each : formatProperties) {
        look.values.push_back(format != nullptr ? std::to_string(each.of(*format)) : "0");
    }
    std::string all;
    for (const std::string& value : look.values) all.append(value).append(1, '\n');
    look.hash = std::hash<std::string>()(all);
    return look;
}

void append(std::string& list, const char* name, const std::string& value) {
    list.append(list.empty() ? "" : ", ").append(name).append(1, ' ').append(value);
}

}  // namespace

std::pair<std::string, std::string> lookChanges(const Look& before, const Look& after) {
    std::pair<std::string, std::string> changes;
    if (before.isUsual && after.isUsual) return changes;
    for (std::size_t i = 0; i < before.values.size(); ++i) {
        if (before.values[i] == after.values[i]) continue;
        append(changes.first, propertyName(i), before.values[i]);
        append(changes.second, propertyName(i), after.values[i]);
    }
    return changes;
}

Look CellLooks::usual() {
    return lookOf(_book.formatAt(0));
}

const Look& CellLooks::of(Format* format) {
    const auto found = _known.find(format);
    if (found != _known.end()) return found->second;
    const Look common = usual();
    Look look = format != nullptr ? lookOf(format) : common;
    look.isUsual = look.values == common.values;
    return _known.emplace(format, std::move(look)).first->second;
}

}  // namespace cli
