// Links, and what is said about values: rules for what may be entered, errors that are not pointed out.
#include <cmath>

#include "bindery/values/value_spec.h"
#include "engine/failure/vlerror.h"
#include "xlsx/cells/cell_values.h"
#include "xlsx/features/block.h"
#include "xlsx/features/hyperlinks.h"
#include "xlsx/features/ignored_errors.h"
#include "xlsx/features/validation.h"
#include "xlsx/package/relationships.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/sheet/sheet_messages.h"

namespace vellum {

template <class CharT, class Tag>
Relationships* XMLSheetImplT<CharT, Tag>::findRelationships() {
    return book().findRelationshipsOf(book().sheetPath(_index));
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::hyperlinkTotal() {
    return guard(-1, [&] { return xlsx::Hyperlinks<Tag>(this->_root).total(); });
}

template <class CharT, class Tag>
const CharT* XMLSheetImplT<CharT, Tag>::hyperlinkAt(int index, int* rowFirst, int* rowLast, int* colFirst,
                                                    int* colLast) {
    return guard<const CharT*>(nullptr, [&] {
        CellRange range;
        const std::wstring text = xlsx::Hyperlinks<Tag>(this->_root).at(index, findRelationships(), range);
        xlsx::giveBlock(range, rowFirst, rowLast, colFirst, colLast);
        return _linkText.template give<CharT>(text, book().isUtf8());
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::removeHyperlinkAt(int index) {
    return guard(false, [&] {
        xlsx::Hyperlinks<Tag>(this->_root).removeAt(index);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::addHyperlink(const CharT* target, int rowFirst, int rowLast, int colFirst,
                                             int colLast) {
    return guard(false, [&] {
        const std::wstring_view text = widened(target);
        const CellRange range = xlsx::block(rowFirst, rowLast, colFirst, colLast);
        xlsx::Hyperlinks<Tag> links(this->_root);
        if (xlsx::isPlace(text)) {
            links.addPlace(range, text);
        } else {
            auto& relationships = book().ensureRelationshipsOf(book().sheetPath(_index));
            links.addTarget(
                range, relationships.add(std::string(rel::transitional) + "hyperlink", bindery::toUtf8(text), true));
        }
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::addIgnoredErrorRange(int rowFirst, int colFirst, int rowLast, int colLast, int flags) {
    return guard(false, [&] {
        xlsx::addIgnoredErrors(this->_root, xlsx::block(rowFirst, rowLast, colFirst, colLast), flags);
        return true;
    });
}

/// Nothing for a null text.
template <class CharT, class Tag>
std::optional<std::wstring> XMLSheetImplT<CharT, Tag>::wideOrNothing(const CharT* text) {
    if (!text) return {};
    return std::wstring(widened(text));
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::addValidationRule(int type, int op, int rowFirst, int rowLast, int colFirst,
                                                  int colLast, const CharT* formula1, const CharT* formula2,
                                                  bool allowBlank, bool hideDropDown, bool showInputMessage,
                                                  bool showErrorMessage, const CharT* promptTitle, const CharT* prompt,
                                                  const CharT* errorTitle, const CharT* error, int errorStyle) {
    return guard(false, [&] {
        xlsx::addValidationRule(this->_root, {
                                                 .type = type,
                                                 .op = op,
                                                 .errorStyle = errorStyle,
                                                 .range = xlsx::block(rowFirst, rowLast, colFirst, colLast),
                                                 .allowBlank = allowBlank,
                                                 .hideDropDown = hideDropDown,
                                                 .showInputMessage = showInputMessage,
                                                 .showErrorMessage = showErrorMessage,
                                                 .formula1 = wideOrNothing(formula1),
                                                 .formula2 = wideOrNothing(formula2),
                                                 .promptTitle = wideOrNothing(promptTitle),
                                                 .prompt = wideOrNothing(prompt),
                                                 .errorTitle = wideOrNothing(errorTitle),
                                                 .error = wideOrNothing(error),
                                             });
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::addValidationRuleNumeric(int type, int op, int rowFirst, int rowLast, int colFirst,
                                                         int colLast, double value1, double value2, bool allowBlank,
                                                         bool hideDropDown, bool showInputMessage,
                                                         bool showErrorMessage, const CharT* promptTitle,
                                                         const CharT* prompt, const CharT* errorTitle,
                                                         const CharT* error, int errorStyle) {
    if (!std::isfinite(value1) || !std::isfinite(value2)) {
        return guard(false, []() -> bool { throw vlerror(xlsx::msg::validationValueNotFinite); });
    }
    const NumberText text1(value1), text2(value2);
    const std::basic_string<CharT> formula1(text1.view().begin(), text1.view().end());
    const std::basic_string<CharT> formula2(text2.view().begin(), text2.view().end());
    return addValidationRule(type, op, rowFirst, rowLast, colFirst, colLast, formula1.c_str(), formula2.c_str(),
                             allowBlank, hideDropDown, showInputMessage, showErrorMessage, promptTitle, prompt,
                             errorTitle, error, errorStyle);
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::removeValidationRules() {
    return guard(false, [&] {
        xlsx::removeValidationRules(this->_root);
        return true;
    });
}

template <class CharT, class Tag>
std::vector<EntryRule> XMLSheetImplT<CharT, Tag>::entryRules() {
    return guard(std::vector<EntryRule>(), [&] { return xlsx::entryRules(this->_root); });
}

}  // namespace vellum
