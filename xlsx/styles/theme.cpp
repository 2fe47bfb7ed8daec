#include "xlsx/styles/theme.h"

namespace vellum {
namespace {

std::optional<Rgb> rgbOf(const bindery::c_binary& value) {
    if (value.bytes.size() != 3) return std::nullopt;
    return Rgb{value.bytes[0], value.bytes[1], value.bytes[2]};
}

}  // namespace

template <class Tag>
std::optional<Rgb> XMLTheme<Tag>::colorAt(unsigned index) const {
    const auto* const elements = this->_root.find_themeElements();
    const auto* const scheme = elements ? elements->find_clrScheme() : nullptr;
    if (!scheme) return std::nullopt;
    using Color = typename ooxml::dialect<Tag>::theme::c_CT_Color;
    const Color* const colors[] = {scheme->find_lt1(),     scheme->find_dk1(),     scheme->find_lt2(),
                                   scheme->find_dk2(),     scheme->find_accent1(), scheme->find_accent2(),
                                   scheme->find_accent3(), scheme->find_accent4(), scheme->find_accent5(),
                                   scheme->find_accent6(), scheme->find_hlink(),   scheme->find_folHlink()};
    if (index >= std::size(colors) || !colors[index]) return std::nullopt;
    if (const auto* const srgb = colors[index]->find_srgbClr()) return rgbOf(srgb->val());
    if (const auto* const system = colors[index]->find_sysClr()) return rgbOf(system->lastClr());
    return std::nullopt;
}

template class XMLTheme<excelNormal_tag>;
template class XMLTheme<excelStrict_tag>;

}  // namespace vellum
