// The interface of workbooks.
#pragma once
#include <cstddef>
#include <optional>
#include <string>

namespace vellum {

template <class CharT>
class ISheetT;
template <class CharT>
class IFormatT;
template <class CharT>
class IFontT;
template <class CharT>
class IRichStringT;

/// A workbook. It owns everything that it hands out: sheets, formats, fonts, rich strings, and the
/// strings and buffers that its operations return. All of that dies with `release`, with a following
/// load, or with the operation that removes it. A returned string lives until the next call on the
/// same object that returns one.
///
/// Rows, columns and indexes count from 0. Out arguments and formats may be null. A failed operation
/// returns false, null, -1 (counts, indexes), 0.0 (numbers) or what its line says, and `errorMessage`
/// tells why. Nothing is thrown. A book and all that it owns belong to one thread at a time. Reading
/// may fill caches, hence no operation is const.
///
/// `CharT` is char (bytes in UTF-8 or in the C locale's encoding, see `setLocale`) or wchar_t.
template <class CharT>
class IBookT {
public:
    /// Loads all sheets and rows of the file. With `tempFile` the parts of a package go through a
    /// file of that name, one by one, instead of through memory; it changes no result.
    virtual bool loadFile(const CharT* path, const CharT* tempFile = nullptr) = 0;
    /// Keeps the cells of one sheet only.
    virtual bool loadFileSheet(const CharT* path, int sheetIndex, const CharT* tempFile = nullptr) = 0;
    /// Keeps the rows `firstRow` to `lastRow`, inclusive, of one sheet.
    virtual bool loadFileRows(const CharT* path, int sheetIndex, int firstRow, int lastRow,
                              const CharT* tempFile = nullptr) = 0;
    /// Leaves out blank formatted cells. Not for Open XML.
    virtual bool loadWithoutEmptyCells(const CharT* path) = 0;
    /// Loads the sheet list and the formats, no cells. Such a book cannot be saved.
    virtual bool loadFileOutline(const CharT* path) = 0;
    /// Writes the workbook, replacing the file. `useTemp` stages big parts in files beside the target.
    virtual bool saveFile(const CharT* path, bool useTemp = false) = 0;
    /// As the file forms, from bytes that are copied; -1 stands for all sheets and all rows.
    virtual bool loadMemory(const void* data, std::size_t size, int sheetIndex = -1, int firstRow = -1,
                            int lastRow = -1) = 0;
    /// Writes into a buffer of the book, which lives until the next call or the end of the book.
    virtual bool saveMemory(const char** data, std::size_t* size) = 0;

    /// Adds a sheet at the end, a copy of `source` if that is not null. A name beyond 31 characters
    /// is cut, which leaves a warning in `errorMessage`.
    virtual ISheetT<CharT>* addSheet(const CharT* name, ISheetT<CharT>* source = nullptr) = 0;
    virtual ISheetT<CharT>* insertSheet(int index, const CharT* name, ISheetT<CharT>* source = nullptr) = 0;
    virtual ISheetT<CharT>* getSheet(int index) = 0;
    virtual const CharT* sheetNameAt(int index) = 0;
    /// A `SheetKind`; `sheetOther` when the index is out of range.
    virtual int sheetKindAt(int index) = 0;
    /// Puts the sheet before the one that is now at `dstIndex`, which may be the count.
    virtual bool moveSheet(int srcIndex, int dstIndex) = 0;
    virtual bool removeSheet(int index) = 0;
    virtual int sheetCount() = 0;

    virtual IFormatT<CharT>* newFormat(IFormatT<CharT>* source = nullptr) = 0;
    virtual IFontT<CharT>* newFont(IFontT<CharT>* source = nullptr) = 0;
    virtual IRichStringT<CharT>* newRichString() = 0;
    /// The id under which the text is, or gets, registered; 0 on failure.
    virtual int newCustomNumFormat(const CharT* text) = 0;
    virtual const CharT* customNumFormatText(int id) = 0;
    virtual IFormatT<CharT>* formatAt(int index) = 0;
    virtual int formatTotal() = 0;
    virtual IFontT<CharT>* fontAt(int index) = 0;
    virtual int fontTotal() = 0;

