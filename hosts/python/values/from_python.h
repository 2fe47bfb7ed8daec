// Python's values as the host's.
#pragma once
#include <pybind11/pybind11.h>

#include "refhost/values/object.h"
#include "refhost/values/text_pool.h"

namespace pyhost {

namespace py = pybind11;

/// A value with the object that it points to, if any.
struct MadeValue {
    HostValue slot{};
    refhost::ObjectPtr object;

    /// The slot, whose object belongs to the caller now.
    HostValue release() {
        (void)object.release();
        return slot;
    }
};

/// The value of a Python object as one of a type; its texts go into `texts`. Whatever does not fit is a Python
/// exception: TypeError for another kind of thing, OverflowError for a number that does not fit, ValueError for a text
/// or date that cannot be.
///
/// integer: what has __index__, 32 bits. real: what has __float__, integers only when nothing is lost. text: str or
/// None. boolean: bool alone. date: see dateFrom. any: all of these, None and pandas.NA being the empty value. A
/// record takes a mapping with all of its fields, a sequence as long as the record, or an object with attributes of
/// the fields' names.
MadeValue valueFrom(const refhost::TypeRegistry& types, refhost::TextArena& texts, HostType type, py::handle object);

/// The number of what has __float__ or __index__. Throws OverflowError for an integer that is not exact.
double realFrom(py::handle object);

}  // namespace pyhost
