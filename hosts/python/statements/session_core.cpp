#include "hosts/python/statements/session_core.h"

namespace pyhost {

SessionCore::SessionCore(const std::string& module, const std::string& directory, const std::string& catalogue)
    : _host(directory) {
    _host.types.addAlias("date", refhost::typeDate);
    _host.types.addAlias("any", hostTypeAny);
    const py::gil_scoped_release unlocked;
    _host.load(module, catalogue);
    _host.context(1);
}

std::unique_lock<std::mutex> SessionCore::locked(int context) {
    std::mutex* mutex;
    {
        const std::lock_guard guard(_mutex);
        mutex = &_locks[context];
    }
    std::unique_lock lock(*mutex, std::try_to_lock);
    if (!lock) {
        const py::gil_scoped_release unlocked;
        lock.lock();
    }
    return lock;
}

HostType SessionCore::addRecord(const std::string& name, const std::vector<std::pair<std::string, HostType>>& fields,
                                py::object madeOf) {
    std::vector<refhost::RecordField> list;
    for (const auto& [field, type] : fields) list.push_back({field, type});
    const HostType type = _host.types.addRecord(name, std::move(list));
    _recordClasses[type] = std::move(madeOf);
    return type;
}

ValueMaker SessionCore::maker() const {
    return ValueMaker(_host.types, [this](HostType type) { return _recordClasses.at(_host.types.resolve(type)); });
}

}  // namespace pyhost
