#include "xlsx/features/ignored_errors.h"

#include "engine/failure/vlerror.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/features/messages.h"

namespace vellum::xlsx {
namespace {

template <class Error>
struct Flag {
    int bit;
    bool (Error::*get)() const;
    void (Error::*set)(bool);
};

template <class E>
constexpr Flag<E> allFlags[] = {
    {1, &E::evalError, &E::evalError},
    {2, &E::twoDigitTextYear, &E::twoDigitTextYear},
    {4, &E::numberStoredAsText, &E::numberStoredAsText},
    {8, &E::formula, &E::formula},
    {16, &E::formulaRange, &E::formulaRange},
    {32, &E::unlockedFormula, &E::unlockedFormula},
    {64, &E::emptyCellReference, &E::emptyCellReference},
    {128, &E::listDataValidation, &E::listDataValidation},
};
constexpr int knownFlags = 255;

template <class Error>
int flagsOf(const Error& error) {
    int flags = 0;
    for (const auto& flag : allFlags<Error>) {
        if ((error.*flag.get)()) flags |= flag.bit;
    }
    return flags;
}

}  // namespace

template <class Worksheet>
void addIgnoredErrors(Worksheet& worksheet, const CellRange& range, int flags) {
    if (flags <= 0 || (flags & ~knownFlags) != 0) throw vlerror(msg::ignoredFlagsOutOfRange);
    const std::vector<std::string> sqref = {cellRangeText(range)};
    auto& list = worksheet.ignoredErrors().ignoredError();
    using Error = std::remove_reference_t<decltype(list[0])>;
    Error* joined = nullptr;
    for (Error& known : list) {
        if (known.sqref() != sqref) continue;
        if ((flagsOf(known) & flags) != 0) throw vlerror(msg::ignoredErrorExists);
        joined = &known;
    }
    Error& error = joined ? *joined : list.append();
    if (!joined) error.sqref(sqref);
    for (const auto& flag : allFlags<Error>) {
        if ((flags & flag.bit) != 0) (error.*flag.set)(true);
    }
}

template void addIgnoredErrors(sheet::c_worksheet&, const CellRange&, int);
template void addIgnoredErrors(strict::c_worksheet&, const CellRange&, int);

}  // namespace vellum::xlsx
