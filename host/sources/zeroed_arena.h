// Zeroed memory that is given back all at once.
#pragma once
#include <cstddef>

namespace quillet {

/// Asks the system for large pages, which cost fewer page faults, where `size` bytes fill some. No harm when it
/// refuses.
void preferLargePages(void* memory, std::size_t size);

/// Hands out pieces of zeroed memory, 8-byte aligned when asked so, from slabs that double up to 32 MiB. Large slabs
/// come straight from the system, so that pages which nobody touches cost nothing.
class ZeroedArena {
public:
    /// Bytes behind each piece that can be read too; what they hold does not matter.
    static constexpr std::size_t slack = 16;

    ZeroedArena() = default;
    ~ZeroedArena();
    ZeroedArena(const ZeroedArena&) = delete;
    ZeroedArena& operator=(const ZeroedArena&) = delete;

    /// Null when memory is short. `alignment` is 1 or 8.
    void* take(std::size_t size, std::size_t alignment) {
        char* const at = alignment == 8 ? aligned(_next) : _next;
        if (at && at <= _end && static_cast<std::size_t>(_end - at) >= size) {
            _next = at + size;
            return at;
        }
        return takeFromNewSlab(size);
    }

private:
    struct Slab {
        Slab* below;
        std::size_t size;
    };

    static char* aligned(char* at);
    void* takeFromNewSlab(std::size_t size);

    char* _next = nullptr;
    char* _end = nullptr;
    Slab* _slabs = nullptr;
    std::size_t _slabSize = 8192;
};

}  // namespace quillet
