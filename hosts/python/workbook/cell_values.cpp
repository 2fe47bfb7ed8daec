#include "hosts/python/workbook/cell_values.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "engine/facts/cell_address.h"
#include "engine/facts/error_text.h"
#include "hosts/python/values/dates.h"
#include "hosts/python/values/from_python.h"
#include "hosts/python/values/known_objects.h"
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

/// A date, or what `otherwise()` gives where Python has none, as for the 29th of February 1900 and the year 0.
template <class Otherwise>
py::object dateOr(const refhost::Date& date, Otherwise&& otherwise) {
    try {
        return pythonDate(date);
    } catch (py::error_already_set& error) {
        if (!error.matches(PyExc_ValueError)) throw;
        return otherwise();
    }
}

/// A number in a date format.
py::object dateOrNumber(Book& book, double number) {
    bool isDate = false;
    const refhost::Date date = dateOf(book, number, isDate);
    if (!isDate) return py::float_(number);
    return dateOr(date, [&]() -> py::object { return py::float_(number); });
}

py::object errorOf(Sheet& sheet, int row, int col, const py::object& errorClass) {
    const int code = sheet.readError(row, col);
    return errorClass(py::str(std::string(vellum::errorTextOf(code))));
}

py::object isoDate(Sheet& sheet, int row, int col) {
    const char* text = sheet.readString(row, col);
    if (text == nullptr) return py::none();
    const auto date = refhost::parseDate(text);
    return date ? dateOr(*date, [&] { return pythonText(text); }) : pythonText(text);
}

/// What many cells have in common. Texts are known by column, since those of one may all be different.
struct KnownValues {
    explicit KnownValues(std::size_t columns) : texts(std::clamp<std::size_t>(columns, 1, 64)) {}
    KnownTexts& textsOf(int col) { return texts[static_cast<std::size_t>(col) % texts.size()]; }

    std::vector<KnownTexts> texts;
    KnownObjects moments;
};

/// The value of a cell, which may be one of the known ones where they are given.
py::object valueOf(SheetHandle& handle, int row, int col, bool dates, const py::object& errorClass,
                   KnownValues* known) {
    Sheet& sheet = handle.use();
    switch (sheet.cellType(row, col)) {
        case vellum::cellNumber: {
            const double number = sheet.readNumber(row, col);
            if (!dates || !sheet.isDate(row, col)) return py::float_(number);
            const auto make = [&] { return dateOrNumber(handle.book().use(), number); };
            return known == nullptr ? make() : known->moments.find(std::bit_cast<std::uint64_t>(number), make);
        }
        case vellum::cellString: {
            const char* const text = sheet.readString(row, col);
            return known == nullptr || text == nullptr ? pythonText(text) : known->textsOf(col).find(text);
        }
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

/// Visits the cells of an area that are there, until `visit(row, col)` answers false.
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
        if (!visit(row, col)) return;
        ++col;
    }
}

std::size_t placeIn(const Area& area, int row, int col) {
    return static_cast<std::size_t>(row - area.rowFirst) * area.columns() +
           static_cast<std::size_t>(col - area.colFirst);
}

std::vector<py::ssize_t> shapeOf(const Area& area) {
    if (area.rows() > 0 && area.columns() > mostCells / area.rows()) throw std::bad_alloc();
    return {static_cast<py::ssize_t>(area.rows()), static_cast<py::ssize_t>(area.columns())};
}

/// An array of objects from those that `valueAt(row, col)` gives for the cells that are there, None for the others.
template <class ValueAt>
py::array objectArray(Sheet& sheet, const Area& area, ValueAt&& valueAt) {
    py::array made(py::dtype("O"), shapeOf(area));
    auto** const out = static_cast<PyObject**>(made.mutable_data());
    forEachCell(sheet, area, [&](int row, int col) {
        PyObject*& slot = out[placeIn(area, row, col)];
        PyObject* const before = std::exchange(slot, py::object(valueAt(row, col)).release().ptr());
        Py_XDECREF(before);
        return true;
    });
    for (py::ssize_t i = 0; i < made.size(); ++i)
        if (out[i] == nullptr) out[i] = py::none().release().ptr();
    return made;
}

/// Which kinds of cells an area has. Its numbers, and booleans as numbers, as long as there are no others.
struct Numbers {
    py::array_t<double> values;
    bool numbers = false, others = false, booleans = false;
    std::size_t cells = 0;
};

