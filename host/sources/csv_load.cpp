#include "host/sources/csv_load.h"

#include <cstdint>
#include <cstring>

#include "host/interface/c_memory.h"
#include "host/interface/driver_messages.h"
#include "host/interface/host.h"
#include "host/sources/csv_scan.h"
#include "host/sources/csv_table.h"
#include "host/sources/csv_typing.h"

namespace quillet {
namespace {

constexpr long streamBlock = 1 << 18;  // bytes asked of the host at a time

/// The state machine of a csv text. Fields that lie whole in a stream block go from mark to mark of its scan and are
/// typed where they stand; what crosses its end, holds a NUL, or goes on behind a closing quote is gathered in the
/// line buffer one character at a time.
class CsvLoader {
public:
    CsvLoader(CsvScan scan, CsvTable& table, bool allText)
        : _scan(separatesPlainly(table.fieldSep) ? scan : nullptr), _table(table), _allText(allText) {}

    bool run() {
        _block = allocateArray<char>(streamBlock + 1 + scanSlack);
        _marks = allocateArray<std::uint32_t>(streamBlock + 1);
        if (!_block || !_marks) {
            hostApi().hostError(_table.hostContext, msg::storeOutOfMemory);
            return false;
        }
        for (;;) {
            if (_at == _end && !refill()) return false;
            if (_at == _end) return endStretch();  // all texts were kept before the last read
            while (_at < _end && markedField()) {
            }
            if (_failed || (_at < _end && !slowField()) || _failed) return false;
        }
    }

private:
    enum class State { plain, quoted, quoteInQuoted };

    /// A separator that is itself a quote or a part of a line's end is left to the state machine.
    static bool separatesPlainly(std::int32_t c) { return c > 0 && c <= 255 && c != '"' && c != '\n' && c != '\r'; }

    bool refill() {
        keepTexts();
        if (_failed) return false;
        const long count = hostApi().hostStreamRead(_table.hostContext, _block.get(), streamBlock);
        if (count < 0 || count > streamBlock) return false;
        char* const text = _block.get();
        _at = text;
        _end = text + count;
        *_end = '\0';
        std::size_t marks = 0;
        if (_scan)
            marks = _scan(text, static_cast<std::size_t>(count), static_cast<char>(_table.fieldSep), _marks.get());
        _marks[marks] = static_cast<std::uint32_t>(count);  // the NUL behind the block ends every search
        _mark = _marks.get();
        return true;
    }

    bool isSeparator(char c) const { return static_cast<unsigned char>(c) == _table.fieldSep; }
    char* marked(const std::uint32_t* mark) const { return _block.get() + *mark; }

    /// Takes a field with its separator or newline. False, and nothing taken, when the field is one for slowField; or
    /// when storing it failed.
    bool markedField() {
        if (!_scan) return false;
        if (*_at == '"') return markedQuoted();
        const std::uint32_t* mark = _mark;
        while (*marked(mark) == '"') ++mark;
        char* const behind = marked(mark);
        if (*behind == '\0' || behind - _at >= _table.bufferSize) return false;
        return take(_at, behind, behind, mark + 1);
    }

    bool markedQuoted() {
        char* const first = _at + 1;
        const std::uint32_t* mark = nextQuote(_mark + 1);
        if (!mark) return false;
        char* const behind = marked(mark);
        if (behind[1] == '"') return doubledQuotes(first, mark);
        return takeQuoted(first, behind, mark);
    }

    /// The next mark that is a quote, null when a NUL comes first.
    const std::uint32_t* nextQuote(const std::uint32_t* mark) const {
        for (;; ++mark) {
            const char c = *marked(mark);
            if (c == '"') return mark;
            if (c == '\0') return nullptr;
        }
    }

    /// A quoted field from its first doubled quote on: gathered in the line buffer, piece by piece between them.
    bool doubledQuotes(const char* first, const std::uint32_t* mark) {
        char* to = _table.lineBuffer;
        for (;;) {
            const char* const quote = marked(mark);
            const bool doubled = quote[1] == '"';
            const auto size = static_cast<std::size_t>(quote - first) + doubled;
            if (size >= static_cast<std::size_t>(_table.lineBuffer + _table.bufferSize - to)) return false;
            std::memcpy(to, first, size);
            to += size;
            if (!doubled) return takeQuoted(_table.lineBuffer, to, mark);
            first = quote + 2;
            mark = nextQuote(mark + 2);
            if (!mark) return false;
        }
    }

    /// `text` up to `behind`, which ends at the quote of this mark, when the field ends there too. A carriage return
    /// between quote and newline counts as a character of the field until it is removed.
    bool takeQuoted(char* text, char* behind, const std::uint32_t* mark) {
        char* ending = marked(mark) + 1;
        const bool returned = ending[0] == '\r' && ending[1] == '\n';
        if (returned) ++ending;
        if ((*ending != '\n' && !isSeparator(*ending)) || behind - text + returned >= _table.bufferSize) return false;
        if (!returned) return take(text, behind, ending, mark + 2);
        _at = ending + 1;
        _mark = mark + 2;
        return stored(text, behind) && endRow();
    }

    /// A field whose separator or newline is `ending`; the marks go on at `next`.
    bool take(char* text, char* behind, char* ending, const std::uint32_t* next) {
        const char end = *ending;
        _at = ending + 1;
        _mark = next;
        if (end != '\n') return stored(text, behind) && endColumn();
        if (behind > text && behind[-1] == '\r') --behind;
        return stored(text, behind) && endRow();
    }

