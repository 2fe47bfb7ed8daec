// The filter of a sheet, as the interface shows it.
#pragma once
#include <map>
#include <memory>

#include "engine/api/iautofilter.h"
#include "engine/failure/guarded.h"
#include "ooxml/generated/dialect.h"
#include "xlsx/filters/filter_column.h"

namespace vellum {

struct CellRange;

/// A live view on the `autoFilter` element of a worksheet, which has to outlive it; the element is made when something
/// is to be stored in it. It owns the views on the columns, one for each element.
template <class CharT, class Tag>
class XMLAutoFilterT final : public IAutoFilterT<CharT> {
public:
    using Worksheet = typename ooxml::dialect<Tag>::c_worksheet;
    using Element = typename ooxml::dialect<Tag>::sml::c_CT_AutoFilter;
    using Column = XMLFilterColumnT<CharT, Tag>;

    XMLAutoFilterT(Worksheet& worksheet, bool utf8Mode, LastError& lastError)
        : _worksheet(worksheet), _utf8Mode(utf8Mode), _lastError(lastError) {}

    bool filterRange(int* rowFirst, int* rowLast, int* colFirst, int* colLast) override;
    bool setFilterRange(int rowFirst, int rowLast, int colFirst, int colLast) override;
    IFilterColumnT<CharT>* filterColumn(int colId) override;
    int filterColumnTotal() override;
    IFilterColumnT<CharT>* filterColumnAt(int index) override;
    bool sortRange(int* rowFirst, int* rowLast, int* colFirst, int* colLast) override;
    bool sortOrder(int* columnIndex, bool* descending) override;
    bool setSort(int columnIndex, bool descending) override;
    bool addSort(int columnIndex, bool descending) override;

    /// Drops the views on columns whose elements are gone: to be called before their places are used again.
    void forgetGone();
    /// Drops the columns that a range set here does not have: programs report a file that has them as damaged.
    void dropColumnsOutside();

private:
    using ColumnElement = typename Column::Element;

    Element& element();
    CellRange requireRange();
    CellRange rangeToSort();
    Column& columnOf(ColumnElement& element);

    Worksheet& _worksheet;
    std::map<const ColumnElement*, std::unique_ptr<Column>> _columns;
    bool _utf8Mode;
    bool _rangeIsSet = false;
    LastError& _lastError;
};

extern template class XMLAutoFilterT<char, ooxml::excelNormal_tag>;
extern template class XMLAutoFilterT<char, ooxml::excelStrict_tag>;
extern template class XMLAutoFilterT<wchar_t, ooxml::excelNormal_tag>;
extern template class XMLAutoFilterT<wchar_t, ooxml::excelStrict_tag>;

}  // namespace vellum
