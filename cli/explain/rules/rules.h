// All rules of warnings.
#pragma once
#include <span>

#include "cli/explain/rules/rule.h"

namespace cli::explain {

extern const Rule textReadAsNumber, numberStoredAsText, nearHeader, duplicateHeader, leftoverOption, emptyIndex,
    mergedIndex, errorCell, formulaDate, duplicateIndex, hiddenRows, noCachedValue, staleResult, validationBroken,
    filteredRows, nearBuffer, lostDigits, dataCut, oldRowsLeft, formulaOverwritten, protectedSheet, lockedFile,
    nameNotMoved;

/// In the order in which they are reported.
std::span<const Rule* const> allRules();

}  // namespace cli::explain
