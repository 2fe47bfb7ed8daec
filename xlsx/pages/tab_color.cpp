#include "xlsx/pages/tab_color.h"

#include <algorithm>
#include <cstdint>

#include "engine/failure/vlerror.h"
#include "xlsx/features/messages.h"

namespace vellum::xlsx {
namespace {

template <class Tag>
auto& freshColor(Worksheet<Tag>& sheet) {
    auto& properties = sheet.sheetPr();
    properties.unset_tabColor();
    return properties.tabColor();
}

}  // namespace

template <class Tag>
void setTabPaletteColor(Worksheet<Tag>& sheet, int index) {
    if (index < 0) throw vlerror(msg::colorIndexNegative);
    freshColor<Tag>(sheet).indexed(static_cast<unsigned>(index));
}

template <class Tag>
void setTabRgbColor(Worksheet<Tag>& sheet, int red, int green, int blue) {
    bindery::c_binary value;
    value.bytes.push_back(255);
    for (const int part : {red, green, blue}) {
        if (part < 0 || part > 255) throw vlerror(msg::colorPartOutOfRange);
        value.bytes.push_back(static_cast<std::uint8_t>(part));
    }
    freshColor<Tag>(sheet).rgb(std::move(value));
}

template void setTabPaletteColor<ooxml::excelNormal_tag>(Worksheet<ooxml::excelNormal_tag>&, int);
template void setTabPaletteColor<ooxml::excelStrict_tag>(Worksheet<ooxml::excelStrict_tag>&, int);
template void setTabRgbColor<ooxml::excelNormal_tag>(Worksheet<ooxml::excelNormal_tag>&, int, int, int);
template void setTabRgbColor<ooxml::excelStrict_tag>(Worksheet<ooxml::excelStrict_tag>&, int, int, int);

}  // namespace vellum::xlsx
