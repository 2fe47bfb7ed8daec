#include "engine/facts/text_width.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>

#include "engine/facts/face_widths.h"

namespace vellum {

int columnPixels(double chars) {
    constexpr int padding = columnPadding();
    const double pixels = chars > 1 ? padding + digitPixels * chars - 3 : (padding + digitPixels - 3) * chars;
    return static_cast<int>(pixels + 0.5);
}

double columnChars(int pixels) {
    constexpr int padding = columnPadding();
    constexpr int oneChar = padding + digitPixels - 3;
    const double chars = pixels >= oneChar ? (pixels - padding + 3) / double(digitPixels) : pixels / double(oneChar);
    return std::floor(chars * 100 + 0.5) / 100;
}

namespace {

// The widest line in digits, nothing when the widths of its characters are not known.
std::optional<double> measuredChars(std::wstring_view text, const MeasuredFont& font) {
    const FaceWidths* const face = findFaceWidths(font.name, font.bold);
    if (!face || font.size < 1 || font.size > largestMeasuredSize) return std::nullopt;
    const int digit = std::max(1, face->pixels(U'0', font.size));
    int widest = 0, line = 0;
    for (const wchar_t c : text) {
        const auto code = static_cast<char32_t>(c);
        if (code >= measuredCodePoints) return std::nullopt;
        line = c == L'\n' ? 0 : line + face->pixels(code, font.size);
        widest = std::max(widest, line);
    }
    return widest / double(digit) + 0.5;
}

double countedChars(std::wstring_view text) {
    std::size_t widest = 0, line = 0;
    for (const wchar_t c : text) {
        line = c == L'\n' ? 0 : line + 1;
        widest = std::max(widest, line);
    }
    return static_cast<double>(widest) + 0.5;
}

// How a number is made for measuring: through printf, or a text that is as wide as any value gets.
struct WidestForm {
    std::uint16_t ifmt;
    const char* form;
    bool fixed;
};
constexpr WidestForm widestForms[] = {
    {1, "%.2f", false},        {2, "%.2f", false},          {3, "%.2f", false},     {4, "%.2f", false},
    {5, "%.2f", false},        {6, "%.2f", false},          {7, "%.2f", false},     {8, "%.2f", false},
    {9, "00%", true},          {10, "%.2f%%", false},       {11, "%.2E", false},    {14, "00/00/0000", true},
    {15, "00/mmm/00", true},   {16, "00/mmm", true},        {17, "mmm/00", true},   {18, "00:00 AM", true},
    {19, "00:00:00 AM", true}, {20, "00:00", true},         {21, "00:00:00", true}, {22, "00/00/0000 00:00", true},
    {37, "%.2f", false},       {38, "%.2f", false},         {39, "%.2f", false},    {40, "%.2f", false},
    {41, "%.2f", false},       {42, "%.2f", false},         {43, "%.2f", false},    {44, "%.2f", false},
    {45, "00:00", true},       {46, "0000000:00:00", true}, {47, "00:00,0", true},  {48, "00,0E+0", true},
};

}  // namespace

double textWidthChars(std::wstring_view text, const MeasuredFont& font) {
    if (text.empty()) return -1.0;
    return measuredChars(text, font).value_or(countedChars(text));
}

std::string widestNumberText(double value, std::uint16_t ifmt) {
    const char* form = "%.10g";
    for (const auto& known : widestForms) {
        if (known.ifmt != ifmt) continue;
        if (known.fixed) return known.form;
        form = known.form;
    }
    constexpr std::uint16_t percentWithDecimals = 10;
    if (ifmt == percentWithDecimals) value *= 100;
    char text[400];  // the largest double has 309 digits before its point
    const int length = std::snprintf(text, sizeof text, form, value);
    return {text, static_cast<std::size_t>(std::clamp(length, 0, static_cast<int>(sizeof text) - 1))};
}

}  // namespace vellum
