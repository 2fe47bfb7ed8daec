// Loading a package into the book.
#include <algorithm>
#include <filesystem>
#include <system_error>

#include "engine/failure/guarded.h"
#include "engine/failure/vlerror.h"
#include "xlsx/book/book.h"
#include "xlsx/package/content_type_names.h"
#include "xlsx/package/content_types.h"
#include "xlsx/package/messages.h"
#include "xlsx/package/numeric_locale.h"
#include "xlsx/package/part_path.h"
#include "xlsx/package/part_windows.h"
#include "xlsx/package/relationships.h"
#include "xlsx/parts/comments.h"
#include "xlsx/parts/drawing.h"
#include "xlsx/parts/drawing_parts.h"
#include "xlsx/parts/form_control.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/strings/shared_strings.h"
#include "xlsx/styles/styles.h"
#include "xlsx/styles/theme.h"
#include "zip/entry_stream.h"
#include "zip/messages.h"
#include "zip/zip_error.h"
#include "zip/zip_reader.h"

namespace vellum {
namespace {

/// The object of a part that is neither the workbook nor a worksheet.
template <class CharT, class Tag>
std::unique_ptr<XFile> partFactory(const PartBytes& part, std::string_view contentType) {
    if (contentType == type::relationships) return std::make_unique<Relationships>(part);
    if (contentType == type::styles) return std::make_unique<Styles<CharT, Tag>>(part);
    if (contentType == type::drawing) return std::make_unique<Drawing<Tag>>(part);
    if (contentType == type::sharedStrings) return std::make_unique<SharedStrings<CharT, Tag>>(part);
    if (contentType == type::theme) return std::make_unique<XMLTheme<Tag>>(part);
    if (contentType == type::table) return std::make_unique<Table<Tag>>(part);
    if (contentType == type::comments) return std::make_unique<Comments<Tag>>(part);
    if (contentType == type::controlProperties) return std::make_unique<XMLControlPr<CharT, Tag>>(part);
    std::vector<char> bytes =
        part.path ? BinaryFile::readWhole(*part.path) : std::vector<char>(part.memory.begin(), part.memory.end());
    if (contentType == type::chartsheet) return std::make_unique<XMLChartSheet>(std::move(bytes));
    return std::make_unique<BinaryFile>(std::move(bytes));
}

/// A worksheet that its producer did not declare, by its first bytes.
bool looksLikeWorksheet(const PartBytes& part) {
    constexpr std::size_t head = 100;
    if (!part.path) return part.memory.substr(0, head).find("<worksheet xmlns=") != std::string_view::npos;
    const std::vector<char> bytes = BinaryFile::readWhole(*part.path);
    return std::string_view(bytes.data(), std::min(bytes.size(), head)).find("<worksheet xmlns=") !=
           std::string_view::npos;
}

/// Opens the archive; a file that has no directory of entries is no package at all.
template <class Open>
void openArchive(Open&& open) {
    try {
        open();
    } catch (const zip::ZipError& error) {
        if (std::string_view(error.what()) == zip::msg::noCentralDirectory) throw vlerror(xlsx::msg::notXlsx);
        throw;
    }
}

}  // namespace

/// One load: walks the entries once, in archive order.
template <class CharT, class Tag>
class XMLBookImplT<CharT, Tag>::Loader {
public:
    Loader(XMLBookImplT& book, zip::ZipReader& reader, const LoadScope& scope)
        : _book(book), _reader(reader), _scope(scope) {}

