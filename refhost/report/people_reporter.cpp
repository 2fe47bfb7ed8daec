// Results as lines and tables, messages with the line of their statement.
#include <ostream>
#include <utility>

#include "refhost/report/print_people.h"
#include "refhost/report/reporter.h"
#include "refhost/report/text_table.h"

namespace refhost {
namespace {

class PeopleReporter final : public Reporter {
public:
    PeopleReporter(const TypeRegistry& types, std::ostream& out, std::ostream& err)
        : _types(types), _out(out), _err(err) {}

    void transferred(Position at, const TransferStatement& statement, const TransferResult& result,
                     const Report& report) override {
        reports(at, report);
        if (result.status < 0) return failed(at, quoted(statement.source) + " could not be opened");
        const bool lost = result.close && *result.close != 0;
        if (!lost || !statement.write) listed(statement, result);
        if (result.status > 0) {
            const std::size_t total = statement.items.size();
            failed(at, std::to_string(result.status) + " of " + std::to_string(total) +
                           (total == 1 ? " item" : " items") + " not done");
        }
        if (lost) failed(at, quoted(statement.source) + " could not be closed: its data may be lost");
        if (report.fresh) fresh(at, statement.source, *report.fresh);
    }

    void sourceDone(Position at, const char* op, const std::string& source, int status, const Report& report) override {
        reports(at, report);
        if (status != 0) failed(at, quoted(source) + (op[0] == 'o' ? " could not be opened" : " could not be closed"));
        if (report.fresh) fresh(at, source, *report.fresh);
    }

    void printed(Variable& variable) override {
        const std::string text = printForPeople(_types, variable);
        _out << text;
        if (text.find('\n') + 1 < text.size()) _out << '\n';  // tables stand apart
        _out.flush();
    }

    void failed(Position at, const std::string& text) override {
        _out.flush();
        _err << "line " << at.line << ": " << text << std::endl;
    }

private:
    static std::string quoted(const std::string& source) {
        std::string text(1, '\'');
        return text.append(shownText(source)).append(1, '\'');
    }

    void listed(const TransferStatement& statement, const TransferResult& result) {
        _out << (statement.write ? "wrote " : "read ") << shownText(statement.source);
        const char* separator = ": ";
        for (std::size_t i = 0; i < statement.items.size(); ++i) {
            _out << std::exchange(separator, ", ") << statement.items[i].name;
            if (!statement.write) _out << " (" << result.counts[i] << ')';
        }
        _out << '\n';
    }

    void reports(Position at, const Report& report) {
        for (const std::string& text : report.own) failed(at, shownText(text));
        for (const DriverReport& driver : report.driver)
            failed(at, shownText(driver.text) + " (code " + std::to_string(driver.code) + ")");
        for (std::string text : report.messages) {
            while (!text.empty() && text.back() == '\n') text.pop_back();
            failed(at, shownText(text));
        }
        if (report.stale) stale(at, *report.stale);
    }

    void fresh(Position at, const std::string& source, const FreshResults& fresh) {
        _out << "calculated " << shownText(source) << ": " << fresh.formulas << " formulas, " << fresh.changed
             << " results changed\n";
        if (fresh.notCalculated.empty()) return;
        std::string cells;
        for (const std::string& cell : fresh.notCalculated)
            cells.append(cells.empty() ? "" : ", ").append(shownText(cell));
        failed(at, std::to_string(fresh.notCalculated.size()) + " formulas were not calculated: " + cells);
    }

    void stale(Position at, const StaleResults& stale) {
        if (stale.count > 0) {
            std::string cells;
            for (const std::string& cell : stale.cells) cells.append(cells.empty() ? "" : ", ").append(shownText(cell));
            if (stale.count > static_cast<long long>(stale.cells.size())) cells.append(", ...");
            failed(at, std::to_string(stale.count) +
                           " results are read that are older than what the script wrote: " + cells);
        }
        if (stale.cannotTell > 0) {
            failed(at,
                   std::to_string(stale.cannotTell) + " results are read that may be older than what the script wrote");
        }
    }

    const TypeRegistry& _types;
    std::ostream &_out, &_err;
};

}  // namespace

std::unique_ptr<Reporter> peopleReporter(const TypeRegistry& types, std::ostream& out, std::ostream& err) {
    return std::make_unique<PeopleReporter>(types, out, err);
}

}  // namespace refhost
