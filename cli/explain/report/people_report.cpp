// For people: a page for each item.
#include <algorithm>
#include <ostream>
#include <span>

#include "cli/explain/report/names.h"
#include "cli/explain/report/statement_record.h"
#include "cli/explain/rules/rule.h"
#include "cli/workbook/cell_name.h"
#include "refhost/report/text_table.h"

namespace cli::explain {
namespace {

/// A text in a colour of the terminal.
struct Colours {
    bool on;
    std::string in(const char* code, const std::string& text) const {
        return on ? joined("\033[", code, "m", text, "\033[0m") : text;
    }
    std::string head(const std::string& text) const { return in("1", text); }
    std::string warning(const std::string& text) const { return in("33", text); }
    std::string failure(const std::string& text) const { return in("31", text); }
};

std::string quoted(const std::string& text) {
    return joined("'", refhost::shownText(text), "'");
}

std::string plural(long long count, const std::string& word) {
    return joined(std::to_string(count), " ", word, count == 1 ? "" : "s");
}

class PeopleReport final : public ExplainReport {
public:
    PeopleReport(std::ostream& out, bool colours) : _out(out), _colours{colours} {}

    void transferred(const StatementRecord& s) override {
        const std::string line = std::to_string(s.at.line);
        _out << _colours.head(joined("line ", line, s.write ? ": write " : ": read ", quoted(s.source.text))) << "\n";
        source(s.source);
        for (std::size_t i = 0; i < s.items.size(); ++i) item(s, i);
        reports(s.report);
        if (s.result.status < 0) failure("the file would not be opened");
        if (s.result.status > 0) failure(joined(plural(s.result.status, "item"), " would not be done"));
        if (s.result.close && *s.result.close != 0) failure("the file would not be saved");
        _out << "\n" << std::flush;
    }

    void sourceDone(refhost::Position at, const char* op, const std::string& source, int status,
                    const refhost::Report& report) override {
        if (status == 0) return;
        _out << _colours.head(joined("line ", std::to_string(at.line), ": ", op, " ", quoted(source))) << "\n";
        reports(report);
        failure(joined("it would not ", op));
        _out << "\n" << std::flush;
    }

    // What a script prints is not what this is about.
    void printed(const refhost::Variable&) override {}

    void failed(refhost::Position at, const std::string& text) override {
        _out << _colours.failure(joined("line ", std::to_string(at.line), ": ", refhost::shownText(text))) << "\n\n";
    }

private:
    void failure(const std::string& text) { _out << "  " << _colours.failure(text) << "\n"; }

    void reports(const refhost::Report& report) {
        for (const std::string& text : report.own) failure(refhost::shownText(text));
        for (const refhost::DriverReport& driver : report.driver) {
            failure(joined(refhost::shownText(driver.text), " (code ", std::to_string(driver.code), ")"));
        }
        for (std::string text : report.messages) {
            while (!text.empty() && text.back() == '\n') text.pop_back();
            failure(refhost::shownText(text));
        }
    }

    void options(const std::vector<OptionRecord>& all) {
        std::string text;
        for (const OptionRecord& option : all) {
            text += text.empty() ? "" : ", ";
            text += option.name;
            if (!option.value.empty()) text.append("=").append(refhost::shownText(option.value));
            text += joined(" (", option.from, ")");
        }
        if (!text.empty()) _out << "  options   " << text << "\n";
    }

    void warnings(const std::vector<Finding>& findings) {
        for (const Finding& finding : findings) {
            std::string where;
            for (const std::string& cell : finding.cells) where += joined(where.empty() ? " at " : ", ", cell);
            if (finding.count > static_cast<long long>(finding.cells.size()) && !finding.cells.empty())
                where += ", ...";
            _out << "  " << _colours.warning(finding.rule->name) << "  " << finding.count << where << ": "
                 << finding.rule->text << "\n";
            for (const auto& [kind, count] : finding.details) {
                _out << "      " << refhost::shownText(kind);
                if (finding.details.size() > 1 || count > 1) _out << ": " << count;
                _out << "\n";
            }
            _out << "      " << finding.rule->advice << "\n";
        }
    }

