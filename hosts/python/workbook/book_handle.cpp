#include "hosts/python/workbook/book_handle.h"

#include <string_view>

#include "engine/factories/factories.h"

namespace pyhost {

BookHandle::BookHandle(bool binary)
    : _book(binary ? vellum::vlCreateBook<char>() : vellum::vlCreateXMLBook<char>()), _binary(binary) {
    if (_book == nullptr) throw std::bad_alloc();
    _book->setLocale("UTF-8");
}

void BookHandle::speakRgb() {
    if (!_binary && !use().usesRgbColors()) check(use().setUsesRgbColors(true));
}

BookHandle::~BookHandle() {
    if (_book != nullptr) _book->release();
}

template <class Work>
void BookHandle::unlocked(Work&& work) {
    Book& book = use();
    refusePinned();
    struct Busy {
        bool& busy;
        explicit Busy(bool& flag) : busy(flag) { busy = true; }
        ~Busy() { busy = false; }
    };
    bool done = false;
    {
        const Busy busy(_busy);
        const py::gil_scoped_release released;
        done = work(book);
    }
    check(done);
}

BookPtr BookHandle::loadFile(const std::string& path, bool binary) {
    auto made = std::make_shared<BookHandle>(binary);
    made->unlocked([&](Book& book) { return book.loadFile(path.c_str()); });
    return made;
}

BookPtr BookHandle::loadBytes(const py::bytes& bytes, bool binary) {
    auto made = std::make_shared<BookHandle>(binary);
    const std::string_view view = bytes;
    made->unlocked([&](Book& book) { return book.loadMemory(view.data(), view.size()); });
    return made;
}

void BookHandle::saveFile(const std::string& path) {
    unlocked([&](Book& book) { return book.saveFile(path.c_str()); });
}

py::bytes BookHandle::saveBytes() {
    const char* data = nullptr;
    std::size_t size = 0;
    unlocked([&](Book& book) { return book.saveMemory(&data, &size); });
    return {data, size};
}

Book& BookHandle::use() {
    if (_book == nullptr) throw py::value_error("this workbook is closed");
    if (_busy) throw std::runtime_error("another thread loads or saves this workbook");
    return *_book;
}

void BookHandle::refusePinned() const {
    if (_pins > 0) throw std::runtime_error("another thread reads cells of this workbook");
}

void BookHandle::close() {
    if (_book == nullptr) return;
    use();
    refusePinned();
    _book->release();
    _book = nullptr;
    _sheets.clear();
    _formatsLike.clear();
}

std::shared_ptr<SheetHandle> BookHandle::handleOf(Sheet* sheet) {
    if (sheet == nullptr) check(false);
    std::weak_ptr<SheetHandle>& known = _sheets[sheet];
    auto handle = known.lock();
    if (!handle) known = handle = std::make_shared<SheetHandle>(shared_from_this(), sheet);
    return handle;
}

std::shared_ptr<SheetHandle> BookHandle::sheetAt(int index) {
    return handleOf(use().getSheet(index));
}

std::shared_ptr<SheetHandle> BookHandle::addSheet(int index, const std::string& name,
                                                  const std::shared_ptr<SheetHandle>& source) {
    Sheet* const copied = source ? &source->use() : nullptr;
    Book& book = use();
    if (index < 0 || index == book.sheetCount()) return handleOf(book.addSheet(name.c_str(), copied));
    return handleOf(book.insertSheet(index, name.c_str(), copied));
}

void BookHandle::removeSheet(int index) {
    refusePinned();
    Sheet* const sheet = use().getSheet(index);
    check(use().removeSheet(index));
    const auto known = _sheets.find(sheet);
    if (known == _sheets.end()) return;
    if (const auto handle = known->second.lock()) handle->forget();
    _sheets.erase(known);
}

Format* BookHandle::formatLike(Format* format, int numFormat) {
    Format*& known = _formatsLike[{format, numFormat}];
    if (known != nullptr) return known;
    known = use().newFormat(format);
    check(known != nullptr);
    known->setNumFormat(numFormat);
    return known;
}

void BookHandle::check(bool done) {
    if (done) return;
    const char* text = use().errorMessage();
    throw BookError(text == nullptr ? "the workbook refused this" : text);
}

void BookHandle::checkText() {
    const std::string_view text = use().errorMessage();
    if (text != "ok" && !text.starts_with("warning: ")) throw BookError(std::string(text));
}

Sheet& SheetHandle::use() {
    _book->use();
    if (_sheet == nullptr) throw py::value_error("this sheet was removed");
    return *_sheet;
}

int SheetHandle::index() {
    Sheet* const sheet = &use();
    Book& book = _book->use();
    for (int i = 0; i < book.sheetCount(); ++i)
        if (book.getSheet(i) == sheet) return i;
    throw py::value_error("this sheet was removed");
}

Format& FormatHandle::use() {
    _book->use();
    return *_format;
}

Format& FormatHandle::change() {
    _book->forgetFormatsLike();
    return use();
}

Format* FormatHandle::of(const BookHandle& other) {
    if (&other != _book.get()) throw py::value_error("a format belongs to the cells of its own workbook");
    return &use();
}

}  // namespace pyhost
