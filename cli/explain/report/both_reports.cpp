#include <utility>

#include "cli/explain/report/statement_record.h"

namespace cli::explain {
namespace {

class BothReports final : public ExplainReport {
public:
    BothReports(std::unique_ptr<ExplainReport> a, std::unique_ptr<ExplainReport> b)
        : _a(std::move(a)), _b(std::move(b)) {}

    void transferred(const StatementRecord& statement) override {
        _a->transferred(statement);
        _b->transferred(statement);
    }
    void sourceDone(refhost::Position at, const char* op, const std::string& source, int status,
                    const refhost::Report& report) override {
        _a->sourceDone(at, op, source, status, report);
        _b->sourceDone(at, op, source, status, report);
    }
    void printed(const refhost::Variable& variable) override {
        _a->printed(variable);
        _b->printed(variable);
    }
    void failed(refhost::Position at, const std::string& text) override {
        _a->failed(at, text);
        _b->failed(at, text);
    }

private:
    std::unique_ptr<ExplainReport> _a, _b;
};

}  // namespace

std::unique_ptr<ExplainReport> bothExplanations(std::unique_ptr<ExplainReport> a, std::unique_ptr<ExplainReport> b) {
    return std::make_unique<BothReports>(std::move(a), std::move(b));
}

}  // namespace cli::explain
