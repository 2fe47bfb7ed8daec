// Pictures of a book and their places on a sheet.
#include <cstdint>

#include "bench/growth/task.h"

namespace growth {
namespace {

/// The smallest PNG: one pixel, told apart from others by its number in a chunk of text. Nothing that adds pictures
/// looks at a chunk's checksum.
std::string png(int number) {
    std::string out("\x89PNG\r\n\x1a\n\0\0\0\x0DIHDR\0\0\0\x01\0\0\0\x01\x08\x02\0\0\0\x90\x77\x53\xDE", 33);
    const std::string text = numbered("k", 1'000'000'000 + number);
    out += std::string("\0\0\0", 3) + static_cast<char>(text.size()) + "tEXt" + text + std::string(4, '\0');
    out.append("\0\0\0\x0CIDAT\x08\xD7\x63\xF8\xCF\xC0\0\0\x03\x01\x01\0\x18\xDD\x8D\xB0", 24);
    out.append("\0\0\0\0IEND\xAE\x42\x60\x82", 12);
    return out;
}

int add(World& world, int number) {
    const std::string image = png(number);
    return world.book->addPictureData(image.data(), image.size());
}

void addOne(World& world) {
    add(world, 0);
}

void addAll(World& world) {
    for (int i = 0; i < world.steps; ++i) add(world, i);
}

void placeAll(World& world) {
    add(world, 0);
    for (int i = 0; i < world.steps; ++i) world.sheet->placePicture(i, 0, 0);
}

bool placed(World& w, int i) {
    int a, b, c, d, width, height, x, y;
    return w.sheet->sheetPictureAt(i, &a, &b, &c, &d, &width, &height, &x, &y) >= 0;
}

constexpr Task tasks[] = {
    {"picture", {10'000, 10'000}, [](World& w, int i) { return add(w, i) >= 0; }},
    {"the same picture", {10'000, 10'000}, [](World& w, int) { return add(w, 0) >= 0; }},
    {"picture by number",
     {10'000, 10'000},
     [](World& w, int i) {
         const char* data;
         std::size_t size;
         return w.book->pictureAt(i, &data, &size) >= 0;
     },
     addAll},
    {"place picture", {10'000, 10'000}, [](World& w, int i) { return w.sheet->placePicture(i, 0, 0); }, addOne},
    {"placed picture by number", {10'000, 10'000}, placed, placeAll},
    {"remove placed picture at a cell",
     {10'000, 10'000},
     [](World& w, int i) { return w.sheet->removePictureAt(i, 0); },
     placeAll},
    {"remove the last placed picture",
     {10'000, 10'000},
     [](World& w, int i) { return w.sheet->removePictureByIndex(w.steps - 1 - i); },
     placeAll},
};

}  // namespace

std::span<const Task> pictureTasks() {
    return tasks;
}

}  // namespace growth
