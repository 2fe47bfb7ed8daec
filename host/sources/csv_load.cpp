#include "host/sources/csv_load.h"

#include <cstdlib>
#include <cstring>
#include <memory>

#include "host/interface/driver_messages.h"
#include "host/interface/host.h"
#include "host/sources/csv_table.h"
#include "host/sources/csv_typing.h"

namespace quillet {
namespace {

constexpr long streamBlock = 1 << 18;  // bytes asked of the host at a time

/// The state machine of a csv text. Fields that lie whole in the stream block are typed where they stand; what
/// crosses its end, or needs quotes undone, is gathered in the line buffer.
class CsvLoader {
public:
    CsvLoader(CsvTable& table, bool allText) : _table(table), _allText(allText) {
        _plainEnd[static_cast<unsigned char>('\n')] = true;
        _plainEnd[static_cast<unsigned char>(table.fieldSep)] = true;
        _plainEnd[0] = true;  // NUL: rare, and nothing for the fast path
    }

    bool run() {
        _block.reset(static_cast<char*>(std::malloc(streamBlock + 1)));
        if (!_block) {
            hostApi().hostError(_table.hostContext, msg::storeOutOfMemory);
            return false;
        }
        for (;;) {
            if (_at == _end && !refill()) return false;
            if (_at == _end) return true;
            if (!fastField() && !slowField()) return false;
            if (_failed) return false;
        }
    }

private:
    enum class State { plain, quoted, quoteInQuoted };

    bool refill() {
        const long count = hostApi().hostStreamRead(_table.hostContext, _block.get(), streamBlock);
        if (count < 0 || count > streamBlock) return false;
        _at = _block.get();
        _end = _at + count;
        return true;
    }

    bool isSeparator(char c) const { return static_cast<unsigned char>(c) == _table.fieldSep; }

    /// Takes a field and its separator or newline when both lie in the block and the field is plain, or quoted with
    /// no quote inside.
    bool fastField() {
        char* first = _at;
        char* behind;
        char* next;
        if (*_at == '"') {
            ++first;
            behind = first;
            while (behind < _end && *behind != '"' && *behind != '\0') ++behind;
            next = behind + 1;
            if (next >= _end || *behind != '"' || (*next != '\n' && !isSeparator(*next)) || *next == '"') return false;
        } else {
            behind = first;
            while (behind < _end && !_plainEnd[static_cast<unsigned char>(*behind)]) ++behind;
            next = behind;
            if (next == _end || *behind == '\0') return false;
        }
        if (behind - first >= _table.bufferSize) return false;
        const char ending = *next;
        _at = next + 1;
        if (ending == '\n' && behind > first && behind[-1] == '\r') --behind;
        endField(first, static_cast<std::size_t>(behind - first));
        ending == '\n' ? endRow() : endColumn();
        return true;
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
                    endRow();
                    return true;
                }
                if (isSeparator(c)) {
                    endGathered(position);
                    endColumn();
                    return true;
                }
            }
            _table.lineBuffer[position++] = c;
            if (position == _table.bufferSize) {
                hostApi().hostError(_table.hostContext, msg::loadBufferOverflow, _row + 1);
                return false;
            }
        }
    }

    void endGathered(std::int32_t position) {
        const auto length = static_cast<std::size_t>(position);
        // A text of the host ends at its first NUL, and so does what is typed.
        endField(_table.lineBuffer, length > 0 ? strnlen(_table.lineBuffer, length) : 0, length > 0);
    }

    void endField(char* field, std::size_t length) { endField(field, length, length > 0); }

    void endField(char* field, std::size_t length, bool stored) {
        if (!stored) return;
        if (_allText) {
            if (_table.loadText(_row, _column, field, length) < 0) _failed = true;
            return;
        }
        const CsvField typed = typeCsvField(field, length, _table);
        int result;
        switch (typed.kind) {
            case CsvFieldKind::number:
                result = _table.storeNumber(_row, _column, typed.number);
                break;
            case CsvFieldKind::boolean:
                result = _table.storeBoolean(_row, _column, typed.boolean);
                break;
            default:
                result = _table.loadText(_row, _column, field, length);
                break;
        }
        if (result < 0) _failed = true;
    }

    void endColumn() { ++_column; }

    void endRow() {
        ++_row;
        _column = 0;
    }

    struct Free {
        void operator()(char* memory) const { std::free(memory); }
    };

    CsvTable& _table;
    const bool _allText;
    bool _failed = false;
    int _row = 0;
    int _column = 0;
    std::unique_ptr<char, Free> _block;
    char* _at = nullptr;
    char* _end = nullptr;
    bool _plainEnd[256] = {};  // characters that end the scan of a plain field
};

}  // namespace

bool loadCsv(CsvTable& table, bool allText) {
    return CsvLoader(table, allText).run();
}

}  // namespace quillet
