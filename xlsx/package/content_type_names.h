// The content types that the engine knows.
#pragma once
#include <string_view>

namespace vellum::type {

inline constexpr std::string_view workbook =
    "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml";
inline constexpr std::string_view macroWorkbook = "application/vnd.ms-excel.sheet.macroEnabled.main+xml";
inline constexpr std::string_view workbookTemplate =
    "application/vnd.openxmlformats-officedocument.spreadsheetml.template.main+xml";
inline constexpr std::string_view macroTemplate = "application/vnd.ms-excel.template.macroEnabled.main+xml";
inline constexpr std::string_view relationships = "application/vnd.openxmlformats-package.relationships+xml";
inline constexpr std::string_view styles = "application/vnd.openxmlformats-officedocument.spreadsheetml.styles+xml";
inline constexpr std::string_view worksheet =
    "application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml";
inline constexpr std::string_view chartsheet =
    "application/vnd.openxmlformats-officedocument.spreadsheetml.chartsheet+xml";
inline constexpr std::string_view drawing = "application/vnd.openxmlformats-officedocument.drawing+xml";
inline constexpr std::string_view sharedStrings =
    "application/vnd.openxmlformats-officedocument.spreadsheetml.sharedStrings+xml";
inline constexpr std::string_view theme = "application/vnd.openxmlformats-officedocument.theme+xml";
inline constexpr std::string_view table = "application/vnd.openxmlformats-officedocument.spreadsheetml.table+xml";
inline constexpr std::string_view comments = "application/vnd.openxmlformats-officedocument.spreadsheetml.comments+xml";
inline constexpr std::string_view controlProperties = "application/vnd.ms-excel.controlproperties+xml";
inline constexpr std::string_view plainXml = "application/xml";

constexpr bool isMain(std::string_view type) {
    return type == workbook || type == macroWorkbook || type == workbookTemplate || type == macroTemplate;
}

}  // namespace vellum::type
