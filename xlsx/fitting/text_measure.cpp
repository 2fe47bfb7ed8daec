#include "xlsx/fitting/text_measure.h"

#include <algorithm>
#include <type_traits>

#include "engine/facts/face_widths.h"

namespace vellum::xlsx {

TextMeasure::TextMeasure(const FontMetrics& metrics, const MeasuredFont& font) : _digit(metrics.maxDigitWidth) {
    const double size = font.size, usual = metrics.defaultFontSize == 0 ? 1 : metrics.defaultFontSize;
    _proportional = ((size - usual) * 0.5 + size) / usual;
    const FaceWidths* const face = findFaceWidths(font.name, font.bold);
    if (!face || font.size < 1 || font.size > largestMeasuredSize) return;
    _pixels.resize(measuredCodePoints);
    for (char32_t c = 0; c < measuredCodePoints; ++c) {
        _pixels[c] = static_cast<std::uint8_t>(std::min(face->pixels(c, font.size), 255));
    }
}

template <class Text>
double TextMeasure::widthOf(Text text) const {
    using Char = typename Text::value_type;
    if (const std::size_t end = text.find(Char('\n')); end != Text::npos) {
        Text longest = text.substr(0, end);
        for (std::size_t from = end + 1; from <= text.size();) {
            const std::size_t lineEnd = std::min(text.find(Char('\n'), from), text.size());
            if (lineEnd - from > longest.size()) longest = text.substr(from, lineEnd - from);
            from = lineEnd + 1;
        }
        text = longest;
    }
    const double counted = _proportional * static_cast<double>(text.size() + 1);
    if (_pixels.empty()) return counted;
    unsigned pixels = _pixels[' '];
    for (const Char c : text) {
        const auto code = static_cast<std::make_unsigned_t<Char>>(c);
        if (code >= measuredCodePoints) return counted;
        pixels += _pixels[code];
    }
    return pixels / _digit;
}

template double TextMeasure::widthOf(std::wstring_view) const;
template double TextMeasure::widthOf(std::string_view) const;

}  // namespace vellum::xlsx
