// Supporting books: what references to sheets, of this workbook and of others, point into.
#pragma once
#include <cstdint>
#include <span>
#include <vector>

#include "biff/names/xti.h"
#include "biff/records/kept_records.h"

namespace vellum {

/// A SupBook record with what follows it, kept as bytes except for the table of sheet references.
struct SupBookBlock {
    KeptRecords head;               // SupBook, ExternName, XCT, CRN in their order
    std::vector<globals::Xti> xti;  // ExternSheet, which serves all blocks and stands behind the last
    bool hasTable = false;
    KeptRecords tail;  // what stood behind the table

    /// From behind the SupBook's header on.
    void read(Xls& in, RecordHeader header);
    /// `sheetCount` goes into the block that stands for this workbook.
    void write(Xls& out, std::size_t sheetCount);
    /// Stands for this workbook.
    [[nodiscard]] bool isSelf() const;
};

}  // namespace vellum
