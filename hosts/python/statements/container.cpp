#include "hosts/python/statements/container.h"

#include <limits>

namespace pyhost {
namespace {

ContainerPtr made(const SessionCorePtr& core, std::unique_ptr<refhost::Variable> variable,
                  std::vector<ContainerPtr> sets = {}) {
    return std::make_shared<Container>(core, std::move(variable), std::move(sets));
}

}  // namespace

ContainerPtr Container::scalar(const SessionCorePtr& core, HostType type) {
    return made(core, refhost::Variable::scalar(core->types(), "", type));
}

ContainerPtr Container::set(const SessionCorePtr& core, HostType type, bool dynamic) {
    return made(core, refhost::Variable::ofSet("", std::make_unique<refhost::Set>(core->types(), type, dynamic)));
}

ContainerPtr Container::range(const SessionCorePtr& core, int first, int last, bool dynamic) {
    auto set = std::make_unique<refhost::Set>(core->types(), first, last, dynamic);
    if (first <= last && set->size() == 0) throw py::value_error("a range has less than 2**31 - 1 integers");
    return made(core, refhost::Variable::ofSet("", std::move(set)));
}

ContainerPtr Container::list(const SessionCorePtr& core, HostType word, bool dynamic) {
    return made(core, refhost::Variable::ofList("", std::make_unique<refhost::List>(core->types(), word, dynamic)));
}

ContainerPtr Container::array(const SessionCorePtr& core, std::vector<ContainerPtr> sets, HostType type, bool dynamic) {
    if (sets.empty()) throw py::value_error("an array has at least one index set");
    std::vector<refhost::Set*> plain;
    for (const ContainerPtr& set : sets) {
        if (set->core() != core) throw py::value_error("an index set belongs to the session of its array");
        plain.push_back(&setOf(set->read()));
    }
    return made(core,
                refhost::Variable::ofArray(
                    "", std::make_unique<refhost::Array>(core->types(), std::move(plain), type, dynamic)),
                std::move(sets));
}

ContainerPtr Container::uninitialised(const SessionCorePtr& core, refhost::Form form, HostType word) {
    return made(core, refhost::Variable::uninitialised("", form, word));
}

void Container::refuseBusy() const {
    if (_statements > 0) throw std::runtime_error("a statement on another thread is at work on this");
    for (const ContainerPtr& set : _sets) set->refuseBusy();
}

refhost::Variable& Container::read() const {
    refuseBusy();
    return *_variable;
}

refhost::Variable& Container::change() const {
    refuseBusy();
    if (_leases > 0)
        throw py::buffer_error("something still looks at these values: drop or copy the arrays of NumPy that do");
    return *_variable;
}

refhost::Variable& Container::enter() {
    ++_statements;
    for (const ContainerPtr& set : _sets) set->enter();
    for (const ContainerPtr& item : _items) item->enter();
    return *_variable;
}

void Container::leave() {
    --_statements;
    for (const ContainerPtr& set : _sets) set->leave();
    for (const ContainerPtr& item : _items) item->leave();
}

void Container::exchangeSet(std::size_t dimension, const ContainerPtr& set) {
    refhost::Array& array = arrayOf(change());
    refhost::Set& other = setOf(set->read());
    if (set->core() != _core) throw py::value_error("this belongs to another session");
    if (dimension >= _sets.size() || !array.exchangeSet(dimension, other))
        throw py::value_error("this set cannot stand for the array's");
    _sets[dimension] = set;
}

py::object Container::lease() {
    ++_leases;
    auto* kept = new ContainerPtr(shared_from_this());
    return py::capsule(kept, [](void* pointer) {
        auto* const owner = static_cast<ContainerPtr*>(pointer);
        --(*owner)->_leases;
        delete owner;
    });
}

Container::Pin::Pin(Container& container) : _container(container) {
    container.refuseBusy();
    ++container._leases;
    for (const ContainerPtr& set : container._sets) ++set->_leases;
}

Container::Pin::~Pin() {
    --_container._leases;
    for (const ContainerPtr& set : _container._sets) --set->_leases;
}

std::optional<int> Container::find(const refhost::Set& set, py::handle key) const {
    refhost::TextArena texts;
    const HostType type = set.elementType();
    try {
        const MadeValue made = pyhost::valueFrom(_core->types(), texts, type, key);
        refuseBusy();  // the conversion may have run Python's code
        return set.find(made.slot);
    } catch (py::error_already_set& error) {  // what cannot be an element is none
        if (!error.matches(PyExc_TypeError) && !error.matches(PyExc_OverflowError) && !error.matches(PyExc_ValueError))
            throw;
    } catch (const py::type_error&) {
    } catch (const py::value_error&) {
    }
    return std::nullopt;
}

refhost::Set& setOf(refhost::Variable& variable) {
    if (variable.form != refhost::Form::set) throw py::type_error("this is no set");
    if (!variable.set) throw py::value_error("this set was never made");
    return *variable.set;
}

refhost::List& listOf(refhost::Variable& variable) {
    if (variable.form != refhost::Form::list) throw py::type_error("this is no list");
    if (!variable.list) throw py::value_error("this list was never made");
    return *variable.list;
}

refhost::Array& arrayOf(refhost::Variable& variable) {
    if (variable.form != refhost::Form::array) throw py::type_error("this is no array");
    if (!variable.array) throw py::value_error("this array was never made");
    return *variable.array;
}

}  // namespace pyhost
