#include "xlsx/filters/column_judge.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "bindery/values/value_spec.h"
#include "ooxml/cells/compact_cell.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/cells/coded_text.h"
#include "xlsx/filters/filter_choice.h"
#include "xlsx/filters/filter_rules.h"

namespace vellum::xlsx {

template <class Tag>
bool ColumnJudge<Tag>::passes(const FilterValue& value, Reader& reader) {
    if (value.kind != ValueKind::text || value.shared == FilterValue::notShared) return judge(value, reader);
    if (value.shared >= _known.size()) _known.resize(std::max(value.shared + 1, reader.book().sharedTotal()), unknown);
    Known& known = _known[value.shared];
    if (known == unknown) known = judge(value, reader) ? passing : failing;
    return known == passing;
}

namespace {

constexpr std::array<const char*, 6> dateFields = {"year", "month", "day", "hour", "minute", "second"};

/// A `dateGroupItem` that lacks what its grouping asks for goes as far as it says.
DateGroup readDateGroup(const bindery::c_raw_node& item) {
    DateGroup group;
    const std::string* const grouping = item.attribute("dateTimeGrouping");
    for (std::size_t i = 0; i < dateFields.size(); ++i) {
        const std::string* const text = item.attribute(dateFields[i]);
        if (!text) break;
        std::from_chars(text->data(), text->data() + text->size(), group.fields[i]);
        group.precision = static_cast<int>(i) + 1;
        if (grouping && *grouping == dateFields[i]) break;
    }
    return group;
}

template <class Tag>
class ValueJudge final : public ColumnJudge<Tag> {
public:
    using typename ColumnJudge<Tag>::Reader;

    explicit ValueJudge(const typename FilterChoice<Tag>::Filters& filters) {
        if (filters.blank()) _list.allowBlank();
        for (const auto& filter : filters.filter()) _list.add(bindery::toWide(filter.val()));
        for (const auto& item : filters.dateGroupItem()) _list.add(readDateGroup(item));
        _list.finish();
    }

protected:
    bool judge(const FilterValue& value, Reader& reader) override {
        if (value.isBlank()) return _list.passesBlank();
        if (value.kind != ValueKind::number) return _list.passesText(reader.textOf(value));
        auto& book = reader.book();
        const bool isDate = _list.hasDates() && (value.isIsoDate || book.isDateStyle(value.style));
        if (isDate && _list.passesDate(value.number, book.dates1904())) return true;
        return value.isIsoDate ? _list.passesText(reader.textOf(value)) : _list.passesNumber(value.number);
    }

private:
    ValueList _list;
};

template <class Tag>
class CustomJudge final : public ColumnJudge<Tag> {
public:
    using typename ColumnJudge<Tag>::Reader;

    explicit CustomJudge(const typename FilterChoice<Tag>::CustomFilters& filters) : _and(filters.and_()) {
        for (const auto& rule : filters.customFilter()) {
            if (_rules.size() == customFilterLimit) break;
            _rules.emplace_back(filterOperatorOf(rule.operator_()), bindery::toWide(rule.val()));
        }
    }

protected:
    bool judge(const FilterValue& value, Reader& reader) override {
        const auto passes = [&](const CustomRule& rule) {
            if (value.isBlank()) return rule.passesText({});
            if (value.kind == ValueKind::number) {
                if (const auto passed = rule.passesNumber(value.number)) return *passed;
            }
            return rule.passesText(reader.textOf(value));
        };
        return _and ? std::all_of(_rules.begin(), _rules.end(), passes)
                    : std::any_of(_rules.begin(), _rules.end(), passes);
    }

private:
    std::vector<CustomRule> _rules;
    bool _and;
};

/// The greatest or smallest numbers; all that equal the last one that counts pass.
template <class Tag>
class TopJudge final : public ColumnJudge<Tag> {
public:
    using typename ColumnJudge<Tag>::Reader;

    explicit TopJudge(const typename FilterChoice<Tag>::Top10& filter)
        : _top(filter.top()), _percent(filter.percent()), _value(filter.val()) {}

    [[nodiscard]] bool looksFirst() const override { return true; }
    void note(const FilterValue& value) override {
        if (value.kind == ValueKind::number) _numbers.push_back(value.number);
        if (value.kind == ValueKind::number || value.kind == ValueKind::text) ++_counted;
    }
    void endOfNotes() override {
        double wanted = _percent ? static_cast<double>(_counted) * _value / 100 : _value;
        wanted = wanted >= 1 ? wanted : 1;
        _passesAll = wanted >= static_cast<double>(_numbers.size());
        if (_passesAll) return;
        const auto last = _numbers.begin() + static_cast<std::ptrdiff_t>(wanted) - 1;
        if (_top) {
            std::nth_element(_numbers.begin(), last, _numbers.end(), std::greater<>());
        } else {
            std::nth_element(_numbers.begin(), last, _numbers.end());
        }
        _limit = *last;
    }

protected:
    bool judge(const FilterValue& value, Reader&) override {
        if (value.kind != ValueKind::number) return false;
        return _passesAll || (_top ? value.number >= _limit : value.number <= _limit);
    }

private:
    bool _top, _percent;
    double _value, _limit = 0;
    bool _passesAll = true;
    std::size_t _counted = 0;
    std::vector<double> _numbers;
};

}  // namespace

template <class Tag>
std::unique_ptr<ColumnJudge<Tag>> makeJudge(typename ooxml::dialect<Tag>::sml::c_CT_FilterColumn& column) {
    const FilterChoice<Tag> choice(column);
    if (const auto* const filters = choice.filters()) return std::make_unique<ValueJudge<Tag>>(*filters);
    if (const auto* const top = choice.top10()) return std::make_unique<TopJudge<Tag>>(*top);
    if (const auto* const custom = choice.customFilters()) return std::make_unique<CustomJudge<Tag>>(*custom);
    return nullptr;
}

template class ColumnJudge<ooxml::excelNormal_tag>;
template class ColumnJudge<ooxml::excelStrict_tag>;
template std::unique_ptr<ColumnJudge<ooxml::excelNormal_tag>> makeJudge(sheet::c_CT_FilterColumn&);
template std::unique_ptr<ColumnJudge<ooxml::excelStrict_tag>> makeJudge(strict::c_CT_FilterColumn&);

}  // namespace vellum::xlsx
