// One open source.
#pragma once
#include <cstdint>

#include "host/interface/host_api.h"
#include "host/sources/options.h"
#include "host/sources/table_ops.h"

namespace quillet {

/// One heap allocation: this record, then the text buffer of `bufferSize` bytes, behind that for workbooks the
/// SpecialValues block, and last the path. Made by createSource, freed by destroySource (host/source_list.h).
struct DriverContext {
    const char* path;          // the file name as opened; with hostContext and ops the identity of the source
    HostContext* hostContext;  // the execution context that opened it
    const TableOps* ops;
    std::int32_t refCount;         // number of opens not yet closed
    std::int32_t autoIndexBase;    // value of `autondx=` less one
    void* backing;                 // IBookT<char> or CsvTable
    std::uint32_t optionFlags;     // of the file name; optUpdate marks a source open for update
    std::int32_t bufferSize;       // bytes in textBuffer()
    SpecialValues* specialValues;  // null for csv
    DriverContext* next;
    DriverContext* prev;

    /// Scratch for the text of one cell.
    char* textBuffer() { return reinterpret_cast<char*>(this + 1); }
};

}  // namespace quillet
