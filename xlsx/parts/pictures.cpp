#include "xlsx/parts/pictures.h"

#include <fstream>
#include <iterator>
#include <span>
#include <utility>

#include "engine/failure/vlerror.h"
#include "xlsx/package/content_types.h"
#include "xlsx/parts/object_messages.h"

namespace vellum::xlsx {
namespace {

struct ImageType {
    std::string_view extension, contentType;
};

/// By `PictureKind`.
constexpr ImageType imageTypes[] = {
    {"png", "image/png"},
    {"jpg", "image/jpeg"},
    {"gif", "image/gif"},
    {"wmf", "image/x-wmf"},
    {"bmp", "image/bmp"},
    {"emf", "image/x-emf"},
    {},
    {"tiff", "image/tiff"},
};
static_assert(std::size(imageTypes) == pictureTiff + 1);

std::span<const std::byte> asBytes(std::string_view bytes) {
    return std::as_bytes(std::span(bytes.data(), bytes.size()));
}

int kindOf(ImageFormat format) {
    switch (format) {
        case ImageFormat::png:
            return picturePng;
        case ImageFormat::jpeg:
            return pictureJpeg;
        case ImageFormat::gif:
            return pictureGif;
        case ImageFormat::wmf:
            return pictureWmf;
        case ImageFormat::bmp:
            return pictureBmp;
        case ImageFormat::emf:
        case ImageFormat::bareWmf:
            return pictureEmf;
        case ImageFormat::tiff:
            return pictureTiff;
        default:
            return pictureUnknown;
    }
}

/// Why a picture cannot be added; null when it can. Of the other kinds a size that is not there is no fault.
const char* faultText(const ImageHeader& header) {
    if (kindOf(header.format) == pictureUnknown) return msg::unknownPictureFormat;
    if (header.fault == ImageFault::none) return nullptr;
    switch (header.format) {
        case ImageFormat::jpeg:
            return header.fault == ImageFault::noMarker ? msg::jpgInvalid : msg::jpgCorrupted;
        case ImageFormat::gif:
            return msg::gifCorrupted;
        case ImageFormat::tiff:
            return msg::unknownPictureFormat;
        default:
            return nullptr;
    }
}

void measure(PictureRecord& record, const ImageHeader& header) {
    record.measured = true;
    record.kind = header.fault == ImageFault::noDirectory ? int{pictureUnknown} : kindOf(header.format);
    if (header.fault != ImageFault::none) return;
    record.width = header.width;
    record.height = header.height;
    record.dpiX = header.dpiX;
    record.dpiY = header.dpiY;
}

}  // namespace

int pictureKind(std::string_view bytes) {
    return kindOf(imageFormat(asBytes(bytes)));
}

const PictureRecord& PictureList::at(int index, const char* outOfRange) {
    if (index < 0 || static_cast<std::size_t>(index) >= _records.size()) throw vlerror(outOfRange);
    PictureRecord& record = _records[static_cast<std::size_t>(index)];
    if (!record.measured && record.part) measure(record, readImageHeader(asBytes(record.part->bytes())));
    return record;
}

int PictureList::append(PictureRecord record) {
    const int index = static_cast<int>(_records.size());
    if (!record.path.empty()) _byPath.emplace(record.path, index);
    if (!record.linkPath.empty()) _byLink.emplace(record.linkPath, index);
    _records.push_back(std::move(record));
    return index;
}

int PictureList::add(std::string_view bytes, PackageContext& package) {
    const ImageHeader header = readImageHeader(asBytes(bytes));
    if (const char* const fault = faultText(header)) throw vlerror(fault);
    PictureRecord record;
    measure(record, header);
    const ImageType& type = imageTypes[record.kind];
    ContentTypes& contentTypes = package.requireContentTypes();
    auto part = std::make_unique<BinaryFile>(bytes);
    contentTypes.setDefault(type.extension, type.contentType);
    record.path = freePath(type.extension, package);
    record.part = part.get();
    package.putPart(record.path, std::move(part));
    return append(std::move(record));
}

int PictureList::addLink(std::string path, std::string_view bytes) {
    PictureRecord record;
    measure(record, readImageHeader(asBytes(bytes)));
    record.linkPath = std::move(path);
    return append(std::move(record));
}

/// Names count from 1 for each extension; those that were found taken are not looked at again.
std::string PictureList::freePath(std::string_view extension, PackageContext& package) {
    unsigned& number = _lastNumber.try_emplace(std::string(extension), 0).first->second;
    std::string path;
    do path = "/xl/media/image" + std::to_string(++number) + "." + std::string(extension);
    while (package.findPart(path));
    return path;
}

int PictureList::indexOfPath(std::string_view path) const {
    const auto found = _byPath.find(path);
    return found == _byPath.end() ? -1 : found->second;
}

int PictureList::indexOfLink(std::string_view path) const {
    const auto found = _byLink.find(path);
    return found == _byLink.end() ? -1 : found->second;
}

void PictureList::registerPart(const std::string& path) {
    if (indexOfPath(path) >= 0) return;
    PictureRecord record;
    record.path = path;
    append(std::move(record));
}

void PictureList::attachParts(PackageContext& package) {
    for (PictureRecord& record : _records) {
        record.part = dynamic_cast<BinaryFile*>(package.findPart(record.path));
        if (record.part) record.kind = pictureKind(record.part->bytes());
    }
}

void PictureList::forgetPart(const XFile& part) {
    _lastNumber.clear();
    for (PictureRecord& record : _records) {
        if (record.part != &part) continue;
        _byPath.erase(record.path);
        record = {};
    }
}

std::string readPictureFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw vlerror(msg::cantOpenPicture);
    std::string bytes;
    char buffer[65536];
    while (in.read(buffer, sizeof buffer) || in.gcount() > 0) {
        bytes.append(buffer, static_cast<std::size_t>(in.gcount()));
    }
    if (in.bad()) throw vlerror(msg::cantOpenPicture);  // such as a folder
    if (bytes.empty()) throw vlerror(msg::pictureFileEmpty);
    return bytes;
}

}  // namespace vellum::xlsx
