// What a cell holds: texts of any length in little room, the rare rest outside.

#include "ooxml/cells/cell.h"

#include <cstring>

#include "bindery/classes/extras.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"

namespace ooxml {

namespace {

// A text outside: its place, then its size, in the bytes of the content.
void putOutside(char* content, const char* text, std::uint32_t size) {
    std::memcpy(content, &text, sizeof text);
    std::memcpy(content + sizeof text, &size, sizeof size);
}

std::string_view outside(const char* content) {
    const char* text;
    std::uint32_t size;
    std::memcpy(&text, content, sizeof text);
    std::memcpy(&size, content + sizeof text, sizeof size);
    return {text, size};
}

constexpr std::string_view numberCharacters = "0123456789.-+Ee";
constexpr std::size_t packedRoom = 30;

/// The number of each character of numbers, 15 for all others.
constexpr auto packedCodes = [] {
    struct {
        unsigned char of[256];
    } codes{};
    for (unsigned char& code : codes.of) code = 15;
    for (std::size_t i = 0; i < numberCharacters.size(); ++i) {
        codes.of[static_cast<unsigned char>(numberCharacters[i])] = static_cast<unsigned char>(i);
    }
    return codes;
}();

/// False when the text is longer, or has other characters.
bool pack(std::string_view text, char* content) {
    if (text.size() > packedRoom) return false;
    const auto code = [&](std::size_t at) {
        return at < text.size() ? packedCodes.of[static_cast<unsigned char>(text[at])] : 0U;
    };
    unsigned worst = 0;
    for (std::size_t at = 0; at < text.size(); at += 2) {
        const unsigned low = code(at), high = code(at + 1);
        worst |= (low + 1) | (high + 1);
        content[at / 2] = static_cast<char>(low | high << 4);
    }
    return worst < 16;
}

}  // namespace

std::string_view cellTypeText(CellType type) {
    static constexpr std::string_view texts[] = {"", "b", "n", "e", "s", "str", "inlineStr", "d"};
    return texts[static_cast<std::size_t>(type)];
}

CellText::CellText(const char* packed, std::size_t size) : _text(_unpacked, size) {
    for (std::size_t at = 0; at < size; at += 2) {
        const auto pair = static_cast<unsigned char>(packed[at / 2]);
        _unpacked[at] = numberCharacters[pair & 15];
        _unpacked[at + 1] = numberCharacters[pair >> 4];
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
        setText(other.outsideText());
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
    dropContent();
    Rare* const made = rest.release();
    std::memcpy(_content, &made, sizeof made);
    putForm(Form::rare);
    return *made;
}

template <class Family>
void c_CT_Cell<Family>::freeContent() {
    if (isRare()) {
        std::unique_ptr<Rare>(rareOrNull()).reset();
    } else {
        std::unique_ptr<const char[]>(outside(_content).data()).reset();
    }
}

template <class Family>
std::string_view c_CT_Cell<Family>::outsideText() const {
    if (isRare()) return rareOrNull()->text;
    return outside(_content);
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
    char content[contentRoom] = {};
    Form newForm = Form::plain;
    if (utf8.size() <= lengthAt) {
        std::memcpy(content, utf8.data(), utf8.size());
        content[lengthAt] = static_cast<char>(utf8.size());
    } else if (pack(utf8, content)) {
        newForm = Form::packed;
        content[lengthAt] = static_cast<char>(utf8.size());
    } else {
        newForm = Form::outside;
        auto copy = std::make_unique<char[]>(utf8.size());
        std::memcpy(copy.get(), utf8.data(), utf8.size());
        putOutside(content, copy.release(), static_cast<std::uint32_t>(utf8.size()));
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
typename Family::c_CT_CellFormula& c_CT_Cell<Family>::makeFormula() {
    auto& formula = rare().formula;
    if (!formula) formula = std::make_unique<Formula>();
    return *formula;
}

template <class Family>
void c_CT_Cell<Family>::clearFormula() {
    if (Rare* const rest = rareOrNull()) rest->formula.reset();
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
