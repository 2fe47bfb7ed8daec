// Numbers in packages are those of the "C" locale.
#pragma once
#include <clocale>
#include <string>

namespace vellum {

/// Holds the process's LC_NUMERIC at "C" for as long as a load or save lasts, and puts it back.
class NumericLocale {
public:
    NumericLocale() {
        if (const char* present = std::setlocale(LC_NUMERIC, nullptr)) _saved = present;
        std::setlocale(LC_NUMERIC, "C");
    }
    ~NumericLocale() {
        if (!_saved.empty()) std::setlocale(LC_NUMERIC, _saved.c_str());
    }
    NumericLocale(const NumericLocale&) = delete;
    NumericLocale& operator=(const NumericLocale&) = delete;

private:
    std::string _saved;
};

}  // namespace vellum
