// printf and strtod take their decimal point from the locale, which anyone in the process may change.
#pragma once
#include <locale.h>

namespace refhost {

/// The calling thread uses the C locale while this lives.
class CNumbers {
public:
    CNumbers() : _previous(uselocale(cLocale())) {}
    ~CNumbers() { uselocale(_previous); }
    CNumbers(const CNumbers&) = delete;
    CNumbers& operator=(const CNumbers&) = delete;

private:
    static locale_t cLocale() {
        static const locale_t made = newlocale(LC_ALL_MASK, "C", nullptr);
        return made;
    }
    locale_t _previous;
};

}  // namespace refhost
