#include "cli/dump/dump_features.h"

#include "cli/dump/dump_filter.h"
#include "cli/dump/dump_runs.h"
#include "cli/workbook/sheet_answers.h"
#include "engine/api/isheetfacts.h"

namespace cli {
namespace {

using Sheet = vellum::ISheetT<char>;

/// Corners as the interfaces give them.
struct Area {
    int rowFirst = 0, rowLast = 0, colFirst = 0, colLast = 0;
};

class FeaturesLine {
public:
    FeaturesLine(vellum::IBookT<char>& book, Sheet& sheet, JsonLines& out)
        : _book(book), _sheet(sheet), _answers(book, sheet, out), _out(out) {}

    void print() {
        _out.raw(R"({"features":{)");
        blocks();
        page();
        titles();
        tables();
        view();
        _out.raw("}}").endLine();
    }

private:
    void key(std::string_view name) {
        _out.raw(_first ? "\"" : ",\"").raw(name).raw("\":");
        _first = false;
    }
    template <class Question>
    void give(std::string_view name, Question&& question) {
        key(name);
        _answers.give(question);
    }
    template <class... Questions>
    void giveAll(std::string_view name, Questions&&... questions) {
        key(name);
        _answers.giveAll(questions...);
    }
    /// As many items as `total` answers, each printed by `item(index)`.
    template <class Total, class Item>
    void list(std::string_view name, Total&& total, Item&& item) {
        key(name);
        const auto count = _answers.ask(total);
        if (!count || *count < 0) return _answers.null();
        _out.raw("[");
        for (int i = 0; i < *count; ++i) {
            if (i > 0) _out.raw(",");
            item(i);
        }
        _out.raw("]");
    }
    /// Two numbers, null unless `question(first, second)` is true.
    template <class Question>
    void pair(std::string_view name, Question&& question) {
        int first = 0, second = 0;
        const auto found = _answers.ask([&](Sheet&) { return question(&first, &second); });
        key(name);
        if (!found || !*found) return _answers.null();
        _out.raw("[").integer(first).raw(",").integer(second).raw("]");
    }
    void area(const Area& at) {
        _out.raw("[").integer(at.rowFirst).raw(",").integer(at.colFirst).raw(",");
        _out.integer(at.rowLast).raw(",").integer(at.colLast).raw("]");
    }

    void blocks() {
        give("state", [](Sheet& s) { return s.visibilityState(); });
        list(
            "merges", [](Sheet& s) { return s.mergeTotal(); }, [&](int index) { merge(index); });
        list(
            "links", [](Sheet& s) { return s.hyperlinkTotal(); }, [&](int index) { link(index); });
        pair("split", [&](int* row, int* col) { return _sheet.splitPosition(row, col); });
        const auto rowBreak = [&](int index) { _answers.give([=](Sheet& s) { return s.rowBreakAt(index); }); };
        list(
            "rowBreaks", [](Sheet& s) { return s.rowBreakTotal(); }, rowBreak);
        const auto columnBreak = [&](int index) { _answers.give([=](Sheet& s) { return s.columnBreakAt(index); }); };
        list(
            "columnBreaks", [](Sheet& s) { return s.columnBreakTotal(); }, columnBreak);
    }
    void merge(int index) {
        Area at;
        const auto found = _answers.ask(
            [&](Sheet& s) { return s.mergeByIndex(index, &at.rowFirst, &at.rowLast, &at.colFirst, &at.colLast); });
        if (found && *found) return area(at);
        _answers.null();
    }
    void link(int index) {
        Area at;
        const auto target = _answers.ask(
            [&](Sheet& s) { return s.hyperlinkAt(index, &at.rowFirst, &at.rowLast, &at.colFirst, &at.colLast); });
        if (!target) return _answers.null();
        _out.raw(R"({"area":)");
        area(at);
        _out.raw(R"(,"target":)");
        _answers.value(*target);
        _out.raw("}");
    }

