// The host's values as Python's.
#pragma once
#include <pybind11/pybind11.h>

#include <functional>

#include "hosts/python/values/known_objects.h"
#include "refhost/values/object.h"

namespace pyhost {

namespace py = pybind11;

/// The class whose instances stand for records of a type; called with the fields in order.
using RecordClasses = std::function<py::object(HostType)>;

/// Makes Python objects of values. One that makes many keeps texts that come again, which is most of them in a column;
/// so it must not outlive the values.
class ValueMaker {
public:
    ValueMaker(const refhost::TypeRegistry& types, RecordClasses classes)
        : _types(types), _classes(std::move(classes)) {}

    /// int, float, bool, str, a date, a record's class, or None for a null text and empty objects.
    py::object make(HostType type, HostValue value);

private:
    py::object makeObject(const refhost::Object* object);
    py::object makeText(const char* text);

    const refhost::TypeRegistry& _types;
    const RecordClasses _classes;
    KnownObjects _texts;
};

}  // namespace pyhost
