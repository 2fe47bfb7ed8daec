#include "hosts/python/values/texts.h"

namespace pyhost {

std::string_view textOf(py::handle object) {
    if (!PyUnicode_Check(object.ptr()))
        throw py::type_error("a text is needed, not '" + std::string(Py_TYPE(object.ptr())->tp_name) + "'");
    Py_ssize_t size = 0;
    const char* bytes = PyUnicode_AsUTF8AndSize(object.ptr(), &size);
    if (bytes == nullptr) throw py::error_already_set();
    const std::string_view text(bytes, static_cast<std::size_t>(size));
    if (text.find('\0') != text.npos) throw py::value_error("embedded null character in a text");
    return text;
}

py::object pythonText(const char* text) {
    if (text == nullptr) return py::none();
    return pythonText(std::string_view(text));
}

py::str pythonText(std::string_view text) {
    PyObject* made = PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "surrogateescape");
    if (made == nullptr) throw py::error_already_set();
    return py::reinterpret_steal<py::str>(made);
}

}  // namespace pyhost
