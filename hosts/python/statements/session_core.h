// A host for the statements of a Python session.
#pragma once
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "hosts/python/values/to_python.h"
#include "refhost/operations/host.h"
#include "refhost/operations/module.h"

namespace pyhost {

namespace py = pybind11;

/// The host with its contexts, which work at once on several threads, each on one at a time. Lives as long as a session
/// or a container of it.
class SessionCore {
public:
    // Indices and sets of objects are of aliases in the module's eyes. Every host has these two.
    static constexpr HostType dateIndexType = refhost::firstDeclaredType;
    static constexpr HostType anyIndexType = dateIndexType + 1;
    static constexpr HostType firstOwnType = anyIndexType + 1;

    /// Throws ModuleError when the module cannot be loaded.
    SessionCore(const std::string& module, const std::string& directory, const std::string& catalogue);

    refhost::Host& host() { return _host; }
    const refhost::TypeRegistry& types() const { return _host.types; }

    /// The lock of a context, which waits without the interpreter's.
    std::unique_lock<std::mutex> locked(int context);

    HostType addRecord(const std::string& name, const std::vector<std::pair<std::string, HostType>>& fields,
                       py::object madeOf);
    /// A maker of Python objects for values of this host.
    ValueMaker maker() const;

private:
    refhost::Host _host;
    std::mutex _mutex;
    std::map<int, std::mutex> _locks;
    std::map<HostType, py::object> _recordClasses;
};

using SessionCorePtr = std::shared_ptr<SessionCore>;

void bindSessions(py::module_& module);

}  // namespace pyhost
