#include "hosts/python/values/dates.h"

#include <datetime.h>

#include <chrono>
#include <string>

namespace pyhost {
namespace {

constexpr std::uint32_t msPerSecond = 1000, msPerMinute = 60 * msPerSecond, msPerHour = 60 * msPerMinute;

std::uint32_t millisecondOf(int hour, int minute, int second, int microsecond) {
    return static_cast<std::uint32_t>(hour) * msPerHour + static_cast<std::uint32_t>(minute) * msPerMinute +
           static_cast<std::uint32_t>(second) * msPerSecond + static_cast<std::uint32_t>(microsecond) / 1000;
}

void refuseZone(const PyObject* zone) {
    if (zone != Py_None) throw py::value_error("a time of a time zone has no place in a sheet");
}

refhost::Date calendarDay(PyObject* object) {
    refhost::Date date;
    date.hasDate = true;
    date.year = static_cast<std::int16_t>(PyDateTime_GET_YEAR(object));
    date.month = static_cast<std::uint8_t>(PyDateTime_GET_MONTH(object));
    date.day = static_cast<std::uint8_t>(PyDateTime_GET_DAY(object));
    return date;
}

bool isNotATime(py::handle object) {
    // pandas.NaT calls itself a datetime, with a year that is not a number.
    const char* name = Py_TYPE(object.ptr())->tp_name;
    return std::string_view(name) == "NaTType" || std::string_view(name) == "pandas._libs.tslibs.nattype.NaTType";
}

}  // namespace

void loadDates() {
    PyDateTime_IMPORT;
    if (PyDateTimeAPI == nullptr) throw py::error_already_set();
}

std::optional<refhost::Date> dateFrom(py::handle object) {
    PyObject* const o = object.ptr();
    if (o == Py_None || isNotATime(object)) return refhost::Date{};
    if (PyDateTime_Check(o)) {
        refuseZone(PyDateTime_DATE_GET_TZINFO(o));
        refhost::Date date = calendarDay(o);
        date.hasTime = true;
        date.millisecond = millisecondOf(PyDateTime_DATE_GET_HOUR(o), PyDateTime_DATE_GET_MINUTE(o),
                                         PyDateTime_DATE_GET_SECOND(o), PyDateTime_DATE_GET_MICROSECOND(o));
        return date;
    }
    if (PyDate_Check(o)) return calendarDay(o);
    if (PyTime_Check(o)) {
        refuseZone(PyDateTime_TIME_GET_TZINFO(o));
        refhost::Date date;
        date.hasTime = true;
        date.millisecond = millisecondOf(PyDateTime_TIME_GET_HOUR(o), PyDateTime_TIME_GET_MINUTE(o),
                                         PyDateTime_TIME_GET_SECOND(o), PyDateTime_TIME_GET_MICROSECOND(o));
        return date;
    }
    if (std::string_view(Py_TYPE(o)->tp_name) == "numpy.datetime64") {
        const py::object moment = object.attr("astype")("datetime64[us]").attr("item")();
        if (moment.is_none()) return refhost::Date{};
        // Microseconds of years far off come out as those of other years.
        const auto year = py::cast<std::int64_t>(object.attr("astype")("datetime64[Y]").attr("astype")("int64"));
        if (year < 1 - 1970 || year > 9999 - 1970)
            throw py::value_error("this date lies outside of the years 1 to 9999");
        return dateFrom(moment);
    }
    return std::nullopt;
}

py::object pythonDate(const refhost::Date& date) {
    if (!date.hasDate && !date.hasTime) return py::none();
    const int hour = static_cast<int>(date.millisecond / msPerHour);
    const int minute = static_cast<int>(date.millisecond % msPerHour / msPerMinute);
    const int second = static_cast<int>(date.millisecond % msPerMinute / msPerSecond);
    const int microsecond = static_cast<int>(date.millisecond % msPerSecond) * 1000;
    PyObject* made;
    if (!date.hasDate)
        made = PyTime_FromTime(hour, minute, second, microsecond);
    else if (!date.hasTime)
        made = PyDate_FromDate(date.year, date.month, date.day);
    else
        made = PyDateTime_FromDateAndTime(date.year, date.month, date.day, hour, minute, second, microsecond);
    if (made == nullptr) throw py::error_already_set();
    return py::reinterpret_steal<py::object>(made);
}

std::int64_t epochMilliseconds(const refhost::Date& date) {
    const std::chrono::year_month_day day{std::chrono::year(date.year), std::chrono::month(date.month),
                                          std::chrono::day(date.day)};
    return std::chrono::milliseconds(std::chrono::sys_days(day).time_since_epoch()).count() +
           (date.hasTime ? date.millisecond : 0);
}

}  // namespace pyhost
