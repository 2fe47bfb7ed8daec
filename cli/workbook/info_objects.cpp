#include "cli/workbook/info_objects.h"

#include <map>

#include "cli/workbook/picture_format.h"
#include "engine/api/iobjects.h"

namespace cli {
namespace {

void addCount(std::string& text, int count, const char* one, const char* many) {
    if (count <= 0) return;
    if (!text.empty()) text += ", ";
    text += std::to_string(count) + " " + (count == 1 ? one : many);
}

}  // namespace

std::vector<PictureSum> pictureSums(vellum::IBookT<char>& book) {
    auto* const known = dynamic_cast<vellum::IBookPictures*>(&book);
    std::map<std::pair<bool, std::string>, PictureSum> sums;
    const int total = book.pictureTotal();
    for (int id = 0; id < total; ++id) {
        const char* data = nullptr;
        std::size_t size = 0;
        const int kind = book.pictureAt(id, &data, &size);
        const std::string_view bytes(data, data ? size : 0);
        const std::string format(data ? pictureFormatName(kind, bytes) : "without data");
        const bool preview = known && known->isThumbnail(id);
        PictureSum& sum = sums.try_emplace({preview, format}, PictureSum{format, 0, 0, preview}).first->second;
        ++sum.count;
        sum.bytes += bytes.size();
    }
    std::vector<PictureSum> list;
    for (auto& [key, sum] : sums) list.push_back(std::move(sum));
    return list;
}

std::string pictureSummary(vellum::IBookT<char>& book) {
    std::string text;
    bool previews = false;
    for (const PictureSum& sum : pictureSums(book)) {
        if (sum.preview && !previews) {
            text += text.empty() ? "preview: " : "; preview: ";
            previews = true;
        } else if (!text.empty()) {
            text += ", ";
        }
        text += std::to_string(sum.count) + " " + sum.format;
        if (sum.bytes > 0) text += " (" + std::to_string(sum.bytes) + " bytes)";
    }
    return text;
}

ObjectCounts objectCounts(vellum::ISheetT<char>& sheet) {
    ObjectCounts counts;
    counts.pictures = sheet.pictureTotalOnSheet();
    counts.controls = sheet.formControlTotal();
    auto* const objects = dynamic_cast<vellum::ISheetObjects<char>*>(&sheet);
    if (!objects) return counts;
    counts.comments = static_cast<int>(objects->comments().size());
    for (const auto& shape : objects->shapes()) {
        ++(shape.shapeClass == vellum::ShapeClass::control ? counts.controls
           : shape.shapeClass == vellum::ShapeClass::chart ? counts.charts
                                                           : counts.others);
    }
    return counts;
}

std::string objectSummary(vellum::ISheetT<char>& sheet) {
    const ObjectCounts counts = objectCounts(sheet);
    std::string text;
    addCount(text, counts.pictures, "picture", "pictures");
    addCount(text, counts.comments, "comment", "comments");
    addCount(text, counts.controls, "control", "controls");
    addCount(text, counts.charts, "chart", "charts");
    addCount(text, counts.others, "other shape", "other shapes");
    return text;
}

}  // namespace cli
