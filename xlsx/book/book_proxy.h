// The book that the factory hands out: whichever dialect a file is in.
#pragma once
#include <memory>
#include <string>

#include "engine/api/ibook.h"
#include "engine/api/ibook_tries.h"
#include "engine/api/iobjects.h"

namespace vellum {

/// Owns a book of one dialect and forwards to it. A load that fails is tried again in the other dialect, with a fresh
/// book: nothing but the parser knows which dialect a file is in. A book that was replaced takes its settings with it.
template <class CharT>
class XMLBookProxy final : public IBookT<CharT>,
                           public IBookKept,
                           public IBookNames,
                           public IBookPictures,
                           public IBookTries {
public:
    XMLBookProxy();
    ~XMLBookProxy() override;
    XMLBookProxy(const XMLBookProxy&) = delete;
    XMLBookProxy& operator=(const XMLBookProxy&) = delete;

    /// When both tries fail the book is fresh, and its error text is that of the second try.
    bool loadFile(const CharT* path, const CharT* tempFile) override;
    bool loadFileSheet(const CharT* path, int sheetIndex, const CharT* tempFile) override;
    bool loadFileRows(const CharT* path, int sheetIndex, int firstRow, int lastRow, const CharT* tempFile) override;
    bool loadMemory(const void* data, std::size_t size, int sheetIndex, int firstRow, int lastRow) override;
    void release() override;

    const char* firstTryText() override { return _firstTryText.c_str(); }
    int keptTotal() override;
    const char* keptAt(int index, std::size_t* size) override;
    int nameTotal() override;
    bool nameAt(int index, IBookNames::Name& name) override;
    IBookNames::Outside outside() override;
    bool pictureSize(int index, int* width, int* height) override;
    bool isThumbnail(int index) override;

    // All others go straight through.
    bool loadWithoutEmptyCells(const CharT* path) override { return _book->loadWithoutEmptyCells(path); }
    bool loadFileOutline(const CharT* path) override { return _book->loadFileOutline(path); }
    bool saveFile(const CharT* path, bool useTemp) override { return _book->saveFile(path, useTemp); }
    bool saveMemory(const char** data, std::size_t* size) override { return _book->saveMemory(data, size); }
    ISheetT<CharT>* addSheet(const CharT* name, ISheetT<CharT>* source) override {
        return _book->addSheet(name, source);
    }
    ISheetT<CharT>* insertSheet(int index, const CharT* name, ISheetT<CharT>* source) override {
        return _book->insertSheet(index, name, source);
    }
    ISheetT<CharT>* getSheet(int index) override { return _book->getSheet(index); }
    const CharT* sheetNameAt(int index) override { return _book->sheetNameAt(index); }
    int sheetKindAt(int index) override { return _book->sheetKindAt(index); }
    bool moveSheet(int srcIndex, int dstIndex) override { return _book->moveSheet(srcIndex, dstIndex); }
    bool removeSheet(int index) override { return _book->removeSheet(index); }
    int sheetCount() override { return _book->sheetCount(); }
    IFormatT<CharT>* newFormat(IFormatT<CharT>* source) override { return _book->newFormat(source); }
    IFontT<CharT>* newFont(IFontT<CharT>* source) override { return _book->newFont(source); }
    IRichStringT<CharT>* newRichString() override { return _book->newRichString(); }
    int newCustomNumFormat(const CharT* text) override { return _book->newCustomNumFormat(text); }
    const CharT* customNumFormatText(int id) override { return _book->customNumFormatText(id); }
    IFormatT<CharT>* formatAt(int index) override { return _book->formatAt(index); }
    int formatTotal() override { return _book->formatTotal(); }
    IFontT<CharT>* fontAt(int index) override { return _book->fontAt(index); }
    int fontTotal() override { return _book->fontTotal(); }
    double datePack(int year, int month, int day, int hour, int min, int sec, int msec) override {
        return _book->datePack(year, month, day, hour, min, sec, msec);
    }
    bool dateUnpack(double value, int* year, int* month, int* day, int* hour, int* min, int* sec, int* msec) override {
        return _book->dateUnpack(value, year, month, day, hour, min, sec, msec);
    }
    int packColor(int red, int green, int blue) override { return _book->packColor(red, green, blue); }
    bool unpackColor(int color, int* red, int* green, int* blue) override {
        return _book->unpackColor(color, red, green, blue);
    }
    int activeSheetIndex() override { return _book->activeSheetIndex(); }
    bool setActiveSheetIndex(int index) override { return _book->setActiveSheetIndex(index); }
    int pictureTotal() override { return _book->pictureTotal(); }
    int pictureAt(int index, const char** data, std::size_t* size) override {
        return _book->pictureAt(index, data, size);
    }
    int addPictureFile(const CharT* path) override { return _book->addPictureFile(path); }
    int addPictureData(const void* data, std::size_t size) override { return _book->addPictureData(data, size); }
    int addPictureLink(const CharT* path, bool insert) override { return _book->addPictureLink(path, insert); }
    const CharT* defaultFontName(int* size) override { return _book->defaultFontName(size); }
    bool setDefaultFontSpec(const CharT* name, int size) override { return _book->setDefaultFontSpec(name, size); }
    bool usesR1C1() override { return _book->usesR1C1(); }
    bool setUsesR1C1(bool r1c1) override { return _book->setUsesR1C1(r1c1); }
    bool usesRgbColors() override { return _book->usesRgbColors(); }
    bool setUsesRgbColors(bool rgb) override { return _book->setUsesRgbColors(rgb); }
    int calculationMode() override { return _book->calculationMode(); }
    bool setCalculationMode(int mode) override { return _book->setCalculationMode(mode); }
    int engineVersion() override { return _book->engineVersion(); }
    int binaryVersion() override { return _book->binaryVersion(); }
    bool isDate1904() override { return _book->isDate1904(); }
    bool setDate1904(bool date1904) override { return _book->setDate1904(date1904); }
    bool isTemplateFile() override { return _book->isTemplateFile(); }
    bool setTemplateFile(bool isTemplate) override { return _book->setTemplateFile(isTemplate); }
    bool isWriteProtected() override { return _book->isWriteProtected(); }
    bool setLocale(const char* name) override { return _book->setLocale(name); }
    const char* errorMessage() override { return _book->errorMessage(); }

private:
    template <class Load>
    bool loadInEither(Load&& load);
    /// A fresh book of a dialect in the place of the present one, with an error text to begin with. False when there
    /// is no memory for it.
    bool makeBook(bool strict, const char* errorText = nullptr);

    std::unique_ptr<IBookT<CharT>> _book;
    std::string _firstTryText;  // of the last load, when a second try failed as well
    bool _strict = false;
};

extern template class XMLBookProxy<char>;
extern template class XMLBookProxy<wchar_t>;

}  // namespace vellum
