#include "hosts/python/values/from_python.h"

#include <cmath>
#include <limits>
#include <string>

#include "hosts/python/values/dates.h"
#include "hosts/python/values/texts.h"

namespace pyhost {
namespace {

using refhost::RecordObject;
using refhost::TypeInfo;
using refhost::UnionObject;

constexpr double exactIntegers = 9007199254740992.0;  // 2^53: from there on a double skips integers

std::string kindOf(py::handle object) {
    return "'" + std::string(Py_TYPE(object.ptr())->tp_name) + "'";
}

bool isBool(py::handle object) {
    if (PyBool_Check(object.ptr())) return true;
    const std::string_view name = Py_TYPE(object.ptr())->tp_name;
    return name == "numpy.bool_" || name == "numpy.bool";
}

bool boolFrom(py::handle object) {
    if (!isBool(object)) throw py::type_error("a boolean is needed, not " + kindOf(object));
    const int truth = PyObject_IsTrue(object.ptr());
    if (truth < 0) throw py::error_already_set();
    return truth != 0;
}

py::object indexOf(py::handle object) {
    PyObject* made = PyNumber_Index(object.ptr());
    if (made == nullptr) throw py::error_already_set();
    return py::reinterpret_steal<py::object>(made);
}

[[noreturn]] void raise(PyObject* kind, const std::string& text) {
    PyErr_SetString(kind, text.c_str());
    throw py::error_already_set();
}

std::int32_t integerFrom(py::handle object) {
    const py::object index = indexOf(object);
    int overflow = 0;
    const long long value = PyLong_AsLongLongAndOverflow(index.ptr(), &overflow);
    if (value == -1 && PyErr_Occurred() != nullptr) throw py::error_already_set();
    if (overflow != 0 || value < std::numeric_limits<std::int32_t>::min() ||
        value > std::numeric_limits<std::int32_t>::max())
        raise(PyExc_OverflowError, "an integer of a sheet has 32 bits");
    return static_cast<std::int32_t>(value);
}

double realOfInteger(py::handle index) {
    const double value = PyLong_AsDouble(index.ptr());
    if (value == -1 && PyErr_Occurred() != nullptr) throw py::error_already_set();
    if (std::fabs(value) < exactIntegers) return value;
    PyObject* back = PyLong_FromDouble(value);
    if (back == nullptr) throw py::error_already_set();
    const py::object whole = py::reinterpret_steal<py::object>(back);
    if (!whole.equal(index)) raise(PyExc_OverflowError, "this integer is not exact as a number of a sheet");
    return value;
}

HostType kindInUnion(py::handle object, HostValue& slot, refhost::TextArena& texts) {
    PyObject* const o = object.ptr();
    if (isBool(object)) {
        slot.integer = boolFrom(object);
        return hostTypeBoolean;
    }
    if (PyUnicode_Check(o)) {
        slot.text = texts.keep(textOf(object));
        return hostTypeText;
    }
    if (PyFloat_Check(o)) {
        slot.real = PyFloat_AS_DOUBLE(o);
        return hostTypeReal;
    }
    if (PyIndex_Check(o)) {
        const py::object index = indexOf(object);
        int overflow = 0;
        const long long value = PyLong_AsLongLongAndOverflow(index.ptr(), &overflow);
        if (overflow == 0 && value == static_cast<std::int32_t>(value)) {
            slot.integer = static_cast<std::int32_t>(value);
            return hostTypeInteger;
        }
        slot.real = realOfInteger(index);
        return hostTypeReal;
    }
    slot.real = realFrom(object);
    return hostTypeReal;
}

bool isMissing(py::handle object) {
    if (object.is_none()) return true;
    const std::string_view name = Py_TYPE(object.ptr())->tp_name;
    return name == "NAType" || name == "pandas._libs.missing.NAType";
}

void fillUnion(const refhost::TypeRegistry& types, refhost::TextArena& texts, UnionObject& any, py::handle object) {
    if (isMissing(object)) return;
    if (const auto date = dateFrom(object)) {
        if (!date->hasDate && !date->hasTime) return;
        refhost::ObjectPtr held = createObject(types, refhost::typeDate);
        static_cast<refhost::DateObject&>(*held).date = *date;
        any.set(std::move(held));
        return;
    }
    HostValue slot{};
    const HostType kind = kindInUnion(object, slot, texts);
    any.set(kind, slot);
}

/// The value of a field: by its name from a mapping or an object, by its place from a sequence.
py::object fieldOf(py::handle object, const TypeInfo& info, std::size_t field) {
    const std::string& name = info.fields[field].name;
    if (PyDict_Check(object.ptr()) || !PySequence_Check(object.ptr())) {
        if (PyMapping_Check(object.ptr()) != 0) return object[pythonText(std::string_view(name))];
        PyObject* value = PyObject_GetAttrString(object.ptr(), name.c_str());
        if (value == nullptr) throw py::error_already_set();
        return py::reinterpret_steal<py::object>(value);
    }
    PyObject* value = PySequence_GetItem(object.ptr(), static_cast<Py_ssize_t>(field));
    if (value == nullptr) throw py::error_already_set();
    return py::reinterpret_steal<py::object>(value);
}

void fillRecord(const refhost::TypeRegistry& types, refhost::TextArena& texts, RecordObject& record,
                py::handle object) {
    if (PyUnicode_Check(object.ptr()) || object.is_none())
        throw py::type_error("a record is needed, not " + kindOf(object));
    if (!PyDict_Check(object.ptr()) && PySequence_Check(object.ptr())) {
        const Py_ssize_t size = PySequence_Size(object.ptr());
        if (size < 0) throw py::error_already_set();
        if (static_cast<std::size_t>(size) != record.fields.size())
            throw py::value_error("a record of " + std::to_string(record.fields.size()) + " fields is needed, not of " +
                                  std::to_string(size));
    }
    for (std::size_t i = 0; i < record.fields.size(); ++i) {
        const HostType type = record.info.fields[i].type;
        MadeValue field = valueFrom(types, texts, type, fieldOf(object, record.info, i));
        if (!refhost::isBaseType(type)) delete static_cast<refhost::Object*>(record.fields[i].object);
        record.fields[i] = field.release();
    }
}

MadeValue objectFrom(const refhost::TypeRegistry& types, refhost::TextArena& texts, const TypeInfo& info, HostType type,
                     py::handle object) {
    MadeValue made;
    made.object = createObject(types, type);
    if (!made.object) throw py::type_error("there are no values of this type");
    made.slot.object = made.object.get();
    if (info.number == refhost::typeDate) {
        const auto date = dateFrom(object);
        if (!date) throw py::type_error("a date or time is needed, not " + kindOf(object));
        static_cast<refhost::DateObject&>(*made.object).date = *date;
    } else if (info.classWord == hostClassUnion) {
        fillUnion(types, texts, static_cast<UnionObject&>(*made.object), object);
    } else {
        fillRecord(types, texts, static_cast<RecordObject&>(*made.object), object);
    }
    return made;
}

}  // namespace

double realFrom(py::handle object) {
    if (PyFloat_Check(object.ptr())) return PyFloat_AS_DOUBLE(object.ptr());
    if (PyIndex_Check(object.ptr())) return realOfInteger(indexOf(object));
    const double value = PyFloat_AsDouble(object.ptr());
    if (value == -1 && PyErr_Occurred() != nullptr) throw py::error_already_set();
    return value;
}

MadeValue valueFrom(const refhost::TypeRegistry& types, refhost::TextArena& texts, HostType type, py::handle object) {
    const TypeInfo* info = types.resolved(type);
    if (info == nullptr) throw py::type_error("there is no such type");
    MadeValue made;
    switch (info->number) {
        case hostTypeInteger:
            made.slot.integer = integerFrom(object);
            return made;
        case hostTypeReal:
            made.slot.real = realFrom(object);
            return made;
        case hostTypeBoolean:
            made.slot.integer = boolFrom(object);
            return made;
        case hostTypeText:
            if (!object.is_none()) made.slot.text = texts.keep(textOf(object));
            return made;
        default:
            return objectFrom(types, texts, *info, type, object);
    }
}

}  // namespace pyhost
