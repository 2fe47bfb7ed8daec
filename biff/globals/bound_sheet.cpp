#include "biff/globals/bound_sheet.h"

#include "biff/container/record_codec.h"

namespace vellum {

namespace {
constexpr std::size_t minSize = 8;  // position, state, kind and the shortest name
}

BoundSheet8 BoundSheet8::read(Cursor body, bool noFlags, StringPool& pool) {
    if (body.left() < minSize) throwBadSize(name);
    BoundSheet8 sheet;
    sheet.lbPlyPos = body.get<std::uint32_t>();
    sheet.hsState = body.get<std::uint8_t>();
    sheet.dt = body.get<std::uint8_t>();
    sheet.sheetName = ShortXLUnicodeString::read(body, pool, noFlags ? TextForm::noFlags : TextForm::withFlags, name);
    return sheet;
}

void BoundSheet8::write(Xls& out) const {
    Sink& sink = out.out();
    sink.putAll(id, static_cast<std::uint16_t>(6 + sheetName.wireSize()), lbPlyPos, hsState, dt);
    sheetName.write(sink);
}

}  // namespace vellum
