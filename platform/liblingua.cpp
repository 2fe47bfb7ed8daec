#include "platform/liblingua.h"

#include <fstream>
#include <map>
#include <optional>
#include <string>
#include <string_view>

struct LingDomain {
    std::string name;
};

namespace {

using Catalogue = std::map<std::string, std::string, std::less<>>;

Catalogue& catalogue() {
    static Catalogue texts;
    return texts;
}

void skipBlanks(std::string_view& rest) {
    while (!rest.empty() && (rest[0] == ' ' || rest[0] == '\t' || rest[0] == '\r')) rest.remove_prefix(1);
}

/// Takes one quoted text with its escapes off `rest`.
std::optional<std::string> takeQuoted(std::string_view& rest) {
    skipBlanks(rest);
    if (rest.empty() || rest[0] != '"') return std::nullopt;
    std::string text;
    for (std::size_t i = 1; i < rest.size(); ++i) {
        if (rest[i] == '"') {
            rest.remove_prefix(i + 1);
            return text;
        }
        if (rest[i] == '\\' && i + 1 < rest.size()) {
            ++i;
            text += rest[i] == 'n' ? '\n' : rest[i] == 't' ? '\t' : rest[i];
        } else {
            text += rest[i];
        }
    }
    return std::nullopt;
}

/// The printf conversions of a text, in their order.
std::string conversionsIn(std::string_view text) {
    std::string found;
    for (std::size_t i = 0; (i = text.find('%', i)) != text.npos; ++i) {
        const std::size_t last = text.find_first_of("diouxXeEfFgGaAcspn%", i + 1);
        if (last == text.npos) return found.append("%?");
        if (text[last] != '%') found.append(text.substr(i, last + 1 - i));
        i = last;
    }
    return found;
}

bool addLine(std::string_view line, Catalogue& texts) {
    skipBlanks(line);
    if (line.empty() || line[0] == '#') return true;
    const auto id = takeQuoted(line);
    if (!id) return false;
    skipBlanks(line);
    if (line.empty() || line[0] != '=') return false;
    line.remove_prefix(1);
    const auto translation = takeQuoted(line);
    if (!translation) return false;
    skipBlanks(line);
    if (!line.empty() || !conversionsIn(*id).starts_with(conversionsIn(*translation))) return false;
    texts[*id] = *translation;
    return true;
}

}  // namespace

#define LING_EXPORT extern "C" __attribute__((visibility("default")))

LING_EXPORT LingDomain* LINGopenmsgdom(const char* domain, const char*) {
    return new LingDomain{domain};
}

LING_EXPORT const char* LINGgettext(LingDomain*, const char* messageId) {
    const auto found = catalogue().find(std::string_view(messageId));
    return found == catalogue().end() ? messageId : found->second.c_str();
}

LING_EXPORT int LINGclosemsgdom(LingDomain* domain) {
    delete domain;
    return 0;
}

LING_EXPORT const char* LINGconvstrto(int, const char* text, int length, int) {
    if (length < 0) return text;
    thread_local std::string converted;
    converted.assign(text, static_cast<std::size_t>(length));
    return converted.c_str();
}

LING_EXPORT int LINGloadcatalogue(const char* path) {
    catalogue().clear();
    if (!path) return 0;
    std::ifstream in(path);
    if (!in) return -1;
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        if (!addLine(line, catalogue())) return number;
    }
    return 0;
}
