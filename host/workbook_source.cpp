#include "host/workbook_source.h"

#include "host/driver_messages.h"
#include "host/host.h"

namespace quillet {

void* openWorkbook(HostContext* context, std::uint32_t* openFlags, const char*) {
    *openFlags |= hostOpenSet;
    hostApi().hostDriverError(context, translate(msg::cannotCreateBook), errEngine);
    return nullptr;
}

void* openXmlWorkbook(HostContext* context, std::uint32_t* openFlags, const char* name) {
    *openFlags |= hostOpenXmlEngine;
    return openWorkbook(context, openFlags, name);
}

int closeWorkbook(HostContext*, void*) {
    return 1;
}

}  // namespace quillet
