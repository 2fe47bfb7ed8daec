#include "xlsx/parts/form_control.h"

#include <algorithm>
#include <utility>

#include "engine/failure/vlerror.h"
#include "engine/text/conversions.h"
#include "ooxml/generated/ctrlProps/ctrlProps-types.h"
#include "xlsx/parts/object_messages.h"

namespace vellum {

namespace spec = ctrlProps::spec;

template <class CharT, class Tag>
template <class Value>
Value XMLControlPr<CharT, Tag>::read(Value value) {
    return guard(Value{}, [&] { return value; });
}

template <class CharT, class Tag>
const CharT* XMLControlPr<CharT, Tag>::give(const std::wstring& text, bool isThere) {
    return guard<const CharT*>(
        nullptr, [&]() -> const CharT* { return isThere ? _text.give<CharT>(text, _book->isUtf8()) : nullptr; });
}

template <class CharT, class Tag>
const CharT* XMLControlPr<CharT, Tag>::give(const std::string& text, bool isThere) {
    return give(bindery::toWide(text), isThere);
}

template <class CharT, class Tag>
template <class Set>
bool XMLControlPr<CharT, Tag>::write(Set&& set) {
    return guard(false, [&] {
        set();
        return true;
    });
}

template <class CharT, class Tag>
std::wstring XMLControlPr<CharT, Tag>::wide(const CharT* text) const {
    if (!text) throw vlerror(xlsx::msg::textNull);
    return toWide(std::basic_string_view<CharT>(text), _book->isUtf8());
}

template <class CharT, class Tag>
template <class Set>
bool XMLControlPr<CharT, Tag>::writeText(const CharT* value, Set&& set) {
    return write([&] { set(wide(value)); });
}

template <class CharT, class Tag>
template <class Set>
bool XMLControlPr<CharT, Tag>::writeListed(const CharT* value, const bindery::ValueSpec& list, Set&& set) {
    return write([&] {
        const std::string text = bindery::toUtf8(wide(value));
        if (std::find(list.enumeration.begin(), list.enumeration.end(), text) == list.enumeration.end()) {
            throw vlerror(xlsx::msg::controlValueUnknown);
        }
        set(text);
    });
}

template <class CharT, class Tag>
std::size_t XMLControlPr<CharT, Tag>::items() const {
    const auto* const list = _root.find_itemLst();
    return list ? list->item().size() : 0;
}

template <class CharT, class Tag>
std::size_t XMLControlPr<CharT, Tag>::checkedItem(int index, std::size_t count) const {
    if (index < 0 || static_cast<std::size_t>(index) >= count) throw vlerror(xlsx::msg::indexOutOfRange);
    return static_cast<std::size_t>(index);
}

template <class CharT, class Tag>
int XMLControlPr<CharT, Tag>::itemTotal() {
    return read(static_cast<int>(items()));
}

template <class CharT, class Tag>
const CharT* XMLControlPr<CharT, Tag>::itemAt(int index) {
    return guard<const CharT*>(nullptr, [&] {
        const std::size_t place = checkedItem(index, items());
        return _text.give<CharT>(std::as_const(_root).itemLst().item()[place].val(), _book->isUtf8());
    });
}

template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::addItem(const CharT* text) {
    return insertItem(static_cast<int>(items()), text);
}

template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::insertItem(int index, const CharT* text) {
    return write([&] {
        const std::size_t place = checkedItem(index, items() + 1);
        std::wstring value = wide(text);
        _root.itemLst().item().insert(place).val(std::move(value));
    });
}

/// A list without items may not stand in the part.
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::removeItem(int index) {
    return write([&] {
        const std::size_t place = checkedItem(index, items());
        _root.itemLst().item().erase(place);
        if (items() == 0) _root.unset_itemLst();
    });
}

template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::clearItems() {
    return write([&] { _root.unset_itemLst(); });
}

// The attributes, in the order of the interface. Those whose default is a text always have one.

template <class CharT, class Tag>
const CharT* XMLControlPr<CharT, Tag>::objectType() {
    return give(_root.objectType(), _root.isset_objectType());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setObjectType(const CharT* value) {
    return writeListed(value, spec::ST_ObjectType, [&](std::string text) { _root.objectType(std::move(text)); });
}

template <class CharT, class Tag>
const CharT* XMLControlPr<CharT, Tag>::checked() {
    return give(_root.checked(), true);
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setChecked(const CharT* value) {
    return writeListed(value, spec::ST_Checked, [&](std::string text) { _root.checked(std::move(text)); });
}

template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::colored() {
    return read(_root.colored());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setColored(bool value) {
    return write([&] { _root.colored(value); });
}

template <class CharT, class Tag>
int XMLControlPr<CharT, Tag>::dropLines() {
    return read(_root.dropLines());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setDropLines(int value) {
    return write([&] { _root.dropLines(value); });
}

template <class CharT, class Tag>
const CharT* XMLControlPr<CharT, Tag>::dropStyle() {
    return give(_root.dropStyle(), _root.isset_dropStyle());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setDropStyle(const CharT* value) {
    return writeListed(value, spec::ST_DropStyle, [&](std::string text) { _root.dropStyle(std::move(text)); });
}

template <class CharT, class Tag>
int XMLControlPr<CharT, Tag>::dx() {
    return read(_root.dx());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setDx(int value) {
    return write([&] { _root.dx(value); });
}

template <class CharT, class Tag>
const CharT* XMLControlPr<CharT, Tag>::editVal() {
    return give(_root.editVal(), _root.isset_editVal());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setEditVal(const CharT* value) {
    return writeListed(value, spec::ST_EditValidation, [&](std::string text) { _root.editVal(std::move(text)); });
}

template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::firstButton() {
    return read(_root.firstButton());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setFirstButton(bool value) {
    return write([&] { _root.firstButton(value); });
}

template <class CharT, class Tag>
const CharT* XMLControlPr<CharT, Tag>::fmlaGroup() {
    return give(_root.fmlaGroup(), _root.isset_fmlaGroup());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setFmlaGroup(const CharT* value) {
    return writeText(value, [&](std::wstring text) { _root.fmlaGroup(std::move(text)); });
}

template <class CharT, class Tag>
const CharT* XMLControlPr<CharT, Tag>::fmlaLink() {
    return give(_root.fmlaLink(), _root.isset_fmlaLink());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setFmlaLink(const CharT* value) {
    return writeText(value, [&](std::wstring text) { _root.fmlaLink(std::move(text)); });
}

template <class CharT, class Tag>
const CharT* XMLControlPr<CharT, Tag>::fmlaRange() {
    return give(_root.fmlaRange(), _root.isset_fmlaRange());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setFmlaRange(const CharT* value) {
    return writeText(value, [&](std::wstring text) { _root.fmlaRange(std::move(text)); });
}

template <class CharT, class Tag>
const CharT* XMLControlPr<CharT, Tag>::fmlaTxbx() {
    return give(_root.fmlaTxbx(), _root.isset_fmlaTxbx());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setFmlaTxbx(const CharT* value) {
    return writeText(value, [&](std::wstring text) { _root.fmlaTxbx(std::move(text)); });
}

template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::horiz() {
    return read(_root.horiz());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setHoriz(bool value) {
    return write([&] { _root.horiz(value); });
}

template <class CharT, class Tag>
int XMLControlPr<CharT, Tag>::inc() {
    return read(_root.inc());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setInc(int value) {
    return write([&] { _root.inc(value); });
}

template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::justLastX() {
    return read(_root.justLastX());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setJustLastX(bool value) {
    return write([&] { _root.justLastX(value); });
}

template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::lockText() {
    return read(_root.lockText());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setLockText(bool value) {
    return write([&] { _root.lockText(value); });
}

template <class CharT, class Tag>
int XMLControlPr<CharT, Tag>::max() {
    return read(_root.max());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setMax(int value) {
    return write([&] { _root.max(value); });
}

template <class CharT, class Tag>
int XMLControlPr<CharT, Tag>::min() {
    return read(_root.min());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setMin(int value) {
    return write([&] { _root.min(value); });
}

template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::multiLine() {
    return read(_root.multiLine());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setMultiLine(bool value) {
    return write([&] { _root.multiLine(value); });
}

template <class CharT, class Tag>
const CharT* XMLControlPr<CharT, Tag>::multiSel() {
    return give(_root.multiSel(), _root.isset_multiSel());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setMultiSel(const CharT* value) {
    return writeText(value, [&](std::wstring text) { _root.multiSel(std::move(text)); });
}

template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::noThreeD() {
    return read(_root.noThreeD());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setNoThreeD(bool value) {
    return write([&] { _root.noThreeD(value); });
}

template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::noThreeD2() {
    return read(_root.noThreeD2());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setNoThreeD2(bool value) {
    return write([&] { _root.noThreeD2(value); });
}

template <class CharT, class Tag>
int XMLControlPr<CharT, Tag>::page() {
    return read(_root.page());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setPage(int value) {
    return write([&] { _root.page(value); });
}

template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::passwordEdit() {
    return read(_root.passwordEdit());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setPasswordEdit(bool value) {
    return write([&] { _root.passwordEdit(value); });
}

template <class CharT, class Tag>
int XMLControlPr<CharT, Tag>::sel() {
    return read(_root.sel());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setSel(int value) {
    return write([&] { _root.sel(value); });
}

template <class CharT, class Tag>
const CharT* XMLControlPr<CharT, Tag>::seltype() {
    return give(_root.seltype(), true);
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setSeltype(const CharT* value) {
    return writeListed(value, spec::ST_SelType, [&](std::string text) { _root.seltype(std::move(text)); });
}

template <class CharT, class Tag>
const CharT* XMLControlPr<CharT, Tag>::textHAlign() {
    return give(_root.textHAlign(), true);
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setTextHAlign(const CharT* value) {
    return writeListed(value, spec::ST_TextHAlign, [&](std::string text) { _root.textHAlign(std::move(text)); });
}

template <class CharT, class Tag>
const CharT* XMLControlPr<CharT, Tag>::textVAlign() {
    return give(_root.textVAlign(), true);
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setTextVAlign(const CharT* value) {
    return writeListed(value, spec::ST_TextVAlign, [&](std::string text) { _root.textVAlign(std::move(text)); });
}

template <class CharT, class Tag>
int XMLControlPr<CharT, Tag>::val() {
    return read(_root.val());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setVal(int value) {
    return write([&] { _root.val(value); });
}

template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::verticalBar() {
    return read(_root.verticalBar());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setVerticalBar(bool value) {
    return write([&] { _root.verticalBar(value); });
}

template <class CharT, class Tag>
int XMLControlPr<CharT, Tag>::widthMin() {
    return read(_root.widthMin());
}
template <class CharT, class Tag>
bool XMLControlPr<CharT, Tag>::setWidthMin(int value) {
    return write([&] { _root.widthMin(value); });
}

template class XMLControlPr<char, excelNormal_tag>;
template class XMLControlPr<char, excelStrict_tag>;
template class XMLControlPr<wchar_t, excelNormal_tag>;
template class XMLControlPr<wchar_t, excelStrict_tag>;

}  // namespace vellum
