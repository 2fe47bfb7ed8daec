// Dates between Python's datetime and the host.
#pragma once
#include <pybind11/pybind11.h>

#include <cstdint>
#include <optional>

#include "refhost/values/date.h"

namespace pyhost {

namespace py = pybind11;

/// Makes the datetime classes known; called once, when the module is loaded.
void loadDates();

/// A date, a time or both from datetime.date, .time and .datetime (and their subclasses) or numpy.datetime64; None and
/// not-a-time are the empty date. Nothing when the object is none of these. Microseconds below a millisecond are cut.
/// Throws ValueError for times of a time zone, and for years that the host does not have.
std::optional<refhost::Date> dateFrom(py::handle object);

/// None, datetime.date, datetime.time or datetime.datetime. Throws ValueError for the year 0, which Python lacks.
py::object pythonDate(const refhost::Date& date);

/// Milliseconds since 1970, of a value that has a date.
std::int64_t epochMilliseconds(const refhost::Date& date);

}  // namespace pyhost
