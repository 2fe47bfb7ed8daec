// Sets of the host as Python sees them.
#include "hosts/python/statements/container.h"

namespace pyhost {
namespace {

using refhost::Set;

void add(Container& self, py::handle object) {
    // The conversion runs Python's code, after which the set may be another one.
    MadeValue made = self.valueFrom(self.elementType(), object);
    if (!setOf(self.change()).addInitial(made.slot)) throw py::value_error("the set cannot take this element");
}

void addAll(Container& self, const py::iterable& objects) {
    for (const py::handle object : objects) add(self, object);
}

py::list elements(Container& self) {
    const Container::Pin pin(self);
    const Set& set = setOf(self.read());
    ValueMaker maker = self.core()->maker();
    py::list made;
    for (std::int64_t index = set.first(); index <= set.last(); ++index)
        made.append(maker.make(set.elementType(), set.element(static_cast<int>(index))));
    return made;
}

py::object element(Container& self, int place) {
    const Container::Pin pin(self);
    const Set& set = setOf(self.read());
    if (place < 0 || place >= set.size()) throw py::index_error("the set has no element of this number");
    return self.core()->maker().make(set.elementType(), set.element(set.first() + place));
}

py::object find(Container& self, py::handle key) {
    setOf(self.read());
    const auto index = self.find(setOf(self.read()), key);
    if (!index) return py::none();
    return py::int_(*index - setOf(self.read()).first());
}

py::array toNumpy(Container& self) {
    const Container::Pin pin(self);
    const Set& set = setOf(self.read());
    std::vector<HostValue> values;
    values.reserve(static_cast<std::size_t>(set.size()));
    for (std::int64_t index = set.first(); index <= set.last(); ++index)
        values.push_back(set.element(static_cast<int>(index)));
    ValueMaker maker = self.core()->maker();
    const ValueColumn column{values.data(), values.size(), sizeof(HostValue), nullptr};
    return columnArray(maker, self.core()->types(), set.elementType(), column, nullptr);
}

}  // namespace

void bindSets(py::class_<Container, ContainerPtr>& bound) {
    bound.def("set_add", add)
        .def("set_extend", addAll)
        .def("set_elements", elements)
        .def("set_element", element)
        .def("set_find", find, "Place of an element from 0, None when it is absent.")
        .def("set_numpy", toNumpy)
        .def_property_readonly("set_size", [](Container& self) { return setOf(self.read()).size(); })
        .def_property_readonly("set_first", [](Container& self) { return setOf(self.read()).first(); })
        .def_property_readonly("is_range", [](Container& self) { return setOf(self.read()).isRange(); })
        .def_property_readonly("set_dynamic", [](Container& self) { return setOf(self.read()).isDynamic(); });
}

}  // namespace pyhost
