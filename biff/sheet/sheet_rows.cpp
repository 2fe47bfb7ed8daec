// Rows of a sheet.
#include <cmath>

#include "biff/container/messages.h"
#include "biff/sheet/sheet.h"

namespace vellum {
namespace {

constexpr double twipsPerPoint = 20.0;
constexpr double maxRowTwips = 8200.0;
constexpr double pixelsPerPoint = 96.0 / 72.0;

}  // namespace

template <class CharT>
double SheetImplT<CharT>::rowHeight(int row) {
    return guard(-1.0, [&] {
        const Row* const record = parts().rows.find(checkedRow(row));
        return (record != nullptr ? record->miyRw : parts().settings.defaultRowHeight.miyRw) / twipsPerPoint;
    });
}

template <class CharT>
int SheetImplT<CharT>::shownRowPixels(std::uint16_t row) const {
    const Row* const record = parts().rows.find(row);
    if (record != nullptr && (record->flags & Row::hidden) != 0) return 0;
    const auto twips = record != nullptr ? record->miyRw : parts().settings.defaultRowHeight.miyRw;
    return static_cast<int>(std::floor(twips / twipsPerPoint * pixelsPerPoint + 0.5));
}

template <class CharT>
int SheetImplT<CharT>::rowHeightPixels(int row) {
    return guard(-1, [&] { return shownRowPixels(checkedRow(row)); });
}

template <class CharT>
bool SheetImplT<CharT>::setRow(int row, double height, Format* format, bool hidden) {
    return guard(false, [&] {
        const std::uint16_t rw = checkedRow(row);
        const double twips = height * twipsPerPoint;
        if (!(twips <= maxRowTwips)) throw vlerror(biff::msg::heightTooBig);
        const std::uint16_t ixfe = format != nullptr ? _book.ixfeOf(format) : std::uint16_t{0};
        Row& record = setRowTwips(rw, static_cast<std::uint16_t>(std::max(twips, 0.0)), hidden);
        if (format != nullptr) {
            record.flags |= Row::formatted;
            record.ixfe = ixfe;
        }
        return true;
    });
}

template <class CharT>
Row& SheetImplT<CharT>::setRowTwips(std::uint16_t rw, std::uint16_t miyRw, bool hidden) {
    Row& record = edit().rows.ensure(rw, edit().settings.defaultRowHeight.miyRw);
    record = Row();
    record.rw = rw;
    record.miyRw = miyRw;
    record.flags = Row::always | Row::heightByHand;
    if (hidden) record.flags |= Row::hidden;
    edit().used.growRows(rw);
    return record;
}

template <class CharT>
bool SheetImplT<CharT>::isRowHidden(int row) {
    return guard(false, [&] {
        const Row* const record = parts().rows.find(checkedRow(row));
        return record != nullptr && (record->flags & Row::hidden) != 0;
    });
}

template <class CharT>
bool SheetImplT<CharT>::setRowHidden(int row, bool hidden) {
    return guard(false, [&] {
        const std::uint16_t rw = checkedRow(row);
        if (!hidden && parts().rows.find(rw) == nullptr) return true;
        Row& record = edit().rows.ensure(rw, edit().settings.defaultRowHeight.miyRw);
        record.flags = static_cast<std::uint16_t>(hidden ? record.flags | Row::hidden : record.flags & ~Row::hidden);
        return true;
    });
}

}  // namespace vellum
