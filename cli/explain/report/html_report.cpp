// A page for a browser: the grid of each item's sheet around its cells, coloured by what they are.
#include <algorithm>
#include <map>
#include <ostream>
#include <sstream>

#include "cli/explain/report/names.h"
#include "cli/explain/report/statement_record.h"
#include "cli/explain/rules/rule.h"
#include "cli/html/grid_page.h"
#include "cli/workbook/cell_name.h"

namespace cli::explain {
namespace {

using html::escaped;

html::Part partOf(const CellRecord& cell) {
    if (cell.fate == Fate::passedOver) return html::Part::passedOver;
    if (cell.fate == Fate::refused || cell.fate == Fate::notConverted) return html::Part::cut;
    switch (cell.part) {
        case quillet::CellPart::index:
            return html::Part::index;
        case quillet::CellPart::header:
            return html::Part::header;
        default:
            return html::Part::value;
    }
}

std::string detailsOf(const CellRecord& cell) {
    std::string text = joined(cellName(cell.row, cell.col), ": ", nameOf(cell.part), ", ", nameOf(cell.fate), "\n",
                              cell.kind, " ", cell.shown);
    if (!cell.value.empty()) text.append(joined(" \xE2\x86\x92 ", cell.value));
    for (const Rule* const rule : cell.warnings) text.append(joined("\n", rule->name, ": ", rule->text));
    return text;
}

class HtmlReport final : public ExplainReport {
public:
    explicit HtmlReport(std::ostream& out) : _out(out) {}

    ~HtmlReport() override {
        html::beginPage(_out, "What the script would do", _entries);
        _out << _body.str();
        html::endPage(_out);
    }

    void transferred(const StatementRecord& s) override {
        const std::string title =
            joined("line ", std::to_string(s.at.line), s.write ? ": write " : ": read ", s.source.text);
        html::Entry entry{joined("s", std::to_string(_entries.size() + 1)), title, !s.source.findings.empty(),
                          !s.result.ok()};
        for (const ItemRecord& item : s.items) entry.warned = entry.warned || !item.findings.empty();
        _body << "<section id=\"" << entry.id << "\">\n<h2>" << escaped(title) << "</h2>\n<p>" << escaped(s.source.path)
              << ", " << escaped(s.source.format.empty() ? s.source.driver : s.source.format) << "</p>\n";
        findings(s.source.findings);
        for (std::size_t i = 0; i < s.items.size(); ++i) item(s.names[i], s.items[i]);
        messages(s.report);
        _body << "</section>\n";
        _entries.push_back(std::move(entry));
    }

    void sourceDone(refhost::Position, const char*, const std::string&, int, const refhost::Report&) override {}
    void printed(const refhost::Variable&) override {}
    void failed(refhost::Position at, const std::string& text) override {
        _body << "<p class=\"fail\">line " << at.line << ": " << escaped(text) << "</p>\n";
    }

private:
    void messages(const refhost::Report& report) {
        const auto tell = [&](const std::string& text) { _body << "<p class=\"fail\">" << escaped(text) << "</p>\n"; };
        for (const std::string& text : report.own) tell(text);
        for (const refhost::DriverReport& driver : report.driver) tell(driver.text);
        for (const std::string& text : report.messages) tell(text);
    }

    void findings(const std::vector<Finding>& all) {
        if (all.empty()) return;
        _body << "<ul>\n";
        for (const Finding& finding : all) {
            _body << "<li><span class=\"warn\">" << finding.rule->name << "</span> " << finding.count << ": "
                  << escaped(finding.rule->text) << ". " << escaped(finding.rule->advice) << "</li>\n";
        }
        _body << "</ul>\n";
    }

    void item(const std::string& name, const ItemRecord& i) {
        _body << "<h3>" << escaped(name) << (i.write ? " to " : " from ") << escaped(i.hasLabel ? i.label : "no label")
              << "</h3>\n";
        findings(i.findings);
        if (!i.done || i.context.empty()) return;
        std::string caption = joined(i.sheet, " ", areaOf(i));
        if (i.layout) caption.append(joined(", ", nameOf(*i.layout)));
        caption.append(joined(", ", std::to_string(i.rows), i.write ? " rows written" : " rows read"));
        html::writeGrid(_body, caption, gridOf(i));
        if (i.rowsCut > 0) _body << "<p class=\"warn\">" << i.rowsCut << " rows of data have no place</p>\n";
    }

    static html::Grid gridOf(const ItemRecord& i) {
        std::map<std::pair<int, int>, const CellRecord*> known;
        for (const RowRecord& row : i.shownRows) {
            for (const CellRecord& cell : row.cells) known[{cell.row, cell.col}] = &cell;
        }
        html::Grid grid;
        const std::size_t width = i.context.front().texts.size();
        for (std::size_t c = 0; c < width; ++c)
            grid.columns.push_back(columnLetters(i.contextCol + static_cast<int>(c)));
        int before = i.context.front().row - 1;
        for (const ContextRow& row : i.context) {
            html::Row& shown = grid.rows.emplace_back();
            shown.head = std::to_string(row.row + 1);
            shown.gap = row.row != before + 1;
            before = row.row;
            for (std::size_t c = 0; c < width; ++c) {
                html::Cell& cell = shown.cells.emplace_back();
                cell.text = row.texts[c];
                const int col = i.contextCol + static_cast<int>(c);
                if (const auto found = known.find({row.row, col}); found != known.end()) {
                    fill(cell, *found->second);
                    continue;
                }
                const bool header = row.row == i.headerRow;
                if (header) cell.part = html::Part::header;
                if (cell.text.empty()) continue;
                cell.details = joined(cellName(row.row, col), header ? ": header\n" : ": outside\n", cell.text);
            }
        }
        return grid;
    }

    static void fill(html::Cell& cell, const CellRecord& record) {
        cell.part = partOf(record);
        cell.details = detailsOf(record);
        cell.warned = !record.warnings.empty();
        cell.right = record.kind.ends_with("number");
    }

    std::ostream& _out;
    std::ostringstream _body;
    std::vector<html::Entry> _entries;
};

}  // namespace

std::unique_ptr<ExplainReport> htmlExplanation(std::ostream& out) {
    return std::make_unique<HtmlReport>(out);
}

}  // namespace cli::explain
