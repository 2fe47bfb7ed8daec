#include "xlsx/strings/rich_string.h"

#include "engine/api/iformat.h"
#include "engine/failure/guarded.h"
#include "engine/failure/vlerror.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/package/messages.h"
#include "xlsx/strings/shared_strings.h"
#include "xlsx/styles/font.h"
#include "xlsx/styles/styles.h"

namespace vellum {

template <class CharT, class Tag>
XMLRichStringImplT<CharT, Tag>::XMLRichStringImplT(BookContextT<CharT, Tag>& book, c_CT_Rst& si, std::size_t position,
                                                   IFormatT<CharT>* format)
    : _book(book), _si(&si), _position(position), _format(format) {}

template <class CharT, class Tag>
XMLRichStringImplT<CharT, Tag>::~XMLRichStringImplT() = default;

template <class CharT, class Tag>
auto XMLRichStringImplT<CharT, Tag>::newFont() -> Font& {
    _fonts.push_back(std::make_unique<Font>(&_book.ensureStyles()));
    return *_fonts.back();
}

template <class CharT, class Tag>
IFontT<CharT>* XMLRichStringImplT<CharT, Tag>::addFont(IFontT<CharT>* source) {
    return guarded<IFontT<CharT>*>(_book.lastError(), nullptr, [&] {
        Font& font = newFont();
        if (source) font.copyFrom(*source);
        return &font;
    });
}

template <class CharT, class Tag>
bool XMLRichStringImplT<CharT, Tag>::addRun(const CharT* text, IFontT<CharT>* font) {
    return guarded(_book.lastError(), false, [&] {
        TextHolder wide;
        if constexpr (std::is_same_v<CharT, char>) {
            wide.setNarrow(text ? text : "");
        } else {
            wide.setWide(text ? text : L"");
        }
        const std::wstring_view runText = wide.wide(_book.isUtf8());
        auto& run = _si->r().append();
        std::wstring scratch;
        setPreservedText(run.t(), escapeSharedText(runText, scratch));
        if (!font) return true;
        if (const auto* const ours = dynamic_cast<const Font*>(font)) {
            ours->writeRun(run.rPr());
        } else {
            Font copy(&_book.ensureStyles());
            copy.copyFrom(*font);
            copy.writeRun(run.rPr());
        }
        return true;
    });
}

template <class CharT, class Tag>
const CharT* XMLRichStringImplT<CharT, Tag>::runAt(int index, IFontT<CharT>** font) {
    return guarded<const CharT*>(_book.lastError(), nullptr, [&]() -> const CharT* {
        const auto& runs = std::as_const(*_si).r();
        if (index < 0 || static_cast<std::size_t>(index) >= runs.size()) return nullptr;
        const auto& run = runs[static_cast<std::size_t>(index)];
        if (font) {
            *font = nullptr;
            if (const auto* const properties = run.find_rPr()) {
                Font& own = newFont();
                own.readRun(*properties);
                *font = &own;
            } else if (_format) {
                *font = _format->font();
            }
        }
        const auto* const t = run.find_t();
        return _conversion.template give<CharT>(t ? std::wstring_view(t->text()) : std::wstring_view(), _book.isUtf8());
    });
}

template <class CharT, class Tag>
int XMLRichStringImplT<CharT, Tag>::runTotal() {
    return static_cast<int>(_si->r().size());
}

template class XMLRichStringImplT<char, excelNormal_tag>;
template class XMLRichStringImplT<char, excelStrict_tag>;
template class XMLRichStringImplT<wchar_t, excelNormal_tag>;
template class XMLRichStringImplT<wchar_t, excelStrict_tag>;

}  // namespace vellum
