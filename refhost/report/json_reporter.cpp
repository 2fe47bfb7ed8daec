// One JSON object a line.
#include <ostream>

#include "refhost/report/print_json.h"
#include "refhost/report/reporter.h"

namespace refhost {
namespace {

class JsonReporter final : public Reporter {
public:
    JsonReporter(const TypeRegistry& types, std::ostream& out, std::ostream& err)
        : _types(types), _out(out), _err(err) {}

    void transferred(Position at, const TransferStatement& statement, const TransferResult& result,
                     const Report& report) override {
        begin(statement.write ? "write" : "read", statement.source, result.status);
        if (!statement.write) {
            _line += ",\"counts\":[";
            for (std::size_t i = 0; i < result.counts.size(); ++i) {
                if (i) _line += ',';
                _line += std::to_string(result.counts[i]);
            }
            _line += ']';
        }
        reports(at, report);
        if (report.stale) stale(*report.stale);
        if (report.fresh) fresh(*report.fresh);
        _line += ",\"close\":";
        _line += result.close ? std::to_string(*result.close) : "null";
        end();
    }

    void sourceDone(Position at, const char* op, const std::string& source, int status, const Report& report) override {
        begin(op, source, status);
        reports(at, report);
        if (report.fresh) fresh(*report.fresh);
        end();
    }

    void printed(Variable& variable) override {
        _line = "{\"op\":\"print\",\"name\":";
        appendJsonText(_line, variable.name);
        _line += ",\"value\":";
        appendJson(_line, _types, variable);
        end();
    }

    void failed(Position at, const std::string& text) override {
        _err << "line " << at.line << ", column " << at.column << ": " << text << std::endl;
    }

private:
    void begin(const char* op, const std::string& source, int status) {
        _line = "{\"op\":\"";
        _line += op;
        _line += "\",\"source\":";
        appendJsonText(_line, source);
        _line += ",\"status\":" + std::to_string(status);
    }

    void stale(const StaleResults& stale) {
        _line += ",\"stale\":{\"count\":" + std::to_string(stale.count) + ",\"cells\":";
        texts(stale.cells);
        _line += ",\"cannotTell\":" + std::to_string(stale.cannotTell) + '}';
    }

    void fresh(const FreshResults& fresh) {
        _line += ",\"recalc\":{\"formulas\":" + std::to_string(fresh.formulas) +
                 ",\"changed\":" + std::to_string(fresh.changed) + ",\"notCalculated\":";
        texts(fresh.notCalculated);
        _line += '}';
    }

    void texts(const std::vector<std::string>& all) {
        _line += '[';
        for (std::size_t i = 0; i < all.size(); ++i) {
            if (i) _line += ',';
            appendJsonText(_line, all[i]);
        }
        _line += ']';
    }

    void reports(Position at, const Report& report) {
        _line += ",\"messages\":";
        texts(report.messages);
        _line += ",\"driver\":[";
        for (std::size_t i = 0; i < report.driver.size(); ++i) {
            if (i) _line += ',';
            _line += "{\"code\":" + std::to_string(report.driver[i].code) + ",\"text\":";
            appendJsonText(_line, report.driver[i].text);
            _line += '}';
        }
        _line += ']';
        for (const std::string& text : report.own) _err << "line " << at.line << ": " << text << std::endl;
    }

    void end() {
        _line += "}\n";
        _out.write(_line.data(), static_cast<std::streamsize>(_line.size()));
        _out.flush();
        if (_line.capacity() > 1024 * 1024) std::string().swap(_line);
    }

    const TypeRegistry& _types;
    std::ostream &_out, &_err;
    std::string _line;
};

}  // namespace

std::unique_ptr<Reporter> jsonReporter(const TypeRegistry& types, std::ostream& out, std::ostream& err) {
    return std::make_unique<JsonReporter>(types, out, err);
}

}  // namespace refhost
