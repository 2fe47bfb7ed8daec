#include "biff/names/biff5_tokens.h"

#include <algorithm>

#include "biff/container/cursor.h"
#include "biff/container/sink.h"
#include "engine/failure/vlerror.h"
#include "formula/token_table.h"

namespace vellum::biff {

namespace {

namespace ptg = formula::ptg;

struct NoSuchForm {};

constexpr std::uint8_t ptgArray = 0x20, ptgMemArea = 0x26, ptgRefErr = 0x2A, ptgAreaErr = 0x2B, ptgMemNoMemN = 0x2F;
constexpr std::size_t cellBytes = 3, areaBytes = 6;  // of a location in the older form

// A row field of the older layout has the row in 14 bits, and above it the marks that stand in the column field now.
constexpr std::uint16_t rowBits = 0x3FFF, rowSign = 0x2000, relativeRow = 0x8000, relativeBits = 0xC000;

class Converter {
public:
    Converter(std::span<const std::byte> tokens, std::span<const std::byte> extra, Links& links, std::size_t sheetCount)
        : _size(tokens.size()), _in(tokens), _extraIn(extra), _links(links), _sheetCount(sheetCount) {}

    Expression convert() {
        while (!_in.empty()) {
            _places.push_back({at(), _out.size()});
            token(_in.get<std::uint8_t>());
        }
        _places.push_back({_size, _out.size()});
        for (const Distance& distance : _distances) settle(distance);
        if (!_extraIn.empty()) throw NoSuchForm();
        return {{_out.bytes().begin(), _out.bytes().end()}, {_extraOut.bytes().begin(), _extraOut.bytes().end()}};
    }

private:
    /// Where a token began, and begins now.
    struct Place {
        std::size_t before, now;
    };
    /// A field that tells how far it is from one place of the stream to another.
    struct Distance {
        std::size_t field, fromNow, toBefore;
        int less;  // than the way
    };

    [[nodiscard]] std::size_t at() const { return _size - _in.left(); }

    void token(std::uint8_t code) {
        const formula::TokenRow* const row = formula::tokenRow(code);
        if (row == nullptr || row->word == formula::TokenWord::extended) throw NoSuchForm();
        if (row->code == ptg::nameX) {
            ownName(code);
            return;
        }
        _out.put(code);
        if (row->code == ptg::str) {
            text();
        } else if (row->code == ptg::attr) {
            attribute();
        } else if (row->code == ptg::name) {
            name();
        } else if (row->code >= ptgMemArea && row->code <= ptgMemNoMemN && row->gives == 0) {
            subexpression(*row);
        } else if (row->biff5Bytes != row->biff8Bytes) {
            location(*row);
        } else {
            copy(row->biff8Bytes);
            if (row->code == ptgArray) array();
        }
    }

    // Cells and areas, alone and with sheets; what is left of broken ones is of no use.
    void location(const formula::TokenRow& row) {
        if (row.code >= ptg::ref3d) reference();
        switch (row.code) {
            case ptg::ref:
            case ptg::ref3d:
                cell(false);
                break;
            case ptg::refN:
                cell(true);
                break;
            case ptg::area:
            case ptg::area3d:
                area(false);
                break;
            case ptg::areaN:
                area(true);
                break;
            case ptgRefErr:
            case ptg::refErr3d:
                _in.skip(cellBytes);
                _out.fill(4);
                break;
            case ptgAreaErr:
            case ptg::areaErr3d:
                _in.skip(areaBytes);
                _out.fill(8);
                break;
            default:
                throw NoSuchForm();
        }
    }

    // The areas of a union that are known stand behind the tokens, in a form that was not seen.
    void subexpression(const formula::TokenRow& row) {
        if (row.code == ptgMemArea) throw NoSuchForm();
        copy(row.biff8Bytes - std::size_t{2});
        size();
    }

    // A name of this workbook, which newer tokens name like any other; one of elsewhere has no form.
    void ownName(std::uint8_t code) {
        const auto book = _in.get<std::int16_t>();
        _in.skip(8);
        const auto index = _in.get<std::uint16_t>();
        _in.skip(12);
        if (book >= 0) throw NoSuchForm();
        _out.putAll(static_cast<std::uint8_t>(code - ptg::nameX + ptg::name), index, std::uint16_t{0});
    }

    void copy(std::size_t n) { _out.write(_in.take(n)); }

    void text() {
        const auto length = _in.get<std::uint8_t>();
        _out.putAll(length, std::uint8_t{0});
        copy(length);
    }

    void name() {
        _out.putAll(_in.get<std::uint16_t>(), std::uint16_t{0});
        _in.skip(12);
    }