    bool stored(char* text, const char* behind) {
        if (behind > text) storeField(text, static_cast<std::size_t>(behind - text));
        return !_failed;
    }

    /// One field by the whole state machine, over as many blocks as it takes. False when a read fails or the field
    /// does not fit the line buffer.
    bool slowField() {
        State state = State::plain;
        bool wasQuoted = false;
        std::int32_t position = 0;
        for (;;) {
            if (_at == _end && !refill()) return false;
            if (_at == _end) {  // a text at the end of the file is a field, without an end of row
                endGathered(position);
                return true;
            }
            const char c = *_at++;
            if (state == State::quoted) {
                if (c == '"') {
                    state = State::quoteInQuoted;
                    continue;
                }
            } else if (state == State::quoteInQuoted && c == '"') {
                state = State::quoted;
            } else {
                state = State::plain;
                if (c == '"' && position == 0 && !wasQuoted) {
                    state = State::quoted;
                    wasQuoted = true;
                    continue;
                }
                if (c == '\n') {
                    if (position > 0 && _table.lineBuffer[position - 1] == '\r') --position;
                    endGathered(position);
                    skipMarks();
                    return endRow();
                }
                if (isSeparator(c)) {
                    endGathered(position);
                    skipMarks();
                    return endColumn();
                }
            }
            _table.lineBuffer[position++] = c;
            if (position == _table.bufferSize) {
                hostApi().hostError(_table.hostContext, msg::loadBufferOverflow, static_cast<int>(_row + 1));
                return false;
            }
        }
    }

    void skipMarks() {
        while (marked(_mark) < _at) ++_mark;
    }

    /// A text of the host ends at its first NUL, and so does what is typed; what had characters before is a cell.
    void endGathered(std::int32_t position) {
        if (position == 0) return;
        const std::size_t length = strnlen(_table.lineBuffer, static_cast<std::size_t>(position));
        if (length == 0) {
            _stretch.store(_slot, csvEmpty);
        } else {
            storeField(_table.lineBuffer, length);
        }
    }

    void storeField(char* field, std::size_t length) {
        if (_allText) return storeText(field, length);
        const CsvField typed = typeCsvField(field, length, field == _table.lineBuffer ? 0 : scanSlack, _table);
        switch (typed.kind) {
            case CsvFieldKind::number:
                _stretch.store(_slot, csvNumber).real = typed.number;
                break;
            case CsvFieldKind::boolean:
                _stretch.store(_slot, csvBoolean).word = typed.boolean;
                break;
            default:
                storeText(field, length);
                break;
        }
    }

    void storeText(const char* field, std::size_t length) {
        if (length < sizeof(CsvValue::shortText)) {
            std::memcpy(_stretch.store(_slot, csvShortText).shortText, field, length);
            return;
        }
        CsvValue& value = _stretch.store(_slot, csvArenaText);
        _arriving[_arrivingCount++] = _table.texts().note(field, length, &value.text);
        if (field == _table.lineBuffer) keepTexts();  // which the next field may need
    }

    /// Texts lie in the stream block until there are enough of them or that memory is needed.
    void keepTexts() {
        if (!_table.texts().keep(_arriving, _arrivingCount)) {
            hostApi().hostError(_table.hostContext, msg::storeOutOfMemory);
            _failed = true;
        }
        _arrivingCount = _placedCount = 0;
    }

    bool endColumn() {
        if (++_slot < columnsPerBlock) return true;
        if (!endStretch()) return false;
        ++_blockIndex;
        _slot = 0;
        return true;
    }

    bool endRow() {
        if (!endStretch()) return false;
        ++_row;
        _blockIndex = 0;
        _slot = 0;
        return true;
    }

    bool endStretch() {
        if (_stretch.end == 0) return true;
        CsvBlock* const block = _table.appendStretch(_row, _blockIndex, _stretch);
        if (!block) _failed = true;
        if (_failed) return false;
        // Texts that are still on their way go to the block now.
        for (; _placedCount < _arrivingCount; ++_placedCount) {
            char**& kept = _arriving[_placedCount].kept;
            kept = &block->values()[reinterpret_cast<CsvValue*>(kept) - _stretch.values].text;
        }
        _stretch.clear();
        if (_arrivingCount > columnsPerBlock) keepTexts();
        return !_failed;
    }

    const CsvScan _scan;
    CsvTable& _table;
    const bool _allText;
    bool _failed = false;
    std::int64_t _row = 0;
    std::int64_t _blockIndex = 0;
    int _slot = 0;  // the column is columnsPerBlock * _blockIndex + _slot
    CsvStretch _stretch = {};
    CsvTexts::Arriving _arriving[2 * columnsPerBlock];
    int _arrivingCount = 0;
    int _placedCount = 0;  // of those, whose texts a block wants; the others are wanted by the stretch
    CArray<char> _block;
    CArray<std::uint32_t> _marks;
    char* _at = nullptr;
    char* _end = nullptr;
    const std::uint32_t* _mark = nullptr;  // the first at or behind _at
};

}  // namespace

bool loadCsvBy(CsvScan scan, CsvTable& table, bool allText) {
    const bool loaded = CsvLoader(scan, table, allText).run();
    table.texts().finish();
    return loaded;
}

bool loadCsv(CsvTable& table, bool allText) {
    return loadCsvBy(fastestScan(), table, allText);
}

}  // namespace quillet
