// How wide columns have to be for what their cells show.
#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "xlsx/features/worksheet.h"
#include "xlsx/fitting/text_measure.h"
#include "xlsx/layout/merges.h"

namespace vellum::xlsx {

/// How the cells of one format look.
struct CellLook {
    unsigned numFmtId = 0;
    std::wstring formatText;  // from `firstFormatWithText` on
    bool isDate = false;
    MeasuredFont font;
};

/// What fitting asks of the book.
class LookSource {
public:
    [[nodiscard]] virtual std::size_t formatTotal() const = 0;
    /// Of a format that does not exist: as of a cell without one.
    virtual CellLook lookOf(std::uint32_t xf) = 0;
    /// Lives until the next call.
    virtual std::wstring_view sharedText(std::size_t position) = 0;
    [[nodiscard]] virtual bool dates1904() const = 0;

protected:
    ~LookSource() = default;
};

/// Measures samples of the cells. Formats are not run: a sample is about as long as what an application shows.
template <class Tag>
class ColumnFit {
public:
    using Row = typename Sml<Tag>::c_CT_Row;
    using Cell = typename Sml<Tag>::c_CT_Cell;

    ColumnFit(LookSource& source, Merges<Tag>& merges, const FontMetrics& metrics)
        : _source(source), _merges(merges), _metrics(metrics) {}

    /// For each column of an area in numbered rows the greatest width, in characters; -1 where nothing was measured.
    /// Cells of merged blocks are passed over.
    std::vector<double> widths(const ooxml::RowList<Row>& rows, const CellRange& area);
    /// -1 for a cell that shows nothing.
    double width(const Cell& cell);

private:
    struct Measured {
        CellLook look;
        const TextMeasure* measure;
    };

    const Measured& measured(std::uint32_t xf);
    const TextMeasure* measureOf(const MeasuredFont& font);
    double numberWidth(const Measured& as, double value);
    static std::wstring inlineText(const Cell& cell);

    LookSource& _source;
    Merges<Tag>& _merges;
    const FontMetrics& _metrics;
    std::vector<std::unique_ptr<Measured>> _byFormat;
    std::vector<std::pair<MeasuredFont, std::unique_ptr<TextMeasure>>> _measures;
    std::string _sample;
};

extern template class ColumnFit<ooxml::excelNormal_tag>;
extern template class ColumnFit<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
