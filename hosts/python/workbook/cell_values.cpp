#include "hosts/python/workbook/cell_values.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "engine/facts/cell_address.h"
#include "engine/facts/error_text.h"
#include "hosts/python/values/dates.h"
#include "hosts/python/values/from_python.h"
#include "hosts/python/values/texts.h"

namespace pyhost {
namespace {

constexpr std::size_t mostCells = std::size_t{1} << 28;
constexpr int numFormatDate = 14, numFormatTime = 21, numFormatMoment = 22;  // ids that every workbook knows

refhost::Date dateOf(Book& book, double number, bool& isDate) {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0, millisecond = 0;
    isDate = book.dateUnpack(number, &year, &month, &day, &hour, &minute, &second, &millisecond);
    refhost::Date date;
    date.hasDate = year != 0 || month != 0 || day != 0;
    date.millisecond = static_cast<std::uint32_t>(((hour * 60 + minute) * 60 + second) * 1000 + millisecond);
    date.hasTime = !date.hasDate || date.millisecond != 0;
    date.year = static_cast<std::int16_t>(year);
    date.month = static_cast<std::uint8_t>(month);
    date.day = static_cast<std::uint8_t>(day);
    return date;
}

/// A number in a date format. What Python has no date for, such as the 29th of February 1900, stays a number.
py::object dateOrNumber(Book& book, double number) {
    bool isDate = false;
    const refhost::Date date = dateOf(book, number, isDate);
    if (!isDate) return py::float_(number);
    try {
        return pythonDate(date);
    } catch (py::error_already_set& error) {
        if (!error.matches(PyExc_ValueError)) throw;
        return py::float_(number);
    }
}

py::object errorOf(Sheet& sheet, int row, int col, const py::object& errorClass) {
    const int code = sheet.readError(row, col);
    return errorClass(py::str(std::string(vellum::errorTextOf(code))));
}

py::object isoDate(Sheet& sheet, int row, int col) {
    const char* text = sheet.readString(row, col);
    if (text == nullptr) return py::none();
    if (const auto date = refhost::parseDate(text)) return pythonDate(*date);
    return pythonText(text);
}

py::array objectArray(const Area& area, std::vector<py::object>& cells) {
    const std::vector<py::ssize_t> shape{static_cast<py::ssize_t>(area.rows()),
                                         static_cast<py::ssize_t>(area.columns())};
    py::array made(py::dtype("O"), shape);
    auto** const out = static_cast<PyObject**>(made.mutable_data());
    for (std::size_t i = 0; i < cells.size(); ++i) {
        PyObject* const before = out[i];
        out[i] = (cells[i] ? cells[i] : py::none()).release().ptr();
        Py_XDECREF(before);
    }
    return made;
}

/// Visits the cells of an area that are there.
template <class Visit>
void forEachCell(Sheet& sheet, const Area& area, Visit&& visit) {
    auto* const cells = dynamic_cast<vellum::ISheetCells*>(&sheet);
    int row = area.rowFirst, col = area.colFirst;
    while (cells != nullptr && cells->cellFrom(&row, &col) && row <= area.rowLast) {
        if (col < area.colFirst) {
            col = area.colFirst;
            continue;
        }
        if (col > area.colLast) {
            ++row;
            col = area.colFirst;
            continue;
        }
        visit(row, col);
        ++col;
    }
}

/// Which kinds of cells an area has, and its numbers.
struct Numbers {
    std::vector<double> values;
    bool numbers = false, others = false, booleans = false;
    std::size_t cells = 0;
};

Numbers numbersOf(Sheet& sheet, const Area& area, bool dates) {
    Numbers found;
    found.values.assign(area.rows() * area.columns(), std::numeric_limits<double>::quiet_NaN());
    forEachCell(sheet, area, [&](int row, int col) {
        if (found.others) return;
        const int kind = sheet.cellType(row, col);
        if (kind == vellum::cellEmpty || kind == vellum::cellBlank) return;
        ++found.cells;
        double& value = found.values[static_cast<std::size_t>(row - area.rowFirst) * area.columns() +
                                     static_cast<std::size_t>(col - area.colFirst)];
        if (kind == vellum::cellNumber && !(dates && sheet.isDate(row, col))) {
            value = sheet.readNumber(row, col);
            found.numbers = true;
        } else if (kind == vellum::cellBoolean) {
            value = sheet.readBool(row, col);
            found.booleans = true;
        } else {
            found.others = true;
        }
    });
    return found;
}

bool writeDate(SheetHandle& handle, int row, int col, const refhost::Date& date) {
    Sheet& sheet = handle.use();
    Book& book = handle.book().use();
    const int ms = static_cast<int>(date.millisecond % 1000), seconds = static_cast<int>(date.millisecond / 1000);
    const double number = date.hasDate ? book.datePack(date.year, date.month, date.day, seconds / 3600,
                                                       seconds / 60 % 60, seconds % 60, ms)
                                       : date.millisecond / 86400000.0;
    handle.book().checkText();
    if (date.hasDate && number <= 0 && date.year < 1904)
        throw py::value_error("a workbook has no day before the year 1900");
    if (!sheet.writeNumber(row, col, number)) return false;
    if (sheet.isDate(row, col)) return true;
    const int numFormat = !date.hasDate ? numFormatTime : date.hasTime ? numFormatMoment : numFormatDate;
    return sheet.setCellFormatAt(row, col, handle.book().formatLike(sheet.cellFormatAt(row, col), numFormat));
}

}  // namespace

Area areaOf(const std::string& text) {
    const auto range = vellum::readCellRange(std::string_view(text));
    if (!range) throw py::value_error("'" + text + "' is no area of a sheet, as in A1:C9");
    return {static_cast<int>(range->rowFirst), static_cast<int>(range->rowLast), static_cast<int>(range->colFirst),
            static_cast<int>(range->colLast)};
}

Area usedPart(Sheet& sheet, const Area& area) {
    const Area used{std::max(area.rowFirst, 0), std::min(area.rowLast, sheet.lastRow() - 1), std::max(area.colFirst, 0),
                    std::min(area.colLast, sheet.lastCol() - 1)};
    return used.isEmpty() ? Area{} : used;
}

py::object cellValue(SheetHandle& handle, int row, int col, bool dates, const py::object& errorClass) {
    Sheet& sheet = handle.use();
    switch (sheet.cellType(row, col)) {
        case vellum::cellNumber: {
            const double number = sheet.readNumber(row, col);
            return dates && sheet.isDate(row, col) ? dateOrNumber(handle.book().use(), number) : py::float_(number);
        }
        case vellum::cellString:
            return pythonText(sheet.readString(row, col));
        case vellum::cellBoolean:
            return py::bool_(sheet.readBool(row, col));
        case vellum::cellError:
            return errorOf(sheet, row, col, errorClass);
        case vellum::cellDate:
            return isoDate(sheet, row, col);
        default:
            return py::none();
    }
}

void setCellValue(SheetHandle& handle, int row, int col, const py::object& value) {
    static const refhost::TypeRegistry types;
    refhost::TextArena texts;
    const MadeValue made = valueFrom(types, texts, hostTypeAny, value);
    const auto& any = static_cast<const refhost::UnionObject&>(*made.object);
    Sheet& sheet = handle.use();
    bool done = false;
    switch (any.holds) {
        case hostTypeAny:
            done = sheet.writeBlank(row, col, sheet.cellFormatAt(row, col));
            break;
        case hostTypeInteger:
            done = sheet.writeNumber(row, col, any.value.integer);
            break;
        case hostTypeReal:
            if (!std::isfinite(any.value.real)) throw py::value_error("a cell holds no infinity and no not-a-number");
            done = sheet.writeNumber(row, col, any.value.real);
            break;
        case hostTypeText:
            done = sheet.writeString(row, col, any.value.text);
            break;
        case hostTypeBoolean:
            done = sheet.writeBool(row, col, any.value.integer != 0);
            break;
        default:
            done = writeDate(handle, row, col, static_cast<const refhost::DateObject&>(*any.held).date);
    }
    handle.book().check(done);
}

py::array areaValues(SheetHandle& handle, const Area& area, bool dates, const py::object& errorClass) {
    const BookHandle::Pin pin(handle.book());
    Sheet& sheet = handle.use();
    if (area.rows() > 0 && area.columns() > mostCells / area.rows()) throw std::bad_alloc();
    const std::vector<py::ssize_t> shape{static_cast<py::ssize_t>(area.rows()),
                                         static_cast<py::ssize_t>(area.columns())};
    const Numbers found = numbersOf(sheet, area, dates);
    if (!found.others && !found.booleans) {
        py::array_t<double> made(shape);
        std::copy(found.values.begin(), found.values.end(), made.mutable_data());
        return made;
    }
    if (!found.others && !found.numbers && found.cells == found.values.size()) {
        py::array_t<bool> made(shape);
        std::transform(found.values.begin(), found.values.end(), made.mutable_data(),
                       [](double value) { return value != 0; });
        return made;
    }
    std::vector<py::object> cells(area.rows() * area.columns());
    forEachCell(sheet, area, [&](int row, int col) {
        cells[static_cast<std::size_t>(row - area.rowFirst) * area.columns() +
              static_cast<std::size_t>(col - area.colFirst)] = cellValue(handle, row, col, dates, errorClass);
    });
    return objectArray(area, cells);
}

py::array areaFormulas(SheetHandle& handle, const Area& area) {
    const BookHandle::Pin pin(handle.book());
    Sheet& sheet = handle.use();
    if (area.rows() > 0 && area.columns() > mostCells / area.rows()) throw std::bad_alloc();
    std::vector<py::object> cells(area.rows() * area.columns());
    forEachCell(sheet, area, [&](int row, int col) {
        if (sheet.isFormulaCell(row, col))
            cells[static_cast<std::size_t>(row - area.rowFirst) * area.columns() +
                  static_cast<std::size_t>(col - area.colFirst)] = pythonText(sheet.readFormula(row, col));
    });
    return objectArray(area, cells);
}

}  // namespace pyhost
