#include "host/sources/csv_save.h"

#include <cstring>

#include "host/interface/host.h"
#include "host/sources/csv_table.h"

namespace quillet {
namespace {

/// Collects text and prints it in large pieces.
class PrintBuffer {
public:
    explicit PrintBuffer(HostContext* context) : _context(context) {}
    ~PrintBuffer() { flush(); }
    PrintBuffer(const PrintBuffer&) = delete;
    PrintBuffer& operator=(const PrintBuffer&) = delete;

    void put(char c) {
        if (_used == sizeof _text - 1) flush();
        _text[_used++] = c;
    }

    void put(const char* text, std::size_t length) {
        while (length > 0) {
            if (_used == sizeof _text - 1) flush();
            const std::size_t room = sizeof _text - 1 - _used;
            const std::size_t part = length < room ? length : room;
            std::memcpy(_text + _used, text, part);
            _used += part;
            text += part;
            length -= part;
        }
    }

private:
    void flush() {
        if (_used == 0) return;
        _text[_used] = '\0';
        hostApi().hostStreamPrint(_context, "%s", _text);
        _used = 0;
    }

    HostContext* _context;
    std::size_t _used = 0;
    char _text[1 << 15];
};

class CsvPrinter {
public:
    explicit CsvPrinter(const CsvTable& table)
        : _table(table), _out(table.hostContext), _fieldSep(static_cast<char>(table.fieldSep)) {}

    bool run() {
        for (int r = 0; r <= _table.lastRow && r < _table.rowCapacity; ++r) printRow(_table.row(r));
        return !_failed;
    }

private:
    void printRow(const CsvRow& row) {
        if (!row.current) {
            _out.put('\n');
            return;
        }
        const CsvBlock* block = lowestBlock(row);
        for (int col = 0; col <= row.lastCol; ++col) {
            while (block && block->blockIndex < col / columnsPerBlock) block = block->upper;
            if (block && block->blockIndex == col / columnsPerBlock) {
                if (!printCell(*block, col % columnsPerBlock)) {
                    _failed = true;
                    return;
                }
            }
            _out.put(col == row.lastCol ? '\n' : _fieldSep);
        }
    }

    bool printCell(const CsvBlock& block, int slot) {
        const CsvValue& value = block.values[slot];
        switch (block.kinds[slot]) {
            case csvNumber:
                return printNumber(value.real);
            case csvBoolean: {
                const char* const text = value.word > 0 ? _table.trueText : _table.falseText;
                _out.put(text, std::strlen(text));
                return true;
            }
            case csvShortText:
                printText(value.shortText);
                return true;
            case csvHeapText:
            case csvArenaText:
                printText(value.text);
                return true;
            default:
                return true;
        }
    }

    bool printNumber(double value) {
        char* const text = _table.lineBuffer;
        const int length =
            hostApi().hostFormatReal(_table.hostContext, text, _table.bufferSize, _table.realFormat, value);
        if (length < 1 || length >= _table.bufferSize) return false;
        const auto size = static_cast<std::size_t>(length);
        if (_table.decimalSep != '.') {
            if (auto* const point = static_cast<char*>(std::memchr(text, '.', size))) {
                *point = static_cast<char>(_table.decimalSep);
            }
        }
        putQuotedWhen(std::memchr(text, _fieldSep, size) != nullptr, text, size);
        return true;
    }

    /// Texts with a quote go out in quotes, with each of theirs doubled; texts with a separator in quotes.
    void printText(const char* text) {
        const std::size_t length = std::strlen(text);
        if (!std::memchr(text, '"', length)) {
            putQuotedWhen(std::memchr(text, _fieldSep, length) != nullptr, text, length);
            return;
        }
        _out.put('"');
        for (std::size_t i = 0; i < length; ++i) {
            if (text[i] == '"') _out.put('"');
            _out.put(text[i]);
        }
        _out.put('"');
    }

    void putQuotedWhen(bool quoted, const char* text, std::size_t length) {
        if (quoted) _out.put('"');
        _out.put(text, length);
        if (quoted) _out.put('"');
    }

    const CsvTable& _table;
    PrintBuffer _out;
    const char _fieldSep;
    bool _failed = false;
};

}  // namespace

bool saveCsv(const CsvTable& table) {
    return CsvPrinter(table).run();
}

}  // namespace quillet
