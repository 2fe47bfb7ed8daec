#include "xlsx/filters/filter_column.h"

#include "bindery/values/value_spec.h"
#include "engine/api/enums.h"
#include "engine/failure/vlerror.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/filters/messages.h"

namespace vellum {

template <class CharT, class Tag>
int XMLFilterColumnT<CharT, Tag>::columnId() {
    return guarded(_lastError, -1, [&] { return static_cast<int>(_filterColumn.colId()); });
}

template <class CharT, class Tag>
int XMLFilterColumnT<CharT, Tag>::filterKind() {
    return guarded<int>(_lastError, filterNone, [&] {
        const int kind = choice().kind();
        if (kind == filterNone) throw vlerror(xlsx::msg::filterNotFound);
        return kind;
    });
}

template <class CharT, class Tag>
auto XMLFilterColumnT<CharT, Tag>::requireFilters() -> const typename xlsx::FilterChoice<Tag>::Filters& {
    const auto* const filters = choice().filters();
    if (!filters) throw vlerror(xlsx::msg::valueFilterNotFound);
    return *filters;
}

/// Texts of attributes are UTF-8.
template <class CharT, class Tag>
std::string XMLFilterColumnT<CharT, Tag>::narrow(const CharT* text) {
    TextHolder holder;
    if constexpr (std::is_same_v<CharT, wchar_t>) {
        holder.setWide(text);
    } else {
        holder.setNarrow(text);
    }
    return bindery::toUtf8(holder.wide(_utf8Mode));
}

template <class CharT, class Tag>
int XMLFilterColumnT<CharT, Tag>::valueFilterTotal() {
    return guarded(_lastError, -1, [&] { return static_cast<int>(requireFilters().filter().size()); });
}

template <class CharT, class Tag>
const CharT* XMLFilterColumnT<CharT, Tag>::valueFilterAt(int index) {
    return guarded<const CharT*>(_lastError, nullptr, [&] {
        const auto& values = requireFilters().filter();
        if (index < 0 || static_cast<std::size_t>(index) >= values.size()) throw vlerror(xlsx::msg::indexOutOfRange);
        return _conversion.template give<CharT>(bindery::toWide(values[static_cast<std::size_t>(index)].val()),
                                                _utf8Mode);
    });
}

template <class CharT, class Tag>
bool XMLFilterColumnT<CharT, Tag>::addValueFilter(const CharT* text) {
    return guarded(_lastError, false, [&] {
        if (!text) throw vlerror(xlsx::msg::textNull);
        const int kind = choice().kind();
        if (kind != filterValues && kind != filterNone && kind != filterExtension) {
            throw vlerror(xlsx::msg::valueFilterNotFound);
        }
        std::string value = narrow(text);
        choice().makeFilters().filter().append().val(std::move(value));
        return true;
    });
}

template <class CharT, class Tag>
bool XMLFilterColumnT<CharT, Tag>::top10(double* value, bool* top, bool* percent) {
    return guarded(_lastError, false, [&] {
        const auto* const found = choice().top10();
        if (!found) throw vlerror(xlsx::msg::top10NotFound);
        if (value) *value = found->val();
        if (top) *top = found->top();
        if (percent) *percent = found->percent();
        return true;
    });
}

template <class CharT, class Tag>
bool XMLFilterColumnT<CharT, Tag>::setTop10(double value, bool top, bool percent) {
    return guarded(_lastError, false, [&] {
        if (!(value >= 1 && value <= 500)) throw vlerror(xlsx::msg::top10OutOfRange);
        auto& made = choice().makeTop10();
        made.val(value);
        made.top(top);
        made.percent(percent);
        made.unset_filterVal();  // the limit that another run found
        return true;
    });
}

template <class CharT, class Tag>
bool XMLFilterColumnT<CharT, Tag>::customFilter(int* op1, const CharT** value1, int* op2, const CharT** value2,
                                                bool* andOp) {
    return guarded(_lastError, false, [&] {
        const auto* const found = choice().customFilters();
        if (!found) throw vlerror(xlsx::msg::customFilterNotFound);
        const auto& rules = found->customFilter();
        const auto give = [&](std::size_t index, int* op, const CharT** value, TextHolder& holder) {
            const bool exists = index < rules.size();
            if (op) *op = exists ? xlsx::filterOperatorOf(rules[index].operator_()) : int{filterEqual};
            if (!value) return;
            *value = exists ? holder.give<CharT>(bindery::toWide(rules[index].val()), _utf8Mode) : nullptr;
        };
        give(0, op1, value1, _conversion);
        give(1, op2, value2, _second);
        if (andOp) *andOp = found->and_();
        return true;
    });
}

template <class CharT, class Tag>
bool XMLFilterColumnT<CharT, Tag>::setCustomFilter(int op1, const CharT* value1, int op2, const CharT* value2,
                                                   bool andOp) {
    return guarded(_lastError, false, [&] {
        const struct {
            int op;
            const CharT* value;
        } rules[xlsx::customFilterLimit] = {{op1, value1}, {op2, value2}};
        if (!value1 && !value2) throw vlerror(xlsx::msg::customFilterNotFound);
        for (const auto& rule : rules) {
            if (rule.value && !xlsx::filterOperatorText(rule.op)) throw vlerror(xlsx::msg::indexOutOfRange);
        }
        auto& made = choice().makeCustomFilters();
        for (const auto& rule : rules) {
            if (!rule.value) continue;
            auto& element = made.customFilter().append();
            if (rule.op != filterEqual) element.operator_(xlsx::filterOperatorText(rule.op));
            element.val(narrow(rule.value));
        }
        made.and_(andOp);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLFilterColumnT<CharT, Tag>::clearFilter() {
    return guarded(_lastError, false, [&] {
        choice().clear();
        return true;
    });
}

template class XMLFilterColumnT<char, ooxml::excelNormal_tag>;
template class XMLFilterColumnT<char, ooxml::excelStrict_tag>;
template class XMLFilterColumnT<wchar_t, ooxml::excelNormal_tag>;
template class XMLFilterColumnT<wchar_t, ooxml::excelStrict_tag>;

}  // namespace vellum
