// A sheet in a book that has nothing but what cells need.
#pragma once
#include <memory>
#include <string>
#include <string_view>

#include "engine/failure/vlerror.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/features/defined_names.h"
#include "xlsx/layout/font_metrics.h"
#include "xlsx/package/book_context.h"
#include "xlsx/package/relationships.h"
#include "xlsx/parts/pictures.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/strings/shared_strings.h"
#include "xlsx/styles/styles.h"

namespace vellum::test {

template <class Tag>
class SmallBook final : public BookContextT<char, Tag> {
public:
    SmallBook() { _styles.attach(*this); }

    LastError& lastError() noexcept override { return _last; }
    bool isUtf8() const override { return utf8; }
    wchar_t listSeparator() const override { return separator; }
    xlsx::DefinedNames<Tag>& names() override { return _names; }
    const xlsx::FontMetrics& fontMetrics() const override { return metrics; }
    bool isR1C1() const override { return r1c1; }
    bool dates1904() const override { return false; }
    Styles<char, Tag>* findStyles() override { return &_styles; }
    Styles<char, Tag>& ensureStyles() override { return _styles; }
    SharedStrings<char, Tag>* findSharedStrings() override { return _strings.get(); }
    SharedStrings<char, Tag>& ensureSharedStrings() override {
        if (!_strings) _strings = std::make_unique<SharedStrings<char, Tag>>();
        return *_strings;
    }
    typename ooxml::dialect<Tag>::c_workbook& workbook() override { return _workbook; }
    std::string sheetPath(int) override { return {}; }
    XFile* findPart(std::string_view) override { return nullptr; }
    Relationships* findRelationshipsOf(std::string_view) override { return relationships.get(); }
    Relationships& ensureRelationshipsOf(std::string_view) override {
        if (!relationships) relationships = std::make_unique<Relationships>();
        return *relationships;
    }
    int activeSheet() override { return active; }
    void activate(int sheetIndex) override { active = sheetIndex; }
    XFile& putPart(const std::string&, std::unique_ptr<XFile>) override { throw vlerror("no parts here"); }
    ContentTypes& requireContentTypes() override { throw vlerror("no parts here"); }
    xlsx::PictureList& pictures() override { return _pictures; }

    std::string error() { return _last.text(); }

    wchar_t separator = L',';
    bool r1c1 = false;
    bool utf8 = true;  // char strings
    int active = 0;
    std::unique_ptr<Relationships> relationships;
    xlsx::FontMetrics metrics;

private:
    LastError _last;
    xlsx::PictureList _pictures;
    Styles<char, Tag> _styles;
    std::unique_ptr<SharedStrings<char, Tag>> _strings;
    typename ooxml::dialect<Tag>::c_workbook _workbook;
    xlsx::DefinedNames<Tag> _names{_workbook};
};

/// A sheet from the rows of its part, as XML.
template <class Tag = excelNormal_tag>
class TestSheet {
public:
    using Sheet = XMLSheetImplT<char, Tag>;

    explicit TestSheet(const std::string& rows, int firstRow = -1, int lastRow = -1, const std::string& before = "",
                       const std::string& behind = "") {
        const std::string xml = std::string("<worksheet xmlns=\"") + ns + "\">" + before + "<sheetData>" + rows +
                                "</sheetData>" + behind + "</worksheet>";
        _sheet = std::make_unique<Sheet>(PartBytes{xml, nullptr}, firstRow, lastRow);
        _sheet->bind(book, 0);
    }

    Sheet* operator->() { return _sheet.get(); }
    Sheet& operator*() { return *_sheet; }
    std::string error() { return book.error(); }

    /// The part as it would be saved.
    std::string saved() { return savedOf(*_sheet); }
    static std::string savedOf(Sheet& sheet) {
        std::string bytes;
        sheet.writeToPath(bytes);
        return bytes;
    }
    /// Only what stands in `sheetData`.
    std::string savedRows() {
        const std::string all = saved();
        const auto from = all.find("<sheetData>"), to = all.find("</sheetData>");
        return from == std::string::npos ? "" : all.substr(from + 11, to - from - 11);
    }
    std::string formula(int row, int col) {
        const char* const text = _sheet->readFormula(row, col, nullptr);
        return text ? std::string(text) : std::string("! ").append(error());
    }
    std::string string(int row, int col) {
        const char* const text = _sheet->readString(row, col, nullptr);
        return text ? std::string(text) : std::string("! ").append(error());
    }
    /// First row, end row, first column, end column; the filled area behind them.
    std::string areas() {
        std::string text;
        for (const int n :
             {_sheet->firstRow(), _sheet->lastRow(), _sheet->firstCol(), _sheet->lastCol(), _sheet->firstFilledRow(),
              _sheet->lastFilledRow(), _sheet->firstFilledColumn(), _sheet->lastFilledColumn()}) {
            text += std::to_string(n) + ' ';
        }
        return text;
    }

    SmallBook<Tag> book;

private:
    static constexpr const char* ns = std::is_same_v<Tag, excelStrict_tag>
                                          ? "http://purl.oclc.org/ooxml/spreadsheetml/main"
                                          : "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
    std::unique_ptr<Sheet> _sheet;
};

}  // namespace vellum::test
