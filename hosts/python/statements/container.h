// A scalar, set, list or array of the host in Python's hands.
#pragma once
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <memory>
#include <optional>
#include <vector>

#include "hosts/python/statements/session_core.h"
#include "hosts/python/values/from_python.h"
#include "hosts/python/values/numpy_columns.h"
#include "refhost/values/variable.h"

namespace pyhost {

class Container;
using ContainerPtr = std::shared_ptr<Container>;

/// Owns a variable of the host with the texts that Python gave it, and keeps its session's host and the sets that it
/// shares alive. Used under the interpreter's lock, but for the time of a statement, in which it is marked as busy and
/// every other use is refused with RuntimeError.
class Container : public std::enable_shared_from_this<Container> {
public:
    Container(SessionCorePtr core, std::unique_ptr<refhost::Variable> variable, std::vector<ContainerPtr> sets = {})
        : _core(std::move(core)), _variable(std::move(variable)), _sets(std::move(sets)) {}

    static ContainerPtr scalar(const SessionCorePtr& core, HostType type);
    static ContainerPtr set(const SessionCorePtr& core, HostType type, bool dynamic);
    static ContainerPtr range(const SessionCorePtr& core, int first, int last, bool dynamic);
    /// `word`: as hostListElemType gives it.
    static ContainerPtr list(const SessionCorePtr& core, HostType word, bool dynamic);
    static ContainerPtr array(const SessionCorePtr& core, std::vector<ContainerPtr> sets, HostType type, bool dynamic);
    /// A set, list or array that was never made.
    static ContainerPtr uninitialised(const SessionCorePtr& core, refhost::Form form, HostType word);

    /// What it is made of, for whoever does not change it. Throws RuntimeError while a statement has it.
    refhost::Variable& read() const;
    /// The same for a change; throws BufferError while arrays of NumPy look at its values.
    refhost::Variable& change() const;

    const SessionCorePtr& core() const { return _core; }
    const std::vector<ContainerPtr>& sets() const { return _sets; }
    const std::vector<ContainerPtr>& items() const { return _items; }
    void addItem(ContainerPtr item) { _items.push_back(std::move(item)); }
    HostType elementType() const { return _variable->elementType(); }
    refhost::Form form() const { return _variable->form; }
    refhost::TextArena& texts() { return _texts; }

    MadeValue valueFrom(HostType type, py::handle object) {
        return pyhost::valueFrom(_core->types(), _texts, type, object);
    }
    /// The index of an array's tuple, or of a set, from Python's key: nothing when it is none of the set's.
    std::optional<int> find(const refhost::Set& set, py::handle key) const;

    /// Takes another set for an index of an array: one with as many elements, whose places mean the same.
    void exchangeSet(std::size_t dimension, const ContainerPtr& set);

    /// The owner that an array of NumPy holds while it looks at the values.
    py::object lease();
    /// While a Pin lives the values can be looked at, whatever Python's code does meanwhile.
    class Pin {
    public:
        explicit Pin(Container& container);
        ~Pin();
        Pin(const Pin&) = delete;
        Pin& operator=(const Pin&) = delete;

    private:
        Container& _container;
    };
    /// For the time of a statement: the variable, whatever else goes on. Paired with leave().
    refhost::Variable& enter();
    void leave();

private:
    void refuseBusy() const;

    SessionCorePtr _core;
    refhost::TextArena _texts;
    std::unique_ptr<refhost::Variable> _variable;
    std::vector<ContainerPtr> _sets;   // the index sets of an array
    std::vector<ContainerPtr> _items;  // what a list of arrays holds
    int _leases = 0;                   // arrays of NumPy, and pins, that look at the values
    int _statements = 0;
};

/// The variable of a set, list or array; TypeError when it is another one, ValueError when it was never made.
refhost::Set& setOf(refhost::Variable& variable);
refhost::List& listOf(refhost::Variable& variable);
refhost::Array& arrayOf(refhost::Variable& variable);

void bindContainers(py::module_& module);
void bindLists(py::class_<Container, ContainerPtr>& bound);
void bindSets(py::class_<Container, ContainerPtr>& bound);
void bindArrays(py::class_<Container, ContainerPtr>& bound);

}  // namespace pyhost
