// Cells of a worksheet.
#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

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

/// One cell of a worksheet, 40 bytes. Texts of up to 20 bytes lie in the cell itself. Cells are held by value in
/// their row, so pointers to them hold until the row's cells change.
template <class Family>
class c_CT_Cell {
public:
    using Formula = typename Family::c_CT_CellFormula;
    using Rst = typename Family::c_CT_Rst;

    c_CT_Cell() = default;
    c_CT_Cell(const c_CT_Cell& other);
    c_CT_Cell(c_CT_Cell&& other) noexcept;
    c_CT_Cell& operator=(const c_CT_Cell& other);
    c_CT_Cell& operator=(c_CT_Cell&& other) noexcept;
    ~c_CT_Cell() { dropText(), dropRare(); }

    // ---- place, counted from 0. A cell without a reference stands where its place in the row says.
    bool hasReference() const { return (_packedRef & referencePresent) != 0; }
    std::uint32_t row() const { return _packedRef & rowMask; }
    std::uint32_t column() const { return _column; }
    void setReference(std::uint32_t row, std::uint32_t column) {
        _packedRef = (_packedRef & ~rowMask) | row | referencePresent;
        _column = static_cast<std::uint16_t>(column);
    }
    /// Where a cell without a reference stands, for those that look for it; it is not written.
    void setImpliedColumn(std::uint32_t column) { _column = static_cast<std::uint16_t>(column); }
    void clearReference() { _packedRef &= ~(rowMask | referencePresent); }

    // ---- style: index into cellXfs
    bool hasStyle() const { return (_packedRef & stylePresent) != 0; }
    std::uint32_t style() const { return _styleIndex; }  // 0 when there is none
    void setStyle(std::uint32_t index) {
        _packedRef |= stylePresent;
        _styleIndex = index;
    }
    void clearStyle() {
        _packedRef &= ~stylePresent;
        _styleIndex = 0;
    }

    CellType type() const { return static_cast<CellType>(_packedRef >> typeShift); }
    void setType(CellType type) {
        _packedRef = (_packedRef & ~(7u << typeShift)) | static_cast<std::uint32_t>(type) << typeShift;
    }

    // ---- value: the text of the v element
    bool hasValue() const { return (_flags & valuePresent) != 0; }
    /// UTF-8; "" when there is none. Lives until the cell changes or moves.
    std::string_view text() const {
        return (_flags & textOutside) != 0 ? outsideText() : std::string_view(_text, _length);
    }
    std::wstring value() const;
    void setText(std::string_view utf8);
    void setValue(std::wstring_view text);
    void clearValue() {
        dropText();
        _flags = 0;
        _length = 0;
    }

    // ---- formula and inline string: null when there is none, owned by the cell
    Formula* formula() const { return _rare != nullptr ? _rare->formula.get() : nullptr; }
    Formula& makeFormula();
    void clearFormula();
    Rst* inlineString() const { return _rare != nullptr ? _rare->inlineString.get() : nullptr; }
    Rst& makeInlineString();
    void clearInlineString();

    /// Leaves the place and the style. What else an element says goes with the value that it describes.
    void clearContent();

    // ---- the rare rest
    /// Indexes into the metadata part, from 1; 0 for none.
    std::uint32_t cellMetadata() const { return _rare != nullptr ? _rare->cm : 0; }
    std::uint32_t valueMetadata() const { return _rare != nullptr ? _rare->vm : 0; }
    void setMetadata(std::uint32_t cell, std::uint32_t value);
    const bindery::Extras* extras() const { return _rare != nullptr ? _rare->extras.get() : nullptr; }

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
        std::uint32_t cm = 0, vm = 0;
        bool hasCm = false, hasVm = false, hasPh = false, ph = false;
        Rare();
        Rare(const Rare& other);
        ~Rare();
    };

    static constexpr std::uint32_t rowMask = 0x1FFFFF;
    static constexpr std::uint32_t stylePresent = 1u << 27;
    static constexpr std::uint32_t referencePresent = 1u << 28;
    static constexpr unsigned typeShift = 29;
    static constexpr std::uint8_t valuePresent = 1, textOutside = 2;
    static constexpr std::size_t textRoom = 20;

    Rare& rare();
    void dropRare();
    void dropText() {
        if ((_flags & textOutside) != 0) freeText();
    }
    void freeText();
    std::string_view outsideText() const;
    bool readReference(std::string_view text);
    bool readType(std::string_view text);
    int readAttributes(bindery::c_xml_reader& reader);
    int takeAttribute(std::string_view name, std::string_view value);
    int readChildren(bindery::c_xml_reader& reader);
    int readChild(bindery::c_xml_reader& reader, std::uint16_t& slot);
    int readValueElement(bindery::c_xml_reader& reader);
    bindery::Extras& makeExtras();
    void writeAttributes(std::string& out) const;
    int writeRare(bindery::c_xml_writer& writer) const;

    std::uint32_t _packedRef = 0;  // bits 0 to 20 row, 27 style there, 28 reference there, 29 to 31 type
    std::uint32_t _styleIndex = 0;
    Rare* _rare = nullptr;  // owned; not a unique_ptr, whose type would have to be complete for every user
    std::uint16_t _column = 0;
    std::uint8_t _flags = 0;
    std::uint8_t _length = 0;   // of a text in the cell
    char _text[textRoom] = {};  // or the size and place of one outside
};

extern template class c_CT_Cell<SheetFamily>;
extern template class c_CT_Cell<StrictFamily>;

static_assert(sizeof(c_CT_Cell<SheetFamily>) == 40);

}  // namespace ooxml
