// How a worksheet is printed: paper, scale, margins.
#pragma once
#include "xlsx/features/worksheet.h"

namespace vellum::xlsx {

/// `pageSetup`, with the switch for fitting in `sheetPr`.
template <class Tag>
class PageSetup {
public:
    explicit PageSetup(Worksheet<Tag>& sheet) : _sheet(sheet) {}

    [[nodiscard]] bool isLandscape() const;
    void setLandscape(bool landscape);
    /// 0 when the sheet leaves the paper to the printer.
    [[nodiscard]] int paper() const;
    void setPaper(int code);
    [[nodiscard]] int scale() const;
    /// Ends fitting.
    void setScale(int percent);

    struct Pages {
        int width, height;  // 0: as many as it takes
    };
    [[nodiscard]] bool fits() const;
    [[nodiscard]] Pages pages() const;
    /// Begins fitting.
    void setPages(int width, int height);

private:
    [[nodiscard]] const typename Sml<Tag>::c_CT_PageSetup* find() const;

    Worksheet<Tag>& _sheet;
};

/// `pageMargins`: all six are there or none.
template <class Tag>
class PageMargins {
public:
    enum Side { left, right, top, bottom, header, footer };

    explicit PageMargins(Worksheet<Tag>& sheet) : _sheet(sheet) {}

    /// Inches.
    [[nodiscard]] double get(Side side) const;
    static void check(double inches);
    void set(Side side, double inches);

private:
    Worksheet<Tag>& _sheet;
};

extern template class PageSetup<ooxml::excelNormal_tag>;
extern template class PageSetup<ooxml::excelStrict_tag>;
extern template class PageMargins<ooxml::excelNormal_tag>;
extern template class PageMargins<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
