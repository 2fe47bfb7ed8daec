// The interface of filters.
#pragma once
namespace vellum {

template <class CharT>
class IFilterColumnT;

/// The filter of an Open XML sheet: its range with the header row, its columns and its sort order.
/// Owned by the sheet.
template <class CharT>
class IAutoFilterT {
public:
    virtual bool filterRange(int* rowFirst, int* rowLast, int* colFirst, int* colLast) = 0;
    /// Columns that it leaves out are not saved.
    virtual bool setFilterRange(int rowFirst, int rowLast, int colFirst, int colLast) = 0;
    /// The filter of a column, counted from the first one of the range; made when there is none.
    virtual IFilterColumnT<CharT>* filterColumn(int colId) = 0;
    virtual int filterColumnTotal() = 0;
    virtual IFilterColumnT<CharT>* filterColumnAt(int index) = 0;
    virtual bool sortRange(int* rowFirst, int* rowLast, int* colFirst, int* colLast) = 0;
    virtual bool sortOrder(int* columnIndex, bool* descending) = 0;
    virtual bool setSort(int columnIndex, bool descending = false) = 0;
    virtual bool addSort(int columnIndex, bool descending = false) = 0;

    virtual ~IAutoFilterT() = default;
};

}  // namespace vellum
