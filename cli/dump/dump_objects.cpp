#include "cli/dump/dump_objects.h"

#include "cli/workbook/picture_format.h"
#include "engine/api/iformcontrol.h"
#include "engine/api/iobjects.h"
#include "engine/facts/digest.h"

namespace cli {
namespace {

using Sheet = vellum::ISheetT<char>;

void textOrNull(JsonLines& lines, const char* text) {
    text ? lines.text(text) : lines.raw("null");
}

std::string hexText(const vellum::Digest& digest) {
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t byte : digest) text.append(1, digits[byte >> 4]).append(1, digits[byte & 15]);
    return text;
}

void dumpImage(vellum::IBookT<char>& book, int id, JsonLines& lines) {
    const char* data = nullptr;
    std::size_t size = 0;
    const int kind = book.pictureAt(id, &data, &size);
    lines.raw(R"({"image":{"id":)").integer(id).raw(R"(,"kind":)").integer(kind);
    const std::string_view bytes(data, data ? size : 0);
    lines.raw(R"(,"format":)").text(pictureFormatName(kind, bytes));
    lines.raw(R"(,"size":)").integer(static_cast<long long>(bytes.size())).raw(R"(,"md5":)");
    data ? lines.text(hexText(vellum::md5(asBytes(bytes)))) : lines.raw("null");
    lines.raw("}}").endLine();
}

void dumpPictures(Sheet& sheet, JsonLines& lines) {
    const int total = sheet.pictureTotalOnSheet();
    for (int i = 0; i < total; ++i) {
        int row = 0, col = 0, rowBottom = 0, colRight = 0, width = 0, height = 0, x = 0, y = 0;
        const char* link = nullptr;
        const int id = sheet.sheetPictureAt(i, &row, &col, &rowBottom, &colRight, &width, &height, &x, &y, &link);
        lines.raw(R"({"picture":{"index":)").integer(i).raw(R"(,"id":)").integer(id);
        lines.raw(R"(,"row":)").integer(row).raw(R"(,"col":)").integer(col);
        lines.raw(R"(,"rowBottom":)").integer(rowBottom).raw(R"(,"colRight":)").integer(colRight);
        lines.raw(R"(,"x":)").integer(x).raw(R"(,"y":)").integer(y);
        lines.raw(R"(,"width":)").integer(width).raw(R"(,"height":)").integer(height).raw(R"(,"link":)");
        textOrNull(lines, link);
        lines.raw("}}").endLine();
    }
}

void dumpComments(vellum::ISheetObjects<char>& objects, JsonLines& lines) {
    for (const auto& comment : objects.comments()) {
        lines.raw(R"({"comment":{"r":)").integer(comment.row).raw(R"(,"c":)").integer(comment.col);
        lines.raw(R"(,"author":)");
        textOrNull(lines, comment.author ? comment.author->c_str() : nullptr);
        lines.raw(R"(,"text":)").text(comment.text).raw("}}").endLine();
    }
}

/// A text of the control at a time: each lives until the next one.
void dumpControls(Sheet& sheet, JsonLines& lines) {
    const int total = sheet.formControlTotal();
    for (int i = 0; i < total; ++i) {
        auto* const control = sheet.formControlAt(i);
        lines.raw(R"({"control":{"index":)").integer(i).raw(R"(,"type":)");
        textOrNull(lines, control ? control->objectType() : nullptr);
        lines.raw(R"(,"checked":)");
        textOrNull(lines, control ? control->checked() : nullptr);
        lines.raw(R"(,"link":)");
        textOrNull(lines, control ? control->fmlaLink() : nullptr);
        lines.raw(R"(,"range":)");
        textOrNull(lines, control ? control->fmlaRange() : nullptr);
        lines.raw("}}").endLine();
    }
}

void dumpShapes(vellum::ISheetObjects<char>& objects, JsonLines& lines) {
    for (const auto& shape : objects.shapes()) {
        lines.raw(R"({"shape":{"type":)").text(shape.type);
        lines.raw(R"(,"row":)").integer(shape.row).raw(R"(,"col":)").integer(shape.col);
        lines.raw(R"(,"rowBottom":)").integer(shape.rowBottom).raw(R"(,"colRight":)").integer(shape.colRight);
        lines.raw("}}").endLine();
    }
}

}  // namespace

void dumpImages(vellum::IBookT<char>& book, JsonLines& lines) {
    const int total = book.pictureTotal();
    for (int id = 0; id < total; ++id) dumpImage(book, id, lines);
}

void dumpObjects(Sheet& sheet, JsonLines& lines) {
    auto* const objects = dynamic_cast<vellum::ISheetObjects<char>*>(&sheet);
    dumpPictures(sheet, lines);
    if (objects) dumpComments(*objects, lines);
    dumpControls(sheet, lines);
    if (objects) dumpShapes(*objects, lines);
}

}  // namespace cli
