#include "engine/facts/number_format.h"

namespace vellum {
namespace {

// The same in every country.
struct BuiltIn {
    unsigned first, last;
    bool isDate;
};
constexpr BuiltIn builtIns[] = {{0, 13, false}, {14, 22, true}, {37, 44, false}, {45, 47, true}, {48, 49, false}};

}  // namespace

std::optional<bool> builtInShowsDate(unsigned id) {
    for (const BuiltIn& range : builtIns) {
        if (range.first <= id && id <= range.last) return range.isDate;
    }
    return std::nullopt;
}

bool showsDate(std::wstring_view format) {
    for (std::size_t i = 0; i < format.size(); ++i) {
        const wchar_t closing = format[i] == L'[' ? L']' : format[i] == L'"' ? L'"' : L'\0';
        if (closing != L'\0') {
            i = format.find(closing, i + 1);
            if (i == std::wstring_view::npos) return false;
        } else if (std::wstring_view(L"DHMSYdhmsy").find(format[i]) != std::wstring_view::npos) {
            return true;
        }
    }
    return false;
}

}  // namespace vellum
