#include "engine/facts/text_width.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>

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

// Advance widths of the sans-serif design that Arial shares with the other fonts of its kind, in
// 1/1000 of the font's size, for code points 32 to 126. Other characters follow by rule: see
// `emWidth`. Calibri is narrower throughout; its widths follow from these in the ratio of the
// digits, 507 to 556. That is an approximation: it errs by a pixel or two on ordinary words.
using EmTable = std::array<std::uint16_t, 95>;
constexpr EmTable regularEm = {
    278,  278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333, 278, 278,  //   ! " # $ % & ' ( ) * + , - . /
    556,  556, 556, 556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556,  // 0 to ?
    1015, 667, 667, 722, 722, 667, 611, 778, 722, 278, 500, 667, 556, 833, 722, 778,  // @ to O
    667,  778, 722, 667, 611, 722, 667, 944, 667, 667, 611, 278, 278, 278, 469, 556,  // P to _
    333,  556, 556, 500, 556, 556, 278, 556, 556, 222, 222, 500, 222, 833, 556, 556,  // ` to o
    556,  556, 333, 500, 278, 556, 500, 722, 500, 500, 500, 334, 260, 334, 584,       // p to ~
};
constexpr EmTable boldEm = {
    278, 333, 474, 556, 556, 889, 722, 238, 333, 333, 389, 584, 278, 333, 278, 278,  //
    556, 556, 556, 556, 556, 556, 556, 556, 556, 556, 333, 333, 584, 584, 584, 611,  // 0 to ?
    975, 722, 722, 722, 722, 667, 611, 778, 722, 278, 556, 722, 611, 833, 722, 778,  // @ to O
    667, 778, 722, 667, 611, 722, 667, 944, 667, 667, 611, 333, 278, 333, 584, 556,  // P to _
    333, 556, 611, 556, 611, 556, 333, 611, 611, 278, 278, 556, 278, 889, 611, 611,  // ` to o
    611, 611, 389, 556, 333, 611, 556, 778, 556, 556, 500, 389, 280, 389, 584,       // p to ~
};

constexpr char32_t measuredCodePoints = 1536;

// The ASCII letter whose width a Latin-1 letter (from 192 on) has: accents do not widen.
constexpr std::string_view latin1Base = "AAAAAAWCEEEEIIIIDNOOOOO+OUUUUYPsaaaaaawceeeeiiiidnooooo+ouuuuypy";
static_assert(latin1Base.size() == 64);

int emWidth(char32_t c, bool bold) {
    const EmTable& table = bold ? boldEm : regularEm;
    const auto ascii = [&](char letter) { return int{table[static_cast<std::size_t>(letter - ' ')]}; };
    if (c < 32) return 0;
    if (c < 127) return ascii(static_cast<char>(c));
    if (c < 160) return 0;
    if (c < 192) return c == 160 ? ascii(' ') : ascii('0');
    if (c < 256) return ascii(latin1Base[c - 192]);
    if (c >= 0x300 && c < 0x370) return 0;                       // combining marks
    if (c >= 0x591 && c < 0x5C8) return 0;                       // points under Hebrew letters
    if (c < 0x250) return c % 2 == 0 ? ascii('B') : ascii('b');  // capitals are even for the most part
    if (c >= 0x391 && c < 0x3AA) return ascii('B');              // Greek capitals
    if (c >= 0x400 && c < 0x430) return ascii('H');              // Cyrillic capitals
    return ascii('o');
}

// Pixels at 96 dpi, rounded for each character as a screen does.
int charPixels(char32_t c, int size, bool calibri, bool bold) {
    const int em = emWidth(c, bold);
    const double unitsPerSize = calibri ? 507.0 / 556.0 / 1000.0 : 1.0 / 1000.0;
    return static_cast<int>(em * unitsPerSize * size * 96.0 / 72.0 + 0.5);
}

bool sameName(std::wstring_view a, std::wstring_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](wchar_t x, wchar_t y) {
               const auto lower = [](wchar_t c) { return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 32) : c; };
               return lower(x) == lower(y);
           });
}

// The widest line in digits, nothing when the widths of its characters are not known.
std::optional<double> measuredChars(std::wstring_view text, const MeasuredFont& font) {
    const bool calibri = sameName(font.name, L"Calibri");
    if ((!calibri && !sameName(font.name, L"Arial")) || font.size < 1 || font.size > 72) return std::nullopt;
    const int digit = std::max(1, charPixels(U'0', font.size, calibri, font.bold));
    int widest = 0, line = 0;
    for (const wchar_t c : text) {
        const auto code = static_cast<char32_t>(c);
        if (code >= measuredCodePoints) return std::nullopt;
        line = c == L'\n' ? 0 : line + charPixels(code, font.size, calibri, font.bold);
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
