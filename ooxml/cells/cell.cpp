// What a cell holds: texts of any length in little room, the rare rest outside.

#include "ooxml/cells/cell.h"

#include <cstring>

#include "bindery/classes/extras.h"
#include "ooxml/cells/packed_number.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"

namespace ooxml {

std::string_view cellTypeText(CellType type) {
    static constexpr std::string_view texts[] = {"", "b", "n", "e", "s", "str", "inlineStr", "d"};
    return texts[static_cast<std::size_t>(type)];
}

CellText::CellText(const char* packed, std::size_t size) : _text(_unpacked, size) {
    for (std::size_t at = 0; at < size; at += 2) {
        const auto pair = static_cast<unsigned char>(packed[at / 2]);
        _unpacked[at] = packedCharacters[pair & 15];
        _unpacked[at + 1] = packedCharacters[pair >> 4];
    }
}

template <class Family>
c_CT_Cell<Family>::Rare::Rare() = default;
template <class Family>
c_CT_Cell<Family>::Rare::~Rare() = default;

template <class Family>
c_CT_Cell<Family>::Rare::Rare(const Rare& other)
    : formula(other.formula ? std::make_unique<Formula>(*other.formula) : nullptr),
      inlineString(other.inlineString ? std::make_unique<Rst>(*other.inlineString) : nullptr),
      extLst(other.extLst ? std::make_unique<bindery::c_raw_node>(*other.extLst) : nullptr),
      extras(other.extras ? std::make_unique<bindery::Extras>(*other.extras) : nullptr),
      text(other.text),
      style(other.style),
      cm(other.cm),
      vm(other.vm),
      hasCm(other.hasCm),
      hasVm(other.hasVm),
      hasPh(other.hasPh),
      ph(other.ph) {}

template <class Family>
c_CT_Cell<Family>::c_CT_Cell(const c_CT_Cell& other) : _bits(other._bits) {
    if (const Rare* const rest = other.rareOrNull()) {
        emptyContent();
        const Rare* const copy = std::make_unique<Rare>(*rest).release();
        std::memcpy(_content, &copy, sizeof copy);
        _bits = other._bits;
    } else if (other.form() == Form::outside) {
        emptyContent();
        if (other.flags() == 0) {
            setText(other.outsideText());
        } else {
            const auto formula = std::string_view(other.outsideBytes(), other.bytesOfFormula());
            putBlock(other.flags(), other.numberOfFormula(), formula.substr(sizeof(std::uint32_t)),
                     other.outsideText());
        }
        _bits = other._bits;
    } else {
        std::memcpy(_content, other._content, contentRoom);
    }
}

template <class Family>
c_CT_Cell<Family>& c_CT_Cell<Family>::operator=(const c_CT_Cell& other) {
    if (this != &other) *this = c_CT_Cell(other);
    return *this;
}

template <class Family>
c_CT_Cell<Family>& c_CT_Cell<Family>::operator=(c_CT_Cell&& other) noexcept {
    if (this == &other) return *this;
    dropContent();
    _bits = other._bits;
    takeContent(other);
    return *this;
}

/// From now on the rest holds the text, too.
template <class Family>
typename c_CT_Cell<Family>::Rare& c_CT_Cell<Family>::rare() {
    if (Rare* const there = rareOrNull()) return *there;
    auto rest = std::make_unique<Rare>();
    rest->text = std::string_view(text());
    rest->formula = wholeFormula();
    dropContent();
    Rare* const made = rest.release();
    std::memcpy(_content, &made, sizeof made);
    _content[lengthAt] = 0;
    putForm(Form::rare);
    return *made;
}

template <class Family>
void c_CT_Cell<Family>::freeContent() {
    if (isRare()) {
        std::unique_ptr<Rare>(rareOrNull()).reset();
    } else {
        std::unique_ptr<const char[]>(outsideBytes()).reset();
    }
}

/// From now on the bytes are this cell's.
template <class Family>
void c_CT_Cell<Family>::takeOutside(char* bytes, std::size_t valueSize, unsigned char flags) {
    dropContent();
    std::memcpy(_content, &bytes, sizeof bytes);
    putOutsideSize(valueSize);
    _content[lengthAt] = static_cast<char>(flags);
    putForm(Form::outside);
}

template <class Family>
std::string_view c_CT_Cell<Family>::outsideText() const {
    if (isRare()) return rareOrNull()->text;
    std::uint32_t size;
    std::memcpy(&size, _content + sizeof(char*), sizeof size);
    return {outsideBytes() + bytesOfFormula(), size};
}

/// The text may be this cell's own.
template <class Family>
void c_CT_Cell<Family>::setText(std::string_view utf8) {
    if (Rare* const rest = rareOrNull()) {
        rest->text = std::string(utf8);
        if (rest->extras) rest->extras->isBlankAsRead = false;
        _bits |= valuePresent;
        return;
    }
    if (flags() != 0) {
        setTextBesideFormula(utf8);
        _bits |= valuePresent;
        return;
    }
    char content[contentRoom] = {};
    Form newForm = Form::plain;
    if (utf8.size() <= lengthAt) {
        std::memcpy(content, utf8.data(), utf8.size());
        content[lengthAt] = static_cast<char>(utf8.size());
    } else if (utf8.size() <= packedRoom && packNumber(utf8, content)) {
        newForm = Form::packed;
        content[lengthAt] = static_cast<char>(utf8.size());
    } else {
        auto copy = std::make_unique_for_overwrite<char[]>(utf8.size());
        std::memcpy(copy.get(), utf8.data(), utf8.size());
        takeOutside(copy.release(), utf8.size(), 0);
        _bits |= valuePresent;
        return;
    }
    dropContent();
    std::memcpy(_content, content, contentRoom);
    putForm(newForm);
    _bits |= valuePresent;
}

/// A text that was read. One blank is marked: one that is set goes out as a no-break space.
template <class Family>
void c_CT_Cell<Family>::takeText(std::string_view utf8) {
    setText(utf8);
    if (utf8 == " ") makeExtras().isBlankAsRead = true;
}

template <class Family>
void c_CT_Cell<Family>::clearValue() {
    if (Rare* const rest = rareOrNull()) {
        rest->text.clear();
        _bits &= ~valuePresent;
        return;
    }
    if (flags() != 0) {
        setTextBesideFormula({});
        _bits &= ~valuePresent;
        return;
    }
    dropContent();
    emptyContent();
}

template <class Family>
std::wstring c_CT_Cell<Family>::value() const {
    return bindery::toWide(text());
}

template <class Family>
void c_CT_Cell<Family>::setValue(std::wstring_view text) {
    setText(bindery::toUtf8(text));
}

template <class Family>
typename Family::c_CT_Rst& c_CT_Cell<Family>::makeInlineString() {
    auto& string = rare().inlineString;
    if (!string) string = std::make_unique<Rst>();
    return *string;
}

template <class Family>
void c_CT_Cell<Family>::clearInlineString() {
    if (Rare* const rest = rareOrNull()) rest->inlineString.reset();
}

template <class Family>
void c_CT_Cell<Family>::clearContent() {
    const bool styled = hasStyle();
    const std::uint32_t index = style();
    dropContent();
    emptyContent();
    setType(CellType::absent);
    if (styled) setStyle(index);
}

template <class Family>
void c_CT_Cell<Family>::setMetadata(std::uint32_t cell, std::uint32_t value) {
    if (!isRare() && cell == 0 && value == 0) return;
    Rare& rest = rare();
    rest.cm = cell;
    rest.hasCm = cell != 0;
    rest.vm = value;
    rest.hasVm = value != 0;
}

template <class Family>
bindery::Extras& c_CT_Cell<Family>::makeExtras() {
    auto& extras = rare().extras;
    if (!extras) extras = std::make_unique<bindery::Extras>();
    return *extras;
}

}  // namespace ooxml
