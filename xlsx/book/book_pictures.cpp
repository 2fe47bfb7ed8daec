// The pictures of the book.
#include <algorithm>

#include "engine/failure/guarded.h"
#include "engine/failure/vlerror.h"
#include "engine/text/conversions.h"
#include "xlsx/book/book.h"
#include "xlsx/package/part_path.h"
#include "xlsx/package/relationships.h"
#include "xlsx/parts/object_messages.h"

namespace vellum {

template <class CharT, class Tag>
int XMLBookImplT<CharT, Tag>::pictureTotal() {
    return guarded(this->_lastError, -1, [&] { return static_cast<int>(_pictures.size()); });
}

template <class CharT, class Tag>
int XMLBookImplT<CharT, Tag>::pictureAt(int index, const char** data, std::size_t* size) {
    if (data) *data = nullptr;
    if (size) *size = 0;
    return guarded(this->_lastError, static_cast<int>(pictureUnknown), [&] {
        const xlsx::PictureRecord& record = _pictures.at(index, xlsx::msg::indexOutOfRange);
        if (record.part) {
            if (data) *data = record.part->bytes().data();
            if (size) *size = record.part->bytes().size();
        }
        return record.kind;
    });
}

template <class CharT, class Tag>
int XMLBookImplT<CharT, Tag>::addPictureFile(const CharT* path) {
    return guarded(this->_lastError, -1, [&] {
        if (!path) throw vlerror(xlsx::msg::pictureNameNull);
        return _pictures.add(xlsx::readPictureFile(narrowPath(path)), *this);
    });
}

template <class CharT, class Tag>
int XMLBookImplT<CharT, Tag>::addPictureData(const void* data, std::size_t size) {
    return guarded(this->_lastError, -1, [&] {
        return _pictures.add({static_cast<const char*>(data), data ? size : 0}, *this);
    });
}

template <class CharT, class Tag>
int XMLBookImplT<CharT, Tag>::addPictureLink(const CharT* path, bool insert) {
    return guarded(this->_lastError, -1, [&] {
        if (!path) throw vlerror(xlsx::msg::pictureNameNull);
        const std::string bytes = xlsx::readPictureFile(narrowPath(path));
        return insert ? _pictures.add(bytes, *this) : _pictures.addLink(toNarrow(widen(path), true), bytes);
    });
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::pictureSize(int index, int* width, int* height) {
    return guarded(this->_lastError, false, [&] {
        const xlsx::PictureRecord& record = _pictures.at(index, xlsx::msg::indexOutOfRange);
        if (width) *width = record.width;
        if (height) *height = record.height;
        return true;
    });
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::isThumbnail(int index) {
    return guarded(this->_lastError, false, [&] {
        const std::string& path = _pictures.at(index, xlsx::msg::indexOutOfRange).path;
        const auto* const ofPackage = dynamic_cast<const Relationships*>(findPart("/_rels/.rels"));
        if (!ofPackage || path.empty()) return false;
        const auto& elements = ofPackage->root().Relationship();
        return std::any_of(elements.begin(), elements.end(), [&](const auto& element) {
            return element.Type().ends_with("/metadata/thumbnail") &&
                   comparablePath("", element.Target()) == comparablePath("", path);
        });
    });
}

}  // namespace vellum
