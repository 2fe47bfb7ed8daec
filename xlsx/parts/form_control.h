// The properties of a form control.
#pragma once
#include <string>

#include "bindery/values/value_spec.h"
#include "engine/api/iformcontrol.h"
#include "engine/failure/guarded.h"
#include "engine/text/text_holder.h"
#include "ooxml/generated/ctrlProps/ctrlProps.h"
#include "xlsx/package/book_context.h"
#include "xlsx/package/xml_file.h"

namespace vellum {

/// A view on the attributes of the part. Texts that it returns live until its next operation that returns one.
template <class CharT, class Tag>
class XMLControlPr final : public XmlFile<ctrlProps::c_formControlPr>, public IFormControlT<CharT> {
public:
    using XmlFile<ctrlProps::c_formControlPr>::XmlFile;
    /// For errors and the coding of texts; before anything else is asked.
    void bind(BookContextT<CharT, Tag>& book) { _book = &book; }

    const CharT* objectType() override;
    bool setObjectType(const CharT* value) override;
    const CharT* checked() override;
    bool setChecked(const CharT* value) override;
    bool colored() override;
    bool setColored(bool value) override;
    int dropLines() override;
    bool setDropLines(int value) override;
    const CharT* dropStyle() override;
    bool setDropStyle(const CharT* value) override;
    int dx() override;
    bool setDx(int value) override;
    const CharT* editVal() override;
    bool setEditVal(const CharT* value) override;
    bool firstButton() override;
    bool setFirstButton(bool value) override;
    const CharT* fmlaGroup() override;
    bool setFmlaGroup(const CharT* value) override;
    const CharT* fmlaLink() override;
    bool setFmlaLink(const CharT* value) override;
    const CharT* fmlaRange() override;
    bool setFmlaRange(const CharT* value) override;
    const CharT* fmlaTxbx() override;
    bool setFmlaTxbx(const CharT* value) override;
    bool horiz() override;
    bool setHoriz(bool value) override;
    int inc() override;
    bool setInc(int value) override;
    bool justLastX() override;
    bool setJustLastX(bool value) override;
    bool lockText() override;
    bool setLockText(bool value) override;
    int max() override;
    bool setMax(int value) override;
    int min() override;
    bool setMin(int value) override;
    bool multiLine() override;
    bool setMultiLine(bool value) override;
    const CharT* multiSel() override;
    bool setMultiSel(const CharT* value) override;
    bool noThreeD() override;
    bool setNoThreeD(bool value) override;
    bool noThreeD2() override;
    bool setNoThreeD2(bool value) override;
    int page() override;
    bool setPage(int value) override;
    bool passwordEdit() override;
    bool setPasswordEdit(bool value) override;
    int sel() override;
    bool setSel(int value) override;
    const CharT* seltype() override;
    bool setSeltype(const CharT* value) override;
    const CharT* textHAlign() override;
    bool setTextHAlign(const CharT* value) override;
    const CharT* textVAlign() override;
    bool setTextVAlign(const CharT* value) override;
    int val() override;
    bool setVal(int value) override;
    bool verticalBar() override;
    bool setVerticalBar(bool value) override;
    int widthMin() override;
    bool setWidthMin(int value) override;

    int itemTotal() override;
    const CharT* itemAt(int index) override;
    bool addItem(const CharT* text) override;
    bool insertItem(int index, const CharT* text) override;
    bool removeItem(int index) override;
    bool clearItems() override;

private:
    template <class Result, class Body>
    Result guard(Result onFailure, Body&& body) {
        return guarded<Result>(_book->lastError(), onFailure, static_cast<Body&&>(body));
    }
    template <class Value>
    Value read(Value value);
    /// Null for no text.
    const CharT* give(const std::wstring& text, bool isThere);
    const CharT* give(const std::string& text, bool isThere);
    template <class Set>
    bool write(Set&& set);
    /// A text of any kind.
    template <class Set>
    bool writeText(const CharT* value, Set&& set);
    /// One of those that the schema lists; others are refused.
    template <class Set>
    bool writeListed(const CharT* value, const bindery::ValueSpec& list, Set&& set);
    std::wstring wide(const CharT* text) const;
    std::size_t items() const;
    std::size_t checkedItem(int index, std::size_t count) const;

    BookContextT<CharT, Tag>* _book = nullptr;
    TextHolder _text;
};

extern template class XMLControlPr<char, excelNormal_tag>;
extern template class XMLControlPr<char, excelStrict_tag>;
extern template class XMLControlPr<wchar_t, excelNormal_tag>;
extern template class XMLControlPr<wchar_t, excelStrict_tag>;

}  // namespace vellum
