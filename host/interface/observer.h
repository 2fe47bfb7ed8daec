// What a program that explains statements is told while the module carries them out. A module that a host loads has no
// observer: each place below costs it one comparison with null.
#pragma once
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "host/interface/host_api.h"

namespace quillet {

struct DriverContext;
struct Item;
struct RangeSpec;

enum class ItemUse { read, write };

/// What a cell is to the item that it belongs to.
enum class CellPart { value, index, header };

/// How the cells of an item are laid out.
enum class Layout {
    scalar,
    set,
    list,
    records,
    rangeSize,
    indexColumns,
    partIndex,
    inOrder,
    autoIndex,
    dataFrame,
    arrayList
};

/// Rows and columns are relative to the range, as the functions on cells take them. What is handed over lives for the
/// call only. All calls come from the thread that runs the statement.
class Observer {
public:
    virtual ~Observer() = default;

    /// A source that was opened, or found open already, under `name`: the whole text that the host gave.
    virtual void sourceOpened(const DriverContext& source, const char* name) = 0;
    /// Whether workbooks are to be saved into memory, by keepFile.
    virtual bool keepsFiles() const = 0;
    /// The bytes that stand for a workbook's file; none: the file itself.
    virtual std::optional<std::span<const char>> heldFile(const char* path) = 0;
    /// Takes what would be saved. False when it could not be.
    virtual bool keepFile(const char* path, std::span<const char> bytes) = 0;

    /// The item that follows; its label may be null.
    virtual void itemBegins(int index, const DriverContext& source, const char* label, ItemUse use) = 0;
    /// Its options and range are understood.
    virtual void itemOpened(const Item& item, const DriverContext& source) = 0;
    /// Its cells have been read or written.
    virtual void itemDone(const Item& item) = 0;
    /// The form that its data take; `indexColumns` used columns in front hold indices.
    virtual void laidOut(Layout layout, int indexColumns) = 0;

    /// A selection asks for a column by its header; `col` is -1 when there is none.
    virtual void headerSought(const RangeSpec& range, std::string_view name, int col) = 0;
    /// Before a cell is read or found to have no value; its texts may be asked for now, and later no more.
    virtual void cellToBeRead(const RangeSpec& range, int row, int col) = 0;
    /// A cell as a value of a type; for a union, type 0, `value` has the union itself. No value: it does not convert.
    virtual void cellRead(const RangeSpec& range, CellPart part, HostType type, const HostValue* value, int kind,
                          int row, int col) = 0;
    virtual void cellPassedOver(const RangeSpec& range, int row, int col) = 0;
    virtual void rowPassedOver(const RangeSpec& range, int row) = 0;
    /// The index tuple of a row, `count` numbers of it.
    virtual void rowIndexed(const RangeSpec& range, int row, const int* tuple, int count) = 0;

    virtual void cellToBeWritten(const RangeSpec& range, CellPart part, int row, int col) = 0;
    virtual void cellWritten(const RangeSpec& range, int row, int col, bool done) = 0;
    /// The data take `needed` rows, and the range has `height` for them.
    virtual void rowsFitted(long long needed, int height) = 0;
    /// The range is full, and so many rows of data at least have no place.
    virtual void rowsLeft(int count) = 0;
};

/// Null unless a program explains. Set before the first statement, never while one runs.
inline constinit Observer* observer = nullptr;

/// The part that cells play; known only to an observer.
inline constinit CellPart observedPart = CellPart::value;

/// Cells are values outside of these.
class PartScope {
public:
    explicit PartScope(CellPart part) {
        if (observer != nullptr) observedPart = part;
    }
    ~PartScope() {
        if (observer != nullptr) observedPart = CellPart::value;
    }
    PartScope(const PartScope&) = delete;
    PartScope& operator=(const PartScope&) = delete;
};

}  // namespace quillet
