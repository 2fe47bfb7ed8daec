// The sheet in its workbook: its name, whether it is shown, whether it is protected.
#include "engine/api/enums.h"
#include "engine/facts/sheet_names.h"
#include "engine/failure/vlerror.h"
#include "xlsx/cells/coded_text.h"
#include "xlsx/features/defined_names.h"
#include "xlsx/features/protection.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/sheet/sheet_messages.h"

namespace vellum {
namespace {

constexpr const char* stateTexts[] = {"visible", "hidden", "veryHidden"};

}  // namespace

/// The workbook's element of this sheet; null when there is none.
template <class CharT, class Tag>
auto XMLSheetImplT<CharT, Tag>::sheetElement() -> typename Sml::c_CT_Sheet* {
    auto* const sheets = book().workbook().find_sheets();
    const bool exists = sheets && _index >= 0 && static_cast<std::size_t>(_index) < sheets->sheet().size();
    return exists ? &sheets->sheet()[static_cast<std::size_t>(_index)] : nullptr;
}

template <class CharT, class Tag>
xlsx::NamedSheet XMLSheetImplT<CharT, Tag>::namedSheet() {
    const auto* const element = sheetElement();
    if (!element) throw vlerror(xlsx::msg::sheetWithoutBook);
    return {_index, element->name()};
}

template <class CharT, class Tag>
const CharT* XMLSheetImplT<CharT, Tag>::sheetName() {
    return guard<const CharT*>(nullptr,
                               [&] { return _nameText.template give<CharT>(namedSheet().name, book().isUtf8()); });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setSheetName(const CharT* name) {
    return guard(false, [&] {
        const std::wstring old(namedSheet().name);
        const SheetNameText text = cutSheetName<CharT>(name, book().isUtf8());
        const auto& sheets = book().workbook().sheets().sheet();
        for (std::size_t i = 0; i < sheets.size(); ++i) {
            const bool isOther = i != static_cast<std::size_t>(_index);
            if (isOther && sameSheetName(sheets[i].name(), text.name)) throw vlerror(xlsx::msg::sheetNameTaken);
        }
        checkSheetName(text.name);
        book().names().renameSheet(old, text.name);
        sheetElement()->name(text.name);
        if (text.cut) lastError().set(xlsx::msg::sheetNameCut);
        return true;
    });
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::visibilityState() {
    return guard<int>(sheetVisible, [&] {
        const auto* const element = sheetElement();
        if (!element) throw vlerror(xlsx::msg::indexOutOfRange);
        return codeOf(stateTexts, element->state(), sheetVisible);
    });
}

/// A workbook shows one sheet at least; chart sheets count.
template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setVisibilityState(int state) {
    return guard(false, [&] {
        if (!textOf(stateTexts, state)) throw vlerror(xlsx::msg::hiddenOutOfRange);
        if (!sheetElement()) throw vlerror(xlsx::msg::indexOutOfRange);
        const auto isVisible = [](const auto& sheet) { return codeOf(stateTexts, sheet.state(), sheetVisible) == 0; };
        auto& sheets = book().workbook().sheets().sheet();
        if (state != sheetVisible && isVisible(*sheetElement())) {
            std::size_t other = 0;
            const auto self = static_cast<std::size_t>(_index);
            while (other < sheets.size() && (other == self || !isVisible(sheets[other]))) ++other;
            if (other == sheets.size()) throw vlerror(xlsx::msg::needsVisibleSheet);
            if (book().activeSheet() == _index) book().activate(static_cast<int>(other));
        }
        sheetElement()->state(textOf(stateTexts, state));
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::isProtected() {
    return guard(false, [&] { return xlsx::isProtected(this->_root); });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setProtected(bool enable, const CharT* password, int options) {
    return guard(false, [&] {
        std::optional<std::wstring_view> text;
        if (password) text = widened(password);
        xlsx::setProtected(this->_root, enable, text, options);
        return true;
    });
}

}  // namespace vellum
