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
void formatProperty(Bound& bound, const char* name) {
    using Value = decltype((std::declval<Format&>().*Get)());
    bound.def_property(
        name, [](FormatHandle& self) { return (self.use().*Get)(); },
        [](FormatHandle& self, Value value) { (self.use().*Set)(value); });
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
    self.book().check(self.use().setFont(made));
    return *made;
}

template <auto Get, auto Set>
void fontProperty(Bound& bound, const char* name) {
    using Value = decltype((std::declval<Font&>().*Get)());
    bound.def_property(
        name, [](FormatHandle& self) { return (fontOf(self).*Get)(); },
        [](FormatHandle& self, Value value) { (ownFont(self).*Set)(value); });
}

void bindLook(Bound& bound) {
    formatProperty<&Format::numFormat, &Format::setNumFormat>(bound, "number_format_id");
    formatProperty<&Format::alignHorizontal, &Format::setAlignHorizontal>(bound, "align_horizontal");
    formatProperty<&Format::alignVertical, &Format::setAlignVertical>(bound, "align_vertical");
    formatProperty<&Format::wrapsText, &Format::setWrapsText>(bound, "wraps_text");
    formatProperty<&Format::indent, &Format::setIndent>(bound, "indent");
    formatProperty<&Format::shrinksToFit, &Format::setShrinksToFit>(bound, "shrinks_to_fit");
    formatProperty<&Format::borderLeft, &Format::setBorderLeft>(bound, "border_left");
    formatProperty<&Format::borderRight, &Format::setBorderRight>(bound, "border_right");
    formatProperty<&Format::borderTop, &Format::setBorderTop>(bound, "border_top");
    formatProperty<&Format::borderBottom, &Format::setBorderBottom>(bound, "border_bottom");
    formatProperty<&Format::fillPattern, &Format::setFillPattern>(bound, "fill_pattern");
    formatProperty<&Format::patternForeColor, &Format::setPatternForeColor>(bound, "fill_color");
    formatProperty<&Format::patternBackColor, &Format::setPatternBackColor>(bound, "fill_back_color");
    formatProperty<&Format::isLocked, &Format::setLocked>(bound, "locked");
    formatProperty<&Format::isFormulaHidden, &Format::setFormulaHidden>(bound, "formula_hidden");
    bound.def_property(
        "rotation", [](FormatHandle& self) { return self.use().rotation(); },
        [](FormatHandle& self, int rotation) { self.book().check(self.use().setRotation(rotation)); });
}

void bindFont(Bound& bound) {
    fontProperty<&Font::size, &Font::setSize>(bound, "font_size");
    fontProperty<&Font::isBold, &Font::setBold>(bound, "bold");
    fontProperty<&Font::isItalic, &Font::setItalic>(bound, "italic");
    fontProperty<&Font::isStrikeOut, &Font::setStrikeOut>(bound, "strike_out");
    fontProperty<&Font::underline, &Font::setUnderline>(bound, "underline");
    fontProperty<&Font::color, &Font::setColor>(bound, "font_color");
    bound.def_property(
        "font_name", [](FormatHandle& self) { return pythonText(fontOf(self).name()); },
        [](FormatHandle& self, const py::str& name) {
            const std::string text(textOf(name));
            self.book().check(ownFont(self).setName(text.c_str()));
        });
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
