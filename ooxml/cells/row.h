// Rows of a worksheet.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "bindery/classes/class_info.h"
#include "bindery/classes/raw_node.h"
#include "bindery/values/holders.h"
#include "bindery/values/node.h"
#include "ooxml/cells/cell.h"

namespace ooxml {

/// One row of a worksheet: its attributes packed, its cells by value in column order. Attributes that the schema
/// does not know stand in `extras()`, but for "x14ac:dyDescent", which nearly every row has.
template <class Family>
class c_CT_Row : public bindery::c_bound {
public:
    using Cell = c_CT_Cell<Family>;

    c_CT_Row();
    c_CT_Row(const c_CT_Row&);
    c_CT_Row& operator=(const c_CT_Row&);
    c_CT_Row(c_CT_Row&&) noexcept;
    c_CT_Row& operator=(c_CT_Row&&) noexcept;
    ~c_CT_Row() override;
    c_CT_Row* clone() const override;
    int unmarshal(bindery::c_xml_reader& reader, std::string_view name);
    int marshal(bindery::c_xml_writer& writer, std::string_view name) const;

    /// Row number, from 1; 0 when it is absent.
    std::uint32_t r() const { return _r; }
    void r(std::uint32_t value) { _r = value, _present |= has_r; }
    bool isset_r() const { return (_present & has_r) != 0; }
    void unset_r() { _r = 0, _present &= ~has_r; }

    /// As written, "1:10"; several ranges have blanks between them.
    const std::string& spans() const { return _spans; }
    void spans(std::string_view value) { _spans = value, _present |= has_spans; }
    bool isset_spans() const { return (_present & has_spans) != 0; }
    void unset_spans() { _spans.clear(), _present &= ~has_spans; }

    std::uint32_t s() const { return _s; }
    void s(std::uint32_t value) { _s = value, _present |= has_s; }
    bool isset_s() const { return (_present & has_s) != 0; }
    void unset_s() { _s = 0, _present &= ~has_s; }

    /// Height in points.
    double ht() const { return _ht; }
    void ht(double value) { _ht = value, _present |= has_ht; }
    bool isset_ht() const { return (_present & has_ht) != 0; }
    void unset_ht() { _ht = 0, _present &= ~has_ht; }

    std::uint8_t outlineLevel() const { return _outlineLevel; }
    void outlineLevel(std::uint8_t value) { _outlineLevel = value, _present |= has_outlineLevel; }
    bool isset_outlineLevel() const { return (_present & has_outlineLevel) != 0; }
    void unset_outlineLevel() { _outlineLevel = 0, _present &= ~has_outlineLevel; }

    bool customFormat() const { return flag(has_customFormat); }
    void customFormat(bool value) { setFlag(has_customFormat, value); }
    bool isset_customFormat() const { return (_present & has_customFormat) != 0; }
    void unset_customFormat() { unsetFlag(has_customFormat); }

    bool customHeight() const { return flag(has_customHeight); }
    void customHeight(bool value) { setFlag(has_customHeight, value); }
    bool isset_customHeight() const { return (_present & has_customHeight) != 0; }
    void unset_customHeight() { unsetFlag(has_customHeight); }

    bool hidden() const { return flag(has_hidden); }
    void hidden(bool value) { setFlag(has_hidden, value); }
    bool isset_hidden() const { return (_present & has_hidden) != 0; }
    void unset_hidden() { unsetFlag(has_hidden); }

    bool collapsed() const { return flag(has_collapsed); }
    void collapsed(bool value) { setFlag(has_collapsed, value); }
    bool isset_collapsed() const { return (_present & has_collapsed) != 0; }
    void unset_collapsed() { unsetFlag(has_collapsed); }

    bool thickTop() const { return flag(has_thickTop); }
    void thickTop(bool value) { setFlag(has_thickTop, value); }
    bool isset_thickTop() const { return (_present & has_thickTop) != 0; }
    void unset_thickTop() { unsetFlag(has_thickTop); }

    bool thickBot() const { return flag(has_thickBot); }
    void thickBot(bool value) { setFlag(has_thickBot, value); }
    bool isset_thickBot() const { return (_present & has_thickBot) != 0; }
    void unset_thickBot() { unsetFlag(has_thickBot); }

