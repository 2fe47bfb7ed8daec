#include "cli/explain/rules/rules.h"

namespace cli::explain {

std::span<const Rule* const> allRules() {
    static constexpr const Rule* rules[] = {
        &textReadAsNumber,   &numberStoredAsText, &nearHeader,     &duplicateHeader, &leftoverOption, &emptyIndex,
        &mergedIndex,        &errorCell,          &noCachedValue,  &staleResult,     &formulaDate,    &duplicateIndex,
        &hiddenRows,         &filteredRows,       &nearBuffer,     &lostDigits,      &dataCut,        &oldRowsLeft,
        &formulaOverwritten, &validationBroken,   &protectedSheet, &lockedFile,      &nameNotMoved,
    };
    return rules;
}

}  // namespace cli::explain
