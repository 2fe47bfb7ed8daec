// An execution context: its streams, parameters, access rules and what was reported to it.
#pragma once
#include <atomic>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/interface/host_api.h"
#include "refhost/operations/stream.h"
#include "refhost/values/text_pool.h"

namespace refhost {

class Host;

struct DriverReport {
    int code = 0;
    std::string text;
};

/// Results of a workbook's formulas that the host made anew after a save.
struct FreshResults {
    long long formulas = 0, changed = 0;
    std::vector<std::string> notCalculated;  // cells that keep their old result, with their sheets
};

/// Belongs to one thread at a time. Its address is the HostContext of the interface. Registered texts live as long as
/// it.
class Context {
public:
    Context(Host& host_, int number_, std::string directory_);
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;

    static Context& of(HostContext* context) { return *reinterpret_cast<Context*>(context); }
    HostContext* handle() { return reinterpret_cast<HostContext*>(this); }

    /// The path that a name stands for: relative names start at `directory`. Not resolved through links.
    std::string fullPath(std::string_view name) const;
    /// Refuses all access to a file, or to all that a folder holds, from now on.
    void deny(std::string_view path);
    bool isDenied(std::string_view name) const;

    /// Whether the host lets the file be changed; else a report tells why not.
    bool mayChange(const std::string& path, bool workbook);
    /// 0, or -1 when the file cannot be opened, access is refused, or the context has such a stream open already.
    int openStream(int mode, const char* name);
    /// False when the stream was not open or closing it failed.
    bool closeStream(int which);
    long readStream(void* buffer, long count);

    Host& host;
    const int number;
    std::string directory;
    // Parameters.
    std::string realFormat = "%.15g";
    bool finishSets = false;
    std::vector<std::string> denied;  // full paths
    // Reports since they were last taken.
    std::vector<std::string> messages;        // of hostError
    std::vector<DriverReport> driverReports;  // of hostDriverError
    std::vector<std::string> ownReports;      // of the host itself: why a file could not be opened
    std::optional<FreshResults> fresh;
    std::string workbookToChange;  // full path of the one that a source was last opened to change
    TextPool texts;
    InputStream input;
    OutputStream output;
    std::atomic<long> bytesRead{0};  // for the progress line of another thread

private:
    /// openStream where the host's files are kept in memory.
    bool openHeld(bool writing, const std::string& path, StreamKind kind);
    bool report(int mode, const char* name, const char* reason);
};

}  // namespace refhost
