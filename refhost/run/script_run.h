// Runs scripts.
#pragma once
#include <functional>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "refhost/operations/host.h"
#include "refhost/operations/statement.h"
#include "refhost/report/reporter.h"
#include "refhost/script/script.h"

namespace refhost {

/// Exit statuses of `quillet run`.
enum RunStatus : int { runOk = 0, runFailed = 1, runNotUnderstood = 2 };

struct RunOptions {
    std::string name;  // of the script's file, which stands in front of a place in it; may be empty
    bool json = false;
    bool progress = false;  // a line on `err` while a statement takes more than a second
    /// What the statement that is over read of stale results; may be empty.
    std::function<std::optional<StaleResults>()> stale;
};

/// Runs a script on a host that has its module. Results go to `out`, for programs (JSON) or for people; messages for
/// people go to `err`. Sources that the script left open are closed at its end.
RunStatus runScript(Host& host, std::string_view script, const RunOptions& options, std::ostream& out,
                    std::ostream& err);

/// The model of a running script: its variables, the context it is in, the sources that it holds open.
class Interpreter {
public:
    /// `progress` is the terminal for a line of progress; null for none.
    Interpreter(Host& host, Reporter& reporter, std::ostream* progress)
        : _host(host), _reporter(reporter), _progress(progress) {}
    ~Interpreter();

    /// As RunOptions has it.
    void tellStale(std::function<std::optional<StaleResults>()> take) { _stale = std::move(take); }

    /// False when the statement failed.
    bool run(const Statement& statement);
    /// Closes what is still open; false when a close failed.
    bool closeAll();
    /// Null when it is not declared (yet).
    Variable* variable(const std::string& name);
    Context& context() { return _host.context(_context); }

private:
    struct OpenSource {
        Context* context;
        const Driver* driver;
        std::string source;
        void* handle;
        std::string changed;  // the workbook's full path, when it is open for a change
    };

    bool run(Position at, const DeclareStatement& statement);
    bool run(Position at, const TransferStatement& statement);
    bool run(Position at, const OpenStatement& statement);
    bool run(Position at, const CloseStatement& statement);
    bool run(Position at, const ContextStatement& statement);
    bool run(Position at, const PrintStatement& statement);
    bool run(Position at, const ParamStatement& statement);

    Report taken() { return taken(context()); }
    Report taken(Context& from);
    /// Null after a report when there is no such driver.
    const Driver* driverOf(const SourceName& name, Context& context) const;

    Host& _host;
    Reporter& _reporter;
    std::ostream* _progress;
    std::function<std::optional<StaleResults>()> _stale;
    int _context = 1;
    std::map<std::string, std::unique_ptr<Variable>> _variables;
    std::vector<OpenSource> _open;
};

}  // namespace refhost
