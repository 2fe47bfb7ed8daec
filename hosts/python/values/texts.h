// Texts between Python and the host: UTF-8 without NUL on this side.
#pragma once
#include <pybind11/pybind11.h>

#include <string_view>

namespace pyhost {

namespace py = pybind11;

/// The text of a str, valid as long as the object. Throws TypeError for anything else, UnicodeEncodeError for lone
/// surrogates, ValueError for a NUL inside.
std::string_view textOf(py::handle object);

/// A str; None for null. Bytes that are no UTF-8 come out as lone surrogates, as os.fsdecode does it, so nothing is
/// lost.
py::object pythonText(const char* text);
py::str pythonText(std::string_view text);

}  // namespace pyhost
