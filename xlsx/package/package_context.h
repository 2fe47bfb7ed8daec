// The package of a book, as the parts that lead to other parts know it.
#pragma once
#include <memory>
#include <string>
#include <string_view>

namespace vellum {

class ContentTypes;
class Relationships;
class XFile;

namespace xlsx {
class PictureList;
}

/// XMLBookImplT implements it. Routines throw vlerror.
class PackageContext {
public:
    virtual XFile* findPart(std::string_view path) = 0;
    /// Puts a part in the package, which owns it then, in the place of an older one of that name.
    virtual XFile& putPart(const std::string& path, std::unique_ptr<XFile> part) = 0;
    /// The relationships of a part; null when there are none. The second form makes them.
    virtual Relationships* findRelationshipsOf(std::string_view path) = 0;
    virtual Relationships& ensureRelationshipsOf(std::string_view path) = 0;
    /// Throws "workbook content types are not found".
    virtual ContentTypes& requireContentTypes() = 0;
    virtual xlsx::PictureList& pictures() = 0;

protected:
    ~PackageContext() = default;
};

}  // namespace vellum
