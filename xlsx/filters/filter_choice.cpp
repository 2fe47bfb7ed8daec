#include "xlsx/filters/filter_choice.h"

#include <algorithm>

#include "bindery/classes/extras.h"
#include "engine/api/enums.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/cells/coded_text.h"

namespace vellum::xlsx {
namespace {

constexpr const char* operators[] = {"equal",    "greaterThan",     "greaterThanOrEqual",
                                     "lessThan", "lessThanOrEqual", "notEqual"};

}  // namespace

const char* filterOperatorText(int op) {
    return textOf(operators, op);
}

int filterOperatorOf(const std::string& text) {
    return codeOf(operators, text, filterEqual);
}

/// The options stand in the order of the codes, from 1.
template <class Tag>
int FilterChoice<Tag>::kind() const {
    const auto* const choice = std::as_const(_column).find_choice();
    return choice && choice->option() != 0 ? std::min<int>(choice->option() - 1, filterNone) : int{filterNone};
}

template <class Tag>
auto FilterChoice<Tag>::filters() const -> const Filters* {
    const auto* const choice = std::as_const(_column).find_choice();
    return choice ? choice->find_filters() : nullptr;
}

template <class Tag>
auto FilterChoice<Tag>::top10() const -> const Top10* {
    const auto* const choice = std::as_const(_column).find_choice();
    return choice ? choice->find_top10() : nullptr;
}

template <class Tag>
auto FilterChoice<Tag>::customFilters() const -> const CustomFilters* {
    const auto* const choice = std::as_const(_column).find_choice();
    return choice ? choice->find_customFilters() : nullptr;
}

/// The format has extensions as one more option; beside a real one they are kept as content that is not known.
template <class Tag>
auto& FilterChoice<Tag>::select() {
    auto& choice = _column.choice();
    if (choice.isset_extLst()) {
        _column.makeExtras().elements.push_back({1, 1, choice.extLst()});
        choice.unset();
    }
    return choice;
}

template <class Tag>
auto FilterChoice<Tag>::makeFilters() -> Filters& {
    return select().filters();
}

template <class Tag>
auto FilterChoice<Tag>::makeTop10() -> Top10& {
    return select().top10();
}

template <class Tag>
auto FilterChoice<Tag>::makeCustomFilters() -> CustomFilters& {
    auto& choice = select();
    choice.unset_customFilters();
    return choice.customFilters();
}

template <class Tag>
void FilterChoice<Tag>::clear() {
    _column.unset_choice();
}

template class FilterChoice<ooxml::excelNormal_tag>;
template class FilterChoice<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
