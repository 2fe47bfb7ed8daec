// Reading and writing of a formula with the records that stand behind it.
#pragma once
#include "biff/cells/formula_block.h"
#include "biff/container/record_ids.h"

namespace vellum {

class Sink;
class StringPool;
class Xls;

/// Reads from behind the header of a Formula record, or of the two-byte record that may stand before
/// it, to the last record of the block. Tokens and text go into the pool.
void readFormula(FormulaCell& block, const RecordHeader& header, Xls& in, StringPool& pool, bool biff5);

/// All records of the block, in their order.
void writeFormula(const FormulaCell& block, Xls& out);

}  // namespace vellum
