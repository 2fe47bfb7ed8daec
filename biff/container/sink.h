// A growing buffer of little-endian bytes.
#pragma once
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>

#include "biff/container/cursor.h"

namespace vellum {

class Sink {
public:
    template <WireValue T>
    void put(T value) {
        storeLe(room(sizeof value), value);
    }

    void write(std::span<const std::byte> bytes) {
        if (!bytes.empty()) std::memcpy(room(bytes.size()), bytes.data(), bytes.size());
    }

    /// Several values as one piece, for records that are all of their fields: one check of the room.
    template <WireValue... T>
    void putAll(T... values) {
        std::byte* at = room((sizeof(T) + ...));
        ((storeLe(at, values), at += sizeof(T)), ...);
    }

    void fill(std::size_t n, std::byte value = {}) {
        if (n > 0) std::memset(room(n), std::to_integer<int>(value), n);
    }

    /// `n` bytes at the end, for the caller to fill at once.
    std::byte* room(std::size_t n) {
        if (n > _capacity - _size) grow(n);
        std::byte* const at = _bytes.get() + _size;
        _size += n;
        return at;
    }

    /// Overwrites a value written before. `at + sizeof value` must not exceed `size()`.
    template <WireValue T>
    void patch(std::size_t at, T value) {
        storeLe(_bytes.get() + at, value);
    }

    [[nodiscard]] std::size_t size() const { return _size; }
    [[nodiscard]] std::span<const std::byte> bytes() const { return {_bytes.get(), _size}; }
    void clear() { _size = 0; }
    void release() {
        _bytes.reset();
        _size = _capacity = 0;
    }

private:
    void grow(std::size_t n) {
        const std::size_t capacity = std::max(_size + n, std::max<std::size_t>(256, _capacity * 2));
        auto bytes = std::make_unique_for_overwrite<std::byte[]>(capacity);
        if (_size > 0) std::memcpy(bytes.get(), _bytes.get(), _size);
        _bytes = std::move(bytes);
        _capacity = capacity;
    }

    std::unique_ptr<std::byte[]> _bytes;
    std::size_t _size = 0, _capacity = 0;
};

}  // namespace vellum
