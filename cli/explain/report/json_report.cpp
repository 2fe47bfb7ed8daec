// One JSON object a line: first what `quillet run --json` prints for the statement, then what explains it.
#include <ostream>
#include <span>

#include "cli/explain/facts/json_value.h"
#include "cli/explain/report/names.h"
#include "cli/explain/report/statement_record.h"
#include "cli/explain/rules/rule.h"
#include "cli/workbook/cell_name.h"
#include "refhost/report/print_json.h"

namespace cli::explain {
namespace {

/// A JSON text under construction.
class Json {
public:
    Json& raw(std::string_view text) {
        _text += text;
        return *this;
    }
    Json& key(std::string_view name) {
        if (!_text.empty() && _text.back() != '{' && _text.back() != '[') _text += ',';
        _text.append(1, '"').append(name).append("\":");
        return *this;
    }
    Json& text(std::string_view value) { return raw(jsonText(value)); }
    Json& number(long long value) { return raw(std::to_string(value)); }
    Json& flag(bool value) { return raw(value ? "true" : "false"); }
    template <class List, class Each>
    Json& list(const List& items, Each&& each) {
        _text += '[';
        const char* separator = "";
        for (const auto& item : items) {
            _text += separator;
            separator = ",";
            each(item);
        }
        return raw("]");
    }
    const std::string& str() const { return _text; }

private:
    std::string _text;
};

class JsonReport final : public ExplainReport {
public:
    JsonReport(const refhost::TypeRegistry& types, std::ostream& out) : _types(types), _out(out) {}

    void transferred(const StatementRecord& s) override {
        Json json;
        begin(json, s.write ? "write" : "read", s.source.text, s.result.status);
        if (!s.write) json.key("counts").list(s.result.counts, [&](int count) { json.number(count); });
        messages(json, s.report);
        json.key("close").raw(s.result.close ? std::to_string(*s.result.close) : "null");
        json.key("line").number(s.at.line);
        host(json, s.report);
        json.key("file");
        source(json, s.source);
        json.key("items").raw("[");
        for (std::size_t i = 0; i < s.items.size(); ++i) item(json.raw(i > 0 ? "," : ""), s.names[i], s.items[i]);
        json.raw("]");
        end(json);
    }

    void sourceDone(refhost::Position, const char* op, const std::string& name, int status,
                    const refhost::Report& report) override {
        Json json;
        begin(json, op, name, status);
        messages(json, report);
        end(json);
    }

    void printed(const refhost::Variable& variable) override {
        std::string value;
        refhost::appendJson(value, _types, variable);
        Json json;
        json.raw("{").key("op").text("print").key("name").text(variable.name).key("value").raw(value);
        end(json);
    }

    void failed(refhost::Position at, const std::string& text) override {
        Json json;
        json.raw("{").key("op").text("error").key("line").number(at.line).key("text").text(text);
        end(json);
    }

private:
    static void begin(Json& json, const char* op, const std::string& source, int status) {
        json.raw("{").key("op").text(op).key("source").text(source).key("status").number(status);
    }
    void end(Json& json) { _out << json.raw("}\n").str() << std::flush; }

    static void messages(Json& json, const refhost::Report& report) {
        json.key("messages").list(report.messages, [&](const std::string& text) { json.text(text); });
        json.key("driver").list(report.driver, [&](const refhost::DriverReport& driver) {
            json.raw("{").key("code").number(driver.code).key("text").text(driver.text).raw("}");
        });
    }
    static void host(Json& json, const refhost::Report& report) {
        json.key("host").list(report.own, [&](const std::string& text) { json.text(text); });
    }

    static void options(Json& json, const std::vector<OptionRecord>& all) {
        json.key("options").list(all, [&](const OptionRecord& option) {
            json.raw("{").key("name").text(option.name);
            if (!option.value.empty()) json.key("value").text(option.value);
            json.key("from").text(option.from).raw("}");
        });
    }

    static void warnings(Json& json, const std::vector<Finding>& findings) {
        json.key("warnings").list(findings, [&](const Finding& finding) {
            json.raw("{").key("name").text(finding.rule->name).key("count").number(finding.count);
            json.key("cells").list(finding.cells, [&](const std::string& cell) { json.text(cell); });
            json.key("details").raw("{");
            for (const auto& [kind, count] : finding.details)
                json.raw(separated(json)).text(kind).raw(":").number(count);
            json.raw("}").key("text").text(finding.rule->text).key("advice").text(finding.rule->advice).raw("}");
        });
    }
    static const char* separated(const Json& json) { return json.str().back() == '{' ? "" : ","; }

    static void source(Json& json, const SourceRecord& file) {
        json.raw("{").key("driver").text(file.driver).key("name").text(file.name).key("path").text(file.path);
        json.key("exists")
            .flag(file.exists)
            .key("written")
            .flag(file.written)
            .key("size")
            .number(static_cast<long long>(file.size));
        json.key("format").raw(file.format.empty() ? "null" : jsonText(file.format));
        options(json, file.options);
        warnings(json, file.findings);
        json.raw("}");
    }

    static void item(Json& json, const std::string& name, const ItemRecord& i) {
        json.raw("{").key("name").text(name).key("label").raw(i.hasLabel ? jsonText(i.label) : "null");
        json.key("range").text(i.rest);
        options(json, i.options);
        json.key("sheet").raw(i.sheet.empty() ? "null" : jsonText(i.sheet));
        json.key("area").raw(areaOf(i).empty() ? "null" : jsonText(areaOf(i)));
        json.key("headerRow").raw(i.headerRow < 0 ? "null" : std::to_string(i.headerRow + 1));
        json.key("columns").list(i.columns, [&](const ColumnRecord& column) {
            json.raw("{").key("column").text(columnLetters(column.col));
            if (i.headerRow >= 0) json.key("header").text(column.header);
            json.raw("}");
        });
        json.key("layout").raw(i.layout ? jsonText(nameOf(*i.layout)) : "null");
        json.key("indexColumns").number(i.indexColumns).key("grows").flag(i.grows);
        json.key("rows").number(i.rows).key("rowsPassedOver").number(i.rowsPassedOver);
        json.key("cells").number(i.cells).key("cellsPassedOver").number(i.cellsPassedOver);
        json.key("rowsCut").number(i.rowsCut);
        const std::span firstRows(i.shownRows.data(), i.firstRows);
        json.key("firstRows").list(firstRows, [&](const RowRecord& r) { row(json, r); });
        warnings(json, i.findings);
        json.raw("}");
    }

    static void row(Json& json, const RowRecord& r) {
        json.raw("{").key("row").number(r.row + 1).key("passedOver").flag(r.passedOver);
        json.key("cells").list(r.cells, [&](const CellRecord& c) {
            json.raw("{").key("cell").text(cellName(c.row, c.col)).key("part").text(nameOf(c.part));
            json.key("fate").text(nameOf(c.fate)).key("kind").text(c.kind).key("shows").text(c.shown);
            json.key("value").raw(c.value.empty() ? "null" : c.value).raw("}");
        });
        json.raw("}");
    }

    const refhost::TypeRegistry& _types;
    std::ostream& _out;
};

}  // namespace

std::unique_ptr<ExplainReport> jsonExplanation(const refhost::TypeRegistry& types, std::ostream& out) {
    return std::make_unique<JsonReport>(types, out);
}

}  // namespace cli::explain
