#include "host/sources/workbook_source.h"

#include <memory>

#include "host/interface/driver_messages.h"
#include "host/interface/host.h"
#include "host/interface/observer.h"
#include "host/sources/book_calls.h"
#include "host/sources/options.h"
#include "host/sources/source_list.h"
#include "platform/liblingua.h"

namespace quillet {
namespace {

constexpr int pathBufferSize = 1024;
constexpr int fileNameEncoding = -3;  // of LINGconvstrto
constexpr int upToNul = -1;

struct ReleaseBook {
    void operator()(Book* book) const { releaseBook(book); }
};
using OwnedBook = std::unique_ptr<Book, ReleaseBook>;

void* report(HostContext* context, const char* text, DriverErrorCode code) {
    hostApi().hostDriverError(context, translate(text), code);
    return nullptr;
}

/// The engine's own text, in the engine's own words. Without one nothing is said.
void reportEngine(HostContext* context, Book* book, DriverErrorCode code) {
    const char* const text = bookErrorMessage(book);
    if (text && *text) hostApi().hostDriverError(context, text, code);
}

bool load(HostContext* context, Book* book, const char* path, DriverErrorCode failure) {
    if (bookLoadFile(book, LINGconvstrto(fileNameEncoding, path, upToNul, 0))) return true;
    reportEngine(context, book, failure);
    return false;
}

/// Loads the file when there is one; otherwise makes it, so that one that cannot be made fails here, and leaves the
/// book empty. So does a file without a byte, as a statement that failed may leave it: there is nothing to lose.
bool loadForUpdate(HostContext* context, Book* book, const char* path, std::uint32_t* openFlags) {
    const HostApi& host = hostApi();
    if (host.hostOpenStream(context, hostStreamQuietly | hostStreamBinary, path) >= 0) {
        char first;
        const bool empty = host.hostStreamRead(context, &first, 1) == 0;
        host.hostCloseStream(context, hostInputStream);
        return empty || load(context, book, path, errLoadForUpdate);
    }
    if (host.hostOpenStream(context, hostStreamWriting | hostStreamBinary, path) < 0) {
        *openFlags |= hostOpenNoStream;
        return false;
    }
    host.hostCloseStream(context, hostOutputStream);
    return true;
}

}  // namespace

void* openWorkbook(HostContext* context, std::uint32_t* openFlags, const char* name) {
    *openFlags |= hostOpenSet;
    const bool update = *openFlags & hostOpenUpdate;
    SpecialValues specialValues;
    std::int32_t bufferSize = defaultBufferSize;
    std::int32_t autoBase = 0;
    const char* const given = name;
    const std::uint32_t flags = parseOptions(0, &name, &bufferSize, &autoBase, &specialValues);

    char path[pathBufferSize];
    const int mode = static_cast<int>(*openFlags & hostOpenUpdate) | hostResolveAlways;
    if (!*name || hostApi().hostResolvePath(context, name, path, pathBufferSize, mode) != 0) {
        return report(context, msg::accessDenied, errAccess);
    }

    int lookupError;
    DriverContext* const found = findSource(context, update, &workbookTableOps, path, &lookupError);
    if (found || lookupError) {
        *openFlags &= ~std::uint32_t{hostOpenFound};
        if (observer != nullptr && found != nullptr) observer->sourceOpened(*found, given);
        return found;
    }

    OwnedBook book(*openFlags & hostOpenXmlEngine ? createXmlBook() : createBook());
    if (!book) return report(context, msg::cannotCreateBook, errEngine);
    bookSetLocale(book.get(), "UTF-8");
    const bool ready =
        update ? loadForUpdate(context, book.get(), path, openFlags) : load(context, book.get(), path, errLoad);
    if (!ready) return nullptr;

    DriverContext* const source = createSource(path, bufferSize, true);
    if (!source) return report(context, msg::outOfMemory, errNoMemory);
    source->hostContext = context;
    source->ops = &workbookTableOps;
    source->autoIndexBase = autoBase;
    source->optionFlags = update ? flags | optUpdate : flags;
    *source->specialValues = specialValues;
    source->backing = book.release();
    *openFlags &= ~std::uint32_t{hostOpenFound};
    linkSource(source);
    if (observer != nullptr) observer->sourceOpened(*source, given);
    return source;
}

void* openXmlWorkbook(HostContext* context, std::uint32_t* openFlags, const char* name) {
    *openFlags |= hostOpenXmlEngine;
    return openWorkbook(context, openFlags, name);
}

int closeWorkbook(HostContext* context, void* opened) {
    auto* const source = static_cast<DriverContext*>(opened);
    if (!releaseSource(source)) return 0;
    const OwnedBook book(source->backing);
    int result = 0;
    if ((source->optionFlags & optUpdate) && !bookSaveFile(book.get(), source->path)) {
        reportEngine(context, book.get(), errSave);
        result = 1;
    }
    destroySource(source);
    return result;
}

}  // namespace quillet
