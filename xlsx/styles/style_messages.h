// The texts of styles, formats and fonts.
#pragma once
#include "engine/failure/messages.h"

namespace vellum::xlsx::msg {

using namespace vellum::msg;  // what both engines say

inline constexpr const char* formatNotFound = "format is not found (perhaps it is defined before loading a file)";
inline constexpr const char* fontsNotFound = "fonts are not found";
inline constexpr const char* rgbInvalid = "rgb color is invalid";
inline constexpr const char* formatWithoutStyles = "XMLFormatImplT(): styles can't be 0";
inline constexpr const char* formatWithoutXf = "XMLFormatImplT(): xf can't be 0";
inline constexpr const char* fontWithoutStyles = "XMLFontImplT(): styles can't be 0";

}  // namespace vellum::xlsx::msg
