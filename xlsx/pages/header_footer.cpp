#include "xlsx/pages/header_footer.h"

#include <utility>

#include "bindery/classes/extras.h"
#include "xlsx/strings/shared_strings.h"

namespace vellum::xlsx {

template <class Tag>
const std::wstring* HeaderFooter<Tag>::header() const {
    const auto* const texts = std::as_const(_sheet).find_headerFooter();
    const auto* const text = texts ? texts->find_oddHeader() : nullptr;
    return text ? &text->text() : nullptr;
}

template <class Tag>
const std::wstring* HeaderFooter<Tag>::footer() const {
    const auto* const texts = std::as_const(_sheet).find_headerFooter();
    const auto* const text = texts ? texts->find_oddFooter() : nullptr;
    return text ? &text->text() : nullptr;
}

template <class Tag>
void HeaderFooter<Tag>::setHeader(std::wstring_view text) {
    if (!text.empty()) {
        setPreservedText(_sheet.headerFooter().oddHeader(), text);
    } else if (auto* const texts = _sheet.find_headerFooter()) {
        texts->unset_oddHeader();
        dropWhenEmpty();
    }
}

template <class Tag>
void HeaderFooter<Tag>::setFooter(std::wstring_view text) {
    if (!text.empty()) {
        setPreservedText(_sheet.headerFooter().oddFooter(), text);
    } else if (auto* const texts = _sheet.find_headerFooter()) {
        texts->unset_oddFooter();
        dropWhenEmpty();
    }
}

template <class Tag>
void HeaderFooter<Tag>::dropWhenEmpty() {
    const auto& texts = std::as_const(_sheet).headerFooter();
    const bool hasText = texts.isset_oddHeader() || texts.isset_oddFooter() || texts.isset_evenHeader() ||
                         texts.isset_evenFooter() || texts.isset_firstHeader() || texts.isset_firstFooter();
    const bool hasAttribute = texts.isset_differentOddEven() || texts.isset_differentFirst() ||
                              texts.isset_scaleWithDoc() || texts.isset_alignWithMargins();
    const bool hasExtras = texts.extras() && !texts.extras()->empty();
    if (!hasText && !hasAttribute && !hasExtras) _sheet.unset_headerFooter();
}

template class HeaderFooter<ooxml::excelNormal_tag>;
template class HeaderFooter<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
