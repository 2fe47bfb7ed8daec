#include "xlsx/features/hyperlinks.h"

#include "bindery/values/value_spec.h"
#include "engine/failure/vlerror.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/features/messages.h"
#include "xlsx/package/relationships.h"

namespace vellum::xlsx {

bool isPlace(std::wstring_view text) {
    return text.find(L"://") == std::wstring_view::npos && text.find(L'!') != std::wstring_view::npos;
}

template <class Tag>
int Hyperlinks<Tag>::total() const {
    const auto* const links = std::as_const(_worksheet).find_hyperlinks();
    return links ? static_cast<int>(links->hyperlink().size()) : 0;
}

template <class Tag>
std::wstring Hyperlinks<Tag>::at(int index, const Relationships* relationships, CellRange& range) const {
    if (index < 0 || index >= total()) throw vlerror(msg::indexOutOfRange);
    const auto& link = std::as_const(_worksheet).hyperlinks().hyperlink()[static_cast<std::size_t>(index)];
    const auto read = readCellRange(std::string_view(link.ref()));
    if (!read) throw vlerror(msg::refUnrecognized);
    range = *read;
    if (link.isset_id()) {
        const std::string target = relationships ? relationships->targetById(link.id()) : std::string();
        if (!target.empty()) return bindery::toWide(target);
        if (!link.isset_location()) throw vlerror(msg::sheetRelationshipsNotFound);
    }
    return link.location();
}

template <class Tag>
void Hyperlinks<Tag>::removeAt(int index) {
    if (index < 0 || index >= total()) throw vlerror(msg::indexOutOfRange);
    auto& links = _worksheet.hyperlinks().hyperlink();
    links.erase(static_cast<std::size_t>(index));
    if (links.empty()) _worksheet.unset_hyperlinks();
}

template <class Tag>
void Hyperlinks<Tag>::addPlace(const CellRange& range, std::wstring_view place) {
    auto& link = _worksheet.hyperlinks().hyperlink().append();
    link.ref(cellRangeText(range));
    link.location(std::wstring(place));
}

template <class Tag>
void Hyperlinks<Tag>::addTarget(const CellRange& range, std::string id) {
    auto& link = _worksheet.hyperlinks().hyperlink().append();
    link.ref(cellRangeText(range));
    link.id(std::move(id));
}

template class Hyperlinks<ooxml::excelNormal_tag>;
template class Hyperlinks<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
