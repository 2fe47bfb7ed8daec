// The Open XML workbook.
#pragma once
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "engine/api/iobjects.h"
#include "engine/base/book_base.h"
#include "engine/text/text_hash.h"
#include "ooxml/generated/dialect.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/features/defined_names.h"
#include "xlsx/layout/font_metrics.h"
#include "xlsx/package/book_context.h"
#include "xlsx/package/part_map.h"
#include "xlsx/package/xml_file.h"
#include "xlsx/parts/pictures.h"

namespace zip {
class ZipReader;
}

namespace vellum {

class ContentTypes;
class Relationships;
template <class CharT, class Tag>
class XMLSheetImplT;
template <class Tag>
class XMLTheme;

/// A workbook of the Open XML format in one of its two dialects: the main part of a package, and the owner of all its
/// parts. The bound workbook element is the sheet list; there is no copy of it. Loading reads all parts at once and
/// closes the file, saving writes them all anew.
template <class CharT, class Tag>
class XMLBookImplT final : public BookBaseT<CharT>,
                           public XmlFile<typename ooxml::dialect<Tag>::c_workbook>,
                           public BookContextT<CharT, Tag>,
                           public IBookPictures {
public:
    using c_workbook = typename ooxml::dialect<Tag>::c_workbook;
    using Sheet = XMLSheetImplT<CharT, Tag>;

    XMLBookImplT();
    ~XMLBookImplT() override;
    XMLBookImplT(const XMLBookImplT&) = delete;
    XMLBookImplT& operator=(const XMLBookImplT&) = delete;

    // Loading: book_load.cpp; saving: book_save.cpp.
    bool loadFile(const CharT* path, const CharT* tempFile) override;
    bool loadFileSheet(const CharT* path, int sheetIndex, const CharT* tempFile) override;
    bool loadFileRows(const CharT* path, int sheetIndex, int firstRow, int lastRow, const CharT* tempFile) override;
    bool loadWithoutEmptyCells(const CharT* path) override;
    bool loadFileOutline(const CharT* path) override;
    bool loadMemory(const void* data, std::size_t size, int sheetIndex, int firstRow, int lastRow) override;
    bool saveFile(const CharT* path, bool useTemp) override;
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

    // Formats, fonts, strings: book_styles.cpp.
    IFormatT<CharT>* newFormat(IFormatT<CharT>* source) override;
    IFontT<CharT>* newFont(IFontT<CharT>* source) override;
    IRichStringT<CharT>* newRichString() override;
    int newCustomNumFormat(const CharT* text) override;
    const CharT* customNumFormatText(int id) override;
    IFormatT<CharT>* formatAt(int index) override;
    int formatTotal() override;
    IFontT<CharT>* fontAt(int index) override;
    int fontTotal() override;
    int packColor(int red, int green, int blue) override;
    bool unpackColor(int color, int* red, int* green, int* blue) override;
    const CharT* defaultFontName(int* size) override;
    bool setDefaultFontSpec(const CharT* name, int size) override;
    bool usesRgbColors() override;
    bool setUsesRgbColors(bool rgb) override;

    // Pictures: book_pictures.cpp.
    int pictureTotal() override;
    int pictureAt(int index, const char** data, std::size_t* size) override;
    int addPictureFile(const CharT* path) override;
    int addPictureData(const void* data, std::size_t size) override;
    int addPictureLink(const CharT* path, bool insert) override;
    bool pictureSize(int index, int* width, int* height) override;
    bool isThumbnail(int index) override;

    // Settings and dates: book_settings.cpp.
    double datePack(int year, int month, int day, int hour, int min, int sec, int msec) override;
    bool dateUnpack(double value, int* year, int* month, int* day, int* hour, int* min, int* sec, int* msec) override;
    bool usesR1C1() override;
    bool setUsesR1C1(bool r1c1) override;
    int calculationMode() override;
    bool setCalculationMode(int mode) override;
    int binaryVersion() override { return 0; }
    bool isDate1904() override;
    bool setDate1904(bool date1904) override;
    bool isTemplateFile() override;
    bool setTemplateFile(bool isTemplate) override;
    bool isWriteProtected() override;
    int keptTotal() override;
    const char* keptAt(int index, std::size_t* size) override;
    int nameTotal() override;
    bool nameAt(int index, IBookNames::Name& name) override;
    IBookNames::Outside outside() override;
    void release() override;

    // For the book's parts.
    LastError& lastError() noexcept override { return this->_lastError; }
    bool isUtf8() const override { return this->_locale.utf8(); }
    wchar_t listSeparator() const override { return static_cast<wchar_t>(this->_locale.listSeparator()); }
    xlsx::DefinedNames<Tag>& names() override { return _names; }
    const xlsx::FontMetrics& fontMetrics() const override { return _defaultFontMetrics; }
    bool isR1C1() const override;
    bool dates1904() const override;
    Styles<CharT, Tag>* findStyles() override { return _styles; }
    Styles<CharT, Tag>& ensureStyles() override;
    SharedStrings<CharT, Tag>* findSharedStrings() override { return _sharedStrings; }
    SharedStrings<CharT, Tag>& ensureSharedStrings() override;
    c_workbook& workbook() override { return this->_root; }
    std::string sheetPath(int sheetIndex) override;
    XFile* findPart(std::string_view path) override;
    XFile& putPart(const std::string& path, std::unique_ptr<XFile> part) override;
    Relationships* findRelationshipsOf(std::string_view path) override;
    Relationships& ensureRelationshipsOf(std::string_view path) override;
    ContentTypes& requireContentTypes() override;
    xlsx::PictureList& pictures() override { return _pictures; }
    int activeSheet() override;
    void activate(int sheetIndex) override;

    /// For the proxy, which carries a text over to a fresh book.
    void setErrorText(const char* text) { this->_lastError.set(text); }

private:
    /// Which part of a package a load keeps; -1 stands for all.
    struct LoadScope {
        int sheetIndex = -1, firstRow = -1, lastRow = -1;
        std::string tempFile;  // parts go through this file when it has a name
        bool outlineOnly = false;
    };

    /// What a new sheet has to know of all others, kept while sheets are added one by one.
    struct SheetFacts {
        bool known = false;
        unsigned renames = 0;                              // of the names that are known
        std::unordered_set<std::wstring, TextHash> names;  // folded
        unsigned lastId = 0, lastFile = 0;                 // the highest numbers
    };

    class Loader;

    void clear();
    void fillNewBook();
    std::string narrowPath(const CharT* path);
    std::wstring widen(const CharT* text);
    template <class Open>
    bool loadWith(const LoadScope& scope, Open&& open);
    bool loadNamed(const CharT* path, const CharT* tempFile, LoadScope scope);

    void prepareSave();
    bool isKept(std::string_view path, const XFile* part) const;
    void dropCalcChain();
    void dropDangling();
    void setMainTypeByName(std::string_view path);
    template <class Visit>
    void eachPartToSave(Visit&& visit);
    void saveNamed(const std::string& path, bool useTemp);

    /// Puts a part in the map, in the place of an older one of that name.
    template <class T>
    T& addPart(const std::string& path, std::unique_ptr<T> part) {
        T& added = *part;
        if (!_placed.empty()) {
            if (const auto old = _parts.find(path); old != _parts.end()) forgetPlaced(old->second.get());
        }
        _parts.insert_or_assign(path, std::move(part));
        return added;
    }
    /// The object of an entry of the map.
    XFile& partOf(const std::unique_ptr<XFile>& entry) { return entry ? *entry : *this; }
    bool dropPart(std::string_view path);
    template <class T>
    T& makeMainPart(const std::string& kind, std::string_view contentType);
    const typename ooxml::dialect<Tag>::sml::c_CT_Sheet& sheetElement(int index) const;
    Sheet* findSheet(int index);
    Relationships& requireRelationships();
    ISheetT<CharT>& makeSheet(int index, const CharT* name, ISheetT<CharT>* source);
    const Sheet* ownSheet(ISheetT<CharT>* source);
    std::string addSheetPart(const std::string& path, std::unique_ptr<Sheet> sheet);
    void listSheet(int index, const std::wstring& name, const std::string& id);
    void bindPlaced(std::size_t first);
    void forgetPlaced(XFile* part);
    SheetFacts& sheetFacts();
    std::wstring checkedSheetName(const CharT* name, bool& cut);
    std::string makeSheetPath();
    void copyRelationships(std::string_view sourcePath, std::string_view path);
    void copyLocalNames(int sourceIndex, int index, const std::wstring& sourceName, const std::wstring& name);
    void removeNamesOfSheet(int index);
    void readDefaultFontSize();
    void cutToSheet(int index);
    void clampFirstSheet();
    typename ooxml::dialect<Tag>::sml::c_CT_CalcPr& ensureCalcPr();

    // Known to look-ups: the objects stand in _parts.
    ContentTypes* _contentTypes = nullptr;
    Relationships* _relationships = nullptr;  // of the main part
    Styles<CharT, Tag>* _styles = nullptr;
    SharedStrings<CharT, Tag>* _sharedStrings = nullptr;

    xlsx::PartMap _parts;  // the main part is the book itself: its entry has no object
    std::string _mainPath;
    bool _outline = false;  // no sheet was loaded, so that nothing whole can be saved
    std::string _folder;    // of the main part, "/xl" in a new book
    xlsx::DefinedNames<Tag> _names{this->_root};
    SheetFacts _sheetFacts;
    std::vector<Sheet*> _placed;  // by place in the list, those that were told it; null for others
    xlsx::FontMetrics _defaultFontMetrics;
    xlsx::PictureList _pictures;
    struct FreeBuffer {
        void operator()(char* bytes) const;
    };
    std::unique_ptr<char, FreeBuffer> _saveBuffer;
};

extern template class XMLBookImplT<char, excelNormal_tag>;
extern template class XMLBookImplT<char, excelStrict_tag>;
extern template class XMLBookImplT<wchar_t, excelNormal_tag>;
extern template class XMLBookImplT<wchar_t, excelStrict_tag>;

}  // namespace vellum
