// What reports ask of a sheet's objects.
#pragma once
#include <optional>
#include <string>
#include <vector>

namespace vellum {

/// A comment of a sheet, with its author where the file names one.
template <class CharT>
struct SheetComment {
    int row = 0, col = 0;
    std::optional<std::basic_string<CharT>> author;
    std::basic_string<CharT> text;
};

enum class ShapeClass { other, chart, control };

/// A drawn object that is neither a picture nor a comment; a group counts as one. `type` is the published name of the
/// object's type ("rectangle", "check box", "chart") or of its element ("sp", "graphicFrame").
struct SheetShape {
    std::string type;
    ShapeClass shapeClass = ShapeClass::other;
    int row = 0, col = 0, rowBottom = 0, colRight = 0;
};

/// What lies on a sheet beside its cells and pictures: what a visitor of all objects uses, and what a report needs
/// beyond the operations of ISheetT. After a failure a list is empty, and the book's last error tells why.
template <class CharT>
class ISheetObjects {
public:
    /// By row, then column; of several comments of one cell the first.
    virtual std::vector<SheetComment<CharT>> comments() = 0;
    /// In the order of the file.
    virtual std::vector<SheetShape> shapes() = 0;

protected:
    ~ISheetObjects() = default;
};

/// What a book knows of its pictures beside their bytes.
class IBookPictures {
public:
    /// In pixels; 0 when nothing tells. False when the index is out of range.
    virtual bool pictureSize(int index, int* width, int* height) = 0;
    /// Whether the picture is a preview of the file, which lies on no sheet.
    virtual bool isThumbnail(int index) = 0;

protected:
    ~IBookPictures() = default;
};

}  // namespace vellum
