#include "cli/workbook/info_objects.h"

#include <map>

#include "cli/workbook/picture_format.h"
#include "engine/api/iobjects.h"

namespace cli {
namespace {

struct Sum {
    int count = 0;
    std::size_t bytes = 0;
};
using Sums = std::map<std::string, Sum, std::less<>>;

std::string listed(const Sums& sums) {
    std::string text;
    for (const auto& [format, sum] : sums) {
        if (!text.empty()) text += ", ";
        text += std::to_string(sum.count) + " " + format;
        if (sum.bytes > 0) text += " (" + std::to_string(sum.bytes) + " bytes)";
    }
    return text;
}

void addCount(std::string& text, int count, const char* one, const char* many) {
    if (count <= 0) return;
    if (!text.empty()) text += ", ";
    text += std::to_string(count) + " " + (count == 1 ? one : many);
}

}  // namespace

std::string pictureSummary(vellum::IBookT<char>& book) {
    auto* const known = dynamic_cast<vellum::IBookPictures*>(&book);
    Sums pictures, previews;
    const int total = book.pictureTotal();
    for (int id = 0; id < total; ++id) {
        const char* data = nullptr;
        std::size_t size = 0;
        const int kind = book.pictureAt(id, &data, &size);
        const std::string_view bytes(data, data ? size : 0);
        const std::string format(data ? pictureFormatName(kind, bytes) : "without data");
        Sum& sum = (known && known->isThumbnail(id) ? previews : pictures)[format];
        ++sum.count;
        sum.bytes += bytes.size();
    }
    std::string text = listed(pictures);
    if (previews.empty()) return text;
    if (!text.empty()) text += "; ";
    return text + "preview: " + listed(previews);
}

std::string objectSummary(vellum::ISheetT<char>& sheet) {
    std::string text;
    addCount(text, sheet.pictureTotalOnSheet(), "picture", "pictures");
    auto* const objects = dynamic_cast<vellum::ISheetObjects<char>*>(&sheet);
    int controls = sheet.formControlTotal(), charts = 0, others = 0;
    if (!objects) {
        addCount(text, controls, "control", "controls");
        return text;
    }
    addCount(text, static_cast<int>(objects->comments().size()), "comment", "comments");
    for (const auto& shape : objects->shapes()) {
        ++(shape.shapeClass == vellum::ShapeClass::control ? controls
           : shape.shapeClass == vellum::ShapeClass::chart ? charts
                                                           : others);
    }
    addCount(text, controls, "control", "controls");
    addCount(text, charts, "chart", "charts");
    addCount(text, others, "other shape", "other shapes");
    return text;
}

}  // namespace cli
