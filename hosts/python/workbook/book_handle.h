// A workbook of the engine in Python's hands.
#pragma once
#include <pybind11/pybind11.h>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "engine/api/enums.h"
#include "engine/api/ibook.h"
#include "engine/api/iformat.h"
#include "engine/api/isheet.h"

namespace pyhost {

namespace py = pybind11;

using Book = vellum::IBookT<char>;
using Sheet = vellum::ISheetT<char>;
using Format = vellum::IFormatT<char>;

/// A failure of the engine, with its text.
struct BookError : std::runtime_error {
    using runtime_error::runtime_error;
};

class SheetHandle;

/// Owns a book. Used under the interpreter's lock, but for the time of a load or save, in which every other use is
/// refused with RuntimeError.
class BookHandle : public std::enable_shared_from_this<BookHandle> {
public:
    /// A new book without sheets. Throws MemoryError.
    explicit BookHandle(bool binary);
    ~BookHandle();
    BookHandle(const BookHandle&) = delete;
    BookHandle& operator=(const BookHandle&) = delete;

    /// From a file, or from bytes. Throws BookError.
    static std::shared_ptr<BookHandle> loadFile(const std::string& path, bool binary);
    static std::shared_ptr<BookHandle> loadBytes(const py::bytes& bytes, bool binary);
    void saveFile(const std::string& path);
    py::bytes saveBytes();

    /// The book, for whoever calls it at once. Throws ValueError when it is closed.
    Book& use();
    void close();
    bool isClosed() const { return _book == nullptr; }
    bool isBinary() const { return _binary; }

    std::shared_ptr<SheetHandle> sheetAt(int index);
    std::shared_ptr<SheetHandle> handleOf(Sheet* sheet);
    std::shared_ptr<SheetHandle> addSheet(int index, const std::string& name,
                                          const std::shared_ptr<SheetHandle>& source);
    void removeSheet(int index);

    /// While a Pin lives no sheet goes and nothing is loaded or saved, whatever Python's code does meanwhile.
    class Pin {
    public:
        explicit Pin(BookHandle& book) : _book(book) {
            book.use();
            ++book._pins;
        }
        ~Pin() { --_book._pins; }
        Pin(const Pin&) = delete;
        Pin& operator=(const Pin&) = delete;

    private:
        BookHandle& _book;
    };

    /// Colours of a package are told as they are, not as places of a palette that it need not have. Called before
    /// formats or colours are, since it makes the part of styles where there is none.
    void speakRgb();
    /// A format as another one, null for none, but with a number format: the same one each time, since a workbook has
    /// room for few.
    Format* formatLike(Format* format, int numFormat);
    /// Those that formatLike made may look otherwise now.
    void forgetFormatsLike() { _formatsLike.clear(); }
    /// Throws BookError with the book's last text when an operation answered false.
    void check(bool done);
    /// The same for operations that answer a value: only their text tells of a failure.
    void checkText();

private:
    template <class Work>
    void unlocked(Work&& work);
    void refusePinned() const;

    Book* _book;
    const bool _binary;
    bool _busy = false;
    int _pins = 0;
    std::map<Sheet*, std::weak_ptr<SheetHandle>> _sheets;
    std::map<std::pair<Format*, int>, Format*> _formatsLike;
};

using BookPtr = std::shared_ptr<BookHandle>;

/// A sheet. Every use of one that was removed, or whose book is closed, throws ValueError.
class SheetHandle {
public:
    SheetHandle(BookPtr book, Sheet* sheet) : _book(std::move(book)), _sheet(sheet) {}
    Sheet& use();
    BookHandle& book() { return *_book; }
    const BookPtr& bookPtr() const { return _book; }
    void forget() { _sheet = nullptr; }
    /// The sheet's place in its book.
    int index();

private:
    BookPtr _book;
    Sheet* _sheet;
};

/// A cell format, the book's.
class FormatHandle {
public:
    FormatHandle(BookPtr book, Format* format) : _book(std::move(book)), _format(format) {}
    Format& use();
    /// The same for a change of its look.
    Format& change();
    BookHandle& book() { return *_book; }
    /// The format for a cell of a book; ValueError when it is another book's.
    Format* of(const BookHandle& book);
    bool operator==(const FormatHandle& other) const { return _format == other._format; }

private:
    BookPtr _book;
    Format* _format;
};

void bindBooks(py::module_& module);
void bindSheets(py::module_& module);
void bindFormats(py::module_& module);

}  // namespace pyhost
