#include "host/sources/csv_save.h"

#include <bit>
#include <cstring>
#include <memory>
#include <new>

#ifdef __x86_64__
#include <emmintrin.h>
#endif

#include "host/interface/driver_messages.h"
#include "host/interface/host.h"
#include "host/sources/csv_table.h"

namespace quillet {
namespace {

/// Collects rows as text and prints them a buffer at a time.
class PrintBuffer {
public:
    explicit PrintBuffer(HostContext* context) : _context(context), _text(new (std::nothrow) char[capacity + 1]) {}
    ~PrintBuffer() { flush(); }
    PrintBuffer(const PrintBuffer&) = delete;
    PrintBuffer& operator=(const PrintBuffer&) = delete;

    bool hasMemory() const { return _text != nullptr; }

    void put(char c) {
        if (_used == capacity) flush();
        _text[_used++] = c;
    }

    /// Copies a text that stands in the table's memory by whole words up to its NUL. False, and nothing put, when it is
    /// long or has a character that asks for quotes.
    bool putPlain([[maybe_unused]] const char* text, [[maybe_unused]] char fieldSep) {
#ifdef __x86_64__
        constexpr std::size_t most = 256, step = 16;
        static_assert(step <= ZeroedArena::slack);
        if (capacity - _used < most) flush();
        char* const to = _text.get() + _used;
        const __m128i quote = _mm_set1_epi8('"'), separator = _mm_set1_epi8(fieldSep);
        for (std::size_t at = 0; at < most; at += step) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + at));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(to + at), bytes);
            const __m128i ends =
                _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_setzero_si128()),
                             _mm_or_si128(_mm_cmpeq_epi8(bytes, quote), _mm_cmpeq_epi8(bytes, separator)));
            const auto mask = static_cast<unsigned>(_mm_movemask_epi8(ends));
            if (mask == 0) continue;
            const std::size_t end = at + static_cast<std::size_t>(std::countr_zero(mask));
            if (text[end] != '\0') return false;
            _used += end;
            return true;
        }
#endif
        return false;
    }

    void put(const char* text, std::size_t length) {
        while (length > capacity - _used) {
            const std::size_t part = capacity - _used;
            append(text, part);
            flush();
            text += part;
            length -= part;
        }
        append(text, length);
    }

private:
    static constexpr std::size_t capacity = (1 << 16) - 1;

    void append(const char* text, std::size_t length) {
        std::memcpy(_text.get() + _used, text, length);
        _used += length;
    }

    void flush() {
        if (_used == 0) return;
        _text[_used] = '\0';
        hostApi().hostStreamPrint(_context, "%s", _text.get());
        _used = 0;
    }

    HostContext* _context;
    std::size_t _used = 0;
    std::unique_ptr<char[]> _text;
};

class CsvPrinter {
public:
    explicit CsvPrinter(const CsvTable& table)
        : _table(table),
          _out(table.hostContext),
          _fieldSep(static_cast<char>(table.fieldSep)),
          _trueLength(std::strlen(table.trueText)),
          _falseLength(std::strlen(table.falseText)) {}

    bool run() {
        if (!_out.hasMemory()) {
            hostApi().hostError(_table.hostContext, msg::storeOutOfMemory);
            return false;
        }
        for (int r = 0; r <= _table.lastRow && r < _table.rowCapacity; ++r) printRow(_table.row(r));
        return !_failed;
    }

private:
    void printRow(const CsvRow& row) {
        int col = 0;
        for (const CsvBlock* block = lowestBlock(row); block; block = block->upper) {
            const int first = block->blockIndex * columnsPerBlock;
            for (; col < first; ++col) _out.put(_fieldSep);
            for (int slot = 0; slot < columnsPerBlock && col <= row.lastCol; ++slot, ++col) {
                if (slot < block->slotCount && !printCell(*block, slot)) {
                    _failed = true;
                    return;
                }
                if (col < row.lastCol) _out.put(_fieldSep);
            }
        }
        _out.put('\n');
    }

    bool printCell(const CsvBlock& block, int slot) {
        const CsvValue& value = block.values()[slot];
        switch (block.kinds()[slot]) {
            case csvNumber:
                return printNumber(value.real);
            case csvBoolean:
                value.word > 0 ? _out.put(_table.trueText, _trueLength) : _out.put(_table.falseText, _falseLength);
                return true;
            case csvShortText:
                if (!_out.putPlain(value.shortText, _fieldSep)) printText(value.shortText);
                return true;
            case csvArenaText:
                if (!_out.putPlain(value.text, _fieldSep)) printText(value.text);
                return true;
            case csvHeapText:
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
        const char* const end = text + length;
        const char* quote = static_cast<const char*>(std::memchr(text, '"', length));
        if (!quote) {
            putQuotedWhen(std::memchr(text, _fieldSep, length) != nullptr, text, length);
            return;
        }
        _out.put('"');
        for (; quote; quote = static_cast<const char*>(std::memchr(text, '"', static_cast<std::size_t>(end - text)))) {
            _out.put(text, static_cast<std::size_t>(quote - text) + 1);
            _out.put('"');
            text = quote + 1;
        }
        _out.put(text, static_cast<std::size_t>(end - text));
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
    const std::size_t _trueLength, _falseLength;
    bool _failed = false;
};

}  // namespace

bool saveCsv(const CsvTable& table) {
    return CsvPrinter(table).run();
}

}  // namespace quillet
