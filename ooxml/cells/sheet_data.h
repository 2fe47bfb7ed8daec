// All rows of a worksheet.
#pragma once
#include <string_view>

#include "bindery/classes/class_info.h"
#include "ooxml/cells/row.h"
#include "ooxml/cells/row_list.h"

namespace ooxml {

/// The rows of a worksheet, in row order. A reader may want some of them only, counted from 0: `wantsItem`.
template <class Family>
class c_CT_SheetData : public bindery::c_bound {
public:
    using Row = c_CT_Row<Family>;

    c_CT_SheetData();
    c_CT_SheetData(const c_CT_SheetData&);
    c_CT_SheetData& operator=(const c_CT_SheetData&);
    ~c_CT_SheetData() override;
    c_CT_SheetData* clone() const override;
    int unmarshal(bindery::c_xml_reader& reader, std::string_view name);
    int marshal(bindery::c_xml_writer& writer, std::string_view name) const;

    RowList<Row>& row() { return _rows; }
    const RowList<Row>& row() const { return _rows; }

    static const bindery::ClassInfo info;

private:
    struct Reading;

    int read(bindery::c_xml_reader& reader);
    int readRows(bindery::c_xml_reader& reader);
    int write(bindery::c_xml_writer& writer) const;

    RowList<Row> _rows;
};

extern template class RowList<c_CT_Row<SheetFamily>>;
extern template class RowList<c_CT_Row<StrictFamily>>;
extern template class c_CT_SheetData<SheetFamily>;
extern template class c_CT_SheetData<StrictFamily>;

}  // namespace ooxml
