// The rules that say what may be entered into cells.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "engine/api/isheet_rules.h"
#include "engine/facts/cell_address.h"
#include "ooxml/generated/dialect.h"

namespace vellum::xlsx {

/// One rule. Codes count as in the format's own lists; a text that is absent is left out of the file.
struct ValidationRule {
    int type = 0;        // 0 any value, 1 whole, 2 decimal, 3 list, 4 date, 5 time, 6 length of text, 7 custom
    int op = 0;          // 0 between, 1 not between, 2 equal, 3 not equal, 4 <, 5 <=, 6 >, 7 >=
    int errorStyle = 0;  // 0 stop, 1 warning, else information
    CellRange range;
    bool allowBlank = true, hideDropDown = false, showInputMessage = true, showErrorMessage = true;
    std::optional<std::wstring> formula1, formula2, promptTitle, prompt, errorTitle, error;
};

template <class Worksheet>
int validationRuleTotal(const Worksheet& worksheet);
/// Throws for a code that has no text.
template <class Worksheet>
void addValidationRule(Worksheet& worksheet, const ValidationRule& rule);
/// All of them, for reports.
template <class Worksheet>
std::vector<EntryRule> entryRules(const Worksheet& worksheet);
/// Throws when there are none.
template <class Worksheet>
void removeValidationRules(Worksheet& worksheet);

}  // namespace vellum::xlsx
