// The interface of a filter's columns.
#pragma once
namespace vellum {

/// The filter of one column, owned by its IAutoFilterT.
template <class CharT>
class IFilterColumnT {
public:
    virtual int columnId() = 0;
    /// A `FilterKind`.
    virtual int filterKind() = 0;
    virtual int valueFilterTotal() = 0;
    virtual const CharT* valueFilterAt(int index) = 0;
    virtual bool addValueFilter(const CharT* text) = 0;
    virtual bool top10(double* value, bool* top, bool* percent) = 0;
    /// `value` is 1 to 500.
    virtual bool setTop10(double value, bool top = true, bool percent = false) = 0;
    /// The operators are of `FilterOperator`; a missing rule gives a null value.
    virtual bool customFilter(int* op1, const CharT** value1, int* op2, const CharT** value2, bool* andOp) = 0;
    virtual bool setCustomFilter(int op1, const CharT* value1, int op2 = 0, const CharT* value2 = nullptr,
                                 bool andOp = false) = 0;
    virtual bool clearFilter() = 0;

    virtual ~IFilterColumnT() = default;
};

}  // namespace vellum
