// Texts of number formats, as columns are fitted by them: a sample is not much longer than the format and the number.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string>

#include "xlsx/fitting/number_sample.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring format(data, data + size);
    for (const double value : {0.0, 1.5, -1234567.25, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
        for (const bool isDate : {false, true}) {
            if (vellum::xlsx::customSample(format, isDate, value).size() > 21 + 9 * size) std::abort();
        }
        std::string text;
        vellum::xlsx::appendBuiltInSample(text, static_cast<unsigned>(size % 60), value);
        if (text.size() > 450) std::abort();
    }
    return 0;
}
