// Texts that live as long as their owner.
#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace refhost {

/// Bump storage for texts closed by a NUL. What it hands out lives as long as the arena.
class TextArena {
public:
    const char* keep(std::string_view text);

private:
    static constexpr std::size_t blockSize = 64 * 1024;
    std::vector<std::unique_ptr<char[]>> _blocks;
    char* _free = nullptr;
    std::size_t _left = 0;
};

/// Each different text once.
class TextPool {
public:
    const char* intern(std::string_view text);
    /// The same; what was answered last, which is often given back at once, is known by its address.
    const char* intern(const char* text) { return text == _last ? text : intern(std::string_view(text)); }
    std::size_t size() const { return _count; }

private:
    struct Slot {
        std::uint32_t hash;
        std::uint32_t length;
        const char* text;  // null: a free slot
    };
    void rehash();

    TextArena _arena;
    std::vector<Slot> _slots;
    std::size_t _count = 0;
    const char* _last = nullptr;
};

}  // namespace refhost
