// Labels: options, range and column selection over a small book, for reading and for update.
#include <string>

#include "host/labels/item.h"
#include "tests/host/values/fake_book.h"

using namespace quillet;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static fake::FakeHost host;
    fake::FakeHost::messages().clear();
    const bool update = size > 0 && (data[0] & 1) != 0;
    const std::string label(reinterpret_cast<const char*>(data), size);
    fake::FakeSource source(update ? std::uint32_t{optUpdate} : 0);
    fake::FakeSheet& sheet = source.book.add("Sales");
    for (const char* name : {"year", "total", "note"}) sheet.put(1, int(sheet.cells.size()), name);
    for (int i = 0; i < 3; ++i) sheet.put(4, i, "1.5");
    sheet.names = {{"Region", 1, 4, 0, 2}, {"Wide", 0, 1048575, 0, 16383}};
    source.book.add("Empty");

    const auto use = size > 1 && (data[1] & 1) != 0 ? ItemUse::read : ItemUse::write;
    Item item{nullptr, hostClassList | hostTypeInteger, nullptr, nullptr};
    if (openItem(item, source.context(), label.c_str(), use)) return 0;
    const RangeSpec& range = item.range;
    if (!range.columnMap) return range.has(optRangeSize) ? 0 : (std::abort(), 0);
    // A range that was accepted is a rectangle of the sheet, its columns lie in it, and its header right above it.
    bool sound = range.height() >= 1 && range.width() >= 1 && range.firstRow >= 0 && range.firstCol >= 0 &&
                 range.lastCol <= largestColumn && range.columnCount >= 1;
    for (int i = 0; i < range.columnCount; ++i) {
        sound = sound && range.column(i) >= 0 && range.column(i) < range.width();
        sheet.find(range.firstRow, range.firstCol + range.column(i));
    }
    if (range.headerRow >= 0) sound = sound && range.headerRow == range.firstRow - 1;
    if (!sound) std::abort();
    return 0;
}
