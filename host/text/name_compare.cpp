#include "host/text/name_compare.h"

#include <locale.h>
#include <utf8.h>
#include <wctype.h>

#include <cstdint>

#include "host/text/text_compare.h"

namespace quillet {
namespace {

wint_t lower(std::uint32_t letter) {
    static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return unicode ? towlower_l(letter, unicode) : letter;
}

}  // namespace

bool sameName(std::string_view a, std::string_view b) {
    if (equalIgnoringCase(a, b)) return true;
    if (!utf8::is_valid(a.begin(), a.end()) || !utf8::is_valid(b.begin(), b.end())) return false;
    auto x = a.begin(), y = b.begin();
    while (x != a.end() && y != b.end()) {
        if (lower(utf8::unchecked::next(x)) != lower(utf8::unchecked::next(y))) return false;
    }
    return x == a.end() && y == b.end();
}

}  // namespace quillet
