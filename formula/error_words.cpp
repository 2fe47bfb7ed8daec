#include "formula/error_words.h"

#include "engine/api/enums.h"

namespace vellum::formula {
namespace {

struct ErrorWord {
    std::uint8_t code;
    std::wstring_view word;
};
constexpr ErrorWord errorWords[] = {
    {errorNull, L"#NULL!"}, {errorDivisionByZero, L"#DIV/0!"}, {errorValue, L"#VALUE!"},     {errorReference, L"#REF!"},
    {errorName, L"#NAME?"}, {errorNumber, L"#NUM!"},           {errorNotAvailable, L"#N/A"},
};

}  // namespace

std::wstring_view errorWord(std::uint8_t code) {
    for (const ErrorWord& error : errorWords) {
        if (error.code == code) return error.word;
    }
    return L"ERR";
}

std::optional<std::uint8_t> errorCodeOf(std::wstring_view word) {
    for (const ErrorWord& error : errorWords) {
        if (error.word == word) return error.code;
    }
    return std::nullopt;
}

}  // namespace vellum::formula
