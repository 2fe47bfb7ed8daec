// A statement, explained, and what reports make of it.
#pragma once
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "cli/explain/facts/records.h"
#include "refhost/report/reporter.h"

namespace cli::explain {

struct StatementRecord {
    refhost::Position at;
    bool write = false;
    std::vector<std::string> names;  // of the items' variables
    refhost::TransferResult result;
    refhost::Report report;
    SourceRecord source;
    std::vector<ItemRecord> items;  // those that were begun
};

/// Takes what is told in the order of the script.
class ExplainReport {
public:
    virtual ~ExplainReport() = default;
    virtual void transferred(const StatementRecord& statement) = 0;
    /// `op` is "open" or "close".
    virtual void sourceDone(refhost::Position at, const char* op, const std::string& source, int status,
                            const refhost::Report& report) = 0;
    virtual void printed(const refhost::Variable& variable) = 0;
    virtual void failed(refhost::Position at, const std::string& text) = 0;
};

std::unique_ptr<ExplainReport> jsonExplanation(const refhost::TypeRegistry& types, std::ostream& out);
/// `colours`: for a terminal.
std::unique_ptr<ExplainReport> peopleExplanation(std::ostream& out, bool colours);

/// Written to `out` when it goes.
std::unique_ptr<ExplainReport> htmlExplanation(std::ostream& out);
/// Tells both.
std::unique_ptr<ExplainReport> bothExplanations(std::unique_ptr<ExplainReport> a, std::unique_ptr<ExplainReport> b);

}  // namespace cli::explain
