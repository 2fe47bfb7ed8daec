// The pictures of a book.
#include <iterator>
#include <vector>

#include "biff/book/book.h"
#include "engine/facts/image_messages.h"
#include "engine/failure/guarded.h"
#include "engine/text/file_open.h"

namespace vellum {

template <class CharT>
int BookImplT<CharT>::pictureTotal() {
    return guarded(this->_lastError, -1, [&] { return static_cast<int>(_globals.drawingGroup.pictureTotal()); });
}

template <class CharT>
int BookImplT<CharT>::pictureAt(int index, const char** data, std::size_t* size) {
    return guarded<int>(this->_lastError, pictureUnknown, [&] {
        const auto& group = _globals.drawingGroup;
        if (index < 0 || static_cast<std::size_t>(index) >= group.pictureTotal())
            throw vlerror(biff::msg::indexOutOfRange);
        drawing::Blip* const blip = group.picture(static_cast<std::size_t>(index)).picture();
        if (blip == nullptr) throw vlerror(biff::msg::unknownPictureFormat);
        const auto bytes = blip->data();
        if (data != nullptr) *data = reinterpret_cast<const char*>(bytes.data());
        if (size != nullptr) *size = bytes.size();
        return blip->pictureKind();
    });
}

template <class CharT>
int BookImplT<CharT>::addPictureFile(const CharT* path) {
    return guarded(this->_lastError, -1, [&] {
        if (path == nullptr) throw vlerror(biff::msg::saveNameNull);
        auto file = openFile(path, forReading, _pool, utf8());
        if (!file.is_open()) throw vlerror(biff::msg::cantOpenPicture);
        const std::vector<char> bytes(std::istreambuf_iterator<char>(file), {});
        if (bytes.empty()) throw vlerror(biff::msg::pictureFileEmpty);
        return static_cast<int>(_globals.drawingGroup.addPicture(std::as_bytes(std::span(bytes))));
    });
}

template <class CharT>
int BookImplT<CharT>::addPictureData(const void* data, std::size_t size) {
    return guarded(this->_lastError, -1, [&] {
        const std::span bytes(static_cast<const std::byte*>(data), data == nullptr ? 0 : size);
        return static_cast<int>(_globals.drawingGroup.addPicture(bytes));
    });
}

template <class CharT>
bool BookImplT<CharT>::pictureSize(int index, int* width, int* height) {
    return guarded(this->_lastError, false, [&] {
        const auto& group = _globals.drawingGroup;
        if (index < 0 || static_cast<std::size_t>(index) >= group.pictureTotal())
            throw vlerror(biff::msg::indexOutOfRange);
        const auto& blip = group.picture(static_cast<std::size_t>(index)).blip;
        if (width != nullptr) *width = blip == nullptr ? 0 : static_cast<int>(blip->pictureWidth());
        if (height != nullptr) *height = blip == nullptr ? 0 : static_cast<int>(blip->pictureHeight());
        return true;
    });
}

}  // namespace vellum
