#include "biff/names/builtin_names.h"

#include <iterator>

namespace vellum::biff {

namespace {

constexpr std::wstring_view texts[] = {
    L"Consolidate_Area", L"Auto_Open",       L"Auto_Close",   L"Extract",         L"Database",
    L"Criteria",         L"Print_Area",      L"Print_Titles", L"Recorder",        L"Data_Form",
    L"Auto_Activate",    L"Auto_Deactivate", L"Sheet_Title",  L"_FilterDatabase",
};
static_assert(std::size(texts) == static_cast<std::size_t>(BuiltinName::filterDatabase) + 1);

}  // namespace

std::wstring_view builtinText(wchar_t code) {
    const auto at = static_cast<std::size_t>(code);
    return at < std::size(texts) ? texts[at] : std::wstring_view();
}

}  // namespace vellum::biff
