#include "hosts/python/statements/container.h"

namespace pyhost {
namespace {

py::object scalarValue(Container& self) {
    const Container::Pin pin(self);
    const refhost::Variable& variable = self.read();
    if (variable.form != refhost::Form::scalar) throw py::type_error("this is no scalar");
    return self.core()->maker().make(variable.elementType(), variable.value);
}

void setScalar(Container& self, py::handle object) {
    MadeValue made = self.valueFrom(self.elementType(), object);
    refhost::Variable& variable = self.change();
    if (variable.form != refhost::Form::scalar) throw py::type_error("this is no scalar");
    variable.value = made.slot;
    variable.object = std::move(made.object);
}

bool isMade(Container& self) {
    const refhost::Variable& variable = self.read();
    return variable.form == refhost::Form::scalar || variable.set || variable.list || variable.array;
}

/// Whether another session's statements can write this: none of its types was declared by its own session.
bool isPortable(Container& self) {
    if (self.elementType() >= SessionCore::firstOwnType) return false;
    for (const ContainerPtr& set : self.sets())
        if (set->elementType() >= SessionCore::firstOwnType) return false;
    return self.items().empty();
}

}  // namespace

void bindContainers(py::module_& module) {
    py::enum_<refhost::Form>(module, "Form")
        .value("scalar", refhost::Form::scalar)
        .value("set", refhost::Form::set)
        .value("list", refhost::Form::list)
        .value("array", refhost::Form::array);
    py::class_<Container, ContainerPtr> bound(module, "Container", "A scalar, set, list or array of a session.");
    bound.def_static("scalar", Container::scalar)
        .def_static("set", Container::set)
        .def_static("range", Container::range)
        .def_static("list", Container::list)
        .def_static("array", Container::array)
        .def_static("uninitialised", Container::uninitialised)
        .def("scalar_value", scalarValue)
        .def("set_scalar", setScalar)
        .def_property_readonly("form", &Container::form)
        .def_property_readonly("element_type", &Container::elementType)
        .def_property_readonly("core", &Container::core)
        .def_property_readonly("is_made", isMade)
        .def_property_readonly("is_portable", isPortable);
    bindSets(bound);
    bindLists(bound);
    bindArrays(bound);
}

}  // namespace pyhost
