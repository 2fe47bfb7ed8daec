// Loading and saving.
#include <algorithm>
#include <numeric>

#include "biff/book/book.h"
#include "biff/container/memory_stream.h"
#include "biff/container/record_codec.h"
#include "biff/records/book_messages.h"
#include "engine/api/enums.h"
#include "engine/failure/guarded.h"
#include "engine/text/file_open.h"
#include "engine/text/file_save.h"

namespace vellum {

namespace {

/// Lends the stream to the compound file for as long as the work goes on.
class LentStream {
public:
    LentStream(Xls& xls, std::iostream& stream) : _xls(xls) { _xls.setStream(&stream); }
    LentStream(const LentStream&) = delete;
    LentStream& operator=(const LentStream&) = delete;
    ~LentStream() { _xls.setStream(nullptr); }

private:
    Xls& _xls;
};

constexpr int maxRows = 65536;

// A folder can be opened too, but not a byte of it can be read.
bool canBeRead(std::fstream& file) {
    if (!file.is_open()) return false;
    file.peek();
    if (file.bad()) return false;
    file.clear();  // an empty file is at its end
    return true;
}

}  // namespace

template <class CharT>
bool BookImplT<CharT>::loadFile(const CharT* path, const CharT*) {
    return loadNamed(path, {});
}

template <class CharT>
bool BookImplT<CharT>::loadFileSheet(const CharT* path, int sheetIndex, const CharT*) {
    return loadNamed(path, {.sheetIndex = sheetIndex});
}

template <class CharT>
bool BookImplT<CharT>::loadFileRows(const CharT* path, int sheetIndex, int firstRow, int lastRow, const CharT*) {
    return loadNamed(path, {.sheetIndex = sheetIndex, .firstRow = firstRow, .lastRow = lastRow});
}

template <class CharT>
bool BookImplT<CharT>::loadWithoutEmptyCells(const CharT* path) {
    return loadNamed(path, {.noBlanks = true});
}

template <class CharT>
bool BookImplT<CharT>::loadFileOutline(const CharT* path) {
    return loadNamed(path, {.outlineOnly = true});
}

template <class CharT>
bool BookImplT<CharT>::loadNamed(const CharT* path, const LoadScope& scope) {
    return guarded(
        this->_lastError, false,
        [&] {
            clear();
            if (path == nullptr) throw vlerror(biff::msg::loadNameNull);
            std::fstream file = openFile(path, forReading, _pool, utf8());
            if (!canBeRead(file)) throw vlerror(biff::msg::cantOpenForReading);
            load(file, scope);
            return true;
        },
        [&] {
            clear();
            fillNewBook();
        });
}

template <class CharT>
bool BookImplT<CharT>::loadMemory(const void* data, std::size_t size, int sheetIndex, int firstRow, int lastRow) {
    return guarded(
        this->_lastError, false,
        [&] {
            // The bytes may be what this book's saveMemory returned; they stay until the next such call.
            clear();
            const auto* const bytes = static_cast<const std::byte*>(data);
            MemoryStream stream(bytes == nullptr ? std::span<const std::byte>() : std::span(bytes, size));
            load(stream, {.sheetIndex = sheetIndex, .firstRow = firstRow, .lastRow = lastRow});
            return true;
        },
        [&] {
            clear();
            fillNewBook();
        });
}

template <class CharT>
void BookImplT<CharT>::load(std::iostream& stream, const LoadScope& scope) {
    const LentStream lent(_xls, stream);
    _xls.measure();
    std::uint64_t counter = 0;
    _xls.read(counter);
    readGlobals();
    _globals.finishLoad();
    if (!scope.outlineOnly) readSheets(scope);
    _xls.extractKeptStreams();
}

template <class CharT>
void BookImplT<CharT>::readGlobals() {
    while (const auto header = _xls.nextRecord()) {
        switch (header->id) {
            case record_id::Eof:
                _xls.skip(header->size);
                return;
            case record_id::SST:
                _strings.read(_xls, header->size);
                break;
            case record_id::Font:
                _fonts.emplace_back(*this, Font::read(_xls, header->size, _globals.isBiff5(), _pool));
                break;
            case record_id::XF: {
                Cursor body = _xls.body(header->size);
                _formats.emplace_back(
                    *this, static_cast<std::uint16_t>(_formats.size()),
                    _globals.isBiff5() ? readXfBiff5(body, header->size) : readXf(body, header->size));
                break;
            }
            default:
                _globals.read(_xls, *header, _pool);
        }
    }
}

template <class CharT>
void BookImplT<CharT>::readSheets(const LoadScope& scope) {
    const std::size_t count = _globals.boundSheets.size();
    if (scope.sheetIndex != allSheets && (scope.sheetIndex < 0 || static_cast<std::size_t>(scope.sheetIndex) >= count))
        throw vlerror(biff::msg::sheetIndexRange);

    SheetLoad wanted{.firstRow = scope.firstRow, .noBlanks = scope.noBlanks};
    if (scope.lastRow != allRows) wanted.endRow = std::clamp(scope.lastRow, -2, maxRows) + 1;
    const SheetLoad noRows{.firstRow = 0, .endRow = 0, .noBlanks = scope.noBlanks};

    for (std::size_t i = 0; i < count; ++i) {
        const bool keep = scope.sheetIndex == allSheets || static_cast<std::size_t>(scope.sheetIndex) == i;
        auto sheet = std::make_unique<SheetImplT<CharT>>(*this);
        sheet->setName(_globals.boundSheets[i].sheetName.text);
        // A sheet that is not wanted is read all the same: the next one begins where it ends.
        sheet->load(_xls, keep ? wanted : noRows);
        if (keep) {
            _sheets.push_back(std::move(sheet));
        } else {
            sheet->releaseStrings();
        }
    }
    if (scope.sheetIndex != allSheets) keepOneSheet(static_cast<std::size_t>(scope.sheetIndex));
}

// The other sheets are gone as if they had been removed.
template <class CharT>
void BookImplT<CharT>::keepOneSheet(std::size_t index) {
    std::vector<int> newIndex(_globals.boundSheets.size(), -1);
    newIndex[index] = 0;
    _globals.boundSheets = {_globals.boundSheets[index]};
    _globals.names.renumber(newIndex);
    _globals.rrTabId = {1};
    _globals.window1.itabFirst = 0;
    activate(0);
}

template <class CharT>
void BookImplT<CharT>::requireEqualSheetLists() const {
    if (_globals.boundSheets.size() != _sheets.size()) throw vlerror(biff::msg::sheetListsDiffer);
}

template <class CharT>
bool BookImplT<CharT>::saveFile(const CharT* path, bool) {
    return guarded(this->_lastError, false, [&] {
        if (path == nullptr) throw vlerror(biff::msg::saveNameNull);
        requireEqualSheetLists();
        _xls.reset(false);
        FileToSave file(fileName(path, _pool, utf8()));
        if (!file.isOpen()) throw vlerror(biff::msg::cantOpenForWriting);
        MemoryStream stream;
        save(stream);
        if (!file.write(stream.written())) throw vlerror(biff::msg::streamError);
        return true;
    });
}

template <class CharT>
bool BookImplT<CharT>::saveMemory(const char** data, std::size_t* size) {
    return guarded(this->_lastError, false, [&] {
        requireEqualSheetLists();
        _xls.reset(false);
        MemoryStream stream;
        save(stream);
        _saved = std::move(stream.written());
        if (data != nullptr) *data = _saved.data();
        if (size != nullptr) *size = _saved.size();
        return true;
    });
}

template <class CharT>
void BookImplT<CharT>::save(std::iostream& stream) {
    const LentStream lent(_xls, stream);
    std::vector<std::uint32_t> entries;
    _globals.writeFront(_xls);
    for (const auto& font : _fonts) font.record().write(_xls);
    _globals.writeNumFormats(_xls);
    for (const auto& format : _formats) writeFixed(_xls, format.xf());
    _globals.writeStyles(_xls);
    _globals.writeBoundSheets(_xls, entries);
    _globals.writeLinks(_xls);
    _strings.write(_xls);
    _globals.writeBack(_xls);

    std::vector<std::uint32_t> starts;
    for (const auto& sheet : _sheets) {
        starts.push_back(_xls.currentWritePosition());
        sheet->save(_xls);
    }
    for (std::size_t i = 0; i < entries.size(); ++i)
        _xls.patchInt32(entries[i] + static_cast<std::uint32_t>(recordHeaderSize), starts[i]);
    _xls.close();
}

}  // namespace vellum
