// The reference host: types, contexts and the module that it loaded.
#pragma once
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "refhost/operations/context.h"
#include "refhost/operations/faults.h"
#include "refhost/operations/file_overlay.h"
#include "refhost/values/types.h"

namespace refhost {

class Module;

constexpr int hostVersion = 1014002;    // what the module's version check is asked about
constexpr int interfaceVersion = 5020;  // of the interface block that this host understands

/// A host. Several contexts may work at once, each on a thread of its own; all else belongs to one thread. Must outlive
/// every source that its contexts hold open.
class Host {
public:
    /// Relative file names start at `directory`; empty: the process's current one.
    explicit Host(std::string directory = {});
    ~Host();

    /// Loads the module, or takes the one that the process loaded before from this path. `catalogue` names a file of
    /// translations, empty for none. Throws ModuleError.
    void load(const std::string& modulePath, const std::string& catalogue = {});
    /// Takes a module that this program is linked with. Throws ModuleError.
    void adopt(QuilletInit entry);
    /// Only after load() or adopt().
    Module& module() { return *_module; }

    /// The context of that number; made at its first use with the parameters of context 1.
    Context& context(int number);

    /// Asked before a file is opened for a change, with its full path and whether it is a workbook's. False, with a
    /// reason in `why`, refuses the change. None at first.
    std::function<bool(const std::string& path, bool workbook, std::string& why)> beforeChange;

    /// Called with the full path of a workbook that was open for a change, when it has been closed and saved. Makes the
    /// results of its formulas anew; nothing, with a reason in `why`, when they are not, which fails the statement.
    /// None at first.
    std::function<std::optional<FreshResults>(const std::string& path, std::string& why)> afterSave;

    TypeRegistry types;
    Faults faults;
    Counts counts;
    FileOverlay* overlay = nullptr;  // null: files are changed; set before the first stream is opened

private:
    std::string _directory;
    Module* _module = nullptr;
    std::mutex _mutex;
    std::map<int, std::unique_ptr<Context>> _contexts;
};

/// The operations as they are given to the module; the same table for every host of the process.
const HostApi& hostApiTable();

}  // namespace refhost