    // An offset, which has 14 bits, is widened with its sign.
    static std::uint16_t rowOf(std::uint16_t field, bool offsets) {
        const auto row = static_cast<std::uint16_t>(field & rowBits);
        const bool negative = offsets && (field & relativeRow) != 0 && (row & rowSign) != 0;
        return negative ? static_cast<std::uint16_t>(row | static_cast<std::uint16_t>(~rowBits)) : row;
    }
    static std::uint16_t columnOf(std::uint16_t rowField, std::uint8_t column) {
        return static_cast<std::uint16_t>((rowField & relativeBits) | column);
    }
    void cell(bool offsets) {
        const auto row = _in.get<std::uint16_t>();
        const auto column = _in.get<std::uint8_t>();
        _out.putAll(rowOf(row, offsets), columnOf(row, column));
    }
    void area(bool offsets) {
        const auto first = _in.get<std::uint16_t>(), last = _in.get<std::uint16_t>();
        const auto colFirst = _in.get<std::uint8_t>(), colLast = _in.get<std::uint8_t>();
        _out.putAll(rowOf(first, offsets), rowOf(last, offsets), columnOf(first, colFirst), columnOf(last, colLast));
    }

    // The token names its sheets itself; a number that is not negative is one of another workbook.
    void reference() {
        const auto book = _in.get<std::int16_t>();
        _in.skip(8);
        const auto first = _in.get<std::uint16_t>(), last = _in.get<std::uint16_t>();
        if (book >= 0) throw NoSuchForm();
        const bool exists = first < _sheetCount && last < _sheetCount;
        _out.put(_links.indexOf(exists ? SheetSpan{first, last} : SheetSpan{-1, -1}));
    }

    // Values go by rows. The numbers of columns, 0 for 256, and of rows were less by 1 later on.
    void array() {
        const std::size_t columnsField = _extraIn.get<std::uint8_t>(), columns = columnsField == 0 ? 256 : columnsField;
        const std::size_t rows = _extraIn.get<std::uint16_t>();
        if (rows == 0) throw NoSuchForm();
        _extraOut.putAll(static_cast<std::uint8_t>(columns - 1), static_cast<std::uint16_t>(rows - 1));
        for (std::size_t left = columns * rows; left > 0; --left) {
            const auto kind = _extraIn.get<std::uint8_t>();
            _extraOut.put(kind);
            std::size_t bytes = 8;
            if (kind == 2) {
                bytes = _extraIn.get<std::uint8_t>();
                _extraOut.putAll(static_cast<std::uint16_t>(bytes), std::uint8_t{0});
            }
            _extraOut.write(_extraIn.take(bytes));
        }
    }

    void attribute() {
        constexpr std::uint8_t ifFalse = 0x02, choose = 0x04, jump = 0x08, assign = 0x20;
        const auto kind = _in.get<std::uint8_t>();
        _out.put(kind);
        if ((kind & assign) != 0) throw NoSuchForm();
        const auto word = _in.get<std::uint16_t>();
        if ((kind & choose) != 0) {
            _out.put(word);
            const std::size_t before = at(), now = _out.size();
            for (std::size_t i = 0; i <= word; ++i) distance(now, before + _in.get<std::uint16_t>(), 0);
        } else if ((kind & ifFalse) != 0) {
            distance(_out.size() + 2, at() + word, 0);
        } else if ((kind & jump) != 0) {
            distance(_out.size() + 2, at() + word + 1, 1);
        } else {
            _out.put(word);
        }
    }

    /// How many bytes the tokens of an operand take that follow.
    void size() {
        const auto bytes = _in.get<std::uint16_t>();
        distance(_out.size() + 2, at() + bytes, 0);
    }

    void distance(std::size_t fromNow, std::size_t toBefore, int less) {
        _distances.push_back({_out.size(), fromNow, toBefore, less});
        _out.put(std::uint16_t{0});
    }

    void settle(const Distance& distance) {
        const auto place = std::ranges::lower_bound(_places, distance.toBefore, {}, &Place::before);
        if (place == _places.end() || place->before != distance.toBefore) throw NoSuchForm();
        const auto way = static_cast<std::ptrdiff_t>(place->now) - static_cast<std::ptrdiff_t>(distance.fromNow);
        if (way < distance.less) throw NoSuchForm();
        _out.patch(distance.field, static_cast<std::uint16_t>(way - distance.less));
    }

    std::size_t _size;
    Cursor _in, _extraIn;
    Links& _links;
    std::size_t _sheetCount;
    Sink _out, _extraOut;
    std::vector<Place> _places;
    std::vector<Distance> _distances;
};

}  // namespace

std::optional<Expression> expressionFromBiff5(std::span<const std::byte> tokens, std::span<const std::byte> extra,
                                              Links& links, std::size_t sheetCount) {
    const Links::Mark before = links.mark();
    try {
        Expression made = Converter(tokens, extra, links, sheetCount).convert();
        if (made.tokens.size() <= 0xFFFF) return made;
    } catch (const NoSuchForm&) {
        // Nothing to add.
    } catch (const vlerror&) {
        // The bytes end inside a token.
    }
    links.takeBack(before);
    return std::nullopt;
}

}  // namespace vellum::biff
