// The module as a host sees it: loaded from a shared object, its tables read.
#pragma once
#include <stdexcept>
#include <string>
#include <vector>

#include "host/interface/host_api.h"

namespace refhost {

struct ModuleError : std::runtime_error {
    using runtime_error::runtime_error;
};

/// One row of the driver table. Operations that a driver does not have are null.
struct Driver {
    std::string name, usage;
    HostOpenOp open = nullptr;
    HostCloseOp close = nullptr;
    HostReadOp read = nullptr;
    HostWriteOp write = nullptr;
    HostSizeOp size = nullptr;
};

/// A loaded module. The process has at most one from each path, shared by its hosts, since the module keeps the table
/// of operations in a global; it is shut down when the process ends.
class Module {
public:
    /// Loads the module, or gives the one that is loaded already. The catalogue goes to the module's liblingua before
    /// quillet_init opens its message domain. Throws ModuleError with a text for people.
    static Module& load(const std::string& path, const std::string& catalogue);
    /// A module that the program is linked with, by its entry; one in a process.
    static Module& adopt(QuilletInit entry);
    ~Module();
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    const std::vector<Driver>& drivers() const { return _drivers; }
    /// Null when there is none of that name; case counts.
    const Driver* driver(std::string_view name) const;
    const std::string& vendor() const { return _vendor; }
    int version() const { return _version; }
    /// Value of a service, null when the table does not have it.
    const void* service(int code) const;

private:
    explicit Module(const std::string& path);
    explicit Module(QuilletInit entry) : _path("this program"), _entry(entry) {}
    void initialise();

    std::string _path, _vendor;
    void* _library = nullptr;      // null for one that the program is linked with
    QuilletInit _entry = nullptr;  // of such a one
    bool _initialised = false;
    int _version = 0;
    const HostInterfaceBlock* _block = nullptr;
    std::vector<Driver> _drivers;
};

/// Where the module lies when nobody tells: beside the program, where it is installed, or in ../host as in a build
/// tree. Empty when it is in none of these places.
std::string findModule();

}  // namespace refhost
