#include <string>

#include "cli/explain/facts/texts.h"
#include "cli/explain/rules/rules.h"
#include "host/sources/options.h"

namespace cli::explain {
namespace {

/// The word of a keyword, or of a text that begins as an option does: up to its '=' or ';'. Empty for other texts.
std::string_view wordOf(std::string_view text) {
    const std::size_t end = text.find_first_of("=;");
    if (end == text.npos || text.find(';', end) == text.npos) return {};
    return text.substr(0, end);
}

constexpr std::size_t shortWord = 4;  // of so many letters or fewer only one may be wrong

void look(const OptionText& text, Finding& finding) {
    const std::string_view word = wordOf(text.rest);
    if (word.empty()) return;
    const std::size_t limit = word.size() <= shortWord ? 1 : 2;
    for (std::size_t i = 0;; ++i) {
        const std::string_view keyword = quillet::optionKeyword(i);
        if (keyword.empty()) return;
        const std::string_view known = keyword.substr(0, keyword.size() - 1);
        if (distance(word, known, limit) > limit) continue;
        finding.note(inQuotes(word).append(" is near to ").append(inQuotes(keyword)));
        return;
    }
}

}  // namespace

const Rule leftoverOption = {
    .name = "leftover-option",
    .text = "what is nearly an option was taken for part of the name",
    .advice = "Correct the option's word or value, and see that this driver has it and that it ends in ';'.",
    .onOptions = look,
};

}  // namespace cli::explain
