// Formulas in the little room that most need: a text, or the number of a group.

#include "ooxml/cells/cell_formula.h"

#include <algorithm>
#include <cstring>

#include "bindery/values/value_spec.h"
#include "ooxml/cells/cell.h"
#include "ooxml/cells/packed_number.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"

namespace ooxml {

namespace {

constexpr std::string_view sharedType = "shared";

// In front of the value in a block stands a number: the size of the formula's text, which follows, or the group's.
constexpr std::size_t numberSize = sizeof(std::uint32_t);

/// What the allocator gives for that many bytes anyway, so that a value has room that comes behind its formula.
constexpr std::size_t roomFor(std::size_t bytes) {
    return std::max<std::size_t>(24, (bytes + 7) / 16 * 16 + 8);
}

}  // namespace

template <class Formula>
std::string_view CellFormula<Formula>::t() const {
    if (_element) return _element->t();
    return _group ? sharedType : "normal";
}

template <class Formula>
bool CellFormula<Formula>::isset_t() const {
    return _element ? _element->isset_t() : _group.has_value();
}

template <class Formula>
std::string_view CellFormula<Formula>::ref() const {
    return _element ? std::string_view(_element->ref()) : std::string_view();
}

template <class Formula>
bool CellFormula<Formula>::isset_ref() const {
    return _element && _element->isset_ref();
}

template <class Formula>
std::uint32_t CellFormula<Formula>::si() const {
    return _element ? _element->si() : _group.value_or(0);
}

template <class Formula>
bool CellFormula<Formula>::isset_si() const {
    return _element ? _element->isset_si() : _group.has_value();
}

template <class Formula>
std::wstring CellFormula<Formula>::text() const {
    return _element ? _element->text() : bindery::toWide(_text);
}

template <class Formula>
bool CellFormula<Formula>::hasText() const {
    return _element ? !_element->text().empty() : !_text.empty();
}

template <class Family>
std::uint32_t c_CT_Cell<Family>::numberOfFormula() const {
    std::uint32_t number = 0;
    std::memcpy(&number, form() == Form::outside ? outsideBytes() : _content + memberTextRoom, sizeof number);
    return number;
}

/// How many bytes stand in front of the value's in the block outside.
template <class Family>
std::size_t c_CT_Cell<Family>::bytesOfFormula() const {
    if (hasFlag(textFlag)) return numberSize + numberOfFormula();
    return hasFlag(memberFlag) ? numberSize : 0;
}

template <class Family>
auto c_CT_Cell<Family>::formula() const -> CellFormula<Formula> {
    if (isRare()) return CellFormula<Formula>(rareOrNull()->formula.get());
    if (hasFlag(memberFlag)) return CellFormula<Formula>(numberOfFormula());
    if (!hasFlag(textFlag)) return {};
    return CellFormula<Formula>(std::string_view(outsideBytes() + numberSize, numberOfFormula()));
}

/// The element that says the same.
template <class Family>
auto c_CT_Cell<Family>::wholeFormula() const -> std::unique_ptr<Formula> {
    const auto known = formula();
    if (!known) return nullptr;
    auto element = std::make_unique<Formula>();
    if (hasFlag(memberFlag)) {
        element->t(std::string(sharedType));
        element->si(known->si());
    } else {
        if (hasFlag(acaFlag)) element->aca(false);
        element->text(known->text());
    }
    return element;
}

/// The formula's bytes and the value behind them, in a block of their own.
template <class Family>
void c_CT_Cell<Family>::putBlock(unsigned char flags, std::uint32_t number, std::string_view formula,
                                 std::string_view value) {
    auto block = std::make_unique_for_overwrite<char[]>(roomFor(numberSize + formula.size() + value.size()));
    std::memcpy(block.get(), &number, numberSize);
    char* const end = std::copy(formula.begin(), formula.end(), block.get() + numberSize);
    std::copy(value.begin(), value.end(), end);
    takeOutside(block.release(), value.size(), flags);
}

template <class Family>
void c_CT_Cell<Family>::setFormula(std::wstring_view text) {
    wchar_t all = 0;
    for (const wchar_t c : text) all |= c;
    char ascii[256];
    std::string others;
    std::string_view utf8(ascii, text.size());
    if (text.size() <= sizeof ascii && all >= 0 && all < 128) {
        std::transform(text.begin(), text.end(), ascii, [](wchar_t c) { return static_cast<char>(c); });
    } else {
        utf8 = others = bindery::toUtf8(text);
    }
    const bool isWhole = utf8.data() != ascii && bindery::toWide(utf8) != text;  // UTF-8 does not hold it
    if (!isRare() && !isWhole) return setFormulaText(utf8);
    clearFormula();
    makeFormula().text(std::wstring(text));
}

/// For cells without a rest.
template <class Family>
void c_CT_Cell<Family>::setFormulaText(std::string_view utf8, bool withAca) {
    const CellText value = text();
    putBlock(withAca ? textFlag | acaFlag : textFlag, static_cast<std::uint32_t>(utf8.size()), utf8, value);
}

template <class Family>
void c_CT_Cell<Family>::setMember(std::uint32_t group, std::string_view value) {
    char content[contentRoom] = {};
    Form newForm = Form::plain;
    if (value.size() <= memberTextRoom) {
        std::copy(value.begin(), value.end(), content);
    } else if (value.size() <= 2 * memberTextRoom && packNumber(value, content)) {
        newForm = Form::packed;
    } else {
        return putBlock(memberFlag, group, {}, value);
    }
    std::memcpy(content + memberTextRoom, &group, sizeof group);
    content[lengthAt] = static_cast<char>(value.size() | memberFlag);
    dropContent();
    std::memcpy(_content, content, contentRoom);
    putForm(newForm);
}

/// The text may be this cell's own.
template <class Family>
void c_CT_Cell<Family>::setTextBesideFormula(std::string_view utf8) {
    if (hasFlag(memberFlag)) return setMember(numberOfFormula(), utf8);
    const std::size_t head = bytesOfFormula();
    char* const block = outsideBytes();
    if (head + utf8.size() > roomFor(head + outsideText().size())) {
        const auto text = std::string_view(block, head).substr(numberSize);
        return putBlock(flags(), numberOfFormula(), text, utf8);
    }
    std::memmove(block + head, utf8.data(), utf8.size());
    putOutsideSize(utf8.size());
}

template <class Family>
typename Family::c_CT_CellFormula& c_CT_Cell<Family>::makeFormula() {
    auto& formula = rare().formula;
    if (!formula) formula = std::make_unique<Formula>();
    return *formula;
}

template <class Family>
void c_CT_Cell<Family>::clearFormula() {
    if (Rare* const rest = rareOrNull()) {
        rest->formula.reset();
    } else if (flags() != 0) {
        const bool valued = hasValue();
        const std::string value(std::string_view{text()});
        dropContent();
        emptyContent();
        if (valued) setText(value);
    }
}

/// A rest that holds nothing but a formula of few words, and the value, is given up.
template <class Family>
void c_CT_Cell<Family>::slim() {
    const Rare& rest = *rareOrNull();
    if (!rest.formula || rest.inlineString || rest.extLst || rest.extras || rest.hasCm || rest.hasVm || rest.hasPh ||
        style() >= styleOutside)
        return;
    const Formula& f = *rest.formula;
    if (f.extras() || f.isset_ref() || f.isset_dt2D() || f.isset_dtr() || f.isset_del1() || f.isset_del2() ||
        f.isset_r1() || f.isset_r2() || f.isset_ca() || f.isset_bx() || (f.isset_aca() && f.aca()))
        return;
    if (f.isset_t()) {
        if (f.t() == sharedType && f.isset_si() && !f.isset_aca() && f.text().empty()) setMember(f.si(), rest.text);
    } else if (!f.isset_si()) {
        setFormulaText(bindery::toUtf8(f.text()), f.isset_aca());
    }
}

}  // namespace ooxml