    void page() {
        give("landscape", [](Sheet& s) { return s.isLandscape(); });
        give("paper", [](Sheet& s) { return s.paperCode(); });
        give("printZoom", [](Sheet& s) { return s.printZoomPercent(); });
        pair("fit", [&](int* width, int* height) { return _sheet.printFitPages(width, height); });
        giveAll(
            "margins", [](Sheet& s) { return s.marginLeft(); }, [](Sheet& s) { return s.marginRight(); },
            [](Sheet& s) { return s.marginTop(); }, [](Sheet& s) { return s.marginBottom(); },
            [](Sheet& s) { return s.headerMargin(); }, [](Sheet& s) { return s.footerMargin(); });
        give("header", [](Sheet& s) { return s.headerText(); });
        give("footer", [](Sheet& s) { return s.footerText(); });
        giveAll(
            "centered", [](Sheet& s) { return s.centersHorizontally(); },
            [](Sheet& s) { return s.centersVertically(); });
        give("printsGridlines", [](Sheet& s) { return s.printsGridlines(); });
        give("printsHeadings", [](Sheet& s) { return s.printsRowColHeadings(); });
    }

    void titles() {
        Area at;
        const auto found = _answers.ask(
            [&](Sheet& s) { return s.printAreaRange(&at.rowFirst, &at.rowLast, &at.colFirst, &at.colLast); });
        key("printArea");
        found&&* found ? area(at) : _answers.null();
        pair("repeatRows", [&](int* first, int* last) { return _sheet.repeatRows(first, last); });
        pair("repeatColumns", [&](int* first, int* last) { return _sheet.repeatColumns(first, last); });
    }

    void tables() {
        list(
            "tables", [](Sheet& s) { return s.tableTotal(); }, [&](int index) { table(index); });
        key("filter");
        dumpFilter(_answers, _out);
        key("validations");
        auto* const known = dynamic_cast<vellum::ISheetFacts*>(&_sheet);
        known != nullptr ? _answers.value(known->facts().validationRules) : _answers.null();
    }
    void table(int index) {
        Area at;
        int header = 0, totals = 0;
        const auto name = _answers.ask([&](Sheet& s) {
            return s.tableAt(index, &at.rowFirst, &at.rowLast, &at.colFirst, &at.colLast, &header, &totals);
        });
        if (!name || *name == nullptr) return _answers.null();
        _out.raw(R"({"name":)").text(*name).raw(R"(,"area":)");
        area(at);
        _out.raw(R"(,"headerRows":)").integer(header).raw(R"(,"totalsRows":)").integer(totals).raw("}");
    }

    void view() {
        give("protected", [](Sheet& s) { return s.isProtected(); });
        give("gridlines", [](Sheet& s) { return s.showsGridlines(); });
        give("zoom", [](Sheet& s) { return s.zoomPercent(); });
        give("rightToLeft", [](Sheet& s) { return s.isRightToLeft(); });
        pair("topLeft", [&](int* row, int* col) { return _sheet.topLeftCell(row, col); });
        give("summaryBelow", [](Sheet& s) { return s.summaryBelow(); });
        give("summaryRight", [](Sheet& s) { return s.summaryRight(); });
        const bool package = _book.binaryVersion() == 0;
        key("rows");
        auto* const known = dynamic_cast<vellum::ISheetFacts*>(&_sheet);
        dumpRows(_answers, package, known != nullptr ? known->facts().rowEnd : 0, _out);
        key("columns");
        dumpColumns(_answers, package, _out);
    }

    vellum::IBookT<char>& _book;
    Sheet& _sheet;
    SheetAnswers _answers;
    JsonLines& _out;
    bool _first = true;
};

}  // namespace

void dumpFeatures(vellum::IBookT<char>& book, vellum::ISheetT<char>& sheet, JsonLines& out) {
    FeaturesLine(book, sheet, out).print();
}

}  // namespace cli
