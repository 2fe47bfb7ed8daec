#include "xlsx/features/validation.h"

#include "engine/failure/vlerror.h"
#include "engine/text/conversions.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/cells/coded_text.h"
#include "xlsx/features/messages.h"

namespace vellum::xlsx {
namespace {

constexpr const char* types[] = {"none", "whole", "decimal", "list", "date", "time", "textLength", "custom"};
constexpr const char* operators[] = {"between",  "notBetween",      "equal",       "notEqual",
                                     "lessThan", "lessThanOrEqual", "greaterThan", "greaterThanOrEqual"};

const char* errorStyleText(int style) {
    if (style == 0) return "stop";
    return style == 1 ? "warning" : "information";
}

/// A formula of a rule stands without its "=".
std::wstring withoutEquals(const std::wstring& formula) {
    return formula.starts_with(L'=') ? formula.substr(1) : formula;
}

}  // namespace

template <class Worksheet>
int validationRuleTotal(const Worksheet& worksheet) {
    const auto* const rules = worksheet.find_dataValidations();
    return rules ? static_cast<int>(rules->dataValidation().size()) : 0;
}

template <class Worksheet>
void addValidationRule(Worksheet& worksheet, const ValidationRule& rule) {
    const char* const type = textOf(types, rule.type);
    if (!type) throw vlerror(msg::validationTypeOutOfRange);
    const char* const op = textOf(operators, rule.op);
    if (!op) throw vlerror(msg::validationOperatorOutOfRange);
    auto& rules = worksheet.dataValidations();
    auto& made = rules.dataValidation().append();
    made.type(type);
    made.operator_(op);
    made.errorStyle(errorStyleText(rule.errorStyle));
    made.sqref({cellRangeText(rule.range)});
    made.allowBlank(rule.allowBlank);
    made.showDropDown(rule.hideDropDown);  // the attribute says the opposite of its name
    made.showInputMessage(rule.showInputMessage);
    made.showErrorMessage(rule.showErrorMessage);
    if (rule.promptTitle) made.promptTitle(*rule.promptTitle);
    if (rule.prompt) made.prompt(*rule.prompt);
    if (rule.errorTitle) made.errorTitle(*rule.errorTitle);
    if (rule.error) made.error(*rule.error);
    if (rule.formula1) made.formula1().text(withoutEquals(*rule.formula1));
    if (rule.formula2) made.formula2().text(withoutEquals(*rule.formula2));
    rules.count(static_cast<unsigned>(rules.dataValidation().size()));
}

template <class Worksheet>
std::vector<EntryRule> entryRules(const Worksheet& worksheet) {
    std::vector<EntryRule> found;
    const auto* const rules = worksheet.find_dataValidations();
    if (!rules) return found;
    for (const auto& rule : rules->dataValidation()) {
        EntryRule entry;
        entry.type = codeOf(types, rule.type(), 0);
        entry.op = codeOf(operators, rule.operator_(), 0);
        entry.allowBlank = rule.allowBlank();
        if (const auto* const formula = rule.find_formula1()) entry.formula1 = toNarrow(formula->text(), true);
        if (const auto* const formula = rule.find_formula2()) entry.formula2 = toNarrow(formula->text(), true);
        for (const auto& text : rule.sqref()) {
            if (const auto area = readCellRange(std::string_view(text))) {
                entry.areas.push_back({static_cast<int>(area->rowFirst), static_cast<int>(area->rowLast),
                                       static_cast<int>(area->colFirst), static_cast<int>(area->colLast)});
            }
        }
        found.push_back(std::move(entry));
    }
    return found;
}

template <class Worksheet>
void removeValidationRules(Worksheet& worksheet) {
    if (!worksheet.isset_dataValidations()) throw vlerror(msg::validationsNotFound);
    worksheet.unset_dataValidations();
}

template std::vector<EntryRule> entryRules(const sheet::c_worksheet&);
template std::vector<EntryRule> entryRules(const strict::c_worksheet&);
template int validationRuleTotal(const sheet::c_worksheet&);
template int validationRuleTotal(const strict::c_worksheet&);
template void addValidationRule(sheet::c_worksheet&, const ValidationRule&);
template void addValidationRule(strict::c_worksheet&, const ValidationRule&);
template void removeValidationRules(sheet::c_worksheet&);
template void removeValidationRules(strict::c_worksheet&);

}  // namespace vellum::xlsx
