// The hyperlinks of a sheet.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "biff/cells/sheet_records.h"
#include "biff/container/record_ids.h"
#include "biff/records/kept_records.h"

namespace vellum {

class Xls;

namespace biff {

/// HLink records, each with the tooltip behind it. What was loaded stays in its bytes.
class Hyperlinks {
public:
    /// Takes the record if it is an HLink. Throws "error reading HLink" and "error in reading HyperlinkObj".
    bool read(RecordHeader header, Xls& in);
    void write(Xls& out) const;

    [[nodiscard]] std::size_t total() const { return _links.size(); }
    // `index` is below the total.
    [[nodiscard]] const CellRange& range(std::size_t index) const { return _links[index].range; }
    [[nodiscard]] std::wstring target(std::size_t index) const;
    void remove(std::size_t index) { _links.erase(_links.begin() + static_cast<std::ptrdiff_t>(index)); }
    /// Throws "string is too long" when a record does not hold the target.
    void add(const CellRange& range, std::wstring_view target);

private:
    struct Link {
        CellRange range;
        KeptRecords record;
    };
    std::vector<Link> _links;
};

}  // namespace biff
}  // namespace vellum
