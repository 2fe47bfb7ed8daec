#include "hosts/python/values/numpy_columns.h"

#include <limits>

#include "hosts/python/values/dates.h"

namespace pyhost {
namespace {

using refhost::Date;
using refhost::Object;
using refhost::ObjectKind;
using refhost::UnionObject;

constexpr std::int64_t notATime = std::numeric_limits<std::int64_t>::min();

template <class Number>
py::array view(const ValueColumn& column, const py::object& owner) {
    const std::vector<py::ssize_t> shape{static_cast<py::ssize_t>(column.count)};
    const std::vector<py::ssize_t> strides{static_cast<py::ssize_t>(column.stride)};
    py::array made(py::dtype::of<Number>(), shape, strides, column.first, owner);
    made.attr("flags").attr("writeable") = false;
    return made;
}

template <class Number, class Get>
py::array copied(std::size_t count, Get&& get) {
    py::array_t<Number> made(static_cast<py::ssize_t>(count));
    Number* const out = made.mutable_data();
    for (std::size_t i = 0; i < count; ++i) out[i] = get(i);
    return made;
}

py::array objects(ValueMaker& maker, HostType type, const ValueColumn& column) {
    py::array made(py::dtype("O"), std::vector<py::ssize_t>{static_cast<py::ssize_t>(column.count)});
    auto** const out = static_cast<PyObject**>(made.mutable_data());
    for (std::size_t i = 0; i < column.count; ++i) {
        PyObject* const before = out[i];
        out[i] = maker.make(type, column[i]).release().ptr();
        Py_XDECREF(before);
    }
    return made;
}

const Date* dateIn(const Object* object) {
    if (object == nullptr || object->kind != ObjectKind::date) return nullptr;
    return &static_cast<const refhost::DateObject*>(object)->date;
}

/// What stands in a slot of a date or of any: the date, null for none.
const Date* dateAt(HostValue value) {
    const auto* object = static_cast<const Object*>(value.object);
    if (object != nullptr && object->kind == ObjectKind::anyUnion)
        object = static_cast<const UnionObject*>(object)->held();
    return dateIn(object);
}

py::array moments(const ValueColumn& column) {
    py::array numbers = copied<std::int64_t>(column.count, [&](std::size_t i) {
        const Date* date = dateAt(column[i]);
        return date != nullptr && date->hasDate ? epochMilliseconds(*date) : notATime;
    });
    return numbers.attr("view")("datetime64[ms]");
}

/// Whether a column of dates has times without a day, for which datetime64 has no place.
bool hasBareTimes(const ValueColumn& column) {
    for (std::size_t i = 0; i < column.count; ++i) {
        const Date* date = dateAt(column[i]);
        if (date != nullptr && date->hasTime && !date->hasDate) return true;
    }
    return false;
}

/// What the values of a column of any have in common.
struct Kinds {
    bool empty = false, numbers = false, booleans = false, dates = false, others = false;

    explicit Kinds(const ValueColumn& column) {
        for (std::size_t i = 0; i < column.count; ++i) note(static_cast<const UnionObject*>(column[i].object));
    }
    void note(const UnionObject* any) {
        const HostType kind = any == nullptr ? HostType{hostTypeAny} : any->holds;
        if (kind == hostTypeAny)
            empty = true;
        else if (kind == hostTypeInteger || kind == hostTypeReal)
            numbers = true;
        else if (kind == hostTypeBoolean)
            booleans = true;
        else if (const Date* date = dateIn(any->held()); date != nullptr && date->hasDate)
            dates = true;
        else
            others = true;
    }
    bool onlyNumbers() const { return numbers && !booleans && !dates && !others; }
    bool onlyBooleans() const { return booleans && !empty && !numbers && !dates && !others; }
    bool onlyDates() const { return dates && !numbers && !booleans && !others; }
};

double numberIn(HostValue value) {
    const auto* any = static_cast<const UnionObject*>(value.object);
    if (any == nullptr || any->holds == hostTypeAny) return std::numeric_limits<double>::quiet_NaN();
    return any->holds == hostTypeInteger ? any->value.integer : any->value.real;
}

py::array columnOfAny(ValueMaker& maker, const ValueColumn& column) {
    const Kinds kinds(column);
    if (kinds.onlyNumbers()) return copied<double>(column.count, [&](std::size_t i) { return numberIn(column[i]); });
    if (kinds.onlyBooleans())
        return copied<bool>(column.count, [&](std::size_t i) {
            return static_cast<const UnionObject*>(column[i].object)->value.integer != 0;
        });
    if (kinds.onlyDates()) return moments(column);
    return objects(maker, hostTypeAny, column);
}

}  // namespace

py::array columnArray(ValueMaker& maker, const refhost::TypeRegistry& types, HostType type, const ValueColumn& column,
                      const std::function<py::object()>& owner) {
    const bool shared = owner && column.order == nullptr && column.count > 0;
    switch (types.resolve(type)) {
        case hostTypeReal:
            if (shared) return view<double>(column, owner());
            return copied<double>(column.count, [&](std::size_t i) { return column[i].real; });
        case hostTypeInteger:
            if (shared) return view<std::int32_t>(column, owner());
            return copied<std::int32_t>(column.count, [&](std::size_t i) { return column[i].integer; });
        case hostTypeBoolean:
            return copied<bool>(column.count, [&](std::size_t i) { return column[i].integer != 0; });
        case hostTypeAny:
            return columnOfAny(maker, column);
        case refhost::typeDate:
            return hasBareTimes(column) ? objects(maker, type, column) : moments(column);
        default:
            return objects(maker, type, column);
    }
}

}  // namespace pyhost
