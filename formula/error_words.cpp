#include "formula/error_words.h"

#include "engine/facts/error_text.h"

namespace vellum::formula {

std::wstring_view errorWord(std::uint8_t code) {
    for (const ErrorText& error : errorTexts) {
        if (error.code == code) return error.wide;
    }
    return L"ERR";
}

std::optional<std::uint8_t> errorCodeOf(std::wstring_view word) {
    for (const ErrorText& error : errorTexts) {
        if (error.wide == word) return static_cast<std::uint8_t>(error.code);
    }
    return std::nullopt;
}

}  // namespace vellum::formula
