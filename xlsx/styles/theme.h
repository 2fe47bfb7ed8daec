// The theme of a package, read for its colours.
#pragma once
#include <array>
#include <cstdint>
#include <optional>

#include "ooxml/generated/dialect.h"
#include "ooxml/generated/dml-main-strict/dml-main-strict.h"
#include "ooxml/generated/dml-main/dml-main.h"
#include "xlsx/package/book_context.h"
#include "xlsx/package/xml_file.h"

namespace vellum {

using Rgb = std::array<std::uint8_t, 3>;

template <class Tag>
class XMLTheme final : public XmlFile<typename ooxml::dialect<Tag>::c_theme> {
public:
    using XmlFile<typename ooxml::dialect<Tag>::c_theme>::XmlFile;

    /// Colour 0 to 11: lt1, dk1, lt2, dk2, accent1 to accent6, hlink, folHlink. Nothing when the theme does not say.
    std::optional<Rgb> colorAt(unsigned index) const;
};

extern template class XMLTheme<excelNormal_tag>;
extern template class XMLTheme<excelStrict_tag>;

}  // namespace vellum
