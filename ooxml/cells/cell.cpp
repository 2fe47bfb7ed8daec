// Cells: texts of any length in little room, the rare rest outside. From XML and back: the usual cell straight over
// the bytes, every other one through the reader.

#include "ooxml/cells/cell.h"

#include <cstring>

#include "bindery/bridges/bridges.h"
#include "bindery/bridges/unmarshal_helper.h"
#include "bindery/classes/extras.h"
#include "ooxml/cells/cell_text.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"

namespace ooxml {

namespace {

constexpr const char* sourceFile = "ooxml/handwritten/cell";
constexpr std::ptrdiff_t plainRoom = 48;  // the longest plain attribute, and the shortest body, fit into it

/// Bytes that a plain text may have: ASCII, nothing that has to be expanded or joined.
constexpr auto plainTable = [] {
    struct {
        bool of[256];
    } table{};
    for (unsigned c = 0; c < 128; ++c) table.of[c] = c != '<' && c != '&' && c != '\r';
    return table;
}();

bool isPlain(char c) {
    return plainTable.of[static_cast<unsigned char>(c)];
}

/// Texts of cells are held as UTF-8 although they are texts of the user.
constexpr bindery::ValueSpec textSpec = bindery::valueSpec(bindery::Atomic::narrow, bindery::Whitespace::preserve);

constexpr std::uint16_t slot_f = 1, slot_v = 2, slot_is = 3, slot_extLst = 4;

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

// ---- what a cell holds

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

// ---- the fast path

template <class Family>
const char* c_CT_Cell<Family>::readPlain(const char* at, const char* end) {
    for (;;) {
        if (end - at < plainRoom) return nullptr;
        if (*at == '>') {
            ++at;
            break;
        }
        if (*at == '/') return at[1] == '>' ? at + 2 : nullptr;
        if (at[0] != ' ' || at[2] != '=' || at[3] != '"') return nullptr;
        const char name = at[1];
        at += 4;
        if (name == 'r') {
            std::uint32_t row = 0, column = 0;
            if (hasReference() || (at = readAddress(at, end, row, column)) == nullptr) return nullptr;
            setReference(row, column);
        } else if (name == 's') {
            if (hasStyle()) return nullptr;
            const char* first = at;
            std::uint32_t style = 0;
            for (; *at >= '0' && *at <= '9' && at - first < 9; ++at)
                style = style * 10 + static_cast<std::uint32_t>(*at - '0');
            if (at == first) return nullptr;
            setStyle(style);
        } else if (name == 't') {
            const char* first = at;
            while (*at != '"' && at - first < 4) ++at;
            if (type() != CellType::absent || !readType({first, static_cast<std::size_t>(at - first)})) return nullptr;
        } else {
            return nullptr;
        }
        if (*at++ != '"') return nullptr;
    }
    if (std::memcmp(at, "<f>", 3) == 0) {
        const char* first = at += 3;
        while (at != end && isPlain(*at)) ++at;
        if (end - at < 8 || std::memcmp(at, "</f>", 4) != 0) return nullptr;
        makeFormula().text(std::wstring(first, at));
        at += 4;
    }
    if (std::memcmp(at, "<v>", 3) == 0) {
        const char* first = at += 3;
        while (at != end && isPlain(*at)) ++at;
        if (end - at < 8 || std::memcmp(at, "</v></c>", 8) != 0) return nullptr;
        setText({first, static_cast<std::size_t>(at - first)});
        return at + 8;
    }
    return std::memcmp(at, "</c>", 4) == 0 ? at + 4 : nullptr;
}

// ---- any cell

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
        reader.sourceLine(__LINE__);
        int code = -1;
        if (attribute.ns == bindery::namespace_none) {
            const std::string_view value =
                bindery::applyWhitespace(bindery::Whitespace::collapse, reader.value(attribute), scratch);
            if (reader.failed()) return reader.fail(reader.failure(), "c");
            code = takeAttribute(attribute.local, value);
        }
        if (code > 0) code = reader.fail(code, bindery::attributeItem(attribute.name));
        if (code < 0)
            code = attribute.ns == bindery::namespace_xsi ? 0 : keepAttribute(reader, makeExtras(), attribute);
        if (code != 0) return code;
    }
    return 0;
}

template <class Family>
int c_CT_Cell<Family>::unmarshal(bindery::c_xml_reader& reader) {
    reader.sourceFile(sourceFile);
    if (!reader.declarations().empty() && reader.keepsUnknown()) keepDeclarations(reader, makeExtras());
    if (const int code = readAttributes(reader)) return code;
    if (!reader.emptyElement()) return readChildren(reader);
    reader.closeElement();
    return 0;
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
        reader.sourceFile(sourceFile);
    }
}

