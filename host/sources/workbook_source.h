// Open and close of a workbook source: the `xls` and `xlsx` drivers.
#pragma once
#include <cstdint>

#include "host/interface/host_api.h"

namespace quillet {

/// Opens a workbook by the binary engine, or by the Open XML engine when hostOpenXmlEngine stands in `*openFlags`.
/// Null after a report, or without one where the host's stream failed.
void* openWorkbook(HostContext* context, std::uint32_t* openFlags, const char* name);

/// The same with hostOpenXmlEngine set first.
void* openXmlWorkbook(HostContext* context, std::uint32_t* openFlags, const char* name);

/// 0, or 1 when saving failed.
int closeWorkbook(HostContext* context, void* source);

}  // namespace quillet
