// The Row records of a sheet.
#pragma once
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "biff/container/record_ids.h"

namespace vellum {

/// Height, state and format of a row.
struct Row {
    static constexpr std::uint16_t id = record_id::Row;
    static constexpr const char* name = "Row";

    static constexpr std::uint16_t levelMask = 0x0007;
    static constexpr std::uint16_t collapsed = 0x0010;
    static constexpr std::uint16_t hidden = 0x0020;
    static constexpr std::uint16_t heightByHand = 0x0040;
    static constexpr std::uint16_t formatted = 0x0080;  // `ixfe` counts
    static constexpr std::uint16_t always = 0x0100;
    static constexpr std::uint16_t formatMask = 0x0FFF;  // of `ixfe`
    static constexpr std::uint16_t heightMask = 0x7FFF;  // older writers set the bit above for "default height"

    std::uint16_t rw = 0;
    std::uint16_t colMic = 0, colMac = 1;  // first column with a cell, last one plus 1; made anew by each save
    std::uint16_t miyRw = 255;             // twips
    std::uint16_t reserved1 = 0, reserved2 = 0;
    std::uint16_t flags = always;
    std::uint16_t ixfe = 15;  // low 12 bits the format, above them thick borders and phonetic marks

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("rw", r.rw);
        visit("colMic", r.colMic);
        visit("colMac", r.colMac);
        visit("miyRw", r.miyRw);
        visit("reserved1", r.reserved1);
        visit("reserved2", r.reserved2);
        visit("flags", r.flags);
        visit("ixfe", r.ixfe);
    }
};

/// Row records in the order in which they were loaded or made.
///
/// Where a row has several, the first counts. Files hold them in ascending order, and as long as
/// they are so they are found by bisection; after that a table of places is kept.
class RowTable {
public:
    [[nodiscard]] const Row* find(std::uint16_t rw) const;
    [[nodiscard]] Row* find(std::uint16_t rw);
    /// The record of a row, appended in default form when it has none: with the sheet's default height in twips, which
    /// nobody set by hand.
    Row& ensure(std::uint16_t rw, std::uint16_t defaultHeight);
    void append(const Row& row);
    void clear();

    /// Records among which are all those of row `rw` and of rows below it: no others while the records ascend.
    [[nodiscard]] std::span<const Row> from(std::uint16_t rw) const;
    /// The same records, which leave the table.
    [[nodiscard]] std::vector<Row> takeFrom(std::uint16_t rw);

    [[nodiscard]] const std::vector<Row>& rows() const { return _rows; }
    [[nodiscard]] std::vector<Row>& rows() { return _rows; }

private:
    std::vector<Row> _rows;
    bool _ascending = true;
    std::unordered_map<std::uint16_t, std::size_t> _places;  // of each row's first record, once they are out of order
};

}  // namespace vellum
