// The bytes as a number and the code of its format: what a cell shows is as long as the code lets it be, and UTF-8
// where the code is.
#include <utf8.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "cli/formats/display_width.h"
#include "cli/formats/format_code.h"
#include "cli/formats/number_format.h"

namespace {

bool isUtf8(std::string_view text) {
    return utf8::is_valid(text.begin(), text.end());
}

void look(const std::string& shown, std::string_view code) {
    // A place for a digit is a byte; a number has up to 309 digits and their commas, and a run of letters is at least a
    // byte for the name of a month or for what "General" shows.
    if (shown.size() > 2000 + 32 * code.size()) std::abort();
    if (isUtf8(code) && !isUtf8(shown)) std::abort();
    for (const int width : {0, 1, 7}) {
        const std::string cut = cli::cutToWidth(shown, width);
        if (cli::displayWidth(cut) > width || cut.size() > shown.size() + 3) std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    double value = 0;
    if (size <= sizeof value) return 0;
    std::memcpy(&value, data, sizeof value);
    const bool date1904 = (data[sizeof value] & 1) != 0;
    const std::string_view code(reinterpret_cast<const char*>(data) + sizeof value + 1, size - sizeof value - 1);
    const std::size_t sections = cli::readFormatCode(code).size();
    if (sections < 1 || sections > 4) std::abort();
    const cli::NumberFormat format(code);
    for (const double number : {value, -value, value * 1e6, 0.0, 45000.75, 1234.5678}) {
        look(format.show(number, date1904), code);
    }
    look(format.showText("text"), code);
    look(format.showText(code), code);
    return 0;
}
