// A formula that uses tokens which stand behind another one, made independent of it.
#pragma once

namespace vellum {
struct FormulaCell;
class StringPool;
}  // namespace vellum

namespace vellum::biff {

/// Gives a formula, whose tokens name `anchor`, the tokens that are shared there, so that it means the same wherever it
/// is put. Nothing is done for arrays and tables, which belong to their range.
void giveOwnTokens(FormulaCell& cell, const FormulaCell& anchor, StringPool& pool);

}  // namespace vellum::biff
