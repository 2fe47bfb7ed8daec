// Cells to host values and back. Rows and columns are relative to the range; messages name the absolute cell.
//
// A text that the host does not take over lives in the range's text buffer or in the engine, until the next
// conversion.
#pragma once
#include <cstdint>

#include "host/interface/host_api.h"
#include "host/labels/range_spec.h"

namespace quillet {

/// Reads a cell as a value of a base type, or of a type from 5 up as a text (null from an empty cell). Sets only the
/// member of `*out` that the type asks for. 0, or 1 after a message: an error cell has no value, unless `skiperrcell`
/// makes it the zero of the type.
int readCellAs(HostContext* context, RangeSpec& range, HostType type, HostValue* out, int row, int col);

/// readCellAs for a cell whose kind is known already.
int readCellOfKind(HostContext* context, RangeSpec& range, int kind, HostType type, HostValue* out, int row, int col);

/// Reads a cell into a union. 0, or non-zero without a message.
int readCellToUnion(HostContext* context, RangeSpec& range, void* object, int row, int col);

/// What became of a value on its way to a cell.
enum class CellWrite { done, refused, reported };  // reported: refused after a message

/// Writes a value by its type, 0 for a union; a null slot writes a blank.
CellWrite putValue(HostContext* context, RangeSpec& range, HostType type, int row, int col, const HostValue* value);

/// putValue with 0 for done and 1 for all else.
int writeValueToCell(HostContext* context, RangeSpec& range, HostType type, int row, int col, const HostValue* value);

/// Writes a blank. 0, or 1 when the cell refused it.
int writeBlankToCell(RangeSpec& range, int row, int col);

/// Writes a real; what is not finite goes by the `nan=`, `inf=` and `minf=` options. 0, or 1 when the cell refused it.
int writeRealToCell(RangeSpec& range, int row, int col, double value);

constexpr int dateTextSize = 64;  // bytes; more than any date text needs, less than any text buffer has

/// Date, time or both in ISO style, with a comma before the milliseconds. False when the book cannot take the serial
/// number apart; `buffer` is left alone then.
bool dateCellText(Book* book, double serial, char* buffer);

}  // namespace quillet
