// Any cell, through the reader.
#include "bindery/bridges/bridges.h"
#include "bindery/bridges/unmarshal_helper.h"
#include "bindery/classes/extras.h"
#include "ooxml/cells/cell.h"
#include "ooxml/cells/cell_slots.h"
#include "ooxml/cells/cell_text.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"

namespace ooxml {

namespace {

constexpr const char* cellSource = "ooxml/handwritten/cell";

/// Texts of cells are held as UTF-8 although they are texts of the user.
constexpr bindery::ValueSpec textSpec = bindery::valueSpec(bindery::Atomic::narrow, bindery::Whitespace::preserve);

}  // namespace

template <class Family>
bool c_CT_Cell<Family>::readReference(std::string_view text) {
    const char* end = text.data() + text.size();
    std::uint32_t row = 0, column = 0;
    const char* behind = readAddress(text.data(), end, row, column);
    if (behind == nullptr || behind != end) return false;
    setReference(row, column);
    return true;
}

template <class Family>
bool c_CT_Cell<Family>::readType(std::string_view text) {
    const int last = static_cast<int>(Family::strict ? CellType::d : CellType::inlineStr);
    for (int code = 1; code <= last; ++code) {
        if (cellTypeText(static_cast<CellType>(code)) != text) continue;
        setType(static_cast<CellType>(code));
        return true;
    }
    return false;
}

/// 0, the code of a value that is wrong, or -1 for an attribute that a cell does not have.
template <class Family>
int c_CT_Cell<Family>::takeAttribute(std::string_view name, std::string_view value) {
    using bindery::storeValue;
    if (name == "r")
        return hasReference() ? bindery::attribute_repeated : readReference(value) ? 0 : bindery::bad_value;
    if (name == "t")
        return type() != CellType::absent ? bindery::attribute_repeated : readType(value) ? 0 : bindery::not_enumerated;
    if (name == "s") {
        std::uint32_t style = 0;
        if (hasStyle()) return bindery::attribute_repeated;
        if (const int code = storeValue(bindery::builtin::unsignedInt, value, &style)) return code;
        setStyle(style);
        return 0;
    }
    if (name == "cm" || name == "vm") {
        const bool ofCell = name == "cm";
        bool& has = ofCell ? rare().hasCm : rare().hasVm;
        if (has) return bindery::attribute_repeated;
        has = true;
        return storeValue(bindery::builtin::unsignedInt, value, ofCell ? &rare().cm : &rare().vm);
    }
    if (name == "ph") {
        if (rare().hasPh) return bindery::attribute_repeated;
        rare().hasPh = true;
        return storeValue(bindery::builtin::boolean, value, &rare().ph);
    }
    return -1;
}

template <class Family>
int c_CT_Cell<Family>::readAttributes(bindery::c_xml_reader& reader) {
    std::string scratch;
    for (const bindery::RawAttribute& attribute : reader.attributes()) {
        reader.sourceAt(cellSource, __LINE__);
        int code = -1;
        if (attribute.ns == bindery::namespace_none) {
            const std::string_view value =
                bindery::applyWhitespace(bindery::Whitespace::collapse, reader.value(attribute), scratch);
            if (reader.failed()) return reader.fail(reader.failure(), "c");
            code = takeAttribute(attribute.local, value);
        }
        if (code > 0) code = reader.fail(code, bindery::attributeItem(attribute.name));
        if (code < 0) code = keepAttribute(reader, makeExtras(), attribute);
        if (code != 0) return code;
    }
    return 0;
}

template <class Family>
int c_CT_Cell<Family>::unmarshal(bindery::c_xml_reader& reader) {
    reader.sourceAt(cellSource, __LINE__);
    if (!reader.declarations().empty() && reader.keepsUnknown()) keepDeclarations(reader, makeExtras());
    if (const int code = readAttributes(reader)) return code;
    if (reader.emptyElement()) {
        reader.closeElement();
        return 0;
    }
    const int code = readChildren(reader);
    if (code == 0 && isRare()) slim();
    return code;
}

template <class Family>
int c_CT_Cell<Family>::readChildren(bindery::c_xml_reader& reader) {
    std::uint16_t slot = 0;
    for (;;) {
        int code = 0;
        switch (reader.nextChild()) {
            case bindery::token_end_tag:
                return reader.endTagMatched() ? 0 : reader.fail(bindery::bad_end_of_element, "c");
            case bindery::token_start_tag:
                code = readChild(reader, slot);
                break;
            case bindery::token_unknown:
                code = keepElement(reader, makeExtras(), slot, 1, "c");
                break;
            default:
                return scanFailure(reader, "c");
        }
        if (code != 0) return code;
        reader.sourceAt(cellSource, __LINE__);
    }
}

template <class Family>
int c_CT_Cell<Family>::readChild(bindery::c_xml_reader& reader, std::uint16_t& slot) {
    static constexpr bindery::NameEntry names[] = {
        bindery::entry(sheetNamespace, "f", bindery::token_first_name + cellSlot_f),
        bindery::entry(sheetNamespace, "v", bindery::token_first_name + cellSlot_v),
        bindery::entry(sheetNamespace, "is", bindery::token_first_name + cellSlot_is),
        bindery::entry(sheetNamespace, "extLst", bindery::token_first_name + cellSlot_extLst),
        bindery::endOfNames,
    };
    const int token = reader.tokenise(names);
    if (token < bindery::token_first_name) return keepElement(reader, makeExtras(), slot, 1, "c");
    slot = static_cast<std::uint16_t>(token - bindery::token_first_name);
    reader.sourceAt(cellSource, __LINE__);
    const bool again = slot == cellSlot_f    ? hasFormula()
                       : slot == cellSlot_v  ? hasValue()
                       : slot == cellSlot_is ? inlineString() != nullptr
                                             : rare().extLst != nullptr;
    if (again) {  // the later replaces the earlier
        if (const int code = reader.fail(bindery::too_many_elements, reader.elementName())) return code;
        if (slot == cellSlot_f) clearFormula();
        if (slot == cellSlot_v && extras() != nullptr) makeExtras().childAttrs.clear();
        if (slot == cellSlot_is) clearInlineString();
    }
    switch (slot) {
        case cellSlot_f:
            return bindery::unmarshalObject(reader, makeFormula(), Formula::info);
        case cellSlot_is:
            return bindery::unmarshalObject(reader, makeInlineString(), Rst::info);
        case cellSlot_v:
            return readValueElement(reader);
        default:
            rare().extLst = std::make_unique<bindery::c_raw_node>();
            return rare().extLst->unmarshal(reader);
    }
}

template <class Family>
int c_CT_Cell<Family>::readValueElement(bindery::c_xml_reader& reader) {
    if (const int code = bindery::checkRepeatedAttributes(reader)) return code;
    for (const bindery::RawAttribute& attribute : reader.attributes())
        if (reader.keepsUnknown()) keepChildAttribute(reader, makeExtras(), cellSlot_v, 1, attribute);
    std::string text;
    bindery::c_atomic_unmarshal_bridge bridge(reader, textSpec, &text);
    if (const int code = readElement(reader, bridge)) return code;
    takeText(text);
    return 0;
}

}  // namespace ooxml
