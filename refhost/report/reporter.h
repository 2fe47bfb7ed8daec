// What a running script tells, to programs or to people.
#pragma once
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "refhost/operations/context.h"
#include "refhost/operations/statement.h"
#include "refhost/script/script.h"

namespace refhost {

/// Results of formulas that a statement read although the script had written what they depend on.
struct StaleResults {
    long long count = 0, cannotTell = 0;  // the latter depend on cells that no text names
    std::vector<std::string> cells;       // the first of `count`, with their sheets
};

/// What was reported to a context during a statement.
struct Report {
    std::vector<std::string> messages;
    std::vector<DriverReport> driver;
    std::vector<std::string> own;  // of the host itself
    std::optional<StaleResults> stale;
    std::optional<FreshResults> fresh;
};

class Reporter {
public:
    virtual ~Reporter() = default;
    virtual void transferred(Position at, const TransferStatement& statement, const TransferResult& result,
                             const Report& report) = 0;
    /// `op` is "open" or "close".
    virtual void sourceDone(Position at, const char* op, const std::string& source, int status,
                            const Report& report) = 0;
    virtual void printed(Variable& variable) = 0;
    /// A statement that failed for a reason of the host's own.
    virtual void failed(Position at, const std::string& text) = 0;
};

std::unique_ptr<Reporter> jsonReporter(const TypeRegistry& types, std::ostream& out, std::ostream& err);
std::unique_ptr<Reporter> peopleReporter(const TypeRegistry& types, std::ostream& out, std::ostream& err);

}  // namespace refhost
