// Panes of a sheet, the size of its cells on the screen, and the colour of its tab.
#include "biff/container/messages.h"
#include "biff/globals/palette.h"
#include "biff/sheet/sheet_change.h"

namespace vellum {

// What was scrolled out of the frozen part would stay hidden.
template <class CharT>
bool SheetImplT<CharT>::splitAt(int row, int col) {
    return change([&] {
        const CellPlace at = place(row, col);
        edit().features.panes.splitAt(at.row, at.col);
        Window2& window = edit().window2;
        window.flags |= Window2::frozen;
        if (at.row != 0) window.rwTop = 0;
        if (at.col != 0) window.colLeft = 0;
    });
}

template <class CharT>
bool SheetImplT<CharT>::splitPosition(int* row, int* col) {
    return guard(false, [&] {
        const Pane* const pane = parts().features.panes.pane();
        if (pane == nullptr) throw vlerror(biff::msg::notSplit);
        biff::give(row, pane->y);
        biff::give(col, pane->x);
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::setZoomPercent(int zoom) {
    return change([&] { edit().features.panes.setZoomPercent(zoom); });
}

template <class CharT>
bool SheetImplT<CharT>::setTabPaletteColor(int index) {
    return change([&] {
        if (index < 0 || index > static_cast<int>(SheetExt::indexMask)) throw vlerror(biff::msg::indexOutOfRange);
        edit().features.tabColor.setIndex(index);
    });
}

template <class CharT>
bool SheetImplT<CharT>::setTabRgbColor(int red, int green, int blue) {
    return change([&] {
        for (const int part : {red, green, blue}) {
            if (part < 0 || part > 0xFF) throw vlerror(biff::msg::colorRange);
        }
        edit().features.tabColor.setRgb(static_cast<std::uint8_t>(red), static_cast<std::uint8_t>(green),
                                        static_cast<std::uint8_t>(blue), _book.palette().nearest(red, green, blue));
    });
}

}  // namespace vellum
