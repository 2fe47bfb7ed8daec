#include "host/sources/zeroed_arena.h"

#include <sys/mman.h>
#include <algorithm>
#include <cstdint>

namespace quillet {
namespace {

constexpr std::size_t largestSlab = std::size_t{32} << 20;
constexpr std::size_t largePage = std::size_t{2} << 20;

}  // namespace

void preferLargePages(void* memory, std::size_t size) {
    if (size >= largePage) madvise(memory, size, MADV_HUGEPAGE);
}

ZeroedArena::~ZeroedArena() {
    while (_slabs) {
        Slab* const slab = _slabs;
        _slabs = slab->below;
        munmap(slab, slab->size);
    }
}

char* ZeroedArena::aligned(char* at) {
    const auto misplaced = reinterpret_cast<std::uintptr_t>(at) & 7;
    return misplaced ? at + (8 - misplaced) : at;
}

void* ZeroedArena::takeFromNewSlab(std::size_t size) {
    _slabSize = std::min(_slabSize * 2, largestSlab);
    const std::size_t whole = std::max(_slabSize, (size + sizeof(Slab) + slack + 4095) & ~std::size_t{4095});
    void* const memory = mmap(nullptr, whole, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) return nullptr;
    preferLargePages(memory, whole);
    auto* const slab = static_cast<Slab*>(memory);
    slab->below = _slabs;
    slab->size = whole;
    _slabs = slab;
    char* const first = static_cast<char*>(memory) + sizeof(Slab);
    _next = first + size;
    _end = static_cast<char*>(memory) + whole - slack;
    return first;
}

}  // namespace quillet
