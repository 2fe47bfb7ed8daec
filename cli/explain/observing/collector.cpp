#include "cli/explain/observing/collector.h"

#include <algorithm>
#include <set>
#include <utility>

#include "cli/explain/facts/json_value.h"
#include "cli/explain/facts/option_list.h"
#include "cli/explain/facts/sheet_view.h"
#include "cli/explain/rules/rules.h"
#include "host/sources/csv_table.h"
#include "host/values/column_types.h"

namespace cli::explain {
namespace {

constexpr int biff8 = 0x600;

std::string formatOf(const quillet::DriverContext& source) {
    if (source.ops->cellKind == quillet::csvTableOps.cellKind) return "csv";
    const int version = static_cast<Book*>(source.backing)->binaryVersion();
    if (version == 0) return "Open XML workbook";
    return version == biff8 ? "binary workbook, BIFF8" : "binary workbook, BIFF5";
}

Held heldAt(const RangeSpec& range, int row, int col) {
    Held held;
    held.kind = range.ops.cellKind(range.sheet, row, col);
    held.formula = isFormula(range, row, col);
    if (held.kind == quillet::cellNumber) held.number = range.ops.readReal(range.sheet, row, col, nullptr);
    if (held.kind == quillet::cellText) {
        const char* const text = range.ops.readText(range.sheet, row, col, nullptr);
        if (text != nullptr) held.text = text;
    }
    return held;
}

}  // namespace

std::vector<ItemRecord> Collector::take() {
    if (!_items.empty() && !item().done) takeRows();
    return std::exchange(_items, {});
}

Finding& Collector::finding(const Rule& rule) {
    for (Finding& known : item().findings) {
        if (known.rule == &rule) return known;
    }
    return item().findings.emplace_back(rule);
}

template <class Event>
void Collector::judge(void (*Rule::*look)(const Event&, Finding&), const Event& event) {
    for (const Rule* const rule : allRules()) {
        if (rule->*look == nullptr) continue;
        Finding seen(*rule);
        (rule->*look)(event, seen);
        if (seen.count == 0) continue;
        _rows.warn(*rule);
        finding(*rule).merge(seen);
    }
}

void Collector::sourceOpened(const quillet::DriverContext& source, const char*) {
    _format = formatOf(source);
}

std::optional<std::span<const char>> Collector::heldFile(const char* path) {
    const std::string* const held = _files.find(path);
    if (held == nullptr) return std::nullopt;
    return std::span<const char>(*held);
}

bool Collector::keepFile(const char* path, std::span<const char> bytes) {
    std::string* const content = _files.make(path);
    if (content != nullptr) content->assign(bytes.data(), bytes.size());
    return content != nullptr;
}

void Collector::itemBegins(int, const quillet::DriverContext& source, const char* label, quillet::ItemUse use) {
    _stale.enter(source.path);
    ItemRecord& record = _items.emplace_back();
    record.hasLabel = label != nullptr;
    if (label != nullptr) record.label = label;
    record.write = use == quillet::ItemUse::write;
    record.rest = restOfLabel(label, record.write);
    _rows = RowKeeper(_wishes);
    _indices.clear();
    _lastRow = _lastWritten = -1;
    _written = 0;
    judge(&Rule::onOptions, OptionText{record.rest});
}

void Collector::itemOpened(const quillet::Item& opened, const quillet::DriverContext& source) {
    const RangeSpec& range = opened.range;
    ItemRecord& record = item();
    _context = &refhost::Context::of(opened.context);
    record.opened = true;
    record.options = optionsOf(opened, source, record.hasLabel ? record.label.c_str() : nullptr, &record.rest);
    record.grows = record.write && range.has(quillet::optGrow);
    takeSheet(range);
    record.firstRow = _firstRow = range.firstRow;
    _height = range.height();
    record.headerRow = range.headerRow;
    takeHeaders(range);
}

void Collector::takeSheet(const RangeSpec& range) {
    if (range.sheet == nullptr || !item().sheet.empty()) return;
    const char* const name = range.ops.sheetName(range.sheet);
    if (name != nullptr) item().sheet = name;
}

void Collector::takeHeaders(const RangeSpec& range) {
    if (!range.columnMap) return;
    for (int c = 0; c < range.columnCount; ++c) {
        ColumnRecord column{range.firstCol + range.column(c), ""};
        if (range.headerRow >= 0) column.header = shownText(range, range.headerRow, column.col);
        item().columns.push_back(std::move(column));
    }
}

void Collector::itemDone(const quillet::Item& opened) {
    const RangeSpec& range = opened.range;
    ItemRecord& record = item();
    record.done = true;
    record.firstCol = range.firstCol;
    record.lastCol = range.lastCol;
    record.lastRow = range.lastRow;
    record.columns.clear();  // what a write did to the header, and the order of a data frame
    takeHeaders(range);
    // The module jumps over rows without a cell.
    const bool byRows = record.layout && *record.layout != Layout::set && *record.layout != Layout::list;
    if (!record.write && byRows && record.rowsPassedOver > 0) {
        record.rowsPassedOver = std::max<long long>(record.rowsPassedOver, range.height() - record.rows);
    }
    if (record.write) judgeEnd(opened);
    takeRows();
    if (_wishes.last > 0 && range.sheet != nullptr) takeContext(range);
}

void Collector::takeRows() {
    item().shownRows = _rows.take();
    item().firstRows = std::min(_wishes.first, item().shownRows.size());
}

void Collector::takeContext(const RangeSpec& range) {
    constexpr int around = 2, widest = 60;
    std::set<int> rows;
    for (const RowRecord& row : item().shownRows) {
        for (int r = std::max(row.row - around, 0); r <= row.row + around; ++r) rows.insert(r);
    }
    if (range.headerRow >= 0) rows.insert(range.headerRow);
    const int first = std::max(range.firstCol - around, 0);
    const int last = std::min(range.lastCol + around, first + widest);
    item().contextCol = first;
    for (const int row : rows) {
        ContextRow& context = item().context.emplace_back();
        context.row = row;
        for (int col = first; col <= last; ++col) context.texts.push_back(shownText(range, row, col));
    }
}

void Collector::judgeEnd(const quillet::Item& opened) {
    const bool byName = !item().rest.empty() && item().rest.front() != '[';
    const Layout layout = item().layout.value_or(Layout::scalar);
    judge(&Rule::onWritten,
          WrittenItem{opened.range, layout, byName, _firstRow, _height, _lastWritten, _written, item().rowsCut});
}

void Collector::laidOut(Layout layout, int indexColumns) {
    item().layout = layout;
    item().indexColumns = indexColumns;
}

void Collector::rowsFitted(long long needed, int height) {
    if (needed > height && item().layout != Layout::arrayList) item().rowsCut += needed - height;
}

void Collector::headerSought(const RangeSpec& range, std::string_view name, int col) {
    judge(&Rule::onHeader, SoughtHeader{range, name, col < 0 ? -1 : range.firstCol + col});
}

void Collector::seeRow(const RangeSpec& range, int row) {
    if (row == _lastRow || row == range.headerRow) return;
    _lastRow = row;
    ++item().rows;
    judge(&Rule::onRow, ReadRow{range, row});
}

void Collector::cellToBeRead(const RangeSpec& range, int row, int col) {
    _cell = {};
    _cell.row = range.firstRow + row;
    _cell.col = range.firstCol + col;
    _text.clear();
    if (range.ops.cellKind(range.sheet, _cell.row, _cell.col) == quillet::cellText) {
        const char* const text = range.ops.readText(range.sheet, _cell.row, _cell.col, nullptr);
        if (text != nullptr) _text = text;
    }
    if (!_rows.wants(_cell.row)) return;
    _cell.kind = kindName(range, _cell.row, _cell.col);
    _cell.shown = shownText(range, _cell.row, _cell.col);
}

void Collector::cellRead(const RangeSpec& range, CellPart part, HostType type, const HostValue* value, int kind, int,
                         int) {
    const HostType element = quillet::elementType(type);
    const int row = _cell.row, col = _cell.col;
    _cell.part = part;
    _cell.fate = value != nullptr ? Fate::read : Fate::notConverted;
    if (value != nullptr && _rows.wants(row)) _cell.value = jsonValue(*_context, element, *value);
    ++item().cells;
    _rows.add(std::move(_cell));
    seeRow(range, row);
    judge(&Rule::onRead,
          ReadCell{range, part, element, value, false, kind, row, col, _text, _stale.read(range, row, col)});
}

void Collector::lookAtPassedOver(const RangeSpec& range, int row, int col) {
    cellToBeRead(range, row, col);
    _cell.fate = Fate::passedOver;
    const int at = _cell.row, column = _cell.col;
    const int kind = range.ops.cellKind(range.sheet, at, column);
    ++item().cellsPassedOver;
    _rows.add(std::move(_cell));
    judge(&Rule::onRead, ReadCell{range, CellPart::value, hostTypeAny, nullptr, true, kind, at, column, _text,
                                  _stale.read(range, at, column)});
}

void Collector::cellPassedOver(const RangeSpec& range, int row, int col) {
    lookAtPassedOver(range, row, col);
}

void Collector::rowPassedOver(const RangeSpec& range, int row) {
    ++item().rowsPassedOver;
    _rows.passOver(range.firstRow + row);
    for (int c = 0; c < range.columnCount; ++c) lookAtPassedOver(range, row, range.column(c));
}

void Collector::rowIndexed(const RangeSpec& range, int row, const int* tuple, int count) {
    const std::string key(reinterpret_cast<const char*>(tuple), static_cast<std::size_t>(count) * sizeof *tuple);
    const int absolute = range.firstRow + row;
    const auto [known, isNew] = _indices.emplace(key, absolute);
    const int before = isNew ? -1 : std::exchange(known->second, absolute);
    judge(&Rule::onIndex, IndexedRow{range, absolute, range.firstCol + range.column(0), before});
}

void Collector::cellToBeWritten(const RangeSpec& range, CellPart part, int row, int col) {
    _cell = {};
    _cell.row = range.firstRow + row;
    _cell.col = range.firstCol + col;
    _cell.part = part;
    _before = heldAt(range, _cell.row, _cell.col);
    takeSheet(range);  // a header is written before the item is understood to its end
    if (!_rows.wants(_cell.row)) return;
    _cell.kind = kindName(range, _cell.row, _cell.col);
    _cell.shown = shownText(range, _cell.row, _cell.col);
}

void Collector::cellWritten(const RangeSpec& range, int, int, bool done) {
    const int row = _cell.row, col = _cell.col;
    const CellPart part = _cell.part;
    const Held now = heldAt(range, row, col);
    _cell.fate = done ? Fate::written : Fate::refused;
    if (done && _rows.wants(row)) _cell.value = jsonHeld(*_context, range, row, col);
    if (done) {
        _stale.wrote(range, row, col);
        ++item().cells;
        ++_written;
        if (part != CellPart::header) _lastWritten = std::max(_lastWritten, row);
        if (part != CellPart::header && row != _lastRow) ++item().rows;
        if (part != CellPart::header) _lastRow = row;
    }
    _rows.add(std::move(_cell));
    judge(&Rule::onWrite, WrittenCell{range, part, row, col, done, _before, now});
}

}  // namespace cli::explain
