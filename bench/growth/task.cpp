#include "bench/growth/task.h"

#include "engine/factories/factories.h"

namespace growth {

World::World(bool isBinary, int stepCount)
    : binary(isBinary),
      steps(stepCount),
      book(isBinary ? vellum::vlCreateBook<char>() : vellum::vlCreateXMLBook<char>()),
      rows(isBinary ? 65536 : 1048576),
      cols(isBinary ? 256 : 16384) {
    book->setLocale("UTF-8");
    sheet = book->addSheet("S");
}

std::string numbered(const char* head, int i) {
    return std::string(head).append(std::to_string(i));
}

void fillNumbers(World& world) {
    for (int i = 0; i < world.steps; ++i) world.sheet->writeNumber(rowOf(world, i), colOf(world, i), i * 0.5);
}

void fillTexts(World& world) {
    for (int i = 0; i < world.steps; ++i) {
        world.sheet->writeString(rowOf(world, i), colOf(world, i), numbered("text ", i).c_str());
    }
}

}  // namespace growth
