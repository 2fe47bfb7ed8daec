// Workbooks, as far as no engine has built more.
#pragma once
#include "engine/api/ibook.h"
#include "engine/failure/last_error.h"
#include "engine/failure/messages.h"
#include "engine/text/locale.h"
#include "engine/text/text_holder.h"

namespace vellum {

/// The state that every book has, and what both engines do alike. Every other operation fails with the
/// interface's failure value and "function is not available yet"; an engine overrides what it has.
template <class CharT>
class BookBaseT : public IBookT<CharT>, public IBookKept, public IBookNames {
public:
    /// For the sheets, formats and fonts of the book.
    LastError& lastError() noexcept { return _lastError; }
    const BookLocale& locale() const noexcept { return _locale; }

    int engineVersion() override;
    bool setLocale(const char* name) override;
    const char* errorMessage() override;
    int keptTotal() override;
    const char* keptAt(int index, std::size_t* size) override;
    int nameTotal() override { return 0; }
    bool nameAt(int, IBookNames::Name&) override { return false; }
    IBookNames::Outside outside() override { return {}; }

    bool loadFile(const CharT*, const CharT*) override;
    bool loadFileSheet(const CharT*, int, const CharT*) override;
    bool loadFileRows(const CharT*, int, int, int, const CharT*) override;
    bool loadWithoutEmptyCells(const CharT*) override;
    bool loadFileOutline(const CharT*) override;
    bool saveFile(const CharT*, bool) override;
    bool loadMemory(const void*, std::size_t, int, int, int) override;
    bool saveMemory(const char**, std::size_t*) override;
    ISheetT<CharT>* addSheet(const CharT*, ISheetT<CharT>*) override;
    ISheetT<CharT>* insertSheet(int, const CharT*, ISheetT<CharT>*) override;
    ISheetT<CharT>* getSheet(int) override;
    const CharT* sheetNameAt(int) override;
    int sheetKindAt(int) override;
    bool moveSheet(int, int) override;
    bool removeSheet(int) override;
    int sheetCount() override;
    IFormatT<CharT>* newFormat(IFormatT<CharT>*) override;
    IFontT<CharT>* newFont(IFontT<CharT>*) override;
    IRichStringT<CharT>* newRichString() override;
    int newCustomNumFormat(const CharT*) override;
    const CharT* customNumFormatText(int) override;
    IFormatT<CharT>* formatAt(int) override;
    int formatTotal() override;
    IFontT<CharT>* fontAt(int) override;
    int fontTotal() override;
    double datePack(int, int, int, int, int, int, int) override;
    bool dateUnpack(double, int*, int*, int*, int*, int*, int*, int*) override;
    int packColor(int, int, int) override;
    bool unpackColor(int, int*, int*, int*) override;
    int activeSheetIndex() override;
    bool setActiveSheetIndex(int) override;
    int pictureTotal() override;
    int pictureAt(int, const char**, std::size_t*) override;
    int addPictureFile(const CharT*) override;
    int addPictureData(const void*, std::size_t) override;
    int addPictureLink(const CharT*, bool) override;
    const CharT* defaultFontName(int*) override;
    bool setDefaultFontSpec(const CharT*, int) override;
    bool usesR1C1() override;
    bool setUsesR1C1(bool) override;
    bool usesRgbColors() override;
    bool setUsesRgbColors(bool) override;
    int calculationMode() override;
    bool setCalculationMode(int) override;
    int binaryVersion() override;
    bool isDate1904() override;
    bool setDate1904(bool) override;
    bool isTemplateFile() override;
    bool setTemplateFile(bool) override;
    bool isWriteProtected() override;

protected:
    LastError _lastError;
    TextHolder _conversion;  // owns the texts that the book returns
    BookLocale _locale;

private:
    template <class Result>
    Result notAvailable(Result failure) noexcept {
        _lastError.set(msg::notAvailable);
        return failure;
    }
};

extern template class BookBaseT<char>;
extern template class BookBaseT<wchar_t>;

}  // namespace vellum
