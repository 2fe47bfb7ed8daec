#include "xlsx/features/future_functions.h"

#include <algorithm>
#include <array>
#include <cwctype>
#include <vector>

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

/// Whether each position lies in quotes: either kind of quotes, each of which ends where its like stands next.
class Quotes {
public:
    explicit Quotes(std::wstring_view text) : _inside(text.size()) {
        bool single = false, doubled = false;
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] == L'\'') single = !single;
            if (text[i] == L'"') doubled = !doubled;
            _inside[i] = single || doubled;
        }
    }
    [[nodiscard]] bool hold(std::size_t at) const { return _inside[at]; }

private:
    std::vector<bool> _inside;
};

void prefixAll(std::wstring& formula, std::wstring_view name) {
    const Quotes quotes(formula);
    std::wstring result;
    std::size_t copied = 0;
    for (std::size_t at = formula.find(name); at != std::wstring::npos; at = formula.find(name, at + 1)) {
        if (quotes.hold(at) || (at > 0 && isLetter(formula[at - 1]))) continue;
        result.append(formula, copied, at - copied).append(functionPrefix);
        copied = at;
    }
    if (copied == 0 && result.empty()) return;
    formula = result.append(formula, copied, std::wstring::npos);
}

using Found = std::array<bool, nameCount>;

/// Marks the names that end at a bracket and may have no letter in front of them: what a search for each could find.
bool findNames(std::wstring_view formula, Found& found) {
    bool any = false;
    for (std::size_t end = formula.find(L'('); end != std::wstring_view::npos; end = formula.find(L'(', end + 1)) {
        for (std::size_t at = end; at > 0 && isNameCharacter(formula[at - 1]);) {
            --at;
            if (at > 0 && isLetter(formula[at - 1])) continue;
            const auto known = std::lower_bound(std::begin(names), std::end(names), formula.substr(at, end - at + 1));
            if (known == std::end(names) || *known != formula.substr(at, end - at + 1)) continue;
            found[static_cast<std::size_t>(known - names)] = any = true;
        }
    }
    return any;
}

}  // namespace

std::span<const std::wstring_view> futureFunctions() {
    return names;
}

void prefixFunctions(std::wstring& formula) {
    Found found{};
    if (!findNames(formula, found)) return;
    for (std::size_t i = 0; i < nameCount; ++i) {
        if (found[i]) prefixAll(formula, names[i]);
    }
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
