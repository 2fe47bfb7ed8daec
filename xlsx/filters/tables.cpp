#include "xlsx/filters/tables.h"

#include <algorithm>
#include <limits>

#include "engine/failure/vlerror.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/filters/filter_ref.h"
#include "xlsx/filters/messages.h"

namespace vellum::xlsx {
namespace {

int toInt(unsigned value) {
    return static_cast<int>(std::min<unsigned>(value, std::numeric_limits<int>::max()));
}

}  // namespace

template <class Worksheet>
int tableTotal(const Worksheet& worksheet) {
    const auto* const parts = worksheet.find_tableParts();
    if (!parts) return 0;
    return parts->isset_count() ? toInt(parts->count()) : static_cast<int>(parts->tablePart().size());
}

template <class Worksheet>
const std::string& tableId(const Worksheet& worksheet, int index) {
    const auto* const parts = worksheet.find_tableParts();
    const auto at = static_cast<std::size_t>(index);
    if (!parts || index < 0 || at >= parts->tablePart().size()) throw vlerror(msg::indexOutOfRange);
    return parts->tablePart()[at].id();
}

template <class Table>
TableFacts tableFacts(const Table& table) {
    return {table.isset_name() ? table.name() : table.displayName(), readFilterRef(table.ref()),
            toInt(table.headerRowCount()), toInt(table.totalsRowCount())};
}

template int tableTotal(const sheet::c_worksheet&);
template int tableTotal(const strict::c_worksheet&);
template const std::string& tableId(const sheet::c_worksheet&, int);
template const std::string& tableId(const strict::c_worksheet&, int);
template TableFacts tableFacts(const sheet::c_table&);
template TableFacts tableFacts(const strict::c_table&);

}  // namespace vellum::xlsx
