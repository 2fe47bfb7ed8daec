// The range part of a label: which rectangle of which sheet, and which of its columns.
//
//     [Sales$A1:C5]      a sheet by name       [A:C]       whole columns of the first sheet
//     [2$A1:C5]          a sheet by number     [1:3]       whole rows
//     [R1C1:R5C3]        the same cells        [Sales$]    the used area of the sheet
//     Totals(#2,#1)      a defined name, and two of its columns, swapped
#pragma once
#include <cstdint>

#include "host/labels/range_spec.h"
#include "host/sources/driver_context.h"

namespace quillet {

/// Fills `*out` from the label text behind the options. Sheets that are missing are added to a source that is open
/// for update, and stay whatever follows. `specialValues` is left null for the caller to set. 0 for success, 1 after
/// a message. A range that is not there is a success under `rangesize`; it has no column map then.
int parseRange(HostContext* context, std::uint32_t flags, std::int32_t autoStart, DriverContext* source, RangeSpec* out,
               const char* label);

}  // namespace quillet
