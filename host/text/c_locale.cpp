#include "host/text/c_locale.h"

#include <locale.h>
#include <cstdlib>

namespace quillet {
namespace {

locale_t cLocale() {
    static const locale_t handle = newlocale(LC_ALL_MASK, "C", nullptr);
    return handle;
}

}  // namespace

double strtodC(const char* text, char** end) {
    return strtod_l(text, end, cLocale());
}

}  // namespace quillet