    void run() {
        readContentTypes();
        readDeclaredMainPath();
        for (std::size_t i = 0; i < _reader.entryCount(); ++i) {
            // Not a second one either: the first is in use.
            if (!sameIgnoringCase(partPath(_reader.entryName(i)), ContentTypes::pathInPackage)) readEntry(i);
        }
        if (_book._mainPath.empty()) throw vlerror(xlsx::msg::mainPartNotFound);
        _book._folder = folderOf(_book._mainPath);
        if (_scope.outlineOnly) return readRelationshipsOfOutline();
        findRelationships();
        if (_scope.sheetIndex >= 0 && !_cut) cutLate();
        findStrings();
        findStyles();
        _book._pictures.attachParts(_book);
    }

private:
    /// Bytes of an entry, in memory or in the temporary file, for as long as it is read. The file is gone afterwards.
    class Entry {
    public:
        Entry(zip::ZipReader& reader, std::size_t index, const std::string& tempFile) {
            if (tempFile.empty()) {
                _memory = reader.extract(index);
                _part.memory = {_memory.data(), _memory.size()};
            } else {
                _part.path = &tempFile;
                try {
                    reader.extractToFile(index, tempFile);
                } catch (...) {
                    removeFile();
                    throw;
                }
            }
        }
        ~Entry() { removeFile(); }
        Entry(const Entry&) = delete;
        Entry& operator=(const Entry&) = delete;
        const PartBytes& part() const { return _part; }

    private:
        void removeFile() {
            std::error_code ignored;
            if (_part.path) std::filesystem::remove(*_part.path, ignored);
        }

        zip::ZipMemoryBuffer _memory;
        PartBytes _part = {};
    };

    void readContentTypes() {
        for (std::size_t i = 0; i < _reader.entryCount(); ++i) {
            if (!sameIgnoringCase(partPath(_reader.entryName(i)), ContentTypes::pathInPackage)) continue;
            const Entry entry(_reader, i, _scope.tempFile);
            _book._contentTypes =
                &_book.addPart(std::string(ContentTypes::pathInPackage), std::make_unique<ContentTypes>(entry.part()));
            return;
        }
        throw vlerror(xlsx::msg::contentTypesNotFoundOnLoad);
    }

    /// Some packages give every .xml the workbook's type by default: then the package's own relationships tell which
    /// part it is. Where they do not, each such part counts, and the last of them is the workbook.
    void readDeclaredMainPath() {
        std::size_t mainParts = 0;
        for (std::size_t i = 0; i < _reader.entryCount(); ++i) mainParts += type::isMain(typeOf(i));
        if (mainParts < 2) return;
        std::string declared;
        for (std::size_t i = 0; i < _reader.entryCount(); ++i) {
            if (partPath(_reader.entryName(i)) != "/_rels/.rels" || typeOf(i) != type::relationships) continue;
            const Entry entry(_reader, i, _scope.tempFile);
            const auto targets = Relationships(entry.part()).targetsOfEnding("officeDocument");
            if (!targets.empty()) declared = absoluteTarget("", targets[0]);
        }
        for (std::size_t i = 0; i < _reader.entryCount(); ++i) {
            if (partPath(_reader.entryName(i)) == declared && type::isMain(typeOf(i))) _declaredMainPath = declared;
        }
    }

    std::string typeOf(std::size_t index) const {
        return _book._contentTypes->typeOf(partPath(_reader.entryName(index)));
    }

    bool isMainPart(const std::string& path, const std::string& contentType) const {
        return type::isMain(contentType) && (_declaredMainPath.empty() || path == _declaredMainPath);
    }

    void readEntry(std::size_t index) {
        const std::string path = partPath(_reader.entryName(index));
        const std::string contentType = _book._contentTypes->typeOf(path);
        if (contentType.empty()) return;
        if (isMainPart(path, contentType)) return readMain(index, path);
        if (_scope.outlineOnly) return;
        if (!_wantedSheet.empty() && contentType == type::worksheet && path != _wantedSheet) return;
        readPart(index, path, contentType);
    }

    void readMain(std::size_t index, const std::string& path) {
        const Entry entry(_reader, index, _scope.tempFile);
        _book._root = c_workbook();  // of an entry that stands in the archive twice, the later counts
        _book.read(entry.part());
        if (!_book._mainPath.empty()) _book._parts.erase(_book._mainPath);
        _book._parts.insert_or_assign(path, nullptr);
        _book._mainPath = path;
        _book._relationships = dynamic_cast<Relationships*>(_book.findPart(relsPathOf(path)));
        if (_scope.sheetIndex >= 0 && _book._relationships) cut();
    }

