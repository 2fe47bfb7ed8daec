// Cells of a worksheet.
#pragma once
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>

#include "ooxml/cells/cell_formula.h"
#include "ooxml/cells/sheet_family.h"

namespace bindery {
class c_raw_node;
class c_xml_reader;
class c_xml_writer;
struct Extras;
}  // namespace bindery

namespace ooxml {

/// Type codes of a cell, in the order of the Transitional schema; "d" is known to the Strict one only.
enum class CellType : std::uint8_t { absent, b, n, e, s, str, inlineStr, d };

/// The text of a type code, "" for `absent`.
std::string_view cellTypeText(CellType type);

/// The text of a cell, or a way to it. The text of a packed number lives in this object, any other in the cell.
class CellText {
public:
    CellText(std::string_view text) : _text(text) {}
    /// Unpacks a number.
    CellText(const char* packed, std::size_t size);
    CellText(const CellText&) = delete;
    CellText& operator=(const CellText&) = delete;

    operator std::string_view() const { return _text; }
    bool empty() const { return _text.empty(); }
    std::string_view substr(std::size_t from) const { return _text.substr(from); }
    friend bool operator==(const CellText& text, std::string_view other) { return text._text == other; }
    friend std::ostream& operator<<(std::ostream& out, const CellText& text) { return out << text._text; }

private:
    char _unpacked[30];
    std::string_view _text;
};

/// One cell of a worksheet, 24 bytes. Texts of up to 15 bytes lie in the cell itself, and so do those of numbers with
/// up to 30 characters, two in a byte; in a member of a shared formula 11 and 22. A formula that is a text alone stands
/// in one block with the value. Cells are held by value in their row, so pointers to them hold until the row's
/// cells change.
template <class Family>
class c_CT_Cell {
public:
    using Formula = typename Family::c_CT_CellFormula;
    using Rst = typename Family::c_CT_Rst;

    c_CT_Cell() = default;
    c_CT_Cell(const c_CT_Cell& other);
    c_CT_Cell(c_CT_Cell&& other) noexcept : _bits(other._bits) { takeContent(other); }
    c_CT_Cell& operator=(const c_CT_Cell& other);
    c_CT_Cell& operator=(c_CT_Cell&& other) noexcept;
    ~c_CT_Cell() { dropContent(); }

    // ---- place, counted from 0. A cell without a reference stands where its place in the row says.
    bool hasReference() const { return (_bits & referencePresent) != 0; }
    std::uint32_t row() const { return static_cast<std::uint32_t>(_bits & rowMask); }
    std::uint32_t column() const { return static_cast<std::uint16_t>(_bits >> columnShift); }
    void setReference(std::uint32_t row, std::uint32_t column) {
        setImpliedColumn(column);
        _bits = (_bits & ~rowMask) | (row & rowMask) | referencePresent;
    }
    /// Where a cell without a reference stands, for those that look for it; it is not written.
    void setImpliedColumn(std::uint32_t column) {
        _bits = (_bits & ~columnMask) | std::uint64_t{static_cast<std::uint16_t>(column)} << columnShift;
    }
    void clearReference() { _bits &= ~(rowMask | referencePresent); }

    // ---- style: index into cellXfs
    bool hasStyle() const { return (_bits & stylePresent) != 0; }
    std::uint32_t style() const {  // 0 when there is none
        const auto index = static_cast<std::uint32_t>(_bits >> styleShift);
        return index == styleOutside ? rareOrNull()->style : index;
    }
    void setStyle(std::uint32_t index) {
        if (index >= styleOutside) rare().style = index;
        putStyle(std::min(index, styleOutside));
    }
    void clearStyle() {
        putStyle(0);
        _bits &= ~stylePresent;
    }

    CellType type() const { return static_cast<CellType>(_bits >> typeShift & 7); }
    void setType(CellType type) {
        _bits = (_bits & ~(std::uint64_t{7} << typeShift)) | static_cast<std::uint64_t>(type) << typeShift;
    }

