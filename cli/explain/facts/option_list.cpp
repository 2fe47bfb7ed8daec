#include "cli/explain/facts/option_list.h"

#include <charconv>

#include "host/sources/options.h"
#include "host/text/text_compare.h"

namespace cli::explain {
namespace {

using quillet::CsvOptions;
using quillet::SpecialValues;

struct FlagName {
    std::uint32_t flag;
    const char* name;
};

constexpr FlagName flagNames[] = {
    {quillet::optPartIndex, "partndx"},
    {quillet::optDataFrame, "dataframe"},
    {quillet::optAutoIndex, "autondx"},
    {quillet::optNoIndex, "noindex"},
    {quillet::optSkipHeader, "skiph"},
    {quillet::optWriteHeader, "skiph+"},
    {quillet::optGrow, "grow"},
    {quillet::optEmptyIndex, "emptyndx"},
    {quillet::optSkipErrorCells, "skiperrcell"},
    {quillet::optAllText, "alltxt"},
    {quillet::optRangeSize, "rangesize"},
};

std::string digitsOf(double value) {
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof digits, value).ptr};
}

/// Whether a flag is told: a data frame is `noindex` and `skiph+` is `skiph` as well.
bool isTold(std::uint32_t flag, std::uint32_t flags) {
    if (flag == quillet::optNoIndex) return (flags & quillet::optDataFrame) == 0;
    if (flag == quillet::optSkipHeader) return (flags & quillet::optWriteHeader) == 0;
    return true;
}

void addSpecial(std::vector<OptionRecord>& out, std::uint32_t flags, const SpecialValues& special, const char* from) {
    const struct {
        const char* name;
        std::uint32_t text, number;
        const char* textValue;
        double numberValue;
    } forms[] = {
        {"nan", quillet::optNanText, quillet::optNanNumber, special.nanText, special.nanNumber},
        {"inf", quillet::optInfText, quillet::optInfNumber, special.infText, special.infNumber},
        {"minf", quillet::optMinfText, quillet::optMinfNumber, special.minfText, special.minfNumber},
    };
    for (const auto& form : forms) {
        if ((flags & form.text) != 0) out.push_back({form.name, form.textValue, from});
        if ((flags & form.number) != 0) out.push_back({form.name, digitsOf(form.numberValue), from});
    }
}

std::string character(std::int32_t given, char standard) {
    return std::string(1, given != 0 ? static_cast<char>(given) : standard);
}

void addCsv(std::vector<OptionRecord>& out, const CsvOptions& csv) {
    const auto from = [](bool given) { return given ? "file name" : "default"; };
    out.push_back({"fsep", character(csv.fieldSep, ','), from(csv.fieldSep != 0)});
    out.push_back({"dsep", character(csv.decimalSep, '.'), from(csv.decimalSep != 0)});
    out.push_back({"true", csv.trueText[0] != '\0' ? csv.trueText : "TRUE", from(csv.trueText[0] != '\0')});
    out.push_back({"false", csv.falseText[0] != '\0' ? csv.falseText : "FALSE", from(csv.falseText[0] != '\0')});
}

const char* whence(std::uint32_t flag, std::uint32_t own, std::uint32_t source) {
    if ((own & flag) != 0) return "label";
    return (source & flag) != 0 ? "file name" : "range";
}

constexpr std::string_view rangeSize = "rangesize;";

bool beginsWithRangeSize(std::string_view label) {
    return label.size() >= rangeSize.size() && quillet::equalIgnoringCase(label.substr(0, rangeSize.size()), rangeSize);
}

}  // namespace

ParsedOptions parseFileName(const std::string& text, bool csv) {
    SpecialValues special;
    CsvOptions csvOptions;
    std::int32_t buffer = quillet::defaultBufferSize, autoBase = 0;
    const char* rest = text.c_str();
    void* const block = csv ? static_cast<void*>(&csvOptions) : &special;
    const std::uint32_t flags = quillet::parseOptions(0, &rest, &buffer, &autoBase, block);
    ParsedOptions out;
    out.rest = rest;
    for (const FlagName& flag : flagNames) {
        if ((flags & flag.flag) == 0 || !isTold(flag.flag, flags)) continue;
        const std::string value = flag.flag == quillet::optAutoIndex ? std::to_string(autoBase + 1LL) : "";
        out.options.push_back({flag.name, value, "file name"});
    }
    addSpecial(out.options, flags, special, "file name");
    out.options.push_back(
        {"bufsize", std::to_string(buffer / 1024), buffer == quillet::defaultBufferSize ? "default" : "file name"});
    if (csv) addCsv(out.options, csvOptions);
    return out;
}

std::string restOfLabel(const char* label, bool write) {
    if (label == nullptr) return {};
    if (!write && beginsWithRangeSize(label)) return label + rangeSize.size();
    std::int32_t autoBase = 0;
    SpecialValues special;
    quillet::parseOptions(0, &label, nullptr, &autoBase, &special);
    return label;
}

std::vector<OptionRecord> optionsOf(const quillet::Item& item, const quillet::DriverContext& source, const char* label,
                                    std::string* rest) {
    const std::uint32_t flags = item.range.flags;
    std::uint32_t own = 0;
    SpecialValues special;
    std::int32_t autoBase = 0;
    const char* at = label != nullptr ? label : "";
    if ((flags & quillet::optRangeSize) != 0) {
        own = quillet::optRangeSize;
        at += rangeSize.size();
    } else {
        own = quillet::parseOptions(0, &at, nullptr, &autoBase, source.specialValues != nullptr ? &special : nullptr);
    }
    *rest = at;
    std::vector<OptionRecord> out;
    for (const FlagName& flag : flagNames) {
        if ((flags & flag.flag) == 0 || !isTold(flag.flag, flags)) continue;
        const std::string value =
            flag.flag == quillet::optAutoIndex ? std::to_string(item.range.autoIndexStart + 1LL) : "";
        out.push_back({flag.name, value, whence(flag.flag, own, source.optionFlags)});
    }
    const std::uint32_t specials = quillet::optSpecialTexts | quillet::optSpecialNumbers;
    if (source.specialValues != nullptr) {
        addSpecial(out, flags & own & specials, item.specialValues, "label");
        addSpecial(out, flags & ~own & source.optionFlags & specials, item.specialValues, "file name");
        addSpecial(out, flags & ~own & ~source.optionFlags & specials, item.specialValues, "default");
    }
    return out;
}

}  // namespace cli::explain