template <class Family>
int c_CT_Cell<Family>::readChild(bindery::c_xml_reader& reader, std::uint16_t& slot) {
    static constexpr bindery::NameEntry names[] = {
        bindery::entry(sheetNamespace, "f", bindery::token_first_name + slot_f),
        bindery::entry(sheetNamespace, "v", bindery::token_first_name + slot_v),
        bindery::entry(sheetNamespace, "is", bindery::token_first_name + slot_is),
        bindery::entry(sheetNamespace, "extLst", bindery::token_first_name + slot_extLst),
        bindery::endOfNames,
    };
    const int token = reader.tokenise(names);
    if (token < bindery::token_first_name) return keepElement(reader, makeExtras(), slot, 1, "c");
    slot = static_cast<std::uint16_t>(token - bindery::token_first_name);
    const bool again = slot == slot_f    ? formula() != nullptr
                       : slot == slot_v  ? hasValue()
                       : slot == slot_is ? inlineString() != nullptr
                                         : rare().extLst != nullptr;
    if (again) {  // the later replaces the earlier
        if (const int code = reader.fail(bindery::too_many_elements, reader.elementName())) return code;
        if (slot == slot_f) clearFormula();
        if (slot == slot_v && extras() != nullptr) makeExtras().childAttrs.clear();
        if (slot == slot_is) clearInlineString();
    }
    switch (slot) {
        case slot_f:
            return bindery::unmarshalObject(reader, makeFormula(), Formula::info);
        case slot_is:
            return bindery::unmarshalObject(reader, makeInlineString(), Rst::info);
        case slot_v:
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
        if (attribute.ns != bindery::namespace_xsi && reader.keepsUnknown())
            keepChildAttribute(reader, makeExtras(), slot_v, 1, attribute);
    std::string text;
    bindery::c_atomic_unmarshal_bridge bridge(reader, textSpec, &text);
    if (const int code = readElement(reader, bridge)) return code;
    setText(text);
    return 0;
}

// ---- writing

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
        to = writeNumber(to, _styleIndex);
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

void appendText(std::string& out, std::string_view text) {
    if (text == " ")
        out += "&#160;";  // as every text of one blank
    else
        bindery::appendEscaped(out, text, false);
}

}  // namespace

template <class Family>
int c_CT_Cell<Family>::marshal(bindery::c_xml_writer& writer) const {
    if (_rare != nullptr) return writeRare(writer);
    std::string& out = writer.raw();
    out += "<c";
    writeAttributes(out);
    if (!hasValue()) {
        out += "/>";
    } else if (text().empty()) {
        out += "><v/></c>";
    } else {
        out += "><v>";
        appendText(out, text());
        out += "</v></c>";
    }
    return 0;
}

template <class Family>
int c_CT_Cell<Family>::writeRare(bindery::c_xml_writer& writer) const {
    writer.startElement("c");
    if (extras() != nullptr) writer.keptDeclarations(extras()->decls);
    writeAttributes(writer.raw());
    if (_rare->hasCm) writer.attribute("cm", std::to_string(_rare->cm));
    if (_rare->hasVm) writer.attribute("vm", std::to_string(_rare->vm));
    if (_rare->hasPh) writer.attribute("ph", _rare->ph ? "true" : "false");
    if (extras() != nullptr)
        for (const bindery::Attr& attr : extras()->attrs) writer.keptAttribute(attr);
    bindery::PlacedWriter placed(writer, extras());
    placed.before(slot_f);
    if (formula() != nullptr) {
        const bindery::MemberInfo f = {.name = "f", .ns = sheetNamespace};
        if (const int code = bindery::marshalObject(writer, *formula(), Formula::info, f)) return code;
    }
    placed.behindAll(slot_f);
    if (hasValue()) {
        writer.startElement("v");
        if (extras() != nullptr)
            for (const bindery::PlacedAttr& attr : extras()->childAttrs) writer.keptAttribute(attr.attr);
        if (!text().empty()) {
            writer.closeStartTag();
            appendText(writer.raw(), text());
        }
        writer.endElement();
    }
    placed.behindAll(slot_v);
    if (inlineString() != nullptr) {
        const bindery::MemberInfo is = {.name = "is", .ns = sheetNamespace};
        if (const int code = bindery::marshalObject(writer, *inlineString(), Rst::info, is)) return code;
    }
    placed.behindAll(slot_is);
    if (_rare->extLst)
        if (const int code = _rare->extLst->marshal(writer)) return code;
    placed.rest();
    writer.endElement();
    return 0;
}

template class c_CT_Cell<SheetFamily>;
template class c_CT_Cell<StrictFamily>;

}  // namespace ooxml