    /// Days since the epoch of the book's date system, the time of day as fraction.
    virtual double datePack(int year, int month, int day, int hour = 0, int min = 0, int sec = 0, int msec = 0) = 0;
    /// False when the number is no date. A number below 1 is a time, with year, month and day 0.
    virtual bool dateUnpack(double value, int* year, int* month, int* day, int* hour = nullptr, int* min = nullptr,
                            int* sec = nullptr, int* msec = nullptr) = 0;
    /// Palette index, or a 24-bit colour in Open XML; 32767 on failure. Channels are 0 to 255.
    virtual int packColor(int red, int green, int blue) = 0;
    virtual bool unpackColor(int color, int* red, int* green, int* blue) = 0;
    virtual int activeSheetIndex() = 0;
    virtual bool setActiveSheetIndex(int index) = 0;

    virtual int pictureTotal() = 0;
    /// The result is a `PictureKind`, 255 on failure; the bytes stay the book's.
    virtual int pictureAt(int index, const char** data, std::size_t* size) = 0;
    /// The picture's id, -1 on failure.
    virtual int addPictureFile(const CharT* path) = 0;
    virtual int addPictureData(const void* data, std::size_t size) = 0;
    /// With `insert` the bytes go into the workbook, as with `addPictureFile`. Not for .xls.
    virtual int addPictureLink(const CharT* path, bool insert) = 0;

    virtual const CharT* defaultFontName(int* size) = 0;
    virtual bool setDefaultFontSpec(const CharT* name, int size) = 0;
    virtual bool usesR1C1() = 0;
    virtual bool setUsesR1C1(bool r1c1) = 0;
    virtual bool usesRgbColors() = 0;
    virtual bool setUsesRgbColors(bool rgb) = 0;
    /// A `CalculationMode`.
    virtual int calculationMode() = 0;
    virtual bool setCalculationMode(int mode) = 0;
    virtual int engineVersion() = 0;
    /// The BIFF version of the loaded file, 0 for Open XML.
    virtual int binaryVersion() = 0;
    virtual bool isDate1904() = 0;
    virtual bool setDate1904(bool date1904) = 0;
    virtual bool isTemplateFile() = 0;
    virtual bool setTemplateFile(bool isTemplate) = 0;
    virtual bool isWriteProtected() = 0;

    /// "UTF-8", "UTF-8.semicolon" and "UTF-8.comma" make char strings UTF-8 and choose the separator
    /// of function arguments. Any other name goes to the C library's `setlocale`, for the process.
    virtual bool setLocale(const char* name) = 0;
    /// "ok", the text of the last failure, or a text that begins "warning: ".
    virtual const char* errorMessage() = 0;
    /// Destroys the book and all that it handed out.
    virtual void release() = 0;

    virtual ~IBookT() = default;
};

/// What a book carries from load to save without modelling it, for reports to people.
class IBookKept {
public:
    virtual int keptTotal() = 0;
    /// Its name, such as the path of a part or of a stream, and its size in bytes. Null when the index is out of range.
    virtual const char* keptAt(int index, std::size_t* size) = 0;

protected:
    ~IBookKept() = default;
};

/// The defined names of the whole book, for those who list them. Both engines' books have it.
class IBookNames {
public:
    /// Texts are UTF-8. `scope` is a sheet's index, or -1 for the workbook.
    struct Name {
        std::string text;
        int scope = -1;
        bool hidden = false, builtIn = false;
        /// The one area of one sheet that the name stands for; `sheet` is -1 when it stands for something else.
        int sheet = -1;
        int rowFirst = 0, rowLast = 0, colFirst = 0, colLast = 0;
        std::optional<std::string> formula;  // none when the engine has no text for it
    };
    /// What the book refers to outside of it, and formulas that a save turns into their values.
    struct Outside {
        int otherBooks = 0, addInFunctions = 0, ddeLinks = 0, lostFormulas = 0;
    };

    virtual int nameTotal() = 0;
    /// In the file's order, as `nameTotal` counted last. False when the index is out of range, or a text is no UTF-8.
    virtual bool nameAt(int index, Name& name) = 0;
    virtual Outside outside() = 0;

protected:
    ~IBookNames() = default;
};

}  // namespace vellum
