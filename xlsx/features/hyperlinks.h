// The links of a sheet.
#pragma once
#include <string>
#include <string_view>

#include "engine/facts/cell_address.h"
#include "ooxml/generated/dialect.h"

namespace vellum {
class Relationships;
}

namespace vellum::xlsx {

/// Whether a link's text goes into the sheet itself: a place in the workbook, such as "Sheet2!A1". Addresses of the
/// web and files lie outside.
bool isPlace(std::wstring_view text);

/// Links of one worksheet element. Indices count from 0; routines throw for those that are out of range.
template <class Tag>
class Hyperlinks {
public:
    using Worksheet = typename ooxml::dialect<Tag>::c_worksheet;
    explicit Hyperlinks(Worksheet& worksheet) : _worksheet(worksheet) {}

    [[nodiscard]] int total() const;
    /// The target, or the place in the workbook. `relationships` are the sheet's, null when it has none.
    std::wstring at(int index, const Relationships* relationships, CellRange& range) const;
    void removeAt(int index);
    void addPlace(const CellRange& range, std::wstring_view place);
    /// `id` is of a relationship of the sheet.
    void addTarget(const CellRange& range, std::string id);

private:
    Worksheet& _worksheet;
};

extern template class Hyperlinks<ooxml::excelNormal_tag>;
extern template class Hyperlinks<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
