#include "biff/names/lbl.h"

#include <algorithm>

#include "biff/container/messages.h"
#include "biff/container/record_codec.h"
#include "biff/container/xls.h"
#include "biff/records/text_reader.h"
#include "engine/failure/vlerror.h"

namespace vellum {

namespace {

constexpr std::size_t headSize = wireSize<LblHead>();

void putName(Sink& out, std::wstring_view name) {
    const bool wide = std::ranges::any_of(name, [](wchar_t c) { return c > 0xFF; });
    out.put(static_cast<std::uint8_t>(wide ? wideText : 0));
    writeCharacters(out, name, wide);
}

// Texts for a menu and the status line, one byte a character.
std::size_t textBytes(const LblHead& head) {
    std::size_t bytes = 0;
    for (const std::uint8_t length : head.textLengths) bytes += length;
    return bytes;
}

}  // namespace

Lbl Lbl::read(Xls& in, RecordHeader header, StringPool& pool, TextForm form) {
    Lbl name;
    name._wire.take(in, header);
    name.parse(pool, form);
    return name;
}

Lbl Lbl::make(std::uint16_t grbit, int scope, std::wstring_view text, std::span<const std::byte> tokens) {
    Lbl made;
    made._head.grbit = grbit;
    made._head.cch = static_cast<std::uint8_t>(text.size());
    made._head.itab = static_cast<std::uint16_t>(scope + 1);
    made._name = text;
    Sink front;
    writeFields(front, made._head);
    putName(front, text);
    made._sound = true;
    made.build(front.bytes(), tokens, {});
    return made;
}

void Lbl::parse(StringPool& pool, TextForm form) {
    const auto body = std::as_const(_wire).firstBody();
    if (body.size() < headSize) return;
    Cursor in(body);
    readFields(in, _head);
    try {
        _name = {readTextNoCch(in, pool, _head.cch, form, LblHead::name), _head.cch};
    } catch (const vlerror&) {
        return;  // the text runs past the record
    }
    if (in.left() < _head.cce) return;
    _tokensAt = static_cast<std::uint16_t>(body.size() - in.left());
    constexpr std::size_t flagsByte = 1;
    _sound = form == TextForm::withFlags || body.size() + flagsByte <= maxRecordBody;
    if (form == TextForm::withFlags || !_sound) return;
    // The older form has no flags byte in front of the text, and a count of sheets where nothing is now.
    _head.reserved = 0;
    Sink front;
    writeFields(front, _head);
    putName(front, _name);
    const std::vector<std::byte> rest(in.rest().begin(), in.rest().end());
    build(front.bytes(), std::span(rest).first(_head.cce), std::span(rest).subspan(_head.cce));
}

// The body anew; what follows the record in the file stays behind it.
void Lbl::build(std::span<const std::byte> front, std::span<const std::byte> tokens, std::span<const std::byte> rest) {
    if (front.size() + tokens.size() + rest.size() > maxRecordBody) throw vlerror(biff::msg::stringTooLong);
    _head.cce = static_cast<std::uint16_t>(tokens.size());
    Sink body;
    body.write(front);
    body.write(tokens);
    body.write(rest);
    const auto old = _wire.wire();
    const std::size_t firstRecord = old.empty() ? 0 : recordHeaderSize + std::as_const(_wire).firstBody().size();
    KeptRecords wire;
    wire.add(LblHead::id, body.bytes());
    wire.append(old.subspan(firstRecord));
    _tokensAt = static_cast<std::uint16_t>(front.size());
    _wire = std::move(wire);
    storeHead();
}

void Lbl::storeHead() {
    Sink head;
    writeFields(head, _head);
    std::ranges::copy(head.bytes(), _wire.firstBody().begin());
}

void Lbl::write(Xls& out) const {
    if (!isGone()) {
        _wire.write(out);
        return;
    }
    constexpr std::byte brokenReference[] = {std::byte{0x1C}, std::byte{0x17}};
    make(hidden, wholeBook, shownText(), brokenReference)._wire.write(out);
}

std::wstring_view Lbl::text() const {
    if (!isBuiltIn() || _name.size() != 1) return _name;
    const auto known = biff::builtinText(_name.front());
    return known.empty() ? _name : known;
}

std::optional<biff::BuiltinName> Lbl::builtin() const {
    if (!isBuiltIn() || _name.size() != 1 || biff::builtinText(_name.front()).empty()) return std::nullopt;
    return static_cast<biff::BuiltinName>(_name.front());
}

std::span<const std::byte> Lbl::tokens() const {
    return _sound ? _wire.firstBody().subspan(_tokensAt, _head.cce) : std::span<const std::byte>();
}

std::span<const std::byte> Lbl::tokensExtra() const {
    if (!_sound) return {};
    const auto rest = _wire.firstBody().subspan(_tokensAt + std::size_t{_head.cce});
    return rest.first(rest.size() - std::min(rest.size(), textBytes(_head)));
}

std::span<std::byte> Lbl::patchTokens() {
    return _sound ? _wire.firstBody().subspan(_tokensAt, _head.cce) : std::span<std::byte>();
}

void Lbl::setHidden(bool on) {
    _head.grbit = static_cast<std::uint16_t>(on ? _head.grbit | hidden : _head.grbit & ~hidden);
    storeHead();
}

void Lbl::setScope(int scope) {
    _head.itab = static_cast<std::uint16_t>(scope + 1);
    if (std::as_const(_wire).firstBody().size() >= headSize) storeHead();
}

void Lbl::setTokens(std::span<const std::byte> tokens, std::span<const std::byte> extra) {
    const auto body = std::as_const(_wire).firstBody();
    const auto old = body.subspan(_tokensAt + std::size_t{_head.cce});
    const auto texts = old.last(std::min(old.size(), textBytes(_head)));
    std::vector<std::byte> rest(extra.begin(), extra.end());
    rest.insert(rest.end(), texts.begin(), texts.end());
    const std::vector<std::byte> front(body.begin(), body.begin() + _tokensAt);
    build(front, tokens, rest);
}

void Lbl::revive(std::span<const std::byte> tokens) {
    setTokens(tokens);
    _goneText.clear();
}

}  // namespace vellum