    // ---- value: the text of the v element
    bool hasValue() const { return (_bits & valuePresent) != 0; }
    /// UTF-8; "" when there is none. Lives until the cell changes or moves.
    CellText text() const {
        switch (form()) {
            case Form::plain:
                return std::string_view(_content, length());
            case Form::packed:
                return CellText(_content, length());
            default:
                return outsideText();
        }
    }
    /// Whether the text is not empty.
    bool hasText() const { return form() >= Form::outside ? !outsideText().empty() : length() != 0; }
    std::wstring value() const;
    void setText(std::string_view utf8);
    void setValue(std::wstring_view text);
    void clearValue();

    // ---- formula
    CellFormula<Formula> formula() const;
    bool hasFormula() const { return isRare() ? rareOrNull()->formula != nullptr : flags() != 0; }
    /// One that is a text alone, in place of any other.
    void setFormula(std::wstring_view text);
    /// The element, owned by the cell, with what is known of the formula already.
    Formula& makeFormula();
    void clearFormula();

    // ---- inline string: null when there is none, owned by the cell
    Rst* inlineString() const { return isRare() ? rareOrNull()->inlineString.get() : nullptr; }
    Rst& makeInlineString();
    void clearInlineString();

    /// Leaves the place and the style. What else an element says goes with the value that it describes.
    void clearContent();

    // ---- the rare rest
    /// Indexes into the metadata part, from 1; 0 for none.
    std::uint32_t cellMetadata() const { return isRare() ? rareOrNull()->cm : 0; }
    std::uint32_t valueMetadata() const { return isRare() ? rareOrNull()->vm : 0; }
    void setMetadata(std::uint32_t cell, std::uint32_t value);
    const bindery::Extras* extras() const { return isRare() ? rareOrNull()->extras.get() : nullptr; }

    /// Reads the element whose start tag the reader has just scanned.
    int unmarshal(bindery::c_xml_reader& reader);
    /// Reads a cell of the usual form from plain bytes: the place behind its end, or null when it has another form;
    /// the cell is then to be thrown away.
    const char* readPlain(const char* at, const char* end);
    int marshal(bindery::c_xml_writer& writer) const;

private:
    struct Rare {
        std::unique_ptr<Formula> formula;
        std::unique_ptr<Rst> inlineString;
        std::unique_ptr<bindery::c_raw_node> extLst;
        std::unique_ptr<bindery::Extras> extras;
        std::string text;
        std::uint32_t style = 0;  // one that the cell has no room for
        std::uint32_t cm = 0, vm = 0;
        bool hasCm = false, hasVm = false, hasPh = false, ph = false;
        Rare();
        Rare(const Rare& other);
        ~Rare();
    };

    /// What the content is: a text, or the place of one.
    enum class Form : std::uint8_t {
        plain,    // up to 15 bytes, their number in the last
        packed,   // up to 30 characters of a number, two in a byte, their number in the last
        outside,  // the place of the bytes, and their number; what tells of a formula stands in front of them
        rare      // the place of a Rare, which holds the text, too
    };

    // Of `_bits`: 0 to 20 row, 21 to 36 column, 37 to 39 type, 40 reference there, 41 style there, 42 value there, 43
    // and 44 form of the content, 45 to 63 style.
    static constexpr std::uint64_t rowMask = 0x1FFFFF;
    static constexpr unsigned columnShift = 21, typeShift = 37, formShift = 43, styleShift = 45;
    static constexpr std::uint64_t columnMask = std::uint64_t{0xFFFF} << columnShift;
    static constexpr std::uint64_t referencePresent = std::uint64_t{1} << 40;
    static constexpr std::uint64_t stylePresent = std::uint64_t{1} << 41;
    static constexpr std::uint64_t valuePresent = std::uint64_t{1} << 42;
    static constexpr std::uint64_t formMask = std::uint64_t{3} << formShift;
    static constexpr std::uint32_t styleOutside = 0x7FFFF;
    static constexpr std::size_t contentRoom = 16, lengthAt = contentRoom - 1;
    // In the last byte, beside the number: a formula of text alone, its `aca` that is false, a member of a group, whose
    // number stands in front of the last byte or in the block.
    static constexpr unsigned char textFlag = 0x80, memberFlag = 0x40, acaFlag = 0x20, lengthMask = 0x1F;
    static constexpr std::size_t memberTextRoom = lengthAt - sizeof(std::uint32_t), packedRoom = 30;