    /// A large worksheet is parsed while it is unpacked. Null for a small one, and for one with which anything is
    /// wrong: read as a whole it tells what.
    std::unique_ptr<Sheet> readInWindows(std::size_t index) {
        const std::unique_ptr<zip::EntryStream> stream = _reader.stream(index);
        if (!stream) return nullptr;
        try {
            PartWindows windows(*stream);
            auto sheet = std::make_unique<Sheet>(windows, _scope.firstRow, _scope.lastRow);
            windows.finish();
            return sheet;
        } catch (const std::exception&) {
            return nullptr;
        }
    }

    void readPart(std::size_t index, const std::string& path, const std::string& contentType) {
        if (contentType == type::worksheet && _scope.tempFile.empty()) {
            if (auto sheet = readInWindows(index)) {
                _book.addPart(path, std::move(sheet));
                return;
            }
        }
        const Entry entry(_reader, index, _scope.tempFile);
        if (contentType == type::worksheet || (contentType == type::plainXml && looksLikeWorksheet(entry.part()))) {
            _book.addPart(path, std::make_unique<Sheet>(entry.part(), _scope.firstRow, _scope.lastRow));
            return;
        }
        XFile& part = _book.addPart(path, partFactory<CharT, Tag>(entry.part(), contentType));
        if (contentType.size() > 5 && contentType.starts_with("image") && dynamic_cast<BinaryFile*>(&part)) {
            _book._pictures.registerPart(path);
        }
    }

    /// Leaves only the wanted sheet in the sheet list.
    void cut() {
        _book._folder = folderOf(_book._mainPath);
        _wantedSheet = _book.sheetPath(_scope.sheetIndex);
        _book.cutToSheet(_scope.sheetIndex);
        _cut = true;
    }

    /// The relationships came behind the workbook: the other sheets were read and go now.
    void cutLate() {
        cut();
        if (_wantedSheet.empty()) return;
        for (auto part = _book._parts.begin(); part != _book._parts.end();) {
            const bool other = part->first != _wantedSheet && dynamic_cast<Sheet*>(part->second.get());
            part = other ? _book._parts.erase(part) : std::next(part);
        }
    }

    void findRelationships() {
        XFile* const part = _book.findPart(relsPathOf(_book._mainPath));
        if (!part) throw vlerror(xlsx::msg::relationshipsMissing);
        _book._relationships = dynamic_cast<Relationships*>(part);
        if (!_book._relationships) throw vlerror(xlsx::msg::relationshipsNotFoundOnLoad);
    }

    /// An outline holds no part but those that tell where parts are; it may lack these, too.
    void readRelationshipsOfOutline() {
        const std::string ofMain = relsPathOf(_book._mainPath);
        for (std::size_t i = 0; i < _reader.entryCount(); ++i) {
            const std::string path = partPath(_reader.entryName(i));
            if ((path == ofMain || path == "/_rels/.rels") && typeOf(i) == type::relationships) {
                readPart(i, path, std::string(type::relationships));
            }
        }
        _book._relationships = dynamic_cast<Relationships*>(_book.findPart(ofMain));
    }

    /// The part of the first Transitional and of the first Strict relationship of a type; the later hit wins.
    template <class T>
    T* findByType(std::string_view ending, bool strictToo = true) {
        T* found = nullptr;
        for (const char* head : {rel::transitional, rel::strict}) {
            if (head == rel::strict && !strictToo) break;
            const std::string target = _book._relationships->firstTargetOfType(std::string(head) + std::string(ending));
            if (target.empty()) continue;
            if (T* const part = dynamic_cast<T*>(_book.findPart(absoluteTarget(_book._folder, target)))) found = part;
        }
        return found;
    }

    void findStrings() { _book._sharedStrings = findByType<SharedStrings<CharT, Tag>>("sharedStrings"); }

