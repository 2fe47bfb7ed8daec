// How a worksheet is shown: its first view.
#pragma once
#include <cstdint>
#include <optional>

#include "engine/facts/cell_address.h"
#include "xlsx/features/worksheet.h"

namespace vellum::xlsx {

/// The first `sheetView`, made when something is set and there is none.
template <class Tag>
class View {
public:
    struct Place {
        int row, col;
    };

    explicit View(Worksheet<Tag>& sheet) : _sheet(sheet) {}

    /// Freezes the rows above and the columns left of a cell; (0, 0) ends that.
    void splitAt(std::uint32_t row, std::uint32_t col);
    /// Rows and columns of a frozen split, twips of another one; nothing without one.
    [[nodiscard]] std::optional<Place> split() const;

    /// (0, 0) where the view says nothing. Throws for a text that is no address.
    [[nodiscard]] Place topLeftCell() const;
    void setTopLeftCell(std::uint32_t row, std::uint32_t col);
    [[nodiscard]] bool isRightToLeft() const;
    void setRightToLeft(bool rightToLeft);
    [[nodiscard]] bool showsGridlines() const;
    void setShowsGridlines(bool show);
    [[nodiscard]] int zoom() const;
    void setZoom(int percent);

private:
    using Element = typename Sml<Tag>::c_CT_SheetView;

    [[nodiscard]] const Element* find() const;
    Element& make();

    Worksheet<Tag>& _sheet;
};

extern template class View<ooxml::excelNormal_tag>;
extern template class View<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
