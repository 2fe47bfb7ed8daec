#include "engine/text/locale.h"

#include <clocale>
#include <cstring>
#include <string_view>

#include "engine/failure/messages.h"
#include "engine/failure/vlerror.h"

namespace vellum {

namespace {

struct Country {
    const char* name;
    const char* code;  // as it stands in a POSIX locale name, before the encoding
};

// Countries that write a decimal comma and therefore separate list elements by a semicolon.
constexpr Country semicolonCountries[] = {
    {"Azerbaijan", "_AZ."},  {"Belarus", "_BY."},        {"Bulgaria", "_BG."},   {"Bosnia and Herzegovina", "_BA."},
    {"Spain", "_ES."},       {"Czech Republic", "_CZ."}, {"Denmark", "_DK."},    {"Austria", "_AT."},
    {"Belgium", "_BE."},     {"Germany", "_DE."},        {"Luxembourg", "_LU."}, {"Cyprus", "_CY."},
    {"Greece", "_GR."},      {"Latin America", "_AN."},  {"Estonia", "_EE."},    {"Finland", "_FI."},
    {"Canada", "_CA."},      {"France", "_FR."},         {"Croatia", "_HR."},    {"Hungary", "_HU."},
    {"Indonesia", "_ID."},   {"Iceland", "_IS."},        {"Italy", "_IT."},      {"Georgia", "_GE."},
    {"Kazakhstan", "_KZ."},  {"Kyrgyzstan", "_KG."},     {"Lithuania", "_LT."},  {"Latvia", "_LV."},
    {"Madagascar", "_MG."},  {"Mongolia", "_MN."},       {"Macedonia", "_MK."},  {"Norway", "_NO."},
    {"Netherlands", "_NL."}, {"Afghanistan", "_AW."},    {"Poland", "_PL."},     {"Brazil", "_BR."},
    {"Portugal", "_PT."},    {"Romania", "_RO."},        {"Russia", "_RU."},     {"Ukraine", "_UA."},
    {"Kinyarwanda", "_RW."}, {"Slovakia", "_SK."},       {"Slovenia", "_SI."},   {"Montenegro", "_ME."},
    {"Albania", "_AL."},     {"Serbia", "_RS."},         {"Sweden", "_SE."},     {"Tajikistan", "_TJ."},
    {"Turkey", "_TR."},      {"Senegal", "_SN."},        {"Morocco", "_MA."},    {"South Africa", "_ZA."},
};

struct Utf8Name {
    const char* name;
    char separator;
};
constexpr Utf8Name utf8Names[] = {{"UTF-8", ';'}, {"UTF-8.semicolon", ';'}, {"UTF-8.comma", ','}};

}  // namespace

char listSeparatorOf(const char* localeName) {
    if (localeName == nullptr) return ';';
    for (const Country& country : semicolonCountries) {
        if (std::strstr(localeName, country.name) || std::strstr(localeName, country.code)) return ';';
    }
    return ',';
}

BookLocale::~BookLocale() {
    if (!_savedCtype.empty()) std::setlocale(LC_CTYPE, _savedCtype.c_str());
}

void BookLocale::set(const char* name, bool wideInterface) {
    if (name == nullptr) throw vlerror(msg::localeNull);
    if (!wideInterface) {
        for (const Utf8Name& form : utf8Names) {
            if (std::string_view(form.name) != name) continue;
            _utf8 = true;
            _listSeparator = form.separator;
            return;
        }
    }
    _utf8 = false;
    if (const char* present = std::setlocale(LC_CTYPE, nullptr); present && _savedCtype.empty()) _savedCtype = present;
    const char* const chosen = std::setlocale(LC_CTYPE, name);
    if (chosen == nullptr) throw vlerror(msg::localeUnknown);
    _listSeparator = listSeparatorOf(chosen);
}

}  // namespace vellum
