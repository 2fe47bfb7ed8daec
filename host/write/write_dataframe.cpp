#include <algorithm>
#include <cstring>

#include "host/interface/observer.h"
#include "host/labels/report.h"
#include "host/values/cell_values.h"
#include "host/write/write_array_values.h"

namespace quillet {
namespace {

/// Scratch of the host, given back at the end.
class HostScratch {
public:
    HostScratch(HostContext* context, std::size_t size)
        : _context(context), _bytes(hostApi().hostAlloc(context, size, 1)) {}
    ~HostScratch() { hostApi().hostFree(_context, _bytes); }
    HostScratch(const HostScratch&) = delete;
    HostScratch& operator=(const HostScratch&) = delete;
    void* get() const { return _bytes; }

private:
    HostContext* _context;
    void* _bytes;
};

constexpr std::size_t scratchPerColumn = 9;  // a column of the new map, and a mark that its position is taken

/// The header row against the names of the columns.
struct HeaderMatch {
    HostContext* context;
    RangeSpec& range;
    HostSet* names;
    std::int32_t* map;  // by position less one: the column under that name
    char* taken;        // by position less one
    int missing = 0;    // columns without a name

    int headerRow() const { return range.headerRow - range.firstRow; }
};

int matchColumn(HeaderMatch& m, int col) {
    HostValue name = {.bits = 0};
    const int kind = m.range.kindAt(m.headerRow(), col);
    if (!m.range.passesOver(kind) &&
        readCellOfKind(m.context, m.range, kind, hostTypeText, &name, m.headerRow(), col)) {
        return 1;
    }
    if (!name.text || !*name.text) {
        ++m.missing;
        return 0;
    }
    const int position = hostApi().hostSetFind(m.context, m.names, name);
    if (position < 1 || position > m.range.columnCount) {
        return fail(m.context, msg::nameNotInSet, m.range.headerRow + 1, m.range.firstCol + col + 1, name.text);
    }
    if (m.taken[position - 1]) return fail(m.context, msg::duplicateName, name.text);
    m.taken[position - 1] = 1;
    m.map[position - 1] = col;
    return 0;
}

/// Writes the names into a header row that is empty.
int writeNames(const HeaderMatch& m) {
    const int count = std::min(int(m.range.columnCount), hostApi().hostSetSize(m.names));
    for (int i = 0; i < count; ++i) {
        HostValue name = {.bits = 0};
        hostApi().hostSetElement(m.context, m.names, i + 1, &name);
        const int col = m.range.column(i);
        if (writeValueToCell(m.context, m.range, hostTypeText, m.headerRow(), col, &name)) {
            return failAt(m.context, m.range, msg::wrongDataValue, m.headerRow(), col);
        }
    }
    return 0;
}

}  // namespace

int matchDataFrameHeader(HostContext* context, RangeSpec& range, HostSet* names) {
    const int count = range.columnCount;
    if (range.headerRow < 0 || count < 1) return 1;
    const HostScratch scratch(context, std::size_t(count) * scratchPerColumn);
    std::int32_t* const map = static_cast<std::int32_t*>(scratch.get());
    const PartScope header(CellPart::header);
    HeaderMatch m{context, range, names, map, reinterpret_cast<char*>(map + count)};
    for (int c = 0; c < count; ++c) {
        if (matchColumn(m, range.column(c))) return 1;
    }
    if (m.missing == 0) {
        std::copy_n(map, count, range.columnMap.get());
        return 0;
    }
    if (m.missing < count) return fail(context, msg::missingNames, m.missing, count);
    return range.has(optWriteHeader) ? writeNames(m) : 0;
}

}  // namespace quillet
