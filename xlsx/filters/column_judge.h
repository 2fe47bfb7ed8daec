// Which cells of one column pass its filter.
#pragma once
#include <cstdint>
#include <memory>
#include <vector>

#include "ooxml/generated/dialect.h"
#include "xlsx/filters/filter_value.h"

namespace vellum::xlsx {

/// Judges the values of one column. Answers about texts of the string table are remembered.
template <class Tag>
class ColumnJudge {
public:
    using Sml = typename ooxml::dialect<Tag>::sml;
    using Cell = typename Sml::c_CT_Cell;
    using Reader = ValueReader<Cell>;

    virtual ~ColumnJudge() = default;

    /// Whether all values have to be shown to `note`, row by row, before the first one is judged.
    [[nodiscard]] virtual bool looksFirst() const { return false; }
    virtual void note(const FilterValue&) {}
    virtual void endOfNotes() {}

    bool passes(const FilterValue& value, Reader& reader);

protected:
    virtual bool judge(const FilterValue& value, Reader& reader) = 0;

private:
    enum Known : std::uint8_t { unknown, passing, failing };
    std::vector<Known> _known;  // by position in the string table
};

/// The judge of a column; null for one that is not judged: without a filter, or with one by dates relative to today,
/// by colours or icons.
template <class Tag>
std::unique_ptr<ColumnJudge<Tag>> makeJudge(typename ooxml::dialect<Tag>::sml::c_CT_FilterColumn& column);

}  // namespace vellum::xlsx
