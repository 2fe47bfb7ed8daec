#include "cli/explain/explain.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <ostream>
#include <utility>
#include <vector>

#include "cli/explain/facts/option_list.h"
#include "cli/explain/linked_module.h"
#include "cli/explain/observing/collector.h"
#include "cli/explain/report/statement_record.h"
#include "cli/explain/rules/rules.h"
#include "refhost/run/script_run.h"

namespace cli::explain {
namespace {

/// Puts together what the module told and what the host saw of each statement.
class Narrator final : public refhost::Reporter {
public:
    Narrator(refhost::Host& host, Collector& collector, ExplainReport& report)
        : _host(host), _collector(collector), _report(report) {}

    void transferred(refhost::Position at, const refhost::TransferStatement& statement,
                     const refhost::TransferResult& result, const refhost::Report& report) override {
        StatementRecord record{at, statement.write, {}, result, report, {}, _collector.take()};
        for (const refhost::ItemSpec& item : statement.items) record.names.push_back(item.name);
        describe(record.source, statement.source, statement.write);
        record.source.format = _collector.takeFormat();
        warned = warned || !record.source.findings.empty();
        for (const ItemRecord& item : record.items) warned = warned || !item.findings.empty();
        _report.transferred(record);
    }

    void sourceDone(refhost::Position at, const char* op, const std::string& source, int status,
                    const refhost::Report& report) override {
        _collector.takeFormat();
        _report.sourceDone(at, op, source, status, report);
    }
    void printed(refhost::Variable& variable) override { _report.printed(variable); }
    void failed(refhost::Position at, const std::string& text) override { _report.failed(at, text); }

    bool warned = false;

private:
    void describe(SourceRecord& record, const std::string& text, bool update) {
        const refhost::SourceName name = refhost::splitSource(_host.module(), text);
        record.text = text;
        record.driver = name.prefix;
        record.update = update;
        ParsedOptions parsed = parseFileName(name.name, name.prefix == "csv");
        record.name = std::move(parsed.rest);
        record.options = std::move(parsed.options);
        if (record.name.empty() || name.driver == nullptr) return;
        record.path = _host.context(1).fullPath(record.name);
        record.written = !update && _host.overlay->find(record.path) != nullptr;
        std::error_code failed;
        record.exists = std::filesystem::is_regular_file(record.path, failed);
        if (record.exists) record.size = std::filesystem::file_size(record.path, failed);
        judge(record);
    }

    static void judge(SourceRecord& record) {
        for (const Rule* const rule : allRules()) {
            Finding finding(*rule);
            if (rule->onOptions != nullptr) rule->onOptions(OptionText{record.name}, finding);
            if (rule->onTarget != nullptr && record.update) rule->onTarget(Target{record.path}, finding);
            if (finding.count > 0) record.findings.push_back(std::move(finding));
        }
    }

    refhost::Host& _host;
    Collector& _collector;
    ExplainReport& _report;
};

/// A page shows more than what goes to the terminal.
RowWishes wishesOf(const ExplainOptions& options) {
    RowWishes wishes;
    wishes.first = static_cast<std::size_t>(std::max(options.rows, 0));
    if (options.htmlFile.empty()) return wishes;
    wishes.last = 5;
    wishes.warned = 1000;
    return wishes;
}

bool runAll(refhost::Host& host, const std::vector<refhost::Statement>& statements, Narrator& narrator) {
    refhost::Interpreter interpreter(host, narrator, nullptr);
    bool ok = true;
    for (const refhost::Statement& statement : statements) ok = interpreter.run(statement) && ok;
    return interpreter.closeAll() && ok;
}

}  // namespace

int explainScript(std::string_view script, const ExplainOptions& options, std::ostream& out, std::ostream& err) {
    refhost::FileOverlay files;
    refhost::Host host(options.directory);
    host.overlay = &files;
    adoptModule(host);
    std::vector<refhost::Statement> statements;
    try {
        statements = refhost::parseScript(script, host.types);
    } catch (const refhost::ScriptError& e) {
        if (!options.name.empty()) err << options.name << ": ";
        err << "line " << e.at.line << ", column " << e.at.column << ": " << e.what() << "\n";
        return explainNotUnderstood;
    }
    std::ofstream page;
    if (!options.htmlFile.empty()) page.open(options.htmlFile, std::ios::binary);
    Collector collector(host, wishesOf(options));
    std::unique_ptr<ExplainReport> report =
        options.json ? jsonExplanation(host.types, out) : peopleExplanation(out, options.colours);
    if (!options.htmlFile.empty()) report = bothExplanations(std::move(report), htmlExplanation(page));
    Narrator narrator(host, collector, *report);
    const Observed observed(collector);
    const bool ok = runAll(host, statements, narrator);
    report.reset();
    if (!options.htmlFile.empty() && !page.flush()) {
        err << "cannot write '" << options.htmlFile << "'\n";
        return explainFails;
    }
    if (!out.flush()) {
        err << "cannot write the explanation\n";
        return explainFails;
    }
    if (!ok) return explainFails;
    return narrator.warned ? explainWarned : explainClean;
}

}  // namespace cli::explain
