// What one column of a filter asks for: its bound element.
#pragma once
#include <cstddef>
#include <string>

#include "ooxml/generated/dialect.h"

namespace vellum::xlsx {

/// Whether an option of the choice tells which rows pass; an extension alone does not.
template <class Tag>
class FilterChoice {
public:
    using Column = typename ooxml::dialect<Tag>::sml::c_CT_FilterColumn;
    using Filters = typename ooxml::dialect<Tag>::sml::c_CT_Filters;
    using Top10 = typename ooxml::dialect<Tag>::sml::c_CT_Top10;
    using CustomFilters = typename ooxml::dialect<Tag>::sml::c_CT_CustomFilters;

    explicit FilterChoice(Column& column) : _column(column) {}

    /// A FilterKind.
    [[nodiscard]] int kind() const;
    /// Null when the element holds something else.
    [[nodiscard]] const Filters* filters() const;
    [[nodiscard]] const Top10* top10() const;
    [[nodiscard]] const CustomFilters* customFilters() const;

    /// The option, made in place of any other one. Extensions of the element stay.
    Filters& makeFilters();
    Top10& makeTop10();
    CustomFilters& makeCustomFilters();
    void clear();

private:
    auto& select();

    Column& _column;
};

/// One rule of `customFilters`.
inline constexpr std::size_t customFilterLimit = 2;
/// Text of a FilterOperator; null for a code that is none.
const char* filterOperatorText(int op);
/// The code; a text that is none counts as "equal", as an absent one does.
int filterOperatorOf(const std::string& text);

extern template class FilterChoice<ooxml::excelNormal_tag>;
extern template class FilterChoice<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
