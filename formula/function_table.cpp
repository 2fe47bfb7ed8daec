#include "formula/function_table.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <span>

#include "formula/function_word.h"

namespace vellum::formula {
namespace {

// Name, id, fixed count, mask of arguments that take a reference; in the order of names as wide strings.
// clang-format off
constexpr Function functions[] = {
    {L"ABS", 24, 1, 0}, {L"ABSREF", 79, 2, 0x2}, {L"ACOS", 99, 1, 0}, {L"ACOSH", 233, 1, 0},
    {L"ACTIVE.CELL", 94, 0, 0}, {L"ADD.BAR", 151, 0, 0}, {L"ADD.COMMAND", 153, 0, 0xE}, {L"ADD.MENU", 152, 0, 0x6},
    {L"ADD.TOOLBAR", 253, 0, 0}, {L"ADDRESS", 219, 0, 0}, {L"AND", 36, 0, 0}, {L"APP.TITLE", 262, 0, 0},
    {L"AREAS", 75, 1, 0x1}, {L"ARGUMENT", 81, 0, 0x7}, {L"ASC", 214, 1, 0}, {L"ASIN", 98, 1, 0},
    {L"ASINH", 232, 1, 0}, {L"ATAN", 18, 1, 0}, {L"ATAN2", 97, 2, 0}, {L"ATANH", 234, 1, 0},
    {L"AVEDEV", 269, 0, 0x3FFFFFFF}, {L"AVERAGE", 5, 0, 0}, {L"AVERAGEA", 361, 0, 0}, {L"BAHTTEXT", 368, 1, 0},
    {L"BETADIST", 270, 0, 0}, {L"BETAINV", 272, 0, 0}, {L"BINOMDIST", 273, 4, 0}, {L"BREAK", 173, 0, 0},
    {L"CALL", 150, 0, 0x3FFFFFFE}, {L"CALLER", 89, 0, 0}, {L"CANCEL.KEY", 170, 0, 0x2}, {L"CEILING", 288, 2, 0},
    {L"CELL", 125, 0, 0x2}, {L"CHAR", 111, 1, 0}, {L"CHECK.COMMAND", 155, 0, 0}, {L"CHIDIST", 274, 2, 0},
    {L"CHIINV", 275, 2, 0}, {L"CHITEST", 306, 2, 0}, {L"CHOOSE", 100, 0, 0x3FFFFFFE}, {L"CLEAN", 162, 1, 0},
    {L"CODE", 121, 1, 0}, {L"COLUMN", 9, 0, 0x1}, {L"COLUMNS", 77, 1, 0x1}, {L"COMBIN", 276, 2, 0},
    {L"CONCATENATE", 336, 0, 0}, {L"CONFIDENCE", 277, 3, 0}, {L"CORREL", 307, 2, 0}, {L"COS", 16, 1, 0},
    {L"COSH", 230, 1, 0}, {L"COUNT", 0, 0, 0x3FFFFFFF}, {L"COUNTA", 169, 0, 0x3FFFFFFF}, {L"COUNTBLANK", 347, 1, 0x1},
    {L"COUNTIF", 346, 2, 0x1}, {L"COVAR", 308, 2, 0}, {L"CREATE.OBJECT", 236, 0, 0x7FE}, {L"CRITBINOM", 278, 3, 0},
    {L"CUSTOM.REPEAT", 240, 0, 0}, {L"CUSTOM.UNDO", 239, 0, 0}, {L"DATE", 65, 3, 0}, {L"DATEDIF", 351, 3, 0},
    {L"DATESTRING", 352, 1, 0}, {L"DATEVALUE", 140, 1, 0}, {L"DAVERAGE", 42, 0, 0x7}, {L"DAY", 67, 1, 0},
    {L"DAYS360", 220, 0, 0}, {L"DB", 247, 0, 0}, {L"DBCS", 215, 1, 0}, {L"DCOUNT", 40, 0, 0x7},
    {L"DCOUNTA", 199, 3, 0x7}, {L"DDB", 144, 0, 0}, {L"DEGREES", 343, 1, 0}, {L"DELETE.BAR", 200, 1, 0},
    {L"DELETE.COMMAND", 159, 0, 0}, {L"DELETE.MENU", 158, 0, 0}, {L"DELETE.TOOLBAR", 254, 1, 0},
    {L"DEREF", 90, 1, 0x1}, {L"DEVSQ", 318, 0, 0x3FFFFFFF}, {L"DGET", 235, 3, 0x7}, {L"DIALOG.BOX", 161, 1, 0x1},
    {L"DIRECTORY", 123, 0, 0}, {L"DMAX", 44, 0, 0x7}, {L"DMIN", 43, 0, 0x7}, {L"DOCUMENTS", 93, 0, 0},
    {L"DOLLAR", 13, 0, 0}, {L"DPRODUCT", 189, 3, 0x7}, {L"DSTDEV", 45, 0, 0x7}, {L"DSTDEVP", 195, 3, 0x7},
    {L"DSUM", 41, 0, 0x7}, {L"DVAR", 47, 0, 0x7}, {L"DVARP", 196, 3, 0x7}, {L"ECHO", 87, 0, 0}, {L"ELSE", 223, 0, 0},
    {L"ELSE.IF", 224, 1, 0}, {L"ENABLE.COMMAND", 154, 0, 0}, {L"ENABLE.TOOL", 265, 3, 0}, {L"END.IF", 225, 0, 0},
    {L"ERROR", 84, 0, 0}, {L"ERROR.TYPE", 261, 1, 0}, {L"EVALUATE", 257, 1, 0}, {L"EVEN", 279, 1, 0},
    {L"EXACT", 117, 2, 0}, {L"EXEC", 110, 0, 0}, {L"EXECUTE", 178, 2, 0}, {L"EXP", 21, 1, 0},
    {L"EXPONDIST", 280, 3, 0}, {L"FACT", 184, 1, 0}, {L"FALSE", 35, 0, 0}, {L"FCLOSE", 133, 1, 0},
    {L"FDIST", 281, 3, 0}, {L"FILES", 166, 0, 0}, {L"FIND", 124, 0, 0}, {L"FINDB", 205, 0, 0}, {L"FINV", 282, 3, 0},
    {L"FISHER", 283, 1, 0}, {L"FISHERINV", 284, 1, 0}, {L"FIXED", 14, 0, 0}, {L"FLOOR", 285, 2, 0},
    {L"FOPEN", 132, 0, 0}, {L"FOR", 171, 0, 0}, {L"FOR.CELL", 226, 0, 0x6}, {L"FORECAST", 309, 3, 0},
    {L"FORMULA.CONVERT", 241, 0, 0x1E}, {L"FPOS", 139, 0, 0}, {L"FREAD", 136, 2, 0}, {L"FREADLN", 135, 1, 0},
    {L"FREQUENCY", 252, 2, 0x3}, {L"FSIZE", 134, 1, 0}, {L"FTEST", 310, 2, 0}, {L"FV", 57, 0, 0},
    {L"FWRITE", 138, 2, 0}, {L"FWRITELN", 137, 2, 0}, {L"GAMMADIST", 286, 4, 0}, {L"GAMMAINV", 287, 3, 0},
    {L"GAMMALN", 271, 1, 0}, {L"GEOMEAN", 319, 0, 0x3FFFFFFF}, {L"GET.BAR", 182, 0, 0}, {L"GET.CELL", 185, 0, 0x2},
    {L"GET.CHART.ITEM", 160, 0, 0}, {L"GET.DEF", 145, 0, 0}, {L"GET.DOCUMENT", 188, 0, 0},
    {L"GET.FORMULA", 106, 1, 0x1}, {L"GET.LINK.INFO", 242, 0, 0}, {L"GET.MOVIE", 335, 0, 0}, {L"GET.NAME", 107, 0, 0},
    {L"GET.NOTE", 191, 0, 0x1}, {L"GET.OBJECT", 246, 0, 0}, {L"GET.PIVOT.FIELD", 340, 0, 0},
    {L"GET.PIVOT.ITEM", 341, 0, 0}, {L"GET.PIVOT.TABLE", 339, 0, 0}, {L"GET.TOOL", 259, 0, 0},
    {L"GET.TOOLBAR", 258, 0, 0}, {L"GET.WINDOW", 187, 0, 0}, {L"GET.WORKBOOK", 268, 0, 0},
    {L"GET.WORKSPACE", 186, 1, 0}, {L"GETPIVOTDATA", 358, 0, 0x3}, {L"GOTO", 53, 1, 0x1}, {L"GROUP", 245, 0, 0},
    {L"GROWTH", 52, 0, 0xF}, {L"HALT", 54, 0, 0}, {L"HARMEAN", 320, 0, 0x3FFFFFFF}, {L"HELP", 181, 0, 0},
    {L"HLOOKUP", 101, 0, 0x6}, {L"HOUR", 71, 1, 0}, {L"HYPERLINK", 359, 0, 0}, {L"HYPGEOMDIST", 289, 4, 0},
    {L"IF", 1, 0, 0}, {L"INDEX", 29, 0, 0x1}, {L"INDIRECT", 148, 0, 0}, {L"INFO", 244, 1, 0},
    {L"INITIATE", 175, 2, 0}, {L"INPUT", 104, 0, 0}, {L"INT", 25, 1, 0}, {L"INTERCEPT", 311, 2, 0},
    {L"IPMT", 167, 0, 0}, {L"IRR", 62, 0, 0x1}, {L"ISBLANK", 129, 1, 0}, {L"ISERR", 126, 1, 0}, {L"ISERROR", 3, 1, 0},
    {L"ISLOGICAL", 198, 1, 0}, {L"ISNA", 2, 1, 0}, {L"ISNONTEXT", 190, 1, 0}, {L"ISNUMBER", 128, 1, 0},
    {L"ISPMT", 350, 4, 0}, {L"ISREF", 105, 1, 0x1}, {L"ISTEXT", 127, 1, 0}, {L"ISTHAIDIGIT", 375, 1, 0},
    {L"KURT", 322, 0, 0x3FFFFFFF}, {L"LARGE", 325, 2, 0x1}, {L"LAST.ERROR", 238, 0, 0}, {L"LEFT", 115, 0, 0},
    {L"LEFTB", 208, 0, 0}, {L"LEN", 32, 1, 0}, {L"LENB", 211, 1, 0}, {L"LINEST", 49, 0, 0xF}, {L"LINKS", 103, 0, 0},
    {L"LN", 22, 1, 0}, {L"LOG", 109, 0, 0}, {L"LOG10", 23, 1, 0}, {L"LOGEST", 51, 0, 0xF}, {L"LOGINV", 291, 3, 0},
    {L"LOGNORMDIST", 290, 3, 0}, {L"LOOKUP", 28, 0, 0x6}, {L"LOWER", 112, 1, 0}, {L"MATCH", 64, 0, 0x6},
    {L"MAX", 7, 0, 0}, {L"MAXA", 362, 0, 0}, {L"MDETERM", 163, 1, 0}, {L"MEDIAN", 227, 0, 0x3FFFFFFF},
    {L"MID", 31, 3, 0}, {L"MIDB", 210, 3, 0}, {L"MIN", 6, 0, 0}, {L"MINA", 363, 0, 0}, {L"MINUTE", 72, 1, 0},
    {L"MINVERSE", 164, 1, 0}, {L"MIRR", 61, 3, 0x1}, {L"MMULT", 165, 1, 0}, {L"MOD", 39, 2, 0}, {L"MODE", 330, 0, 0},
    {L"MONTH", 68, 1, 0}, {L"MOVIE.COMMAND", 334, 0, 0}, {L"N", 131, 1, 0x1}, {L"NA", 10, 0, 0},
    {L"NAMES", 122, 0, 0}, {L"NEGBINOMDIST", 292, 3, 0}, {L"NEXT", 174, 0, 0}, {L"NORMDIST", 293, 4, 0},
    {L"NORMINV", 295, 3, 0}, {L"NORMSDIST", 294, 1, 0}, {L"NORMSINV", 296, 1, 0}, {L"NOT", 38, 1, 0},
    {L"NOTE", 192, 0, 0xE}, {L"NOW", 74, 0, 0}, {L"NPER", 58, 0, 0}, {L"NPV", 11, 0, 0x3FFFFFFE},
    {L"NUMBERSTRING", 353, 2, 0}, {L"ODD", 298, 1, 0}, {L"OFFSET", 78, 0, 0x1}, {L"OPEN.DIALOG", 355, 0, 0},
    {L"OPTIONS.LISTS.GET", 349, 1, 0}, {L"OR", 37, 0, 0}, {L"PAUSE", 248, 0, 0}, {L"PEARSON", 312, 2, 0},
    {L"PERCENTILE", 328, 2, 0x1}, {L"PERCENTRANK", 329, 0, 0x1}, {L"PERMUT", 299, 2, 0}, {L"PHONETIC", 360, 1, 0x1},
    {L"PI", 19, 0, 0}, {L"PIVOT.ADD.DATA", 338, 0, 0}, {L"PMT", 59, 0, 0}, {L"POISSON", 300, 3, 0},
    {L"POKE", 177, 3, 0x6}, {L"POWER", 337, 2, 0}, {L"PPMT", 168, 0, 0}, {L"PRESS.TOOL", 266, 3, 0},
    {L"PROB", 317, 0, 0}, {L"PRODUCT", 183, 0, 0x3FFFFFFF}, {L"PROPER", 114, 1, 0}, {L"PV", 56, 0, 0},
    {L"QUARTILE", 327, 2, 0x1}, {L"RADIANS", 342, 1, 0}, {L"RAND", 63, 0, 0}, {L"RANK", 216, 0, 0x2},
    {L"RATE", 60, 0, 0}, {L"REFTEXT", 146, 0, 0x1}, {L"REGISTER", 149, 0, 0}, {L"REGISTER.ID", 267, 0, 0},
    {L"RELREF", 80, 2, 0x3}, {L"RENAME.COMMAND", 156, 0, 0}, {L"REPLACE", 119, 4, 0}, {L"REPLACEB", 207, 4, 0},
    {L"REPT", 30, 2, 0}, {L"REQUEST", 176, 2, 0}, {L"RESET.TOOLBAR", 256, 1, 0}, {L"RESTART", 180, 0, 0},
    {L"RESULT", 96, 0, 0}, {L"RESUME", 251, 0, 0}, {L"RETURN", 55, 0, 0x1}, {L"RIGHT", 116, 0, 0},
    {L"RIGHTB", 209, 0, 0}, {L"ROMAN", 354, 0, 0}, {L"ROUND", 27, 2, 0}, {L"ROUNDBAHTDOWN", 376, 1, 0},
    {L"ROUNDBAHTUP", 377, 1, 0}, {L"ROUNDDOWN", 213, 2, 0}, {L"ROUNDUP", 212, 2, 0}, {L"ROW", 8, 0, 0x1},
    {L"ROWS", 76, 1, 0x1}, {L"RSQ", 313, 2, 0}, {L"RTD", 379, 0, 0}, {L"SAVE.DIALOG", 356, 0, 0},
    {L"SAVE.TOOLBAR", 264, 0, 0}, {L"SCENARIO.GET", 348, 0, 0}, {L"SEARCH", 82, 0, 0}, {L"SEARCHB", 206, 0, 0},
    {L"SECOND", 73, 1, 0}, {L"SELECTION", 95, 0, 0}, {L"SERIES", 92, 0, 0x17}, {L"SET.NAME", 88, 0, 0},
    {L"SET.VALUE", 108, 2, 0x1}, {L"SHOW.BAR", 157, 0, 0}, {L"SIGN", 26, 1, 0}, {L"SIN", 15, 1, 0},
    {L"SINH", 229, 1, 0}, {L"SKEW", 323, 0, 0x3FFFFFFF}, {L"SLN", 142, 3, 0}, {L"SLOPE", 315, 2, 0},
    {L"SMALL", 326, 2, 0x1}, {L"SPELLING.CHECK", 260, 0, 0}, {L"SQRT", 20, 1, 0}, {L"STANDARDIZE", 297, 3, 0},
    {L"STDEV", 12, 0, 0x3FFFFFFF}, {L"STDEVA", 366, 0, 0x3FFFFFFF}, {L"STDEVP", 193, 0, 0x3FFFFFFF},
    {L"STDEVPA", 364, 0, 0x3FFFFFFF}, {L"STEP", 85, 0, 0}, {L"STEYX", 314, 2, 0}, {L"SUBSTITUTE", 120, 0, 0},
    {L"SUBTOTAL", 344, 0, 0x3FFFFFFE}, {L"SUM", 4, 0, 0}, {L"SUMIF", 345, 0, 0x5}, {L"SUMPRODUCT", 228, 0, 0},
    {L"SUMSQ", 321, 0, 0x3FFFFFFF}, {L"SUMX2MY2", 304, 2, 0}, {L"SUMX2PY2", 305, 2, 0}, {L"SUMXMY2", 303, 2, 0},
    {L"SYD", 143, 4, 0}, {L"T", 130, 1, 0x1}, {L"TAN", 17, 1, 0}, {L"TANH", 231, 1, 0}, {L"TDIST", 301, 3, 0},
    {L"TERMINATE", 179, 1, 0}, {L"TEXT", 48, 2, 0}, {L"TEXT.BOX", 243, 0, 0}, {L"TEXTREF", 147, 0, 0},
    {L"THAIDAYOFWEEK", 369, 1, 0}, {L"THAIDIGIT", 370, 1, 0}, {L"THAIMONTHOFYEAR", 371, 1, 0},
    {L"THAINUMSOUND", 372, 1, 0}, {L"THAINUMSTRING", 373, 1, 0}, {L"THAISTRINGLENGTH", 374, 1, 0},
    {L"THAIYEAR", 378, 1, 0}, {L"TIME", 66, 3, 0}, {L"TIMEVALUE", 141, 1, 0}, {L"TINV", 332, 2, 0},
    {L"TODAY", 221, 0, 0}, {L"TRANSPOSE", 83, 1, 0}, {L"TREND", 50, 0, 0xF}, {L"TRIM", 118, 1, 0},
    {L"TRIMMEAN", 331, 2, 0x1}, {L"TRUE", 34, 0, 0}, {L"TRUNC", 197, 0, 0}, {L"TTEST", 316, 4, 0},
    {L"TYPE", 86, 1, 0}, {L"UNREGISTER", 201, 1, 0}, {L"UPPER", 113, 1, 0}, {L"USDOLLAR", 204, 0, 0},
    {L"USERDEFINED", 255, 0, 0}, {L"VALUE", 33, 1, 0}, {L"VAR", 46, 0, 0x3FFFFFFF}, {L"VARA", 367, 0, 0x3FFFFFFF},
    {L"VARP", 194, 0, 0x3FFFFFFF}, {L"VARPA", 365, 0, 0x3FFFFFFF}, {L"VDB", 222, 0, 0}, {L"VIEW.GET", 357, 0, 0},
    {L"VLOOKUP", 102, 0, 0x6}, {L"VOLATILE", 237, 0, 0}, {L"WEEKDAY", 70, 0, 0}, {L"WEIBULL", 302, 4, 0},
    {L"WHILE", 172, 1, 0}, {L"WINDOW.TITLE", 263, 0, 0}, {L"WINDOWS", 91, 0, 0}, {L"YEAR", 69, 1, 0},
    {L"ZTEST", 324, 0, 0x1},
};
// clang-format on

constexpr std::size_t idLimit = 380;
constexpr std::uint16_t noFunction = 0xFFFF;

/// Place in the table by id. Fails to compile when an id stands twice.
constexpr std::array<std::uint16_t, idLimit> placeOfId = [] {
    std::array<std::uint16_t, idLimit> places{};
    places.fill(noFunction);
    for (std::size_t i = 0; i < std::size(functions); ++i) {
        if (places[functions[i].id] != noFunction) throw "an id stands twice";
        places[functions[i].id] = static_cast<std::uint16_t>(i);
    }
    return places;
}();

static_assert(std::size(functions) == 373);
static_assert(std::ranges::adjacent_find(functions, std::ranges::greater_equal{}, &Function::name) ==
              std::end(functions));
static_assert(std::ranges::count(placeOfId, noFunction) == 7);
static_assert(placeOfId[202] == noFunction && placeOfId[203] == noFunction && placeOfId[217] == noFunction &&
              placeOfId[218] == noFunction && placeOfId[249] == noFunction && placeOfId[250] == noFunction &&
              placeOfId[333] == noFunction);
static_assert(functions[placeOfId[0]].name == L"COUNT" && functions[placeOfId[379]].name == L"RTD");
static_assert(functions[placeOfId[userDefinedId]].name == userDefinedName);

}  // namespace

namespace {

/// First function of each initial letter; that of the letter behind Z is the end.
constexpr std::array<std::uint16_t, 27> firstOfLetter = [] {
    std::array<std::uint16_t, 27> first{};
    for (std::size_t letter = 0; letter < first.size(); ++letter) {
        const auto c = static_cast<wchar_t>(L'A' + letter);
        while (first[letter] < std::size(functions) && functions[first[letter]].name[0] < c) ++first[letter];
    }
    return first;
}();

}  // namespace

// Asked for every word of every text, most of which are cells.
const Function* functionByName(std::wstring_view name) {
    if (name.empty() || name[0] < L'A' || name[0] > L'Z') return nullptr;
    const auto letter = static_cast<std::size_t>(name[0] - L'A');
    const auto same =
        std::span(functions).subspan(firstOfLetter[letter], firstOfLetter[letter + 1] - firstOfLetter[letter]);
    const auto found = std::ranges::lower_bound(
        same, name, [](std::wstring_view a, std::wstring_view b) { return std::ranges::lexicographical_compare(a, b); },
        &Function::name);
    return found != same.end() && found->name == name ? &*found : nullptr;
}

const Function* functionById(std::uint16_t id) {
    return id >= idLimit || placeOfId[id] == noFunction ? nullptr : &functions[placeOfId[id]];
}

std::uint16_t functionIdByName(std::wstring_view name) {
    const Function* const function = functionByName(name);
    return function == nullptr ? userDefinedId : function->id;
}

std::wstring_view functionNameById(std::uint16_t id, std::uint8_t& count) {
    const Function* const function = functionById(id);
    count = function == nullptr ? std::uint8_t{0} : function->count;
    return function == nullptr ? L"?" : function->name;
}

bool isFunctionName(std::wstring_view word, std::uint32_t& mask) {
    mask = 0;
    const Function* function = functionByName(word);
    if (function == nullptr && word.size() >= 3 && word.back() == L'F' && isDigit(word[word.size() - 2])) {
        function = functionByName(word.substr(0, functionNameLength(word)));
    }
    if (function == nullptr || function->id == userDefinedId) return false;
    mask = function->mask;
    return true;
}

}  // namespace vellum::formula
