// Lists of the host as Python sees them.
#include "hosts/python/statements/container.h"

namespace pyhost {
namespace {

using refhost::List;
using refhost::ListItem;

/// The type of a list's elements; `any` for a list of arrays.
HostType elementOf(const List& list) {
    return list.elementWord() & hostTypeMask;
}

void append(Container& self, py::handle object) {
    const HostType type = elementOf(listOf(self.read()));
    MadeValue made = self.valueFrom(type, object);
    // The list copies objects.
    if (!listOf(self.change()).append(type, made.slot)) throw py::type_error("the list does not take this");
}

void extend(Container& self, const py::iterable& objects) {
    for (const py::handle object : objects) append(self, object);
}

void appendContainer(Container& self, const ContainerPtr& item) {
    refhost::Variable& variable = item->read();
    if (item->core() != self.core()) throw py::value_error("this belongs to another session");
    if (item.get() == &self || !item->items().empty()) throw py::value_error("a list cannot hold a list of containers");
    const bool scalar = variable.form == refhost::Form::scalar;
    const HostValue slot = scalar ? variable.value : variable.slot();
    if (!listOf(self.change()).append(variable.word(), slot)) throw py::type_error("the list does not take this");
    self.addItem(item);
}

/// Numbers of an array of NumPy, of any strides, in one go.
template <class Number>
void extendNumbers(Container& self, const py::array_t<Number>& numbers) {
    List& list = listOf(self.change());
    const auto view = numbers.template unchecked<1>();
    const HostType type = elementOf(list);
    for (py::ssize_t i = 0; i < view.shape(0); ++i) {
        HostValue slot{};
        if constexpr (std::is_same_v<Number, double>)
            slot.real = view(i);
        else
            slot.integer = static_cast<std::int32_t>(view(i));
        if (!list.append(type, slot)) throw py::type_error("the list does not take this");
    }
}

std::size_t size(Container& self) {
    return listOf(self.read()).items().size();
}

/// Containers come back as the objects that they were put in as.
py::object itemObject(Container& self, ValueMaker& maker, const ListItem& item) {
    for (const ContainerPtr& known : self.items()) {
        refhost::Variable& variable = known->read();
        if (variable.form != refhost::Form::scalar && variable.slot().object == item.value.object)
            return py::cast(known);
    }
    return maker.make(item.type, item.value);
}

bool holdsContainers(const ListItem& item) {
    const HostType bits = item.type & hostClassMask;
    return bits == hostClassArray || bits == hostClassSet || bits == hostClassList;
}

py::object valueOf(Container& self, ValueMaker& maker, const ListItem& item) {
    if (holdsContainers(item)) return item.value.object == nullptr ? py::none() : itemObject(self, maker, item);
    return maker.make(item.type, item.value);
}

py::list values(Container& self) {
    const Container::Pin pin(self);
    const auto& items = listOf(self.read()).items();
    ValueMaker maker = self.core()->maker();
    py::list made(items.size());
    for (std::size_t i = 0; i < items.size(); ++i) made[i] = valueOf(self, maker, items[i]);
    return made;
}

py::object value(Container& self, std::size_t place) {
    const Container::Pin pin(self);
    const auto& items = listOf(self.read()).items();
    if (place >= items.size()) throw py::index_error("the list has no item of this number");
    ValueMaker maker = self.core()->maker();
    return valueOf(self, maker, items[place]);
}

py::array toNumpy(Container& self) {
    const Container::Pin pin(self);
    const List& list = listOf(self.read());
    if (list.isOfArrays()) throw py::type_error("a list of arrays is no column");
    const auto& items = list.items();
    ValueColumn column;
    if (!items.empty()) column.first = &items.front().value;
    column.count = items.size();
    column.stride = sizeof(ListItem);
    ValueMaker maker = self.core()->maker();
    return columnArray(maker, self.core()->types(), elementOf(list), column, [&] { return self.lease(); });
}

/// One field of a list of records.
py::array field(Container& self, std::size_t number) {
    const Container::Pin pin(self);
    const List& list = listOf(self.read());
    const refhost::TypeInfo* info = self.core()->types().resolved(elementOf(list));
    if (info == nullptr || info->classWord != hostClassRecord || number >= info->fields.size())
        throw py::index_error("there is no such field");
    std::vector<HostValue> fields;
    fields.reserve(list.items().size());
    for (const ListItem& item : list.items())
        fields.push_back(static_cast<const refhost::RecordObject*>(item.value.object)->fields[number]);
    ValueMaker maker = self.core()->maker();
    const ValueColumn column{fields.data(), fields.size(), sizeof(HostValue), nullptr};
    return columnArray(maker, self.core()->types(), info->fields[number].type, column, nullptr);
}

}  // namespace

void bindLists(py::class_<Container, ContainerPtr>& bound) {
    bound.def("list_append", append)
        .def("list_extend", extend)
        .def("list_append_container", appendContainer)
        .def("list_extend_reals", extendNumbers<double>)
        .def("list_extend_integers", extendNumbers<std::int32_t>)
        .def("list_values", values)
        .def("list_value", value)
        .def("list_numpy", toNumpy)
        .def("list_field", field)
        .def_property_readonly("list_size", size);
}

}  // namespace pyhost
