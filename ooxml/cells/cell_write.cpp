// Cells as XML.
#include <cstring>

#include "bindery/bridges/bridges.h"
#include "bindery/bridges/unmarshal_helper.h"
#include "bindery/classes/extras.h"
#include "ooxml/cells/cell.h"
#include "ooxml/cells/cell_slots.h"
#include "ooxml/cells/cell_text.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"

namespace ooxml {

template <class Family>
void c_CT_Cell<Family>::writeAttributes(std::string& out) const {
    char buffer[64];
    char* to = buffer;
    const auto put = [&](std::string_view text) {
        std::memcpy(to, text.data(), text.size());
        to += text.size();
    };
    if (hasReference()) {
        put(" r=\"");
        to = writeAddress(to, row(), column());
        *to++ = '"';
    }
    if (hasStyle()) {
        put(" s=\"");
        to = writeNumber(to, style());
        *to++ = '"';
    }
    if (type() != CellType::absent) {
        put(" t=\"");
        put(cellTypeText(type()));
        *to++ = '"';
    }
    out.append(buffer, static_cast<std::size_t>(to - buffer));
}

namespace {

void appendText(std::string& out, std::string_view text, bool isAsRead = false) {
    if (text == " ")
        out += isAsRead ? " " : "&#160;";  // as every text of one blank
    else
        bindery::appendEscaped(out, text, false);
}

}  // namespace

template <class Family>
void c_CT_Cell<Family>::writeFormula(std::string& out) const {
    if (hasFlag(memberFlag)) {
        char number[10];
        out += "<f t=\"shared\" si=\"";
        out.append(number, writeNumber(number, numberOfFormula()));
        out += "\"/>";
        return;
    }
    out += hasFlag(acaFlag) ? "<f aca=\"false\"" : "<f";
    if (const std::uint32_t size = numberOfFormula(); size == 0) {
        out += "/>";
    } else {
        out += '>';
        appendText(out, {outsideBytes() + sizeof size, size});
        out += "</f>";
    }
}

template <class Family>
int c_CT_Cell<Family>::marshal(bindery::c_xml_writer& writer) const {
    if (isRare()) return writeRare(writer);
    std::string& out = writer.raw();
    out += "<c";
    writeAttributes(out);
    const bool isFormula = flags() != 0;
    if (!hasValue() && !isFormula) {
        out += "/>";
        return 0;
    }
    out += '>';
    if (isFormula) writeFormula(out);
    const CellText value = text();
    if (!hasValue()) {
        out += "</c>";
    } else if (value.empty()) {
        out += "<v/></c>";
    } else {
        out += "<v>";
        if (form() == Form::packed) {
            out += value;  // nothing in a number is escaped
        } else {
            appendText(out, value);
        }
        out += "</v></c>";
    }
    return 0;
}

template <class Family>
int c_CT_Cell<Family>::writeRare(bindery::c_xml_writer& writer) const {
    const Rare& rest = *rareOrNull();
    writer.startElement("c");
    if (extras() != nullptr) writer.keptDeclarations(extras()->decls);
    writeAttributes(writer.raw());
    if (rest.hasCm) writer.attribute("cm", std::to_string(rest.cm));
    if (rest.hasVm) writer.attribute("vm", std::to_string(rest.vm));
    if (rest.hasPh) writer.attribute("ph", rest.ph ? "true" : "false");
    if (extras() != nullptr)
        for (const bindery::Attr& attr : extras()->attrs) writer.keptAttribute(attr);
    bindery::PlacedWriter placed(writer, extras());
    placed.before(cellSlot_f);
    if (rest.formula) {
        const bindery::MemberInfo f = {.name = "f", .ns = sheetNamespace};
        if (const int code = bindery::marshalObject(writer, *rest.formula, Formula::info, f)) return code;
    }
    placed.behindAll(cellSlot_f);
    if (hasValue()) {
        writer.startElement("v");
        if (extras() != nullptr)
            for (const bindery::PlacedAttr& attr : extras()->childAttrs) writer.keptAttribute(attr.attr);
        if (!text().empty()) {
            writer.closeStartTag();
            appendText(writer.raw(), text(), extras() != nullptr && extras()->isBlankAsRead);
        }
        writer.endElement();
    }
    placed.behindAll(cellSlot_v);
    if (inlineString() != nullptr) {
        const bindery::MemberInfo is = {.name = "is", .ns = sheetNamespace};
        if (const int code = bindery::marshalObject(writer, *inlineString(), Rst::info, is)) return code;
    }
    placed.behindAll(cellSlot_is);
    if (rest.extLst)
        if (const int code = rest.extLst->marshal(writer)) return code;
    placed.rest();
    writer.endElement();
    return 0;
}

}  // namespace ooxml
