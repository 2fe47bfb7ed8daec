// The binary workbook.
#pragma once
#include <cstdint>
#include <deque>
#include <iosfwd>
#include <memory>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "biff/book/formula_book.h"
#include "biff/container/xls.h"
#include "biff/globals/globals.h"
#include "biff/sheet/book_context.h"
#include "biff/sheet/sheet.h"
#include "biff/strings/rich_string.h"
#include "biff/strings/str_map.h"
#include "biff/styles/font.h"
#include "biff/styles/format.h"
#include "engine/api/iobjects.h"
#include "engine/base/book_base.h"
#include "engine/text/string_pool.h"

namespace vellum {

/// A workbook of the binary format: reads BIFF8 and BIFF5, writes BIFF8.
///
/// A book is new, with the formats and fonts that every workbook has and no sheet, or loaded. A load reads all of the
/// file at once and closes it. What the engine does not understand is kept as bytes and saved again at its place.
template <class CharT>
class BookImplT final : public BookBaseT<CharT>, public BookContext<CharT>, public IBookPictures {
public:
    BookImplT();
    BookImplT(const BookImplT&) = delete;
    BookImplT& operator=(const BookImplT&) = delete;
    ~BookImplT() override;

    // Files: book_files.cpp.
    bool loadFile(const CharT* path, const CharT* tempFile) override;
    bool loadFileSheet(const CharT* path, int sheetIndex, const CharT* tempFile) override;
    bool loadFileRows(const CharT* path, int sheetIndex, int firstRow, int lastRow, const CharT* tempFile) override;
    bool loadWithoutEmptyCells(const CharT* path) override;
    bool loadFileOutline(const CharT* path) override;
    bool saveFile(const CharT* path, bool useTemp) override;
    bool loadMemory(const void* data, std::size_t size, int sheetIndex, int firstRow, int lastRow) override;
    bool saveMemory(const char** data, std::size_t* size) override;

    // Sheets: book_sheets.cpp.
    ISheetT<CharT>* addSheet(const CharT* name, ISheetT<CharT>* source) override;
    ISheetT<CharT>* insertSheet(int index, const CharT* name, ISheetT<CharT>* source) override;
    ISheetT<CharT>* getSheet(int index) override;
    const CharT* sheetNameAt(int index) override;
    int sheetKindAt(int index) override;
    bool moveSheet(int srcIndex, int dstIndex) override;
    bool removeSheet(int index) override;
    int sheetCount() override;
    int activeSheetIndex() override;
    bool setActiveSheetIndex(int index) override;

    // Formats, fonts, rich strings: book_formats.cpp.
    IFormatT<CharT>* newFormat(IFormatT<CharT>* source) override;
    IFontT<CharT>* newFont(IFontT<CharT>* source) override;
    IRichStringT<CharT>* newRichString() override;
    int newCustomNumFormat(const CharT* text) override;
    const CharT* customNumFormatText(int id) override;
    IFormatT<CharT>* formatAt(int index) override;
    int formatTotal() override;
    IFontT<CharT>* fontAt(int index) override;
    int fontTotal() override;
    const CharT* defaultFontName(int* size) override;
    bool setDefaultFontSpec(const CharT* name, int size) override;

    // Settings, dates, colours: book_settings.cpp.
    double datePack(int year, int month, int day, int hour, int min, int sec, int msec) override;
    bool dateUnpack(double value, int* year, int* month, int* day, int* hour, int* min, int* sec, int* msec) override;
    int packColor(int red, int green, int blue) override;
    bool unpackColor(int color, int* red, int* green, int* blue) override;
    int addPictureLink(const CharT* path, bool insert) override;
    bool usesR1C1() override;
    bool setUsesR1C1(bool r1c1) override;
    bool usesRgbColors() override { return _rgb; }
    bool setUsesRgbColors(bool rgb) override;
    int calculationMode() override;
    bool setCalculationMode(int mode) override;
    int keptTotal() override;
    const char* keptAt(int index, std::size_t* size) override;
    int nameTotal() override;
    bool nameAt(int index, IBookNames::Name& name) override;
    IBookNames::Outside outside() override;
    int binaryVersion() override { return _globals.bof.vers; }
    bool isDate1904() override { return date1904(); }
    bool setDate1904(bool date1904) override;
    bool isTemplateFile() override { return _globals.isTemplate; }
    bool setTemplateFile(bool isTemplate) override;
    bool isWriteProtected() override { return _globals.isWriteProtected; }
    void release() override;

    // Pictures: book_pictures.cpp.
    int pictureTotal() override;
    int pictureAt(int index, const char** data, std::size_t* size) override;
    int addPictureFile(const CharT* path) override;
    int addPictureData(const void* data, std::size_t size) override;
    bool pictureSize(int index, int* width, int* height) override;
    bool isThumbnail(int) override { return false; }