    bool ph() const { return flag(has_ph); }
    void ph(bool value) { setFlag(has_ph, value); }
    bool isset_ph() const { return (_present & has_ph) != 0; }
    void unset_ph() { unsetFlag(has_ph); }

    /// Text of an attribute that the schema does not know, by its name as written ("x14ac:dyDescent"); null when
    /// there is none. Lives until the next call on the row.
    const std::string* unknownAttribute(std::string_view asWritten) const;
    /// Whether "x14ac:dyDescent" is the first of those attributes.
    bool startsWithDyDescent() const { return (_present & (has_dyDescent | dyDescentBehind)) == has_dyDescent; }
    void setUnknownAttribute(std::string_view asWritten, std::string_view uri, std::string_view value);
    bool removeUnknownAttribute(std::string_view asWritten);

    /// The cells, in column order.
    std::vector<Cell>& c() { return _cells; }
    const std::vector<Cell>& c() const { return _cells; }

    bindery::ct_child<bindery::c_raw_node>& extLst() { return _extLst; }
    const bindery::ct_child<bindery::c_raw_node>& extLst() const { return _extLst; }

    static const bindery::ClassInfo info;

    /// Reads the row whose start tag has just been scanned; `scratch` lends its room to the cells.
    int read(bindery::c_xml_reader& reader, std::vector<Cell>& scratch);
    int write(bindery::c_xml_writer& writer) const;
    /// Reads a start tag of the usual form from plain bytes, `at` behind its name: the place behind it, or null when
    /// it has another form; the row is then to be thrown away. `dyDescent`: "x14ac:dyDescent" has its usual meaning.
    const char* readPlainTag(const char* at, const char* end, bool dyDescent, bool& empty);
    /// Reads the children and the end tag. `plain`: the names of the sheet have no prefix here.
    int readCells(bindery::c_xml_reader& reader, std::vector<Cell>& scratch, bool plain);

private:
    enum : std::uint32_t {
        has_r = 1u << 0,
        has_spans = 1u << 1,
        has_s = 1u << 2,
        has_customFormat = 1u << 3,
        has_ht = 1u << 4,
        has_hidden = 1u << 5,
        has_customHeight = 1u << 6,
        has_outlineLevel = 1u << 7,
        has_collapsed = 1u << 8,
        has_thickTop = 1u << 9,
        has_thickBot = 1u << 10,
        has_ph = 1u << 11,
        has_dyDescent = 1u << 12,
        dyDescentBehind = 1u << 13,  // another unknown attribute stands in front of it
    };

    bool flag(std::uint32_t bit) const { return (_values & bit) != 0; }
    void setFlag(std::uint32_t bit, bool value) {
        _present |= bit;
        _values = value ? _values | bit : _values & ~bit;
    }
    void unsetFlag(std::uint32_t bit) {
        _present &= ~bit;
        _values &= ~bit;
    }

    int readAttributes(bindery::c_xml_reader& reader);
    int takeAttribute(std::string_view name, std::string_view value);
    int readChildren(bindery::c_xml_reader& reader, std::vector<Cell>& cells, bool plain);
    int readChild(bindery::c_xml_reader& reader, std::vector<Cell>& cells, std::uint16_t& slot);
    static bool readPlainCells(bindery::c_xml_reader& reader, std::vector<Cell>& cells);
    void writeAttributes(bindery::c_xml_writer& writer) const;
    void writeUnknown(bindery::c_xml_writer& writer) const;

    std::uint32_t _r = 0;
    std::uint32_t _s = 0;
    std::uint32_t _present = 0;
    std::uint32_t _values = 0;  // of the truth values, at the bits of their presence
    std::uint8_t _outlineLevel = 0;
    double _ht = 0;
    std::string _spans;
    std::string _dyDescent;
    std::vector<Cell> _cells;
    bindery::ct_child<bindery::c_raw_node> _extLst;
};

extern template class c_CT_Row<SheetFamily>;
extern template class c_CT_Row<StrictFamily>;

}  // namespace ooxml