    void source(const SourceRecord& file) {
        _out << "  file      " << quoted(file.name);
        if (!file.path.empty()) _out << " = " << refhost::shownText(file.path);
        _out << "\n  format    " << (file.format.empty() ? file.driver : file.format) << ", ";
        if (file.written) {
            _out << "as this script would leave it";
        } else if (file.exists) {
            _out << plural(static_cast<long long>(file.size), "byte");
        } else {
            _out << (file.update ? "a new file" : "no such file");
        }
        _out << "\n";
        options(file.options);
        warnings(file.findings);
    }

    void item(const StatementRecord& s, std::size_t index) {
        const ItemRecord& i = s.items[index];
        _out << "\n  " << _colours.head(s.names[index]) << (i.write ? " to " : " from ")
             << (i.hasLabel ? quoted(i.label) : std::string("no label")) << "\n";
        options(i.options);
        if (i.done) {
            place(i);
            extent(i);
            rows(i);
        } else if (i.opened) {
            _out << "  its cells are not gone through\n";
        }
        warnings(i.findings);
    }

    void place(const ItemRecord& i) {
        const std::string area = areaOf(i);
        _out << "  cells     " << (i.sheet.empty() ? "none" : refhost::shownText(i.sheet)) << (area.empty() ? "" : " ")
             << area;
        if (i.headerRow >= 0) _out << ", header in row " << i.headerRow + 1;
        _out << "\n  columns   ";
        for (std::size_t c = 0; c < i.columns.size() && c < shownColumns; ++c) {
            _out << (c > 0 ? ", " : "") << columnLetters(i.columns[c].col);
            if (i.headerRow >= 0) _out << " " << quoted(i.columns[c].header);
        }
        if (i.columns.size() > shownColumns) _out << ", ... " << i.columns.size() << " in all";
        _out << "\n";
    }

    void extent(const ItemRecord& i) {
        if (i.layout) {
            _out << "  layout    " << nameOf(*i.layout);
            if (i.indexColumns > 0) _out << ", " << plural(i.indexColumns, "index column");
            if (i.write) _out << (i.grows ? ", grows with the data" : ", does not grow");
            _out << "\n";
        }
        _out << "  rows      " << i.rows << (i.write ? " written" : " read");
        if (i.rowsPassedOver > 0) _out << ", " << i.rowsPassedOver << " passed over as empty";
        if (i.rowsCut > 0) _out << ", " << i.rowsCut << " cut";
        _out << "; " << plural(i.cells, "cell");
        if (i.cellsPassedOver > 0) _out << ", " << i.cellsPassedOver << " passed over";
        _out << "\n";
    }

    void rows(const ItemRecord& i) {
        for (const RowRecord& row : std::span(i.shownRows.data(), i.firstRows)) {
            for (const CellRecord& cell : row.cells) {
                std::string line = joined("    ", cellName(cell.row, cell.col));
                line.resize(std::max<std::size_t>(line.size() + 1, 12), ' ');
                line += joined(nameOf(cell.part), "  ", cell.kind);
                if (cell.kind != "empty") line += joined(" ", quoted(cell.shown));
                line += arrow(cell);
                _out << (cell.warnings.empty() ? line : _colours.warning(line)) << "\n";
            }
        }
    }

    static std::string arrow(const CellRecord& cell) {
        if (cell.fate == Fate::read || cell.fate == Fate::written) return joined(" -> ", cell.value);
        return joined(" (", nameOf(cell.fate), ")");
    }

    static constexpr std::size_t shownColumns = 12;
    std::ostream& _out;
    Colours _colours;
};

}  // namespace

std::unique_ptr<ExplainReport> peopleExplanation(std::ostream& out, bool colours) {
    return std::make_unique<PeopleReport>(out, colours);
}

}  // namespace cli::explain