    // For the book's sheets: where each concerns, see above.
    LastError& lastError() noexcept override { return this->_lastError; }
    StringPool& pool() override { return _pool; }
    [[nodiscard]] bool utf8() const override { return this->_locale.utf8(); }
    [[nodiscard]] char listSeparator() const override { return this->_locale.listSeparator(); }
    [[nodiscard]] std::uint16_t vers() const override { return _globals.bof.vers; }
    [[nodiscard]] bool date1904() const { return _globals.date1904.value != 0; }
    StrMap& strings() override { return _strings; }
    [[nodiscard]] const StrMap& strings() const override { return _strings; }
    std::wstring_view widen(const CharT* text) override;
    const wchar_t* widenToPool(const CharT* text) override;
    std::uint32_t addRichString(IRichStringT<CharT>* text) override;
    IRichStringT<CharT>* richString(std::uint32_t isst) override;
    std::uint32_t adoptString(const BookContext<CharT>& from, std::uint32_t isst) override;
    [[nodiscard]] FormatImplT<CharT>* xf(std::uint16_t ixfe) const override;
    [[nodiscard]] std::size_t xfCount() const override { return _formats.size(); }
    [[nodiscard]] std::uint16_t ixfeOf(const IFormatT<CharT>* format) const override;
    std::uint16_t adoptFormat(const BookContext<CharT>& from, std::uint16_t ixfe) override;
    [[nodiscard]] FontImplT<CharT>* fontAtPosition(std::size_t position) const override;
    [[nodiscard]] const wchar_t* numFormatText(std::uint16_t ifmt) const override;
    Palette& palette() override { return _globals.palette; }
    biff::DefinedNames& names() override { return _globals.names; }
    [[nodiscard]] const biff::DefinedNames& names() const override { return _globals.names; }
    formula::FormulaContext& formulas() override;
    drawing::DrawingGroup& drawingGroup() override { return _globals.drawingGroup; }
    biff::OpenSheets& openSheets() override { return _openSheets; }
    [[nodiscard]] std::size_t sheetTotal() const override { return _sheets.size(); }
    [[nodiscard]] SheetImplT<CharT>* sheetByIndex(std::size_t index) const override;
    [[nodiscard]] int indexOfSheet(const SheetImplT<CharT>& sheet) const override;
    void renameSheet(SheetImplT<CharT>& sheet, const CharT* name) override;
    [[nodiscard]] int sheetState(const SheetImplT<CharT>& sheet) const override;
    void setSheetState(SheetImplT<CharT>& sheet, int state) override;

    // For the book's formats and rich strings.
    /// Throws "incorrect font" for index 4 and beyond the list.
    FontImplT<CharT>& fontByWireIndex(std::uint16_t wireIndex);
    /// Position in the list, -1 for a font that is not of this book.
    [[nodiscard]] int fontPosition(const IFontT<CharT>* font) const;

    [[nodiscard]] const Globals& globals() const { return _globals; }

private:
    /// Which part of a file a load keeps; -1 stands for all.
    struct LoadScope {
        int sheetIndex = -1, firstRow = -1, lastRow = -1;
        bool noBlanks = false, outlineOnly = false;
    };

    void clear();
    void fillNewBook();
    bool loadNamed(const CharT* path, const LoadScope& scope);
    void load(std::iostream& stream, const LoadScope& scope);
    void readGlobals();
    void readSheets(const LoadScope& scope);
    void keepOneSheet(std::size_t index);
    void save(std::iostream& stream);
    void requireEqualSheetLists() const;

    SheetImplT<CharT>& makeSheet(std::size_t index, const CharT* name, ISheetT<CharT>* source);
    const wchar_t* checkedSheetName(const CharT* name, const SheetImplT<CharT>* renamed, bool& cut);
    /// The local names of the source for a sheet that has just got its place.
    void copyNames(const SheetImplT<CharT>& source, const SheetImplT<CharT>& made);
    void renumber(std::span<const int> newIndex);
    void activate(std::size_t index);
    [[nodiscard]] const BoundSheet8* findBoundSheet(const SheetImplT<CharT>& sheet) const;

    FontImplT<CharT>& addFont(IFontT<CharT>* source);
    FontImplT<CharT>& adoptFont(IFontT<CharT>& font);
    FormatImplT<CharT>& addFormat(IFormatT<CharT>* source);
    void copyFormat(IFormatT<CharT>& from, FormatImplT<CharT>& to);

    StringPool _pool;
    Xls _xls;
    Globals _globals;
    std::optional<biff::FormulaBook> _formulaBook;
    StrMap _strings;
    // Deques keep the place of what they hold: pointers to formats and fonts are what callers have.
    std::deque<FontImplT<CharT>> _fonts;
    std::deque<FormatImplT<CharT>> _formats;
    std::unordered_map<std::uint32_t, ExtStringProxy<CharT>> _richStrings;  // by index of their entry
    biff::OpenSheets _openSheets{_pool, _strings};
    std::vector<std::unique_ptr<SheetImplT<CharT>>> _sheets;
    struct KnownIxfe {
        const IFormatT<CharT>* format = nullptr;
        std::uint16_t ixfe = 0;
    };
    mutable KnownIxfe _lastIxfe{};  // asked for last
    bool _rgb = false, _r1c1 = false;
    std::wstring _widened;
    std::vector<std::pair<std::string, std::size_t>> _kept;  // what keptTotal counted
    std::vector<std::size_t> _listedNames;                   // what nameTotal counted
    std::vector<char> _saved;                                // what saveMemory returned last
};

extern template class BookImplT<char>;
extern template class BookImplT<wchar_t>;

}  // namespace vellum
