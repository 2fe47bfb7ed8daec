// The filter of one column, as the interface shows it.
#pragma once
#include "engine/api/ifiltercolumn.h"
#include "engine/failure/guarded.h"
#include "engine/text/text_holder.h"
#include "ooxml/generated/dialect.h"
#include "xlsx/filters/filter_choice.h"

namespace vellum {

/// A live view on one `filterColumn` element, which has to outlive it.
template <class CharT, class Tag>
class XMLFilterColumnT final : public IFilterColumnT<CharT> {
public:
    using Element = typename ooxml::dialect<Tag>::sml::c_CT_FilterColumn;

    XMLFilterColumnT(Element& filterColumn, bool utf8Mode, LastError& lastError)
        : _filterColumn(filterColumn), _utf8Mode(utf8Mode), _lastError(lastError) {}

    int columnId() override;
    int filterKind() override;
    int valueFilterTotal() override;
    const CharT* valueFilterAt(int index) override;
    bool addValueFilter(const CharT* text) override;
    bool top10(double* value, bool* top, bool* percent) override;
    bool setTop10(double value, bool top, bool percent) override;
    bool customFilter(int* op1, const CharT** value1, int* op2, const CharT** value2, bool* andOp) override;
    bool setCustomFilter(int op1, const CharT* value1, int op2, const CharT* value2, bool andOp) override;
    bool clearFilter() override;

private:
    xlsx::FilterChoice<Tag> choice() { return xlsx::FilterChoice<Tag>(_filterColumn); }
    const typename xlsx::FilterChoice<Tag>::Filters& requireFilters();
    std::string narrow(const CharT* text);

    Element& _filterColumn;
    bool _utf8Mode;
    LastError& _lastError;
    TextHolder _conversion, _second;  // two texts go out at once
};

extern template class XMLFilterColumnT<char, ooxml::excelNormal_tag>;
extern template class XMLFilterColumnT<char, ooxml::excelStrict_tag>;
extern template class XMLFilterColumnT<wchar_t, ooxml::excelNormal_tag>;
extern template class XMLFilterColumnT<wchar_t, ooxml::excelStrict_tag>;

}  // namespace vellum
