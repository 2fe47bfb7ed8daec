// A source that a session holds open over several statements, and what was reported meanwhile.
#pragma once
#include <pybind11/pybind11.h>

#include <memory>
#include <string>
#include <vector>

#include "hosts/python/statements/session_core.h"
#include "refhost/operations/statement.h"

namespace pyhost {

/// What a context was told since it was last asked. Takes it away from there.
struct Reports {
    Reports() = default;
    explicit Reports(refhost::Context& context);
    /// (messages, pairs of code and text, the host's own)
    py::tuple asTuple() const;

    std::vector<std::string> messages;
    std::vector<refhost::DriverReport> driver;
    std::vector<std::string> own;
};

/// The driver of a source; a report to the context when there is none.
refhost::SourceName namedSource(refhost::Context& context, const std::string& source);

class OpenSource {
public:
    /// The source, None when it could not be opened, and the reports.
    static py::tuple open(const SessionCorePtr& core, int context, const py::str& source, bool update);
    ~OpenSource();
    OpenSource(const OpenSource&) = delete;
    OpenSource& operator=(const OpenSource&) = delete;

    bool isOpen() const { return _handle != nullptr; }
    /// What the driver's close answered, and the reports. Throws ValueError when it is closed already.
    py::tuple close();

private:
    OpenSource(SessionCorePtr core, int context, const refhost::Driver& driver, void* handle)
        : _core(std::move(core)), _context(context), _driver(driver), _handle(handle) {}
    int closeUnlocked();

    SessionCorePtr _core;
    int _context;
    const refhost::Driver& _driver;
    void* _handle;
};

}  // namespace pyhost