    void findStyles() {
        _book._styles = findByType<Styles<CharT, Tag>>("styles");
        if (!_book._styles) return;
        _book._styles->attach(_book);
        _book._styles->setTheme(findByType<XMLTheme<Tag>>("theme", false));
    }

    XMLBookImplT& _book;
    zip::ZipReader& _reader;
    const LoadScope& _scope;
    std::string _declaredMainPath;
    std::string _wantedSheet;
    bool _cut = false;
};

template <class CharT, class Tag>
void XMLBookImplT<CharT, Tag>::clear() {
    _contentTypes = nullptr;
    _relationships = nullptr;
    _styles = nullptr;
    _sharedStrings = nullptr;
    _placed.clear();
    _parts.clear();
    _pictures.clear();
    _mainPath.clear();
    _outline = false;
    _saveBuffer.reset();
    this->_root = c_workbook();
    _names.changed();
    _sheetFacts = {};
}

/// Runs a load; whatever fails, the book is empty then and can load again.
template <class CharT, class Tag>
template <class Open>
bool XMLBookImplT<CharT, Tag>::loadWith(const LoadScope& scope, Open&& open) {
    return guarded(
        this->_lastError, false,
        [&] {
            const bool rgb = _styles && _styles->usesRgbColors();
            zip::ZipReader reader;
            const NumericLocale numericLocale;
            clear();
            _outline = scope.outlineOnly;
            openArchive([&] { open(reader); });
            Loader(*this, reader, scope).run();
            if (rgb && _styles) _styles->setUsesRgbColors(true);
            readDefaultFontSize();
            return true;
        },
        [this] { clear(); });
}

template <class CharT, class Tag>
std::string XMLBookImplT<CharT, Tag>::narrowPath(const CharT* path) {
    if constexpr (std::is_same_v<CharT, char>) {
        return path;
    } else {
        this->_conversion.setWide(path);
        return this->_conversion.narrow(true);
    }
}

template <class CharT, class Tag>
std::wstring XMLBookImplT<CharT, Tag>::widen(const CharT* text) {
    if constexpr (std::is_same_v<CharT, wchar_t>) {
        return text;
    } else {
        this->_conversion.setNarrow(text);
        return this->_conversion.wide(isUtf8());
    }
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::loadNamed(const CharT* path, const CharT* tempFile, LoadScope scope) {
    return loadWith(scope, [&](zip::ZipReader& reader) {
        if (!path) throw vlerror(xlsx::msg::loadNameNull);
        if (tempFile) scope.tempFile = narrowPath(tempFile);
        reader.openForRead(narrowPath(path));
    });
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::loadFile(const CharT* path, const CharT* tempFile) {
    return loadNamed(path, tempFile, {});
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::loadFileSheet(const CharT* path, int sheetIndex, const CharT* tempFile) {
    LoadScope scope;
    scope.sheetIndex = sheetIndex;
    return loadNamed(path, tempFile, scope);
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::loadFileRows(const CharT* path, int sheetIndex, int firstRow, int lastRow,
                                            const CharT* tempFile) {
    LoadScope scope;
    scope.sheetIndex = sheetIndex;
    scope.firstRow = firstRow;
    scope.lastRow = lastRow;
    return loadNamed(path, tempFile, scope);
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::loadWithoutEmptyCells(const CharT*) {
    return guarded(this->_lastError, false, []() -> bool { throw vlerror(xlsx::msg::noEmptyCellsLoadInXlsx); });
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::loadFileOutline(const CharT* path) {
    LoadScope scope;
    scope.outlineOnly = true;
    return loadNamed(path, nullptr, scope);
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::loadMemory(const void* data, std::size_t size, int sheetIndex, int firstRow,
                                          int lastRow) {
    LoadScope scope;
    scope.sheetIndex = sheetIndex;
    scope.firstRow = firstRow;
    scope.lastRow = lastRow;
    return loadWith(scope, [&](zip::ZipReader& reader) { reader.openForRead(data, size); });
}

}  // namespace vellum
