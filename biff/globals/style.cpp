#include "biff/globals/style.h"

#include "biff/container/record_codec.h"

namespace vellum {

Style Style::read(Xls& in, std::uint16_t size, bool noFlags, StringPool& pool) {
    constexpr std::uint16_t builtInSize = 4, minUserSize = 4;
    Cursor body = in.body(size);
    if (size < minUserSize) throwBadSize(name);
    Style style;
    style.ixfe = body.get<std::uint16_t>();
    if (style.isBuiltIn()) {
        if (size != builtInSize) throwBadSize(name);
        style.istyBuiltIn = body.get<std::uint8_t>();
        style.iLevel = body.get<std::uint8_t>();
    } else {
        style.userName =
            XLUnicodeString::read(body, pool, noFlags ? TextForm::noFlags : TextForm::withFlags, noFlags, name);
    }
    if (in.peekRecordId() == record_id::StyleExt) style.ext.take(in, in.readHeader());
    return style;
}

void Style::write(Xls& out, bool withExt) const {
    Sink& sink = out.out();
    const std::size_t tail = isBuiltIn() ? 2 : userName.wireSize();
    sink.putAll(id, static_cast<std::uint16_t>(2 + tail), ixfe);
    if (isBuiltIn())
        sink.putAll(istyBuiltIn, iLevel);
    else
        userName.write(sink);
    if (withExt) ext.write(out);
}

}  // namespace vellum
