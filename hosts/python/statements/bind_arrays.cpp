// Arrays of the host as Python sees them.
#include <algorithm>
#include <limits>

#include "hosts/python/statements/entry_columns.h"

namespace pyhost {
namespace {

using refhost::Array;
using refhost::Set;

/// A key as the parts of a tuple: an array of one index takes the bare index as well.
py::tuple partsOf(py::handle key, int dims) {
    if (dims > 1 || PyTuple_Check(key.ptr())) {
        if (!PyTuple_Check(key.ptr()) || PyTuple_GET_SIZE(key.ptr()) != dims)
            throw py::type_error("a key of this array has " + std::to_string(dims) + " parts");
        return py::reinterpret_borrow<py::tuple>(key);
    }
    return py::make_tuple(key);
}

/// Nothing when the key is no tuple of the array's sets.
std::optional<std::vector<int>> tupleOf(Container& self, py::handle key) {
    const int dims = arrayOf(self.read()).dims();
    if (dims > 1 && !PyTuple_Check(key.ptr())) return std::nullopt;
    if (PyTuple_Check(key.ptr()) && PyTuple_GET_SIZE(key.ptr()) != dims) return std::nullopt;
    const py::tuple parts = partsOf(key, dims);
    std::vector<int> tuple;
    for (std::size_t d = 0; d < parts.size(); ++d) {
        const ContainerPtr set = self.sets()[d];  // alive, whatever the key's code does
        const auto index = self.find(setOf(set->read()), parts[d]);
        if (!index) return std::nullopt;
        tuple.push_back(*index);
    }
    return tuple;
}

py::object get(Container& self, py::handle key) {
    const auto tuple = tupleOf(self, key);
    const Container::Pin pin(self);  // records within records are made by Python's code
    Array& array = arrayOf(self.read());
    if (!tuple || !array.exists(tuple->data())) {
        PyErr_SetObject(PyExc_KeyError, key.ptr());
        throw py::error_already_set();
    }
    return self.core()->maker().make(array.elementType(), array.get(tuple->data()));
}

bool contains(Container& self, py::handle key) {
    const auto tuple = tupleOf(self, key);
    return tuple && arrayOf(self.read()).exists(tuple->data());
}

void put(Container& self, py::handle key, py::handle object) {
    const py::tuple parts = partsOf(key, arrayOf(self.read()).dims());
    std::vector<MadeValue> indices;
    for (std::size_t d = 0; d < parts.size(); ++d)
        indices.push_back(self.valueFrom(arrayOf(self.read()).sets()[d]->elementType(), parts[d]));
    MadeValue made = self.valueFrom(self.elementType(), object);
    Array& array = arrayOf(self.change());
    for (const ContainerPtr& set : self.sets()) set->change();
    std::vector<int> tuple;
    for (std::size_t d = 0; d < indices.size(); ++d) {
        const auto index = array.sets()[d]->add(indices[d].slot);
        if (!index) {
            PyErr_SetObject(PyExc_KeyError, key.ptr());
            throw py::error_already_set();
        }
        tuple.push_back(*index);
    }
    HostValue* slot = array.slot(tuple.data());
    if (slot == nullptr) throw py::value_error("the array cannot take this entry");
    if (made.object) delete static_cast<refhost::Object*>(slot->object);
    *slot = made.release();
}

/// Entries from pairs of a key and a value.
void fill(Container& self, const py::iterable& entries) {
    for (const py::handle entry : entries) {
        const auto pair = py::reinterpret_borrow<py::object>(entry);
        if (!PyTuple_Check(pair.ptr()) || PyTuple_GET_SIZE(pair.ptr()) != 2)
            throw py::type_error("an entry is a pair of a key and a value");
        put(self, PyTuple_GET_ITEM(pair.ptr(), 0), PyTuple_GET_ITEM(pair.ptr(), 1));
    }
}

/// Entries of an array of two ranges from 1, or of a range and a set, from numbers; not-a-number leaves its place out.
void fillMatrix(Container& self, const py::array_t<double, py::array::forcecast>& numbers, bool skipNotANumber) {
    Array& array = arrayOf(self.change());
    if (array.elementType() != hostTypeReal || numbers.ndim() != array.dims() || array.dims() != 2)
        throw py::type_error("the array does not take this");
    const auto view = numbers.unchecked<2>();
    int tuple[2];
    for (py::ssize_t i = 0; i < view.shape(0); ++i)
        for (py::ssize_t j = 0; j < view.shape(1); ++j) {
            const double number = view(i, j);
            if (skipNotANumber && number != number) continue;
            tuple[0] = static_cast<int>(i + 1);
            tuple[1] = static_cast<int>(j + 1);
            HostValue* slot = array.slot(tuple);
            if (slot == nullptr) throw py::value_error("the array cannot take this entry");
            slot->real = number;
        }
}

/// The slot at a row and column of a table, both from 0.
HostValue& cellOf(Array& array, std::size_t row, std::size_t column) {
    const int tuple[] = {static_cast<int>(row + 1), static_cast<int>(column + 1)};
    HostValue* slot = array.slot(tuple);
    if (slot == nullptr) throw py::value_error("the array cannot take this entry");
    return *slot;
}

void checkTable(Container& self, std::size_t rows, std::size_t column) {
    const Array& array = arrayOf(self.change());
    if (array.elementType() != hostTypeAny || array.dims() != 2) throw py::type_error("this is no table");
    if (rows != static_cast<std::size_t>(array.sets()[0]->size()) ||
        column >= static_cast<std::size_t>(array.sets()[1]->size()))
        throw py::index_error("the table has another size");
}

/// One column of an array of any over a range of rows and a set of columns. Not-a-number and None leave a cell empty.
void fillReals(Container& self, std::size_t column, const py::array_t<double>& numbers) {
    const auto view = numbers.unchecked<1>();
    const auto rows = static_cast<std::size_t>(view.shape(0));
    checkTable(self, rows, column);
    Array& array = arrayOf(self.change());
    for (std::size_t row = 0; row < rows; ++row) {
        HostValue number{};
        number.real = view(static_cast<py::ssize_t>(row));
        if (number.real != number.real) continue;
        static_cast<refhost::UnionObject*>(cellOf(array, row, column).object)->set(hostTypeReal, number);
    }
}

void fillObjects(Container& self, std::size_t column, const py::list& objects) {
    for (std::size_t row = 0; row < objects.size(); ++row) {
        const auto object = py::reinterpret_borrow<py::object>(objects[row]);
        if (object.is_none()) continue;
        MadeValue made = self.valueFrom(hostTypeAny, object);
        checkTable(self, objects.size(), column);  // the conversion may have run Python's code
        HostValue& cell = cellOf(arrayOf(self.change()), row, column);
        delete static_cast<refhost::Object*>(cell.object);
        cell = made.release();
    }
}

/// The elements of a set as Python's objects, made once for all entries that name them.
class Elements {
public:
    Elements(const Set& set, ValueMaker& maker) : _set(set) {
        if (set.isRange()) return;
        for (int index = set.first(); index <= set.last(); ++index)
            _made.push_back(maker.make(set.elementType(), set.element(index)));
    }
    py::object operator[](std::size_t place) const {
        if (_set.isRange()) return py::int_(std::int64_t{_set.first()} + static_cast<std::int64_t>(place));
        return _made[place];
    }

private:
    const Set& _set;
    std::vector<py::object> _made;
};

py::list keys(Container& self) {
    const Container::Pin pin(self);
    Array& array = arrayOf(self.read());
    const EntryColumns entries(array);
    ValueMaker maker = self.core()->maker();
    std::vector<Elements> elements;
    for (const Set* set : array.sets()) elements.emplace_back(*set, maker);
    const std::size_t dims = elements.size();
    py::list made(entries.count());
    for (std::size_t i = 0; i < entries.count(); ++i) {
        if (dims == 1) {
            made[i] = elements[0][entries.code(i, 0)];
            continue;
        }
        py::tuple key(dims);
        for (std::size_t d = 0; d < dims; ++d) key[d] = elements[d][entries.code(i, d)];
        made[i] = std::move(key);
    }
    return made;
}

py::list values(Container& self) {
    const Container::Pin pin(self);
    const EntryColumns entries(arrayOf(self.read()));
    ValueMaker maker = self.core()->maker();
    py::list made(entries.count());
    for (std::size_t i = 0; i < entries.count(); ++i) made[i] = maker.make(self.elementType(), entries.values()[i]);
    return made;
}

py::array toNumpy(Container& self) {
    const Container::Pin pin(self);
    const EntryColumns entries(arrayOf(self.read()));
    ValueMaker maker = self.core()->maker();
    const std::function<py::object()> owner = [&] { return self.lease(); };
    return columnArray(maker, self.core()->types(), self.elementType(), entries.values(),
                       entries.areCopied() ? nullptr : owner);
}

py::array field(Container& self, std::size_t number) {
    const refhost::TypeInfo* info = self.core()->types().resolved(self.elementType());
    if (info == nullptr || info->classWord != hostClassRecord || number >= info->fields.size())
        throw py::index_error("there is no such field");
    const Container::Pin pin(self);
    const EntryColumns entries(arrayOf(self.read()));
    std::vector<HostValue> fields;
    for (std::size_t i = 0; i < entries.count(); ++i) {
        const auto* record = static_cast<const refhost::RecordObject*>(entries.values()[i].object);
        fields.push_back(record == nullptr ? HostValue{} : record->fields[number]);
    }
    ValueMaker maker = self.core()->maker();
    const ValueColumn column{fields.data(), fields.size(), sizeof(HostValue), nullptr};
    return columnArray(maker, self.core()->types(), info->fields[number].type, column, nullptr);
}

/// Places of the entries' elements in the set of a dimension, from 0.
py::array_t<std::int32_t> codes(Container& self, std::size_t dimension) {
    const EntryColumns entries(arrayOf(self.read()));
    if (dimension >= self.sets().size()) throw py::index_error("the array has no such index");
    py::array_t<std::int32_t> made(static_cast<py::ssize_t>(entries.count()));
    std::int32_t* const out = made.mutable_data();
    for (std::size_t i = 0; i < entries.count(); ++i) out[i] = static_cast<std::int32_t>(entries.code(i, dimension));
    return made;
}

/// The columns of an array of a range of rows and a set of columns, each with a value or an empty one for every row.
py::list columns(Container& self) {
    const Container::Pin pin(self);
    Array& array = arrayOf(self.read());
    if (array.dims() != 2) throw py::type_error("only an array of two indices has columns");
    const EntryColumns entries(array);
    const auto rows = static_cast<std::size_t>(array.sets()[0]->size());
    const auto width = static_cast<std::size_t>(array.sets()[1]->size());
    if (width > 0 && rows > EntryColumns::mostEntries / width) throw std::bad_alloc();
    const HostType type = array.elementType();
    HostValue missing{};
    if (type == hostTypeReal) missing.real = std::numeric_limits<double>::quiet_NaN();
    std::vector<HostValue> cells(rows * width, missing);
    for (std::size_t i = 0; i < entries.count(); ++i)
        cells[entries.code(i, 1) * rows + entries.code(i, 0)] = entries.values()[i];
    ValueMaker maker = self.core()->maker();
    py::list made;
    for (std::size_t column = 0; column < width; ++column)
        made.append(columnArray(maker, self.core()->types(), type,
                                {cells.data() + column * rows, rows, sizeof(HostValue), nullptr}, nullptr));
    return made;
}

}  // namespace

void bindArrays(py::class_<Container, ContainerPtr>& bound) {
    bound.def("array_get", get)
        .def("array_contains", contains)
        .def("array_put", put)
        .def("array_fill", fill)
        .def("array_fill_matrix", fillMatrix)
        .def("array_fill_reals", fillReals)
        .def("array_fill_objects", fillObjects)
        .def("array_keys", keys)
        .def("array_values", values)
        .def("array_numpy", toNumpy)
        .def("array_field", field)
        .def("array_codes", codes)
        .def("array_columns", columns)
        .def("array_exchange_set", &Container::exchangeSet)
        .def_property_readonly("array_size",
                               [](Container& self) { return EntryColumns::countOf(arrayOf(self.read())); })
        .def_property_readonly("array_dynamic", [](Container& self) { return arrayOf(self.read()).isDynamic(); })
        .def_property_readonly("array_sets", [](Container& self) { return self.sets(); });
}

}  // namespace pyhost
