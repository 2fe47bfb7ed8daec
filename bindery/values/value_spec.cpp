// Tests of texts against simple types.

#include "bindery/values/value_spec.h"

#include <algorithm>
#include <cctype>

#include "bindery/values/binary.h"
#include "bindery/values/chars.h"
#include "bindery/values/error.h"
#include "bindery/values/regex.h"
#include "bindery/values/value_text.h"

namespace bindery {

namespace {

bool isNumber(Atomic atomic) {
    return atomic >= Atomic::int8 && atomic <= Atomic::decimal;
}

std::size_t lengthOf(const ValueSpec& spec, std::string_view text) {
    if (spec.atomic == Atomic::hex) return (text.size() + 1) / 2;
    if (spec.atomic == Atomic::base64) {
        c_binary value;
        return value.fromBase64(text) ? value.bytes.size() : 0;
    }
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

int testDigits(const Facets& facets, std::string_view text) {
    if (text.starts_with('+') || text.starts_with('-')) text.remove_prefix(1);
    const std::size_t point = text.find('.');
    std::string_view whole = text.substr(0, point);
    std::string_view fraction = point == std::string_view::npos ? std::string_view() : text.substr(point + 1);
    while (whole.starts_with('0')) whole.remove_prefix(1);
    while (fraction.ends_with('0')) fraction.remove_suffix(1);
    if (facets.totalDigits != anyDigits && whole.size() + fraction.size() > facets.totalDigits) return too_many_digits;
    if (facets.fractionDigits != anyDigits && fraction.size() > facets.fractionDigits) return too_many_fraction_digits;
    return 0;
}

int testBounds(const Facets& facets, std::string_view text) {
    double value = 0;
    if (!parseReal(text, value)) return 0;
    if (value > facets.maximum || (facets.maximumExcluded && value == facets.maximum)) return above_maximum;
    if (value < facets.minimum || (facets.minimumExcluded && value == facets.minimum)) return below_minimum;
    return 0;
}

}  // namespace

std::string_view applyWhitespace(Whitespace rule, std::string_view text, std::string& scratch) {
    if (rule == Whitespace::preserve) return text;
    if (rule == Whitespace::replace) {
        if (text.find_first_of("\t\n\r") == std::string_view::npos) return text;
        scratch.assign(text);
        for (char& c : scratch)
            if (is(c, char_space)) c = ' ';
        return scratch;
    }
    while (!text.empty() && is(text.front(), char_space)) text.remove_prefix(1);
    while (!text.empty() && is(text.back(), char_space)) text.remove_suffix(1);
    bool folded = true;
    for (std::size_t i = 0; i < text.size() && folded; ++i)
        if (is(text[i], char_space)) folded = text[i] == ' ' && text[i + 1] != ' ';
    if (folded) return text;
    scratch.clear();
    for (const char c : text) {
        if (!is(c, char_space))
            scratch += c;
        else if (scratch.back() != ' ')
            scratch += ' ';
    }
    return scratch;
}

int testValue(const ValueSpec& spec, std::string_view text) {
    if (!spec.members.empty()) {
        for (const ValueSpec* member : spec.members)
            if (member->valueTest(*member, text) == 0) return 0;
        return bad_value;
    }
    if (!spec.enumeration.empty() &&
        std::find(spec.enumeration.begin(), spec.enumeration.end(), text) == spec.enumeration.end())
        return not_enumerated;
    return parses(spec, text) ? 0 : bad_value;
}

int testFacets(const ValueSpec& spec, std::string_view text) {
    if (!spec.members.empty()) {
        int code = 0;
        for (const ValueSpec* member : spec.members) {
            if (member->valueTest(*member, text) != 0) continue;
            code = member->facetTest(*member, text);
            if (code == 0) return 0;
        }
        return code;
    }
    if (spec.fixed[0] != '\0' && text != spec.fixed) return not_the_fixed_value;
    if (spec.facets == nullptr) return 0;
    const Facets& facets = *spec.facets;
    if (facets.maxLength != noLimit && lengthOf(spec, text) > facets.maxLength) return too_long;
    if (facets.minLength != 0 && lengthOf(spec, text) < facets.minLength) return too_short;
    if (isNumber(spec.atomic)) {
        if (const int code = testDigits(facets, text)) return code;
        if (const int code = testBounds(facets, text)) return code;
    }
    for (const c_regex* pattern : facets.patterns)
        if (!pattern->isMatch(text)) return no_pattern_matched;
    return 0;
}

int readValue(const ValueSpec& spec, std::string_view text, void* value, int& facetCode) {
    std::string scratch;
    text = applyWhitespace(spec.whitespace, text, scratch);
    facetCode = 0;
    // The conversion of other types is a test of its own.
    const bool isText = spec.storage == Storage::string || spec.storage == Storage::wstring;
    if (!spec.enumeration.empty() || (isText && !spec.members.empty()))
        if (const int code = spec.valueTest(spec, text)) return code;
    if (const int code = spec.fromText(spec, text, value)) return code;
    facetCode = spec.facetTest(spec, text);
    return 0;
}

}  // namespace bindery
