// Formats of cells as Python sees them.
#include <string>

#include "engine/api/ifont.h"
#include "hosts/python/values/texts.h"
#include "hosts/python/workbook/book_handle.h"

namespace pyhost {
namespace {

using Font = vellum::IFontT<char>;
using Bound = py::class_<FormatHandle>;

template <auto Get, auto Set>
void formatProperty(Bound& bound, const char* name, const char* doc) {
    using Value = decltype((std::declval<Format&>().*Get)());
    bound.def_property(
        name, [](FormatHandle& self) { return (self.use().*Get)(); },
        [](FormatHandle& self, Value value) { (self.change().*Set)(value); }, doc);
}

Font& fontOf(FormatHandle& self) {
    Font* const font = self.use().font();
    self.book().check(font != nullptr);
    return *font;
}

/// A change of a format's font leaves the cells of other formats alone: the format gets a font of its own.
Font& ownFont(FormatHandle& self) {
    Font* const made = self.book().use().newFont(&fontOf(self));
    self.book().check(made != nullptr);
    self.book().check(self.change().setFont(made));
    return *made;
}

template <auto Get, auto Set>
void fontProperty(Bound& bound, const char* name, const char* doc) {
    using Value = decltype((std::declval<Font&>().*Get)());
    bound.def_property(
        name, [](FormatHandle& self) { return (fontOf(self).*Get)(); },
        [](FormatHandle& self, Value value) { (ownFont(self).*Set)(value); }, doc);
}

void bindLook(Bound& bound) {
    formatProperty<&Format::numFormat, &Format::setNumFormat>(
        bound, "number_format_id", "Number of the number format: below 164 one that is the same in all workbooks.");
    formatProperty<&Format::alignHorizontal, &Format::setAlignHorizontal>(
        bound, "align_horizontal",
        "0 general, 1 left, 2 centre, 3 right, 4 fill, 5 justify, 6 centre across cells, 7 distributed.");
    formatProperty<&Format::alignVertical, &Format::setAlignVertical>(
        bound, "align_vertical", "0 top, 1 middle, 2 bottom, 3 justify, 4 distributed.");
    formatProperty<&Format::wrapsText, &Format::setWrapsText>(bound, "wraps_text",
                                                              "Whether texts are broken into lines.");
    formatProperty<&Format::indent, &Format::setIndent>(bound, "indent", "Steps of indentation.");
    formatProperty<&Format::shrinksToFit, &Format::setShrinksToFit>(bound, "shrinks_to_fit",
                                                                    "Whether texts are made smaller to fit.");
    formatProperty<&Format::borderLeft, &Format::setBorderLeft>(
        bound, "border_left", "Style of the left border, 0 for none, 1 thin, 2 medium, 5 thick, 6 double.");
    formatProperty<&Format::borderRight, &Format::setBorderRight>(bound, "border_right",
                                                                  "Style of the right border, as border_left.");
    formatProperty<&Format::borderTop, &Format::setBorderTop>(bound, "border_top",
                                                              "Style of the top border, as border_left.");
    formatProperty<&Format::borderBottom, &Format::setBorderBottom>(bound, "border_bottom",
                                                                    "Style of the bottom border, as border_left.");
    formatProperty<&Format::fillPattern, &Format::setFillPattern>(bound, "fill_pattern",
                                                                  "Pattern of the fill, 0 for none, 1 solid.");
    formatProperty<&Format::patternForeColor, &Format::setPatternForeColor>(
        bound, "fill_color", "Colour of the fill's pattern, see Book.color.");
    formatProperty<&Format::patternBackColor, &Format::setPatternBackColor>(bound, "fill_back_color",
                                                                            "Colour behind the fill's pattern.");
    formatProperty<&Format::isLocked, &Format::setLocked>(bound, "locked",
                                                          "Whether the cell is locked on a protected sheet.");
    formatProperty<&Format::isFormulaHidden, &Format::setFormulaHidden>(
        bound, "formula_hidden", "Whether the formula is hidden on a protected sheet.");
    bound.def_property(
        "rotation", [](FormatHandle& self) { return self.use().rotation(); },
        [](FormatHandle& self, int rotation) { self.book().check(self.change().setRotation(rotation)); },
        "Degrees up, 91 to 180 for 1 to 90 degrees down, 255 for letters one below the other.");
}

void bindFont(Bound& bound) {
    fontProperty<&Font::size, &Font::setSize>(bound, "font_size", "Points.");
    fontProperty<&Font::isBold, &Font::setBold>(bound, "bold", "Whether the font is bold.");
    fontProperty<&Font::isItalic, &Font::setItalic>(bound, "italic", "Whether the font is italic.");
    fontProperty<&Font::isStrikeOut, &Font::setStrikeOut>(bound, "strike_out", "Whether the text is struck out.");
    fontProperty<&Font::underline, &Font::setUnderline>(
        bound, "underline", "0 none, 1 single, 2 double, 33 and 34 the same for accounting.");
    fontProperty<&Font::color, &Font::setColor>(bound, "font_color", "Colour of the font, see Book.color.");
    bound.def_property(
        "font_name", [](FormatHandle& self) { return pythonText(fontOf(self).name()); },
        [](FormatHandle& self, const py::str& name) {
            const std::string text(textOf(name));
            self.book().check(ownFont(self).setName(text.c_str()));
        },
        "Name of the typeface.");
}

}  // namespace

void bindFormats(py::module_& module) {
    Bound bound(module, "Format",
                "How cells look. The cells that share a format change together: take Book.new_format(like=...) for a "
                "look of its own.");
    bindLook(bound);
    bindFont(bound);
    bound.def("__eq__", [](const FormatHandle& self, const FormatHandle& other) { return self == other; });
    bound.attr("__hash__") = py::none();
}

}  // namespace pyhost
