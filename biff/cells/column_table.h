// The ColInfo records of a sheet.
#pragma once
#include <cstdint>
#include <vector>

#include "biff/container/record_ids.h"

namespace vellum {

/// Width, state and format of a run of columns.
struct ColInfo {
    static constexpr std::uint16_t id = record_id::ColInfo;
    static constexpr const char* name = "ColInfo";

    static constexpr std::uint16_t hidden = 0x0001;
    static constexpr std::uint16_t widthByHand = 0x0002;
    static constexpr std::uint16_t levelMask = 0x0700;
    static constexpr std::uint16_t collapsed = 0x1000;

    std::uint16_t colFirst = 0, colLast = 0;  // 256 occurs as the last column and means 255
    std::uint16_t coldx = 2048;               // width, 1/256 character
    std::uint16_t ixfe = 15;
    std::uint16_t flags = 0;
    std::uint16_t reserved = 0;

    bool operator==(const ColInfo&) const = default;

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("colFirst", r.colFirst);
        visit("colLast", r.colLast);
        visit("coldx", r.coldx);
        visit("ixfe", r.ixfe);
        visit("flags", r.flags);
        visit("reserved", r.reserved);
    }
};

/// ColInfo records, with the format of each column at hand for new cells.
class ColumnTable {
public:
    static constexpr std::uint32_t columns = 257;  // one more than a sheet has: files name column 256

    /// The record that holds a column, null when none does.
    [[nodiscard]] const ColInfo* find(std::uint32_t col) const;
    /// The format index of a column, -1 when it has none.
    [[nodiscard]] std::int32_t format(std::uint32_t col) const { return col < _formats.size() ? _formats[col] : -1; }
    /// Adds a record as it stands, in front of none.
    void append(const ColInfo& info);
    /// Puts a record in place of whatever the columns had; records that overlap it are cut.
    void assign(const ColInfo& info);
    /// Sorts the records by their first column and takes the formats from them anew.
    void sort();
    void clear();

    [[nodiscard]] const std::vector<ColInfo>& records() const { return _records; }
    [[nodiscard]] std::vector<ColInfo>& records() { return _records; }

private:
    void noteFormat(const ColInfo& info);

    std::vector<ColInfo> _records;
    std::vector<std::int32_t> _formats;  // made with the first record
};

}  // namespace vellum
