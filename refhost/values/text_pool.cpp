#include "refhost/values/text_pool.h"

#include <cstring>
#include <functional>

namespace refhost {

const char* TextArena::keep(std::string_view text) {
    const std::size_t size = text.size() + 1;
    if (size > _left) {
        if (size > blockSize / 4) {  // a block of its own; the current one stays in use
            _blocks.push_back(std::make_unique_for_overwrite<char[]>(size));
            char* own = _blocks.back().get();
            std::memcpy(own, text.data(), text.size());
            own[text.size()] = '\0';
            return own;
        }
        _blocks.push_back(std::make_unique_for_overwrite<char[]>(blockSize));
        _free = _blocks.back().get();
        _left = blockSize;
    }
    char* kept = _free;
    if (!text.empty()) std::memcpy(kept, text.data(), text.size());
    kept[text.size()] = '\0';
    _free += size;
    _left -= size;
    return kept;
}

const char* TextPool::intern(std::string_view text) {
    if (_count * 4 >= _slots.size() * 3) rehash();
    const auto hash = static_cast<std::uint32_t>(std::hash<std::string_view>{}(text));
    const std::size_t mask = _slots.size() - 1;
    for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
        Slot& slot = _slots[at];
        if (!slot.text) {
            slot = {hash, static_cast<std::uint32_t>(text.size()), _arena.keep(text)};
            ++_count;
            return _last = slot.text;
        }
        if (slot.hash == hash && slot.length == text.size() && std::memcmp(slot.text, text.data(), text.size()) == 0)
            return _last = slot.text;
    }
}

void TextPool::rehash() {
    std::vector<Slot> larger(_slots.empty() ? 256 : _slots.size() * 2);
    const std::size_t mask = larger.size() - 1;
    for (const Slot& slot : _slots) {
        if (!slot.text) continue;
        std::size_t at = slot.hash & mask;
        while (larger[at].text) at = (at + 1) & mask;
        larger[at] = slot;
    }
    _slots.swap(larger);
}

}  // namespace refhost
