#include "refhost/operations/module.h"

#include <dlfcn.h>

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>

#include "refhost/operations/host.h"

namespace refhost {
namespace {

constexpr const char* moduleFile = "quillet.dso";

template <class Function>
Function functionAt(const void* value) {
    return reinterpret_cast<Function>(const_cast<void*>(value));
}

Driver readDriver(const HostDriverRow& row) {
    Driver driver;
    driver.name = row.name;
    for (const HostServiceRow* op = row.ops; op->code != 0; ++op) {
        switch (op->code) {
            case hostOpOpen:
                driver.open = functionAt<HostOpenOp>(op->value);
                break;
            case hostOpClose:
                driver.close = functionAt<HostCloseOp>(op->value);
                break;
            case hostOpRead:
                driver.read = functionAt<HostReadOp>(op->value);
                break;
            case hostOpWrite:
                driver.write = functionAt<HostWriteOp>(op->value);
                break;
            case hostOpSize:
                driver.size = functionAt<HostSizeOp>(op->value);
                break;
            case hostOpUsage:
                driver.usage = static_cast<const char*>(op->value);
                break;
            default:
                break;
        }
    }
    return driver;
}

}  // namespace

Module& Module::load(const std::string& path, const std::string& catalogue) {
    static std::mutex mutex;
    static std::map<std::string, std::unique_ptr<Module>> loaded;
    const std::lock_guard lock(mutex);
    std::error_code ignored;
    const std::string key = std::filesystem::weakly_canonical(path, ignored).string();
    std::unique_ptr<Module>& module = loaded[key];
    if (!module) module.reset(new Module(path));
    if (!catalogue.empty()) {
        // The module does not hand on the catalogue's functions, but what it depends on is searched with it.
        const auto loadCatalogue = functionAt<int (*)(const char*)>(dlsym(module->_library, "LINGloadcatalogue"));
        if (!loadCatalogue) throw ModuleError("this module's message catalogue takes no texts from a file");
        if (const int line = loadCatalogue(catalogue.c_str()); line != 0)
            throw ModuleError("cannot load the catalogue '" + catalogue + "'" +
                              (line > 0 ? ": line " + std::to_string(line) + " is wrong" : ""));
    }
    if (!module->_initialised) module->initialise();
    return *module;
}

Module& Module::adopt(QuilletInit entry) {
    static Module linked(entry);
    if (!linked._initialised) linked.initialise();
    return linked;
}

Module::Module(const std::string& path) : _path(path) {
    // A bare file name would be looked for in the system's library folders.
    const std::string file = path.find('/') == path.npos ? "./" + path : path;
    _library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!_library) throw ModuleError("cannot load the module: " + std::string(dlerror()));
}

void Module::initialise() {
    const auto init = _entry ? _entry : functionAt<QuilletInit>(dlsym(_library, "quillet_init"));
    if (!init) throw ModuleError("'" + _path + "' is not a module: it has no quillet_init");
    int wantedInterface = 0;
    void* block = nullptr;
    if (init(&hostApiTable(), &wantedInterface, &_version, &block) != 0 || !block)
        throw ModuleError("the module '" + _path + "' refused to start");
    _initialised = true;
    _block = static_cast<const HostInterfaceBlock*>(block);
    if (wantedInterface > interfaceVersion)
        throw ModuleError("the module '" + _path + "' needs a later host: interface " +
                          std::to_string(wantedInterface));
    if (reinterpret_cast<std::intptr_t>(service(hostServiceLowestVersion)) > hostVersion)
        throw ModuleError("the module '" + _path + "' needs a later host");
    if (const auto check = functionAt<int (*)(int)>(service(hostServiceVersionCheck)); check && check(hostVersion) != 0)
        throw ModuleError("the module '" + _path + "' does not work with this version of the host");
    if (const auto ask = functionAt<void (*)(int, HostValue, int*)>(service(hostServiceAskVersion))) {
        int version = hostVersion;
        ask(0, HostValue{}, &version);
    }
    if (const auto* vendor = static_cast<const char*>(service(hostServiceVendor))) _vendor = vendor;
    if (const auto* row = static_cast<const HostDriverRow*>(service(hostServiceDrivers)))
        for (; row->name; ++row) _drivers.push_back(readDriver(*row));
}

Module::~Module() {
    if (_initialised)
        if (const auto shutdown = functionAt<int (*)()>(service(hostServiceShutdown))) shutdown();
    // Not unloaded: the process ends, and tools that name what leaked still need the module's symbols.
}

const void* Module::service(int code) const {
    const auto* row = static_cast<const HostServiceRow*>(_block->services.rows);
    for (int i = 0; i < _block->services.count; ++i)
        if (row[i].code == code) return row[i].value;
    return nullptr;
}

const Driver* Module::driver(std::string_view name) const {
    for (const Driver& driver : _drivers)
        if (driver.name == name) return &driver;
    return nullptr;
}

std::string findModule() {
    std::error_code failed;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", failed);
    if (failed) return {};
    const auto folder = program.parent_path();
    for (const auto& place :
         {folder / moduleFile, folder / QUILLET_MODULE_FOLDER / moduleFile, folder / "../host" / moduleFile})
        if (std::filesystem::exists(place, failed)) return place.lexically_normal().string();
    return {};
}

}  // namespace refhost
