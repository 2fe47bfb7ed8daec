#include "drawing/records/text_object.h"

#include "biff/container/cursor.h"
#include "biff/container/sink.h"
#include "biff/container/xls.h"
#include "drawing/art/messages.h"
#include "engine/failure/messages.h"
#include "engine/failure/vlerror.h"

namespace vellum {
namespace {

constexpr std::size_t runSize = 8;
constexpr std::uint8_t wideFlag = 1;

std::size_t charSize(std::byte flags) {
    return (std::to_integer<std::uint8_t>(flags) & wideFlag) != 0 ? 2 : 1;
}

}  // namespace

std::size_t TextObject::read(Xls& in, std::size_t recordSize) {
    Cursor body(keepRecord(in, {id, static_cast<std::uint16_t>(recordSize)}));
    body.skip(10, drawing::msg::textObject);  // options, rotation, and six bytes that only controls use
    _cchText = body.get<std::uint16_t>(drawing::msg::textObject);
    std::size_t runBytes = body.get<std::uint16_t>(drawing::msg::textObject);
    body.skip(2, drawing::msg::textObject);  // font of an empty text
    if (!body.empty() && body.get<std::uint16_t>(drawing::msg::objFmla) > body.left())
        throw vlerror(drawing::msg::objFmla);

    _textAt = _wire.size();
    const auto nextPart = [&] {
        if (in.peekRecordId() != record_id::Continue) throw vlerror(drawing::msg::textObject);
        return keepRecord(in, in.readHeader());
    };
    for (std::size_t left = _cchText; left > 0;) {
        const auto part = nextPart();
        if (part.empty()) continue;
        left -= std::min(left, (part.size() - 1) / charSize(part.front()));
    }
    if (_cchText == 0) runBytes = 0;
    while (runBytes > 0) runBytes -= std::min(runBytes, nextPart().size());
    return _wire.size();
}

std::wstring TextObject::text() const {
    std::wstring text;
    Cursor in{std::span(_wire).subspan(_textAt)};
    while (text.size() < _cchText && in.left() > recordHeaderSize) {
        in.skip(sizeof(std::uint16_t));
        Cursor part(in.take(in.get<std::uint16_t>()));
        if (part.empty()) continue;
        const std::size_t width = charSize(part.take(1).front());
        while (part.left() >= width && text.size() < _cchText) {
            text += static_cast<wchar_t>(width == 2 ? part.get<std::uint16_t>() : part.get<std::uint8_t>());
        }
    }
    return text;
}

std::unique_ptr<TextObject> TextObject::makeNote(std::wstring_view text, std::uint16_t ifnt) {
    constexpr std::uint16_t options = 0x212;  // left, top, locked
    constexpr std::size_t charsPerPart = (maxRecordBody - 1) / 2;
    if (text.size() > maxText) throw vlerror(drawing::msg::stringTooLong);
    const auto cch = static_cast<std::uint16_t>(text.size());
    const std::size_t runBytes = text.empty() ? 0 : 2 * runSize;
    Sink out;
    out.putAll(id, std::uint16_t{18}, options);
    out.fill(8);
    out.putAll(cch, static_cast<std::uint16_t>(runBytes), std::uint32_t{0});
    auto made = std::make_unique<TextObject>();
    made->_cchText = cch;
    made->_textAt = out.size();
    while (!text.empty()) {
        const auto part = text.substr(0, charsPerPart);
        out.putAll(record_id::Continue, static_cast<std::uint16_t>(1 + 2 * part.size()), wideFlag);
        for (const wchar_t c : part) out.put(static_cast<std::uint16_t>(c));
        text.remove_prefix(part.size());
    }
    if (runBytes > 0) {
        out.putAll(record_id::Continue, static_cast<std::uint16_t>(runBytes));
        out.putAll(std::uint16_t{0}, ifnt, std::uint32_t{0});
        out.putAll(cch, std::uint16_t{0}, std::uint32_t{0});
    }
    made->_wire.assign(out.bytes().begin(), out.bytes().end());
    return made;
}

}  // namespace vellum
