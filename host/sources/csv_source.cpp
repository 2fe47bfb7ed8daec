#include "host/sources/csv_source.h"

#include <cstring>
#include <new>

#include "host/interface/driver_messages.h"
#include "host/interface/host.h"
#include "host/interface/observer.h"
#include "host/sources/csv_load.h"
#include "host/sources/csv_save.h"
#include "host/sources/csv_table.h"
#include "host/sources/source_list.h"

namespace quillet {
namespace {

/// How the stream for a source came up.
enum class Opened { failed, loading, created };

/// For update a file that cannot be read is made, so that one that cannot be made either fails here.
Opened openStream(HostContext* context, bool update, const char* name) {
    const HostApi& host = hostApi();
    if (!update) return host.hostOpenStream(context, hostStreamReading, name) < 0 ? Opened::failed : Opened::loading;
    if (host.hostOpenStream(context, hostStreamQuietly, name) >= 0) return Opened::loading;
    if (host.hostOpenStream(context, hostStreamWriting, name) < 0) return Opened::failed;
    host.hostCloseStream(context, hostOutputStream);
    return Opened::created;
}

void applyOptions(CsvTable& table, const CsvOptions& options) {
    if (options.fieldSep) table.fieldSep = options.fieldSep;
    if (options.decimalSep) table.decimalSep = options.decimalSep;
    if (options.trueText[0]) std::memcpy(table.trueText, options.trueText, sizeof table.trueText);
    if (options.falseText[0]) std::memcpy(table.falseText, options.falseText, sizeof table.falseText);
}

CsvTable* tableOf(DriverContext* source) {
    return static_cast<CsvTable*>(source->backing);
}

void destroy(DriverContext* source) {
    delete tableOf(source);
    destroySource(source);
}

}  // namespace

void* openCsv(HostContext* context, std::uint32_t* openFlags, const char* name) {
    *openFlags |= hostOpenSet;
    const bool update = *openFlags & hostOpenUpdate;
    CsvOptions options;
    std::int32_t bufferSize = defaultBufferSize;
    std::int32_t autoBase = 0;
    const char* const given = name;
    const std::uint32_t flags = parseOptions(0, &name, &bufferSize, &autoBase, &options);

    int lookupError;
    DriverContext* const found = findSource(context, update, &csvTableOps, name, &lookupError);
    if (found || lookupError) {
        *openFlags &= ~std::uint32_t{hostOpenFound};
        if (observer != nullptr && found != nullptr) observer->sourceOpened(*found, given);
        return found;
    }

    DriverContext* const source = createSource(name, bufferSize, false);
    if (!source) {
        hostApi().hostDriverError(context, translate(msg::outOfMemory), errNoMemory);
        return nullptr;
    }
    auto* const table = new (std::nothrow) CsvTable(context, source->textBuffer(), bufferSize);
    if (!table) {
        hostApi().hostDriverError(context, translate(msg::cannotCreateBook), errNoTable);
        destroySource(source);
        return nullptr;
    }
    source->hostContext = context;
    source->ops = &csvTableOps;
    source->autoIndexBase = autoBase;
    source->optionFlags = flags;
    source->backing = table;
    applyOptions(*table, options);

    const Opened opened = openStream(context, update, name);
    if (opened == Opened::failed) {
        *openFlags |= hostOpenNoStream;
        destroy(source);
        return nullptr;
    }
    if (opened == Opened::loading) {
        const bool loaded = loadCsv(*table, flags & optAllText);
        if (hostApi().hostCloseStream(context, hostInputStream) != 0 || !loaded) {
            hostApi().hostDriverError(context, translate(msg::failedToLoad), errCsvLoad);
            destroy(source);
            return nullptr;
        }
    }
    if (update) source->optionFlags |= optUpdate;
    *openFlags &= ~std::uint32_t{hostOpenFound};
    linkSource(source);
    if (observer != nullptr) observer->sourceOpened(*source, given);
    return source;
}

int closeCsv(HostContext* context, void* opened) {
    auto* const source = static_cast<DriverContext*>(opened);
    if (!releaseSource(source)) return 0;
    int result = 0;
    if (source->optionFlags & optUpdate) {
        const HostApi& host = hostApi();
        if (host.hostOpenStream(context, hostStreamWriting, source->path) < 0) {
            result = 1;
        } else {
            CsvTable& table = *tableOf(source);
            host.hostParam(context, hostParamRealFormat, &table.realFormat);
            if (!saveCsv(table)) result = 1;
            if (host.hostCloseStream(context, hostOutputStream) != 0) result = 1;
        }
    }
    destroy(source);
    return result;
}

std::int64_t csvMemorySize(HostContext* context, const char* fileName) {
    int lookupError;
    DriverContext* const source = findSource(context, false, &csvTableOps, fileName, &lookupError);
    if (!source) return 0;
    const CsvTable* const table = tableOf(source);
    const std::int64_t size = table ? table->memorySize() : 0;
    releaseSource(source);
    return size;
}

}  // namespace quillet
