// A row: what it holds, any form of it from XML, and back.

#include "ooxml/cells/row.h"

#include <iterator>

#include "bindery/bridges/bridges.h"
#include "bindery/bridges/unmarshal_helper.h"
#include "bindery/classes/extras.h"
#include "ooxml/bound.h"
#include "ooxml/cells/cell_text.h"
#include "ooxml/cells/row_forms.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"

namespace ooxml {

namespace {

bool isDyDescent(const bindery::c_xml_reader& reader, const bindery::RawAttribute& attribute) {
    return attribute.name == dyDescentName && reader.uriOf(attribute.ns) == x14acUri;
}

}  // namespace

// ---- what a row holds

template <class Family>
c_CT_Row<Family>::c_CT_Row() = default;
template <class Family>
c_CT_Row<Family>::c_CT_Row(const c_CT_Row&) = default;
template <class Family>
c_CT_Row<Family>& c_CT_Row<Family>::operator=(const c_CT_Row&) = default;
template <class Family>
c_CT_Row<Family>::c_CT_Row(c_CT_Row&&) noexcept = default;
template <class Family>
c_CT_Row<Family>& c_CT_Row<Family>::operator=(c_CT_Row&&) noexcept = default;
template <class Family>
c_CT_Row<Family>::~c_CT_Row() = default;

template <class Family>
c_CT_Row<Family>* c_CT_Row<Family>::clone() const {
    return copyOf(*this);
}

template <class Family>
const std::string* c_CT_Row<Family>::unknownAttribute(std::string_view asWritten) const {
    if (asWritten == dyDescentName && (_present & has_dyDescent) != 0) return &_dyDescent;
    return this->extras() != nullptr ? this->extras()->attribute(asWritten) : nullptr;
}

template <class Family>
void c_CT_Row<Family>::setUnknownAttribute(std::string_view asWritten, std::string_view uri, std::string_view value) {
    if (asWritten == dyDescentName) {
        removeUnknownAttribute(asWritten);
        _dyDescent = value;
        _present |= has_dyDescent;
    } else {
        this->makeExtras().setAttribute(asWritten, uri, value);
    }
}

template <class Family>
bool c_CT_Row<Family>::removeUnknownAttribute(std::string_view asWritten) {
    bool removed = false;
    if (asWritten == dyDescentName && (_present & has_dyDescent) != 0) {
        _dyDescent.clear();
        _present &= ~(has_dyDescent | dyDescentBehind);
        removed = true;
    }
    return (this->extras() != nullptr && this->makeExtras().removeAttribute(asWritten)) || removed;
}

// ---- one row from XML

/// 0, the code of a value that is wrong, or -1 for an attribute that a row does not have.
template <class Family>
int c_CT_Row<Family>::takeAttribute(std::string_view name, std::string_view value) {
    struct Known {
        std::string_view name;
        std::uint32_t bit;
    };
    static constexpr Known known[] = {
        {"r", has_r},
        {"spans", has_spans},
        {"s", has_s},
        {"customFormat", has_customFormat},
        {"ht", has_ht},
        {"hidden", has_hidden},
        {"customHeight", has_customHeight},
        {"outlineLevel", has_outlineLevel},
        {"collapsed", has_collapsed},
        {"thickTop", has_thickTop},
        {"thickBot", has_thickBot},
        {"ph", has_ph},
    };
    std::uint32_t bit = 0;
    for (const Known& one : known)
        if (one.name == name) bit = one.bit;
    if (bit == 0) return -1;
    if ((_present & bit) != 0) return bindery::attribute_repeated;
    _present |= bit;
    namespace builtin = bindery::builtin;
    switch (bit) {
        case has_r:
            return storeValue(builtin::unsignedInt, value, &_r);
        case has_spans:
            _spans = value;
            return 0;
        case has_s:
            return storeValue(builtin::unsignedInt, value, &_s);
        case has_ht:
            return storeValue(builtin::real, value, &_ht);
        case has_outlineLevel:
            return storeValue(builtin::unsignedByte, value, &_outlineLevel);
        default: {
            bool truth = false;
            const int code = storeValue(builtin::boolean, value, &truth);
            if (truth) _values |= bit;
            return code;
        }
    }
}

template <class Family>
int c_CT_Row<Family>::readAttributes(bindery::c_xml_reader& reader) {
    std::string scratch;
    for (const bindery::RawAttribute& attribute : reader.attributes()) {
        reader.sourceAt(rowSource, __LINE__);
        int code = -1;
        if (attribute.ns == bindery::namespace_none) {
            const std::string_view value =
                bindery::applyWhitespace(bindery::Whitespace::collapse, reader.value(attribute), scratch);
            if (reader.failed()) return bindery::scanFailure(reader, "row");
            code = takeAttribute(attribute.local, value);
        } else if (isDyDescent(reader, attribute)) {
            const bool again = (_present & has_dyDescent) != 0;
            code = reader.fail(again ? bindery::attribute_repeated : bindery::unexpected_attribute,
                               bindery::attributeItem(attribute.name));
            if (code != 0) return code;
            if (again || !reader.keepsUnknown()) continue;
            _dyDescent = reader.value(attribute);
            bindery::repairUtf8(_dyDescent);
            _present |= has_dyDescent;
            if (this->extras() != nullptr && !this->extras()->attrs.empty()) _present |= dyDescentBehind;
        }
        if (code > 0) code = reader.fail(code, bindery::attributeItem(attribute.name));
        if (code < 0) code = keepAttribute(reader, this->makeExtras(), attribute);
        if (code != 0) return code;
    }
    return 0;
}

template <class Family>
int c_CT_Row<Family>::read(bindery::c_xml_reader& reader, std::vector<Cell>& scratch) {
    reader.sourceAt(rowSource, __LINE__);
    if (!reader.declarations().empty() && reader.keepsUnknown()) keepDeclarations(reader, this->makeExtras());
    const bool plain = reader.elementName() == "row" && plainNames(reader);
    if (const int code = readAttributes(reader)) return code;
    if (!reader.emptyElement()) return readCells(reader, scratch, plain);
    reader.closeElement();
    return 0;
}

template <class Family>
int c_CT_Row<Family>::readCells(bindery::c_xml_reader& reader, std::vector<Cell>& scratch, bool plain) {
    scratch.clear();
    const int code = readChildren(reader, scratch, plain);
    _cells.assign(std::make_move_iterator(scratch.begin()), std::make_move_iterator(scratch.end()));
    return code;
}

template <class Family>
int c_CT_Row<Family>::readChildren(bindery::c_xml_reader& reader, std::vector<Cell>& cells, bool plain) {
    std::uint16_t slot = 0;
    for (;;) {
        if (plain && readPlainCells(reader, cells)) return 0;
        if (!cells.empty() && slot == 0) slot = rowSlot_c;
        int code = 0;
        switch (reader.nextChild()) {
            case bindery::token_end_tag:
                return reader.endTagMatched() ? 0 : reader.fail(bindery::bad_end_of_element, "row");
            case bindery::token_start_tag:
                code = readChild(reader, cells, slot);
                break;
            case bindery::token_unknown:
                code = keepElement(reader, this->makeExtras(), slot, static_cast<std::uint32_t>(cells.size()), "row");
                break;
            default:
                return bindery::scanFailure(reader, "row");
        }
        if (reader.failed()) return bindery::scanFailure(reader, "row");
        if (code != 0) return code;
        reader.sourceAt(rowSource, __LINE__);
    }
}

template <class Family>
int c_CT_Row<Family>::readChild(bindery::c_xml_reader& reader, std::vector<Cell>& cells, std::uint16_t& slot) {
    const bool ours = reader.elementNamespace() == sheetNamespace;
    if (ours && reader.elementLocal() == "c") {
        slot = rowSlot_c;
        cells.emplace_back();
        return cells.back().unmarshal(reader);
    }
    if (ours && reader.elementLocal() == "extLst") {
        slot = rowSlot_extLst;
        if (_extLst.isset())
            if (const int code = reader.fail(bindery::too_many_elements, reader.elementName())) return code;
        _extLst.unset();
        return _extLst.get().unmarshal(reader);
    }
    return keepElement(reader, this->makeExtras(), slot, static_cast<std::uint32_t>(cells.size()), "row");
}

template <class Family>
void c_CT_Row<Family>::writeAttributes(bindery::c_xml_writer& writer) const {
    std::string& out = writer.raw();
    const auto number = [&](std::string_view name, std::uint32_t value) {
        char buffer[10];
        (out += name).append(buffer, writeNumber(buffer, value)) += '"';
    };
    const auto truth = [&](std::uint32_t bit, std::string_view name) {
        if ((_present & bit) != 0) (out += name) += flag(bit) ? "true\"" : "false\"";
    };
    if (isset_r()) number(" r=\"", _r);
    if (isset_spans()) writer.attribute("spans", _spans);
    if (isset_s()) number(" s=\"", _s);
    truth(has_customFormat, " customFormat=\"");
    if (isset_ht()) {
        out += " ht=\"";
        bindery::appendValue(bindery::builtin::real, &_ht, out);
        out += '"';
    }
    truth(has_hidden, " hidden=\"");
    truth(has_customHeight, " customHeight=\"");
    if (isset_outlineLevel()) number(" outlineLevel=\"", _outlineLevel);
    truth(has_collapsed, " collapsed=\"");
    truth(has_thickTop, " thickTop=\"");
    truth(has_thickBot, " thickBot=\"");
    truth(has_ph, " ph=\"");
}

template <class Family>
void c_CT_Row<Family>::writeUnknown(bindery::c_xml_writer& writer) const {
    const bindery::Attr dyDescent{std::string(dyDescentName), std::string(x14acUri), _dyDescent};
    if (startsWithDyDescent()) writer.keptAttribute(dyDescent);
    if (this->extras() != nullptr)
        for (const bindery::Attr& attr : this->extras()->attrs) writer.keptAttribute(attr);
    if ((_present & dyDescentBehind) != 0) writer.keptAttribute(dyDescent);
}

template <class Family>
int c_CT_Row<Family>::write(bindery::c_xml_writer& writer) const {
    const bindery::Extras* extras = this->extras();
    writer.startElement("row");
    if (extras != nullptr) writer.keptDeclarations(extras->decls);
    writeAttributes(writer);
    if (extras != nullptr || startsWithDyDescent()) writeUnknown(writer);
    if (!_cells.empty()) writer.closeStartTag();
    bindery::PlacedWriter placed(writer, extras);
    placed.before(rowSlot_c);
    for (std::size_t i = 0; i < _cells.size(); ++i) {
        if (const int code = _cells[i].marshal(writer)) return code;
        if (extras != nullptr) placed.behind(rowSlot_c, static_cast<std::uint32_t>(i + 1));
    }
    placed.behindAll(rowSlot_c);
    if (_extLst.isset())
        if (const int code = _extLst.getIf()->marshal(writer)) return code;
    placed.rest();
    writer.endElement();
    return 0;
}

// ---- how the tables reach them

template <class Family>
constinit const bindery::ClassInfo c_CT_Row<Family>::info = {
    .name = "c_CT_Row",
    .sourceFile = rowSource,
    .create = bindery::makeNode<c_CT_Row<Family>>,
    .unmarshal =
        [](bindery::c_xml_reader& reader, bindery::c_node& object) {
            std::vector<Cell> scratch;
            return static_cast<c_CT_Row&>(object).read(reader, scratch);
        },
    .marshal = [](bindery::c_xml_writer& writer, const bindery::c_node& object,
                  const bindery::MemberInfo&) { return static_cast<const c_CT_Row&>(object).write(writer); }};

template <class Family>
int c_CT_Row<Family>::unmarshal(bindery::c_xml_reader& reader, std::string_view name) {
    return unmarshalElement(reader, name, *this, info);
}

template <class Family>
int c_CT_Row<Family>::marshal(bindery::c_xml_writer& writer, std::string_view) const {
    return write(writer);
}

}  // namespace ooxml
