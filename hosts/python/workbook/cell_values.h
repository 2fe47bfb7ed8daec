// What cells hold, as Python's objects, and the other way.
#pragma once
#include <pybind11/numpy.h>

#include "hosts/python/workbook/book_handle.h"

namespace pyhost {

/// First and last row and column, from 0, all included.
struct Area {
    int rowFirst = 0, rowLast = -1, colFirst = 0, colLast = -1;

    std::size_t rows() const { return extent(rowFirst, rowLast); }
    std::size_t columns() const { return extent(colFirst, colLast); }
    bool isEmpty() const { return rowLast < rowFirst || colLast < colFirst; }

private:
    static std::size_t extent(int first, int last) {
        return last < first ? 0 : static_cast<std::size_t>(std::int64_t{last} - first + 1);
    }
};

/// An area from the text "B2", "A1:C9", "A:C" or "2:5". Throws ValueError.
Area areaOf(const std::string& text);
/// As far as the sheet has cells. Throws MemoryError for more cells than an array may have.
Area usedPart(Sheet& sheet, const Area& area);

/// None, float, str, bool, a date where the number format shows one, or an error's text in the class given.
py::object cellValue(SheetHandle& handle, int row, int col, bool dates, const py::object& errorClass);
/// Writes None as a blank cell, dates with a date format where the cell has none. Throws as valueFrom does.
void setCellValue(SheetHandle& handle, int row, int col, const py::object& value);

/// Writes a formula with the value that readers show until they calculate: a number, text or boolean, None for none.
void setCellFormula(SheetHandle& handle, int row, int col, const py::str& text, const py::object& value);

/// Two dimensions: float64 with not-a-number for empty cells when there are numbers alone, bool for booleans alone,
/// otherwise objects.
py::array areaValues(SheetHandle& handle, const Area& area, bool dates, const py::object& errorClass);
/// Texts of formulas, None where there is none.
py::array areaFormulas(SheetHandle& handle, const Area& area);

}  // namespace pyhost
