// What a cell holds: texts of any length in little room, the rare rest outside.

#include "ooxml/cells/cell.h"

#include <cstring>

#include "bindery/classes/extras.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"

namespace ooxml {

namespace {

// A text outside: its size, then its place, in the bytes of the text.
void putOutside(char* room, const char* text, std::uint32_t size) {
    std::memcpy(room, &size, sizeof size);
    std::memcpy(room + sizeof size, &text, sizeof text);
}

std::string_view outside(const char* room) {
    std::uint32_t size;
    const char* text;
    std::memcpy(&size, room, sizeof size);
    std::memcpy(&text, room + sizeof size, sizeof text);
    return {text, size};
}

}  // namespace

std::string_view cellTypeText(CellType type) {
    static constexpr std::string_view texts[] = {"", "b", "n", "e", "s", "str", "inlineStr", "d"};
    return texts[static_cast<std::size_t>(type)];
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
      cm(other.cm),
      vm(other.vm),
      hasCm(other.hasCm),
      hasVm(other.hasVm),
      hasPh(other.hasPh),
      ph(other.ph) {}

template <class Family>
c_CT_Cell<Family>::c_CT_Cell(const c_CT_Cell& other)
    : _packedRef(other._packedRef),
      _styleIndex(other._styleIndex),
      _rare(other._rare != nullptr ? std::make_unique<Rare>(*other._rare).release() : nullptr),
      _column(other._column) {
    if (other.hasValue()) setText(other.text());
}

template <class Family>
c_CT_Cell<Family>::c_CT_Cell(c_CT_Cell&& other) noexcept
    : _packedRef(other._packedRef),
      _styleIndex(other._styleIndex),
      _rare(other._rare),
      _column(other._column),
      _flags(other._flags),
      _length(other._length) {
    std::memcpy(_text, other._text, textRoom);
    other._rare = nullptr;
    other._flags = 0;
}

template <class Family>
c_CT_Cell<Family>& c_CT_Cell<Family>::operator=(const c_CT_Cell& other) {
    if (this != &other) *this = c_CT_Cell(other);
    return *this;
}

template <class Family>
c_CT_Cell<Family>& c_CT_Cell<Family>::operator=(c_CT_Cell&& other) noexcept {
    if (this == &other) return *this;
    dropText();
    dropRare();
    _packedRef = other._packedRef;
    _styleIndex = other._styleIndex;
    _rare = other._rare;
    _column = other._column;
    _flags = other._flags;
    _length = other._length;
    std::memcpy(_text, other._text, textRoom);
    other._rare = nullptr;
    other._flags = 0;
    return *this;
}

template <class Family>
typename c_CT_Cell<Family>::Rare& c_CT_Cell<Family>::rare() {
    if (_rare == nullptr) _rare = std::make_unique<Rare>().release();
    return *_rare;
}

template <class Family>
void c_CT_Cell<Family>::dropRare() {
    if (_rare != nullptr) std::unique_ptr<Rare>(_rare).reset();
}

template <class Family>
void c_CT_Cell<Family>::freeText() {
    std::unique_ptr<const char[]>(outside(_text).data()).reset();
}

template <class Family>
std::string_view c_CT_Cell<Family>::outsideText() const {
    return outside(_text);
}

template <class Family>
void c_CT_Cell<Family>::setText(std::string_view utf8) {
    if (utf8.size() <= textRoom) {
        char copy[textRoom];  // the text may be this cell's own
        std::memcpy(copy, utf8.data(), utf8.size());
        dropText();
        std::memcpy(_text, copy, utf8.size());
        _length = static_cast<std::uint8_t>(utf8.size());
        _flags = valuePresent;
        return;
    }
    auto copy = std::make_unique<char[]>(utf8.size());
    std::memcpy(copy.get(), utf8.data(), utf8.size());
    dropText();
    putOutside(_text, copy.release(), static_cast<std::uint32_t>(utf8.size()));
    _length = 0;
    _flags = valuePresent | textOutside;
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
    if (_rare != nullptr) _rare->formula.reset();
}

template <class Family>
typename Family::c_CT_Rst& c_CT_Cell<Family>::makeInlineString() {
    auto& string = rare().inlineString;
    if (!string) string = std::make_unique<Rst>();
    return *string;
}

template <class Family>
void c_CT_Cell<Family>::clearInlineString() {
    if (_rare != nullptr) _rare->inlineString.reset();
}

template <class Family>
void c_CT_Cell<Family>::clearContent() {
    clearValue();
    setType(CellType::absent);
    dropRare();
    _rare = nullptr;
}

template <class Family>
void c_CT_Cell<Family>::setMetadata(std::uint32_t cell, std::uint32_t value) {
    if (_rare == nullptr && cell == 0 && value == 0) return;
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
