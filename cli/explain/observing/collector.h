// The observer that gathers what is told of a statement.
#pragma once
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "cli/explain/facts/events.h"
#include "cli/explain/facts/records.h"
#include "cli/explain/facts/row_keeper.h"
#include "cli/explain/rules/rule.h"
#include "cli/explain/stale/stale_cells.h"
#include "refhost/operations/host.h"

namespace cli::explain {

/// Runs the rules on everything that the module tells, and keeps what reports show. One for a run; `take` ends a
/// statement.
class Collector final : public quillet::Observer {
public:
    /// The host keeps its files in memory.
    Collector(refhost::Host& host, const RowWishes& wishes)
        : _files(*host.overlay), _wishes(wishes), _rows(wishes), _context(&host.context(1)) {}

    /// The items of the statement that is over.
    std::vector<ItemRecord> take();
    /// What the statement's source is, "" when none was opened.
    std::string takeFormat() { return std::exchange(_format, {}); }

    void sourceOpened(const quillet::DriverContext& source, const char* name) override;
    bool keepsFiles() const override { return true; }
    std::optional<std::span<const char>> heldFile(const char* path) override;
    bool keepFile(const char* path, std::span<const char> bytes) override;
    void itemBegins(int index, const quillet::DriverContext& source, const char* label, quillet::ItemUse use) override;
    void itemOpened(const quillet::Item& item, const quillet::DriverContext& source) override;
    void itemDone(const quillet::Item& item) override;
    void laidOut(Layout layout, int indexColumns) override;
    void headerSought(const RangeSpec& range, std::string_view name, int col) override;
    void cellToBeRead(const RangeSpec& range, int row, int col) override;
    void cellRead(const RangeSpec& range, CellPart part, HostType type, const HostValue* value, int kind, int row,
                  int col) override;
    void cellPassedOver(const RangeSpec& range, int row, int col) override;
    void rowPassedOver(const RangeSpec& range, int row) override;
    void rowIndexed(const RangeSpec& range, int row, const int* tuple, int count) override;
    void cellToBeWritten(const RangeSpec& range, CellPart part, int row, int col) override;
    void cellWritten(const RangeSpec& range, int row, int col, bool done) override;
    void rowsFitted(long long needed, int height) override;
    void rowsLeft(int count) override { item().rowsCut += count; }

private:
    ItemRecord& item() { return _items.back(); }
    Finding& finding(const Rule& rule);
    /// Calls one function of each rule that has it; findings with a new cell mark the row.
    template <class Event>
    void judge(void (*Rule::*look)(const Event&, Finding&), const Event& event);
    void judgeEnd(const quillet::Item& item);
    void seeRow(const RangeSpec& range, int row);
    void lookAtPassedOver(const RangeSpec& range, int row, int col);
    void takeRows();
    void takeContext(const RangeSpec& range);
    void takeSheet(const RangeSpec& range);
    void takeHeaders(const RangeSpec& range);

    refhost::FileOverlay& _files;
    const RowWishes _wishes;
    RowKeeper _rows;
    StaleCells _stale;
    std::vector<ItemRecord> _items;
    std::string _format;
    refhost::Context* _context;
    int _lastRow = -1;                              // of the rows that were read, absolute
    CellRecord _cell;                               // the one that is about to be read or written
    std::string _text;                              // its text
    Held _before;                                   // what it held
    std::unordered_map<std::string, int> _indices;  // tuples, as bytes, and their rows
    int _firstRow = 0, _height = 0;                 // of the range as its label gave it
    int _lastWritten = -1;
    long long _written = 0;
};

}  // namespace cli::explain