Numbers numbersOf(Sheet& sheet, const Area& area, bool dates) {
    Numbers found{py::array_t<double>(shapeOf(area))};
    double* const values = found.values.mutable_data();
    std::fill_n(values, found.values.size(), std::numeric_limits<double>::quiet_NaN());
    forEachCell(sheet, area, [&](int row, int col) {
        const int kind = sheet.cellType(row, col);
        if (kind == vellum::cellEmpty || kind == vellum::cellBlank) return true;
        ++found.cells;
        double& value = values[placeIn(area, row, col)];
        if (kind == vellum::cellNumber && !(dates && sheet.isDate(row, col))) {
            value = sheet.readNumber(row, col);
            found.numbers = true;
        } else if (kind == vellum::cellBoolean) {
            value = sheet.readBool(row, col);
            found.booleans = true;
        } else {
            found.others = true;
        }
        return !found.others && !(found.numbers && found.booleans);
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

/// A value of Python's as one of the type `any`.
class AnyValue {
public:
    explicit AnyValue(const py::object& value) {
        static const refhost::TypeRegistry types;
        _made = valueFrom(types, _texts, hostTypeAny, value);
    }
    const refhost::UnionObject* operator->() const {
        return static_cast<const refhost::UnionObject*>(_made.object.get());
    }

private:
    refhost::TextArena _texts;
    MadeValue _made;
};

double finite(double number) {
    if (!std::isfinite(number)) throw py::value_error("a cell holds no infinity and no not-a-number");
    return number;
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
    return valueOf(handle, row, col, dates, errorClass, nullptr);
}

void setCellValue(SheetHandle& handle, int row, int col, const py::object& value) {
    const AnyValue any(value);
    Sheet& sheet = handle.use();
    bool done = false;
    switch (any->holds) {
        case hostTypeAny:
            done = sheet.writeBlank(row, col, sheet.cellFormatAt(row, col));
            break;
        case hostTypeInteger:
            done = sheet.writeNumber(row, col, any->value.integer);
            break;
        case hostTypeReal:
            done = sheet.writeNumber(row, col, finite(any->value.real));
            break;
        case hostTypeText:
            done = sheet.writeString(row, col, any->value.text);
            break;
        case hostTypeBoolean:
            done = sheet.writeBool(row, col, any->value.integer != 0);
            break;
        default:
            done = writeDate(handle, row, col, static_cast<const refhost::DateObject&>(*any->held()).date);
    }
    handle.book().check(done);
}

void setCellFormula(SheetHandle& handle, int row, int col, const py::str& text, const py::object& value) {
    const std::string words(textOf(text));
    const AnyValue any(value);
    Sheet& sheet = handle.use();
    bool done = false;
    switch (any->holds) {
        case hostTypeAny:
            done = sheet.writeFormula(row, col, words.c_str());
            break;
        case hostTypeInteger:
            done = sheet.writeFormulaNumber(row, col, words.c_str(), any->value.integer);
            break;
        case hostTypeReal:
            done = sheet.writeFormulaNumber(row, col, words.c_str(), finite(any->value.real));
            break;
        case hostTypeText:
            done = sheet.writeFormulaText(row, col, words.c_str(), any->value.text);
            break;
        case hostTypeBoolean:
            done = sheet.writeFormulaBoolean(row, col, words.c_str(), any->value.integer != 0);
            break;
        default:
            throw py::type_error("a formula's value is a number, a text or a boolean");
    }
    handle.book().check(done);
}

py::array areaValues(SheetHandle& handle, const Area& area, bool dates, const py::object& errorClass) {
    const BookHandle::Pin pin(handle.book());
    Sheet& sheet = handle.use();
    Numbers found = numbersOf(sheet, area, dates);
    if (!found.others && !found.booleans) return std::move(found.values);
    const auto size = static_cast<std::size_t>(found.values.size());
    if (!found.others && !found.numbers && found.cells == size) {
        py::array_t<bool> made(shapeOf(area));
        std::transform(found.values.data(), found.values.data() + size, made.mutable_data(),
                       [](double value) { return value != 0; });
        return made;
    }
    found.values = {};
    KnownValues known(area.columns());
    return objectArray(sheet, area,
                       [&](int row, int col) { return valueOf(handle, row, col, dates, errorClass, &known); });
}

py::array areaFormulas(SheetHandle& handle, const Area& area) {
    const BookHandle::Pin pin(handle.book());
    Sheet& sheet = handle.use();
    return objectArray(sheet, area, [&](int row, int col) -> py::object {
        return sheet.isFormulaCell(row, col) ? pythonText(sheet.readFormula(row, col)) : py::none();
    });
}

}  // namespace pyhost
