#include "drawing/objects/chart_sheet.h"

#include "biff/container/xls.h"

namespace vellum {

std::size_t ChartSheet::read(Xls& in, std::size_t recordSize) {
    keepRecord(in, {id, static_cast<std::uint16_t>(recordSize)});
    for (int depth = 1; depth > 0;) {
        const auto header = in.nextRecord();
        if (!header) break;
        keepRecord(in, *header);
        if (header->id == record_id::Bof) ++depth;
        if (header->id == record_id::Eof) --depth;
    }
    return _wire.size();
}

}  // namespace vellum
