#include "cli/info/info_json.h"

#include <string_view>

#include "cli/workbook/book_file.h"
#include "cli/workbook/cell_name.h"
#include "cli/workbook/info_features.h"
#include "cli/workbook/info_objects.h"
#include "cli/workbook/json_lines.h"
#include "engine/api/enums.h"
#include "engine/api/isheet.h"

namespace cli {
namespace {

using Book = vellum::IBookT<char>;
using Sheet = vellum::ISheetT<char>;

class InfoLine {
public:
    InfoLine(Book& book, JsonLines& out) : _book(book), _out(out) {}

    void print(const std::string& path) {
        _out.raw("{");
        _first = true;
        key("file").text(path);
        key("kind").text(_book.binaryVersion() == 0 ? "Open XML" : "binary");
        key("biff").integer(_book.binaryVersion() >> 8);
        key("datesFrom").integer(_book.isDate1904() ? 1904 : 1900);
        flag("template", _book.isTemplateFile());
        flag("writeProtected", _book.isWriteProtected());
        key("cellFormats").integer(_book.formatTotal());
        key("fonts").integer(_book.fontTotal());
        pictures();
        list("sheets", _book.sheetCount(), [&](int index) { sheet(index); });
        names();
        kept();
        _out.raw("}").endLine();
    }

private:
    JsonLines& key(std::string_view name) {
        if (!_first) _out.raw(",");
        _first = false;
        return _out.text(name).raw(":");
    }
    void flag(std::string_view name, bool value) { key(name).raw(value ? "true" : "false"); }
    void textOrNull(std::string_view name, const std::string& value) {
        key(name);
        value.empty() ? _out.raw("null") : _out.text(value);
    }
    /// [{...}, ...], each filled by `item(index)`.
    template <class Item>
    void list(std::string_view name, int count, Item&& item) {
        key(name).raw("[");
        for (int i = 0; i < count; ++i) {
            _out.raw(i > 0 ? ",{" : "{");
            _first = true;
            item(i);
            _out.raw("}");
        }
        _out.raw("]");
        _first = false;
    }

    void pictures() {
        const auto sums = pictureSums(_book);
        list("pictures", static_cast<int>(sums.size()), [&](int index) {
            const PictureSum& sum = sums[static_cast<std::size_t>(index)];
            key("format").text(sum.format);
            key("count").integer(sum.count);
            key("bytes").integer(static_cast<long long>(sum.bytes));
            flag("preview", sum.preview);
        });
    }

    void sheet(int index) {
        constexpr const char* kinds[] = {"worksheet", "chart", "other"};
        constexpr const char* states[] = {"visible", "hidden", "very hidden"};
        const char* const name = _book.sheetNameAt(index);
        key("name").text(name ? name : "");
        const int kind = _book.sheetKindAt(index);
        key("kind").text(kinds[kind]);
        Sheet* const found = _book.getSheet(index);
        if (found == nullptr) return;
        const int state = found->visibilityState();
        key("state").text(state >= 0 && state < 3 ? states[state] : "?");
        if (kind != vellum::sheetWorksheet) return;
        const int endRow = found->lastRow(), endCol = found->lastCol();
        textOrNull("area", endRow <= 0 || endCol <= 0 ? std::string()
                                                      : cellName(found->firstRow(), found->firstCol()) + ":" +
                                                            cellName(endRow - 1, endCol - 1));
        features(featureFacts(*found));
        const ObjectCounts counts = objectCounts(*found);
        key("pictures").integer(counts.pictures);
        key("comments").integer(counts.comments);
        key("controls").integer(counts.controls);
        key("charts").integer(counts.charts);
        key("otherShapes").integer(counts.others);
    }

    void features(const FeatureFacts& facts) {
        textOrNull("panes", facts.panes);
        flag("protected", facts.isProtected);
        textOrNull("printArea", facts.printArea);
        textOrNull("repeatedRows", facts.repeatedRows);
        textOrNull("repeatedColumns", facts.repeatedColumns);
        key("pageBreaks").integer(facts.pageBreaks);
        key("merges").integer(facts.merges);
        key("links").integer(facts.links);
        key("filter");
        if (facts.hasFilter) {
            _out.raw("{");
            _first = true;
            textOrNull("area", facts.filter.area);
            key("columns").integer(facts.filter.columns);
            flag("sorted", facts.filter.sorted);
            _out.raw("}");
        } else {
            _out.raw("null");
        }
        list("tables", static_cast<int>(facts.tables.size()), [&](int index) {
            key("name").text(facts.tables[static_cast<std::size_t>(index)].name);
            key("area").text(facts.tables[static_cast<std::size_t>(index)].area);
        });
        key("hiddenRows").integer(facts.hiddenRows);
        key("hiddenColumns").integer(facts.hiddenColumns);
        key("validationRules").integer(facts.validationRules);
        key("rowLevels").integer(facts.rowLevels);
        key("columnLevels").integer(facts.columnLevels);
    }

    void names() {
        auto* const names = dynamic_cast<vellum::IBookNames*>(&_book);
        list("names", names != nullptr ? names->nameTotal() : 0, [&](int index) {
            vellum::IBookNames::Name name;
            if (!names->nameAt(index, name)) return;
            key("name").text(name.text);
            const char* const scope = name.scope >= 0 ? _book.sheetNameAt(name.scope) : nullptr;
            key("sheet");
            scope != nullptr ? _out.text(scope) : _out.raw("null");
            flag("hidden", name.hidden);
            key("formula");
            name.formula ? _out.text(*name.formula) : _out.raw("null");
        });
        if (names == nullptr) return;
        const auto outside = names->outside();
        key("otherWorkbooks").integer(outside.otherBooks);
        key("addInFunctions").integer(outside.addInFunctions);
        key("ddeLinks").integer(outside.ddeLinks);
        key("lostFormulas").integer(outside.lostFormulas);
    }

    void kept() {
        auto* const kept = dynamic_cast<vellum::IBookKept*>(&_book);
        const int total = kept != nullptr ? kept->keptTotal() : 0;
        list("kept", total, [&](int index) {
            std::size_t size = 0;
            const char* const name = kept->keptAt(index, &size);
            key("name").text(name != nullptr ? name : "");
            key("bytes").integer(static_cast<long long>(size));
        });
    }

    Book& _book;
    JsonLines& _out;
    bool _first = true;  // no comma yet
};

}  // namespace

int infoJson(const std::string& path, std::ostream& out, std::ostream& errors) {
    std::string error;
    const BookPtr book = loadBook(path, error);
    if (!book) {
        errors << path << ": " << error << '\n';
        return 1;
    }
    {
        JsonLines lines(out);
        InfoLine(*book, lines).print(path);
    }
    if (out.flush()) return 0;
    errors << "can't write the report\n";
    return 1;
}

}  // namespace cli
