// Names that the format knows by a code of one character.
#pragma once
#include <cstdint>
#include <string_view>

namespace vellum::biff {

enum class BuiltinName : std::uint8_t {
    consolidateArea,
    autoOpen,
    autoClose,
    extract,
    database,
    criteria,
    printArea,
    printTitles,
    recorder,
    dataForm,
    autoActivate,
    autoDeactivate,
    sheetTitle,
    filterDatabase,
};

/// "Print_Area" for code 6; empty for a code from 14 on, which has no text.
std::wstring_view builtinText(wchar_t code);

}  // namespace vellum::biff
