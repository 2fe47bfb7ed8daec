// The error values of cells as they are written.
#pragma once
#include <string_view>

namespace vellum {

struct ErrorText {
    int code;  // an `ErrorCode` of the interfaces, as binary workbooks have it too
    std::string_view text;
    std::wstring_view wide;
};

inline constexpr ErrorText errorTexts[] = {
    {0, "#NULL!", L"#NULL!"},  {7, "#DIV/0!", L"#DIV/0!"}, {15, "#VALUE!", L"#VALUE!"}, {23, "#REF!", L"#REF!"},
    {29, "#NAME?", L"#NAME?"}, {36, "#NUM!", L"#NUM!"},    {42, "#N/A", L"#N/A"},
};
inline constexpr int noErrorCode = 255;

/// "" for a code that is none.
constexpr std::string_view errorTextOf(int code) {
    for (const ErrorText& error : errorTexts) {
        if (error.code == code) return error.text;
    }
    return {};
}

/// `noErrorCode` for a text that is no error value.
constexpr int errorCodeOf(std::string_view text) {
    for (const ErrorText& error : errorTexts) {
        if (error.text == text) return error.code;
    }
    return noErrorCode;
}

}  // namespace vellum
