#include "cli/explain/facts/texts.h"

#include <algorithm>
#include <vector>

#include "host/sources/csv_table.h"
#include "host/text/c_locale.h"
#include "host/text/text_compare.h"

namespace cli::explain {

using quillet::equalIgnoringCase;
using quillet::lowerAscii;

std::string inQuotes(std::string_view text) {
    std::string out(1, '\'');
    return out.append(text).append(1, '\'');
}

std::string_view withoutBlanks(std::string_view text) {
    while (!text.empty() && quillet::isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && quillet::isBlank(text.back())) text.remove_suffix(1);
    return text;
}

bool isNumber(std::string_view text, char decimalSeparator) {
    std::string plain(withoutBlanks(text));
    if (decimalSeparator != '.') std::replace(plain.begin(), plain.end(), decimalSeparator, '.');
    // strtod also takes names of what is not finite, and hexadecimal numbers.
    if (plain.empty() || plain.find_first_not_of("+-.0123456789eE") != plain.npos) return false;
    char* end = nullptr;
    quillet::strtodC(plain.c_str(), &end);
    return *end == '\0' && end != plain.c_str();
}

char decimalSeparator(const quillet::RangeSpec& range) {
    if (range.ops.cellKind != quillet::csvTableOps.cellKind) return '.';
    return static_cast<char>(static_cast<const quillet::CsvTable*>(range.book)->decimalSep);
}

bool isSpecialText(const quillet::RangeSpec& range, std::string_view text) {
    const quillet::SpecialValues* const special = range.specialValues;
    if (special == nullptr) return false;
    return (range.has(quillet::optNanText) && equalIgnoringCase(text, special->nanText)) ||
           (range.has(quillet::optInfText) && equalIgnoringCase(text, special->infText)) ||
           (range.has(quillet::optMinfText) && equalIgnoringCase(text, special->minfText));
}

std::size_t distance(std::string_view a, std::string_view b, std::size_t limit) {
    const std::size_t longer = std::max(a.size(), b.size()), shorter = std::min(a.size(), b.size());
    if (longer - shorter > limit) return limit + 1;
    std::vector<std::size_t> before(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) last[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const bool equal = lowerAscii(a[i - 1]) == lowerAscii(b[j - 1]);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (equal ? 0 : 1)});
            const bool swapped = i > 1 && j > 1 && lowerAscii(a[i - 1]) == lowerAscii(b[j - 2]) &&
                                 lowerAscii(a[i - 2]) == lowerAscii(b[j - 1]);
            if (swapped) row[j] = std::min(row[j], before[j - 2] + 1);
        }
        before.swap(last);
        last.swap(row);
    }
    return std::min(last[b.size()], limit + 1);
}

}  // namespace cli::explain