    Form form() const { return static_cast<Form>(_bits >> formShift & 3); }
    void putForm(Form form) { _bits = (_bits & ~formMask) | static_cast<std::uint64_t>(form) << formShift; }
    void putStyle(std::uint32_t index) {
        _bits = (_bits & ((std::uint64_t{1} << styleShift) - 1)) | std::uint64_t{index} << styleShift | stylePresent;
    }
    bool isRare() const { return form() == Form::rare; }
    /// Null but for the rare form.
    Rare* rareOrNull() const {
        Rare* there = nullptr;
        if (isRare()) std::memcpy(&there, _content, sizeof there);
        return there;
    }
    Rare& rare();
    std::size_t length() const { return static_cast<unsigned char>(_content[lengthAt]) & lengthMask; }
    unsigned char flags() const {
        return isRare() ? 0 : static_cast<unsigned char>(static_cast<unsigned char>(_content[lengthAt]) & ~lengthMask);
    }
    bool hasFlag(unsigned char flag) const { return (flags() & flag) != 0; }
    char* outsideBytes() const {
        char* bytes;
        std::memcpy(&bytes, _content, sizeof bytes);
        return bytes;
    }
    void putOutsideSize(std::size_t size) {
        const auto number = static_cast<std::uint32_t>(size);
        std::memcpy(_content + sizeof(char*), &number, sizeof number);
    }
    void takeOutside(char* bytes, std::size_t valueSize, unsigned char flags);
    std::uint32_t numberOfFormula() const;
    std::size_t bytesOfFormula() const;
    std::unique_ptr<Formula> wholeFormula() const;
    void putBlock(unsigned char flags, std::uint32_t number, std::string_view formula, std::string_view value);
    void setFormulaText(std::string_view utf8, bool withAca = false);
    void setMember(std::uint32_t group, std::string_view value);
    void setTextBesideFormula(std::string_view utf8);
    void slim();
    void writeFormula(std::string& out) const;
    const char* readPlainFormula(const char* at, const char* end);
    void takeContent(c_CT_Cell& other) {
        std::memcpy(_content, other._content, contentRoom);
        other.emptyContent();
    }
    void emptyContent() {
        _bits &= ~(formMask | valuePresent);
        _content[lengthAt] = 0;
    }
    void dropContent() {
        if (form() >= Form::outside) freeContent();
    }
    void freeContent();
    std::string_view outsideText() const;
    bool readReference(std::string_view text);
    bool readType(std::string_view text);
    int readAttributes(bindery::c_xml_reader& reader);
    int takeAttribute(std::string_view name, std::string_view value);
    int readChildren(bindery::c_xml_reader& reader);
    int readChild(bindery::c_xml_reader& reader, std::uint16_t& slot);
    int readValueElement(bindery::c_xml_reader& reader);
    bindery::Extras& makeExtras();
    void takeText(std::string_view utf8);
    void writeAttributes(std::string& out) const;
    int writeRare(bindery::c_xml_writer& writer) const;

    std::uint64_t _bits = 0;
    char _content[contentRoom] = {};
};

extern template class CellFormula<SheetFamily::c_CT_CellFormula>;
extern template class CellFormula<StrictFamily::c_CT_CellFormula>;
extern template class c_CT_Cell<SheetFamily>;
extern template class c_CT_Cell<StrictFamily>;

static_assert(sizeof(c_CT_Cell<SheetFamily>) == 24);

}  // namespace ooxml
