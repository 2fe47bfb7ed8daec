// A book for tests to build on: every operation that books do not share fails with the failure value of its interface.
#pragma once
#include "engine/api/enums.h"
#include "engine/base/book_base.h"

namespace vellum {

class AbsentBook : public BookBaseT<char> {
public:
    void release() override {}
    int keptTotal() override { return 0; }
    const char* keptAt(int, std::size_t*) override { return nullptr; }
    int nameTotal() override { return 0; }
    bool nameAt(int, IBookNames::Name&) override { return false; }
    IBookNames::Outside outside() override { return {}; }
    bool loadFile(const char*, const char*) override { return none(false); }
    bool loadFileSheet(const char*, int, const char*) override { return none(false); }
    bool loadFileRows(const char*, int, int, int, const char*) override { return none(false); }
    bool loadWithoutEmptyCells(const char*) override { return none(false); }
    bool loadFileOutline(const char*) override { return none(false); }
    bool saveFile(const char*, bool) override { return none(false); }
    bool loadMemory(const void*, std::size_t, int, int, int) override { return none(false); }
    bool saveMemory(const char**, std::size_t*) override { return none(false); }
    ISheetT<char>* addSheet(const char*, ISheetT<char>*) override { return none(nullptr); }
    ISheetT<char>* insertSheet(int, const char*, ISheetT<char>*) override { return none(nullptr); }
    ISheetT<char>* getSheet(int) override { return none(nullptr); }
    const char* sheetNameAt(int) override { return none(nullptr); }
    int sheetKindAt(int) override { return none(sheetOther); }
    bool moveSheet(int, int) override { return none(false); }
    bool removeSheet(int) override { return none(false); }
    int sheetCount() override { return none(0); }
    IFormatT<char>* newFormat(IFormatT<char>*) override { return none(nullptr); }
    IFontT<char>* newFont(IFontT<char>*) override { return none(nullptr); }
    IRichStringT<char>* newRichString() override { return none(nullptr); }
    int newCustomNumFormat(const char*) override { return none(0); }
    const char* customNumFormatText(int) override { return none(nullptr); }
    IFormatT<char>* formatAt(int) override { return none(nullptr); }
    int formatTotal() override { return none(-1); }
    IFontT<char>* fontAt(int) override { return none(nullptr); }
    int fontTotal() override { return none(-1); }
    double datePack(int, int, int, int, int, int, int) override { return none(0.0); }
    bool dateUnpack(double, int*, int*, int*, int*, int*, int*, int*) override { return none(false); }
    int packColor(int, int, int) override { return none(noColor); }
    bool unpackColor(int, int*, int*, int*) override { return none(false); }
    int activeSheetIndex() override { return none(-1); }
    bool setActiveSheetIndex(int) override { return none(false); }
    int pictureTotal() override { return none(-1); }
    int pictureAt(int, const char**, std::size_t*) override { return none(pictureUnknown); }
    int addPictureFile(const char*) override { return none(-1); }
    int addPictureData(const void*, std::size_t) override { return none(-1); }
    int addPictureLink(const char*, bool) override { return none(-1); }
    const char* defaultFontName(int*) override { return none(nullptr); }
    bool setDefaultFontSpec(const char*, int) override { return none(false); }
    bool usesR1C1() override { return none(false); }
    bool setUsesR1C1(bool) override { return none(false); }
    bool usesRgbColors() override { return none(false); }
    bool setUsesRgbColors(bool) override { return none(false); }
    int calculationMode() override { return none(calculateAuto); }
    bool setCalculationMode(int) override { return none(false); }
    int binaryVersion() override { return none(0); }
    bool isDate1904() override { return none(false); }
    bool setDate1904(bool) override { return none(false); }
    bool isTemplateFile() override { return none(false); }
    bool setTemplateFile(bool) override { return none(false); }
    bool isWriteProtected() override { return none(false); }

private:
    template <class Result>
    Result none(Result failure) noexcept {
        _lastError.set("absent");
        return failure;
    }
};

}  // namespace vellum
