#include "xlsx/book/book_proxy.h"

#include <string_view>
#include <utility>

#include "engine/failure/guarded.h"
#include "xlsx/book/book.h"
#include "zip/messages.h"

namespace vellum {
namespace {

/// Want of memory is no sign of the other dialect.
bool isOutOfMemory(std::string_view text) {
    return text == "bad allocation" || text == "std::bad_alloc" || text == zip::msg::allocationFailure ||
           text == zip::msg::notEnoughMemory || text == zip::msg::bzipMemory;
}

}  // namespace

template <class CharT>
XMLBookProxy<CharT>::XMLBookProxy() : _book(std::make_unique<XMLBookImplT<CharT, excelNormal_tag>>()) {}

template <class CharT>
XMLBookProxy<CharT>::~XMLBookProxy() = default;

/// The old book puts back the locale that it had set when it goes; when memory is short it stays, with its text.
template <class CharT>
bool XMLBookProxy<CharT>::makeBook(bool strict, const char* errorText) {
    LastError unheard;
    return guarded(unheard, false, [&] {
        const auto put = [&](auto fresh) {
            if (errorText) fresh->setErrorText(errorText);
            _book = std::move(fresh);
        };
        if (strict) {
            put(std::make_unique<XMLBookImplT<CharT, excelStrict_tag>>());
        } else {
            put(std::make_unique<XMLBookImplT<CharT, excelNormal_tag>>());
        }
        _strict = strict;
        return true;
    });
}

template <class CharT>
template <class Load>
bool XMLBookProxy<CharT>::loadInEither(Load&& load) {
    _firstTryText.clear();
    if (load(*_book)) return true;
    const char* const text = _book->errorMessage();
    if (isOutOfMemory(text)) return false;
    LastError unheard;
    guarded(unheard, false, [&] { return _firstTryText = text, true; });
    const bool loaded = makeBook(!_strict) && load(*_book);
    if (loaded) _firstTryText.clear();
    return loaded;
}

template <class CharT>
bool XMLBookProxy<CharT>::loadFile(const CharT* path, const CharT* tempFile) {
    const bool firstDialect = _strict;
    if (loadInEither([&](IBookT<CharT>& book) { return book.loadFile(path, tempFile); })) return true;
    if (_strict == firstDialect) return false;  // there was no second try
    makeBook(false, _book->errorMessage());
    return false;
}

template <class CharT>
bool XMLBookProxy<CharT>::loadFileSheet(const CharT* path, int sheetIndex, const CharT* tempFile) {
    return loadInEither([&](IBookT<CharT>& book) { return book.loadFileSheet(path, sheetIndex, tempFile); });
}

template <class CharT>
bool XMLBookProxy<CharT>::loadFileRows(const CharT* path, int sheetIndex, int firstRow, int lastRow,
                                       const CharT* tempFile) {
    return loadInEither(
        [&](IBookT<CharT>& book) { return book.loadFileRows(path, sheetIndex, firstRow, lastRow, tempFile); });
}

template <class CharT>
bool XMLBookProxy<CharT>::loadMemory(const void* data, std::size_t size, int sheetIndex, int firstRow, int lastRow) {
    return loadInEither(
        [&](IBookT<CharT>& book) { return book.loadMemory(data, size, sheetIndex, firstRow, lastRow); });
}

template <class CharT>
void XMLBookProxy<CharT>::release() {
    const std::unique_ptr<XMLBookProxy> end(this);
}

template <class CharT>
int XMLBookProxy<CharT>::keptTotal() {
    return dynamic_cast<IBookKept&>(*_book).keptTotal();
}

template <class CharT>
const char* XMLBookProxy<CharT>::keptAt(int index, std::size_t* size) {
    return dynamic_cast<IBookKept&>(*_book).keptAt(index, size);
}

template <class CharT>
int XMLBookProxy<CharT>::nameTotal() {
    return dynamic_cast<IBookNames&>(*_book).nameTotal();
}

template <class CharT>
bool XMLBookProxy<CharT>::nameAt(int index, IBookNames::Name& name) {
    return dynamic_cast<IBookNames&>(*_book).nameAt(index, name);
}

template <class CharT>
IBookNames::Outside XMLBookProxy<CharT>::outside() {
    return dynamic_cast<IBookNames&>(*_book).outside();
}

template <class CharT>
bool XMLBookProxy<CharT>::pictureSize(int index, int* width, int* height) {
    return dynamic_cast<IBookPictures&>(*_book).pictureSize(index, width, height);
}

template <class CharT>
bool XMLBookProxy<CharT>::isThumbnail(int index) {
    return dynamic_cast<IBookPictures&>(*_book).isThumbnail(index);
}

template class XMLBookProxy<char>;
template class XMLBookProxy<wchar_t>;

}  // namespace vellum
