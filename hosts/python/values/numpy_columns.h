// Columns of values as NumPy arrays.
#pragma once
#include <pybind11/numpy.h>

#include <cstdint>
#include <vector>

#include "hosts/python/values/to_python.h"

namespace pyhost {

/// Values at equal distances in memory, or those that `order` names.
struct ValueColumn {
    const HostValue* first = nullptr;
    std::size_t count = 0;
    std::size_t stride = sizeof(HostValue);  // bytes
    const std::vector<std::uint32_t>* order = nullptr;

    HostValue operator[](std::size_t i) const {
        const std::size_t place = order != nullptr ? (*order)[i] : i;
        return *reinterpret_cast<const HostValue*>(reinterpret_cast<const char*>(first) + place * stride);
    }
};

/// A column as an array: float64, int32, bool, datetime64[ms] for dates with a day, objects for texts, records and all
/// else. A column of any becomes float64 when numbers alone are in it, with not-a-number for the empty ones, bool or
/// datetime64 likewise, and objects when it is mixed.
///
/// Numbers of a column without an order are not copied: the array looks at the values, read-only, and keeps `owner`
/// alive. Null owner: always a copy.
py::array columnArray(ValueMaker& maker, const refhost::TypeRegistry& types, HostType type, const ValueColumn& column,
                      const std::function<py::object()>& owner);

}  // namespace pyhost
