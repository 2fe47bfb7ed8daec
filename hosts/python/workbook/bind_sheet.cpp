// Sheets as Python sees them.
#include <pybind11/stl.h>

#include <array>
#include <cmath>
#include <limits>

#include "hosts/python/values/texts.h"
#include "hosts/python/workbook/cell_values.h"

namespace pyhost {
namespace {

using Corners = std::array<int, 4>;  // first and last row, first and last column

std::string plain(const py::str& text) {
    return std::string(textOf(text));
}

Corners cornersOf(const std::string& text) {
    const Area area = areaOf(text);
    return {area.rowFirst, area.rowLast, area.colFirst, area.colLast};
}

/// An area, which may be empty as that of a sheet without cells is. Throws ValueError for one outside of all sheets.
Area fromCorners(const Corners& c) {
    if (c[0] < 0 || c[1] < c[0] - 1 || c[2] < 0 || c[3] < c[2] - 1)
        throw py::value_error("an area ends behind its begin, and rows and columns count from 0");
    return {c[0], c[1], c[2], c[3]};
}

Corners used(SheetHandle& self) {
    Sheet& sheet = self.use();
    return {sheet.firstRow(), sheet.lastRow() - 1, sheet.firstCol(), sheet.lastCol() - 1};
}

py::array values(SheetHandle& self, const Corners& corners, bool dates, const py::object& errorClass) {
    return areaValues(self, fromCorners(corners), dates, errorClass);
}

Corners usedOf(SheetHandle& self, const Corners& corners) {
    const Area area = usedPart(self.use(), fromCorners(corners));
    return {area.rowFirst, area.rowLast, area.colFirst, area.colLast};
}

py::array formulas(SheetHandle& self, const Corners& corners) {
    return areaFormulas(self, fromCorners(corners));
}

void setNumbers(SheetHandle& self, int row, int col, const py::array_t<double>& numbers) {
    Sheet& sheet = self.use();
    const auto view = numbers.unchecked<2>();
    constexpr py::ssize_t most = std::numeric_limits<int>::max();
    if (view.shape(0) > most - row || view.shape(1) > most - col)
        throw py::value_error("these cells lie outside of the sheet");
    for (py::ssize_t i = 0; i < view.shape(0); ++i)
        for (py::ssize_t j = 0; j < view.shape(1); ++j)
            if (std::isinf(view(i, j))) throw py::value_error("a cell holds no infinity and no not-a-number");
    for (py::ssize_t i = 0; i < view.shape(0); ++i)
        for (py::ssize_t j = 0; j < view.shape(1); ++j) {
            const int r = row + static_cast<int>(i), c = col + static_cast<int>(j);
            const double number = view(i, j);
            self.book().check(number != number ? sheet.writeBlank(r, c, sheet.cellFormatAt(r, c))
                                               : sheet.writeNumber(r, c, number));
        }
}

py::object formula(SheetHandle& self, int row, int col) {
    Sheet& sheet = self.use();
    if (!sheet.isFormulaCell(row, col)) return py::none();
    const char* text = sheet.readFormula(row, col);
    self.book().check(text != nullptr);
    return pythonText(text);
}

/// None for a cell without one.
py::object format(SheetHandle& self, int row, int col) {
    if (self.book().use().formatTotal() > 0) self.book().speakRgb();
    Format* const found = self.use().cellFormatAt(row, col);
    return found == nullptr ? py::none() : py::cast(FormatHandle(self.bookPtr(), found));
}

void setComment(SheetHandle& self, int row, int col, const py::str& text, const py::str& author, int width,
                int height) {
    self.book().check(self.use().writeComment(row, col, plain(text).c_str(), plain(author).c_str(), width, height));
}

/// (picture's id, corners, width, height, x offset, y offset, path of a linked one)
py::list pictures(SheetHandle& self) {
    Sheet& sheet = self.use();
    py::list made;
    for (int i = 0; i < sheet.pictureTotalOnSheet(); ++i) {
        Corners place{};
        int width = 0, height = 0, x = 0, y = 0;
        const char* link = nullptr;
        const int id =
            sheet.sheetPictureAt(i, &place[0], &place[2], &place[1], &place[3], &width, &height, &x, &y, &link);
        made.append(py::make_tuple(id, place, width, height, x, y, link == nullptr ? py::none() : pythonText(link)));
    }
    return made;
}

py::list merges(SheetHandle& self) {
    Sheet& sheet = self.use();
    py::list made;
    for (int i = 0; i < sheet.mergeTotal(); ++i) {
        Corners place{};
        self.book().check(sheet.mergeByIndex(i, &place[0], &place[1], &place[2], &place[3]));
        made.append(place);
    }
    return made;
}

py::list hyperlinks(SheetHandle& self) {
    Sheet& sheet = self.use();
    py::list made;
    for (int i = 0; i < sheet.hyperlinkTotal(); ++i) {
        Corners place{};
        const char* target = sheet.hyperlinkAt(i, &place[0], &place[1], &place[2], &place[3]);
        made.append(py::make_tuple(pythonText(target), place));
    }
    return made;
}

/// (name, corners, rows of headers, rows of totals)
py::list tables(SheetHandle& self) {
    Sheet& sheet = self.use();
    py::list made;
    for (int i = 0; i < sheet.tableTotal(); ++i) {
        Corners place{};
        int headers = 0, totals = 0;
        const char* name = sheet.tableAt(i, &place[0], &place[1], &place[2], &place[3], &headers, &totals);
        made.append(py::make_tuple(pythonText(name), place, headers, totals));
    }
    return made;
}

using Bound = py::class_<SheetHandle, std::shared_ptr<SheetHandle>>;

void bindCells(Bound& bound) {
    bound.def("kind", [](SheetHandle& self, int row, int col) { return self.use().cellType(row, col); })
        .def("value", cellValue)
        .def("set_value", setCellValue)
        .def("values", values)
        .def("set_numbers", setNumbers)
        .def("formula", formula)
        .def("formulas", formulas)
        .def("set_formula", setCellFormula)
        .def("format", format)
        .def("set_format",
             [](SheetHandle& self, int row, int col, FormatHandle& value) {
                 self.book().check(self.use().setCellFormatAt(row, col, value.of(self.book())));
             })
        .def("comment",
             [](SheetHandle& self, int row, int col) { return pythonText(self.use().readComment(row, col)); })
        .def("set_comment", setComment)
        .def("remove_comment",
             [](SheetHandle& self, int row, int col) { self.book().check(self.use().removeComment(row, col)); })
        .def("clear", [](SheetHandle& self, const Corners& c) {
            const Area a = fromCorners(c);
            self.book().check(self.use().clearRange(a.rowFirst, a.rowLast, a.colFirst, a.colLast));
        });
}

void bindLayout(Bound& bound) {
    bound.def("column_width", [](SheetHandle& self, int col) { return self.use().columnWidth(col); })
        .def("set_column_width", [](SheetHandle& self, int first, int last,
                                    double width) { self.book().check(self.use().setColumn(first, last, width)); })
        .def("row_height", [](SheetHandle& self, int row) { return self.use().rowHeight(row); })
        .def("set_row_height",
             [](SheetHandle& self, int row, double height) { self.book().check(self.use().setRow(row, height)); })
        .def("row_hidden", [](SheetHandle& self, int row) { return self.use().isRowHidden(row); })
        .def("set_row_hidden",
             [](SheetHandle& self, int row, bool hidden) { self.book().check(self.use().setRowHidden(row, hidden)); })
        .def("column_hidden", [](SheetHandle& self, int col) { return self.use().isColumnHidden(col); })
        .def("set_column_hidden", [](SheetHandle& self, int col,
                                     bool hidden) { self.book().check(self.use().setColumnHidden(col, hidden)); })
        .def("merges", merges)
        .def("merge", [](SheetHandle& self,
                         const Corners& c) { self.book().check(self.use().addMerge(c[0], c[1], c[2], c[3])); })
        .def("unmerge",
             [](SheetHandle& self, int row, int col) { self.book().check(self.use().removeMergeAt(row, col)); })
        .def("freeze", [](SheetHandle& self, int row, int col) { self.book().check(self.use().splitAt(row, col)); })
        .def("visibility", [](SheetHandle& self) { return self.use().visibilityState(); })
        .def("set_visibility",
             [](SheetHandle& self, int state) { self.book().check(self.use().setVisibilityState(state)); })
        .def("tables", tables)
        .def("hyperlinks", hyperlinks)
        .def("add_hyperlink", [](SheetHandle& self, const py::str& target, const Corners& c) {
            self.book().check(self.use().addHyperlink(plain(target).c_str(), c[0], c[1], c[2], c[3]));
        });
}

void bindPlaced(Bound& bound) {
    bound.def("pictures", pictures)
        .def("place_picture", [](SheetHandle& self, int row, int col, int id,
                                 double scale) { self.book().check(self.use().placePicture(row, col, id, scale)); })
        .def("place_picture_sized",
             [](SheetHandle& self, int row, int col, int id, int width, int height) {
                 self.book().check(self.use().placePictureSized(row, col, id, width, height));
             })
        .def("remove_picture",
             [](SheetHandle& self, int index) { self.book().check(self.use().removePictureByIndex(index)); })
        .def("set_name_area",
             [](SheetHandle& self, const py::str& name, const Corners& c, int scope) {
                 const Area a = fromCorners(c);
                 self.book().check(self.use().setNamedRangeByName(plain(name).c_str(), a.rowFirst, a.rowLast,
                                                                  a.colFirst, a.colLast, scope));
             })
        .def("remove_name", [](SheetHandle& self, const py::str& name, int scope) {
            self.book().check(self.use().removeNamedRange(plain(name).c_str(), scope));
        });
}

}  // namespace

void bindSheets(py::module_& module) {
    module.def("area_of", cornersOf);
    Bound bound(module, "SheetHandle", "A sheet of the engine.");
    bindCells(bound);
    bindLayout(bound);
    bindPlaced(bound);
    bound.def("used", used)
        .def("used_of", usedOf)
        .def_property_readonly("index", &SheetHandle::index)
        .def_property(
            "name", [](SheetHandle& self) { return pythonText(self.use().sheetName()); },
            [](SheetHandle& self, const py::str& name) {
                self.book().check(self.use().setSheetName(plain(name).c_str()));
            });
}

}  // namespace pyhost
