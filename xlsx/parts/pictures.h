// The pictures of a book.
#pragma once
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/api/enums.h"
#include "engine/facts/image_size.h"
#include "engine/text/text_hash.h"
#include "xlsx/package/package_context.h"
#include "xlsx/package/xfile.h"

namespace vellum::xlsx {

/// One image part, or an image file that is linked. Its size is read when it is first asked for.
struct PictureRecord {
    int width = 0, height = 0;  // pixels, 0 when they cannot be read
    int dpiX = defaultDpi, dpiY = defaultDpi;
    std::string path;            // of the part, empty for a link
    std::string linkPath;        // of the file of a linked picture, UTF-8
    BinaryFile* part = nullptr;  // null for a link
    int kind = pictureUnknown;
    bool measured = false;
};

/// The kind that the first bytes tell. A metafile without the placeable header begins as one of the newer kind does.
int pictureKind(std::string_view bytes);

/// The records of all pictures: image parts in the order of the archive, then those that were added. A place in the
/// list is a picture's id; none is ever taken out.
class PictureList {
public:
    [[nodiscard]] std::size_t size() const { return _records.size(); }
    /// With its size. Throws `outOfRange` for a place beyond the list.
    const PictureRecord& at(int index, const char* outOfRange);

    /// The place of a new image part, which is made from a copy of the bytes. A failure adds nothing.
    int add(std::string_view bytes, PackageContext& package);
    /// The place of a link to a file that holds these bytes. Any bytes will do.
    int addLink(std::string path, std::string_view bytes);

    /// The place of the part, of the link: -1 when there is none.
    [[nodiscard]] int indexOfPath(std::string_view path) const;
    [[nodiscard]] int indexOfLink(std::string_view path) const;

    /// An image part that a load came by; a second one of that name is the same part.
    void registerPart(const std::string& path);
    /// After a load, when all parts are there.
    void attachParts(PackageContext& package);
    /// A part is about to go.
    void forgetPart(const XFile& part);
    void clear() { *this = {}; }

private:
    using Places = std::unordered_map<std::string, int, TextHash, std::equal_to<>>;

    int append(PictureRecord record);
    std::string freePath(std::string_view extension, PackageContext& package);

    std::vector<PictureRecord> _records;
    Places _byPath, _byLink;
    std::map<std::string, unsigned, std::less<>> _lastNumber;  // of the names with an extension, all taken up to it
};

/// The whole file. Throws the texts for one that does not open, and for an empty one.
std::string readPictureFile(const std::string& path);

}  // namespace vellum::xlsx
