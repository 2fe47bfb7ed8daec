// Formulas of books from before BIFF8, which are saved in the newer form.
#pragma once
#include <cstddef>

namespace vellum {
class CellStore;
class StringPool;
}  // namespace vellum

namespace vellum::biff {

class Links;

/// Brings the tokens of all formulas into the newer form, those that cells share with them. A formula that has none,
/// or whose shared tokens have none, keeps its tokens, is marked as of the older generation, and is saved as its value.
void convertBiff5Formulas(CellStore& cells, Links& links, std::size_t sheetCount, StringPool& pool);

}  // namespace vellum::biff
