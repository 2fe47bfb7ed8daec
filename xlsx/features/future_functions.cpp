#include "xlsx/features/future_functions.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cwctype>
#include <optional>

namespace vellum::xlsx {
namespace {

constexpr std::wstring_view names[] = {
    // clang-format off
    L"ACOT(", L"ACOTH(", L"AGGREGATE(", L"ARABIC(", L"BASE(", L"BETA.DIST(", L"BETA.INV(", L"BINOM.DIST(",
    L"BINOM.DIST.RANGE(", L"BINOM.INV(", L"BITAND(", L"BITLSHIFT(", L"BITOR(", L"BITRSHIFT(", L"BITXOR(",
    L"CEILING.MATH(", L"CEILING.PRECISE(", L"CHISQ.DIST(", L"CHISQ.DIST.RT(", L"CHISQ.INV(", L"CHISQ.INV.RT(",
    L"CHISQ.TEST(", L"COMBINA(", L"CONCAT(", L"CONFIDENCE.NORM(", L"CONFIDENCE.T(", L"COT(", L"COTH(",
    L"COVARIANCE.P(", L"COVARIANCE.S(", L"CSC(", L"CSCH(", L"DAYS(", L"DECIMAL(", L"ERF.PRECISE(", L"ERFC.PRECISE(",
    L"EXPON.DIST(", L"F.DIST(", L"F.DIST.RT(", L"F.INV(", L"F.INV.RT(", L"F.TEST(", L"FILTERXML(", L"FLOOR.MATH(",
    L"FLOOR.PRECISE(", L"FORECAST.ETS(", L"FORECAST.ETS.CONFINT(", L"FORECAST.ETS.SEASONALITY(",
    L"FORECAST.ETS.STAT(", L"FORECAST.LINEAR(", L"FORMULATEXT(", L"GAMMA(", L"GAMMA.DIST(", L"GAMMA.INV(",
    L"GAMMALN.PRECISE(", L"GAUSS(", L"HYPGEOM.DIST(", L"IFNA(", L"IFS(", L"IMCOSH(", L"IMCOT(", L"IMCSC(", L"IMCSCH(",
    L"IMSEC(", L"IMSECH(", L"IMSINH(", L"IMTAN(", L"ISFORMULA(", L"ISOWEEKNUM(", L"LOGNORM.DIST(", L"LOGNORM.INV(",
    L"MAXIFS(", L"MINIFS(", L"MODE.MULT(", L"MODE.SNGL(", L"MUNIT(", L"NEGBINOM.DIST(", L"NORM.DIST(", L"NORM.INV(",
    L"NORM.S.DIST(", L"NORM.S.INV(", L"NUMBERVALUE(", L"PDURATION(", L"PERCENTILE.EXC(", L"PERCENTILE.INC(",
    L"PERCENTRANK.EXC(", L"PERCENTRANK.INC(", L"PERMUTATIONA(", L"PHI(", L"POISSON.DIST(", L"QUARTILE.EXC(",
    L"QUARTILE.INC(", L"QUERYSTRING(", L"RANK.AVG(", L"RANK.EQ(", L"RRI(", L"SEC(", L"SECH(", L"SHEET(", L"SHEETS(",
    L"SKEW.P(", L"STDEV.P(", L"STDEV.S(", L"SWITCH(", L"T.DIST(", L"T.DIST.2T(", L"T.DIST.RT(", L"T.INV(",
    L"T.INV.2T(", L"T.TEST(", L"TEXTJOIN(", L"UNICHAR(", L"UNICODE(", L"VAR.P(", L"VAR.S(", L"WEBSERVICE(",
    L"WEIBULL.DIST(", L"XOR(", L"Z.TEST(",
    // clang-format on
};
constexpr std::size_t nameCount = std::size(names);
static_assert(nameCount == 119);
static_assert(std::is_sorted(std::begin(names), std::end(names)));

bool isLetter(wchar_t c) {
    if (c < 128) return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z');
    return std::iswalpha(static_cast<wint_t>(c)) != 0;
}

bool isNameCharacter(wchar_t c) {
    return (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9') || c == L'.';
}

/// Names that begin with one letter: where they stand in the list, and which lengths they have.
struct Initial {
    std::uint8_t first = 0, end = 0;
    std::uint32_t lengths = 0;
};

constexpr auto initials = [] {
    std::array<Initial, 26> table{};
    for (std::size_t i = 0; i < nameCount; ++i) {
        Initial& initial = table[static_cast<std::size_t>(names[i].front() - L'A')];
        if (initial.lengths == 0) initial.first = static_cast<std::uint8_t>(i);
        initial.end = static_cast<std::uint8_t>(i + 1);
        initial.lengths |= std::uint32_t{1} << names[i].size();
    }
    return table;
}();

constexpr std::size_t longest =
    std::max_element(std::begin(names), std::end(names), [](auto a, auto b) { return a.size() < b.size(); }) -> size();
static_assert(longest < 32);

/// A bracket ends one name of the list at most: none ends like another one behind a dot or a digit. So the names can
/// be looked for all at once, with what a search for one after the other finds.
static_assert(std::none_of(std::begin(names), std::end(names), [](std::wstring_view name) {
    return std::any_of(std::begin(names), std::end(names), [=](std::wstring_view other) {
        if (other.size() >= name.size() || !name.ends_with(other)) return false;
        const wchar_t before = name[name.size() - other.size() - 1];
        return before < L'A' || before > L'Z';
    });
}));

bool isKnown(std::wstring_view name) {
    if (name.front() < L'A' || name.front() > L'Z') return false;
    const Initial& initial = initials[static_cast<std::size_t>(name.front() - L'A')];
    if ((initial.lengths >> name.size() & 1) == 0) return false;
    return std::find(names + initial.first, names + initial.end, name) != names + initial.end;
}

/// Where the known name begins that ends with the bracket at `bracket` and has no letter in front of it.
std::optional<std::size_t> nameAt(std::wstring_view formula, std::size_t bracket) {
    const std::size_t least = bracket + 1 - std::min(longest, bracket + 1);
    std::size_t at = bracket;
    while (at > least && isNameCharacter(formula[at - 1])) --at;
    for (; at < bracket; ++at) {
        if (at > 0 && isLetter(formula[at - 1])) continue;
        if (isKnown(formula.substr(at, bracket - at + 1))) return at;
    }
    return std::nullopt;
}

/// Whether a position lies in quotes: either kind of quotes, each of which ends where its like stands next.
class Quotes {
public:
    explicit Quotes(std::wstring_view text) : _text(text) {}
    /// For positions in ascending order.
    bool hold(std::size_t at) {
        for (; _next < at; ++_next) {
            _single ^= _text[_next] == L'\'';
            _double ^= _text[_next] == L'"';
        }
        return _single || _double;
    }

private:
    std::wstring_view _text;
    std::size_t _next = 0;
    bool _single = false, _double = false;
};

}  // namespace

std::span<const std::wstring_view> futureFunctions() {
    return names;
}

void prefixFunctions(std::wstring& formula) {
    Quotes quotes(formula);
    std::wstring result;
    std::size_t copied = 0;
    for (std::size_t end = formula.find(L'('); end != std::wstring::npos; end = formula.find(L'(', end + 1)) {
        const auto at = nameAt(formula, end);
        if (!at || quotes.hold(*at)) continue;
        if (result.empty()) result.reserve(formula.size() + 4 * functionPrefix.size());
        result.append(formula, copied, *at - copied).append(functionPrefix);
        copied = *at;
    }
    if (!result.empty()) formula = std::move(result.append(formula, copied, std::wstring::npos));
}

void unprefixFunctions(std::wstring& formula) {
    std::size_t kept = formula.find(functionPrefix);
    for (std::size_t at = kept; at != std::wstring::npos;) {
        const std::size_t from = at + functionPrefix.size();
        at = formula.find(functionPrefix, from);
        const std::size_t length = std::min(at, formula.size()) - from;
        std::copy_n(formula.begin() + static_cast<std::ptrdiff_t>(from), length,
                    formula.begin() + static_cast<std::ptrdiff_t>(kept));
        kept += length;
    }
    if (kept != std::wstring::npos) formula.resize(kept);
}

}  // namespace vellum::xlsx
