// Reading of little-endian bytes that may be anything.
#pragma once
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>

#include "biff/container/messages.h"
#include "engine/failure/vlerror.h"

namespace vellum {

static_assert(std::endian::native == std::endian::little, "values are copied as they lie in the file");

template <class T>
concept WireValue = std::is_arithmetic_v<T>;

/// The value at `at`; the caller knows that `sizeof(T)` bytes are there.
template <WireValue T>
[[nodiscard]] inline T loadLe(const std::byte* at) {
    T value;
    std::memcpy(&value, at, sizeof value);
    return value;
}

template <WireValue T>
inline void storeLe(std::byte* at, T value) {
    std::memcpy(at, &value, sizeof value);
}

/// Walks over bytes that it does not own and never beyond them.
class Cursor {
public:
    Cursor() = default;
    explicit Cursor(std::span<const std::byte> bytes) : _rest(bytes) {}

    [[nodiscard]] std::size_t left() const { return _rest.size(); }
    [[nodiscard]] bool empty() const { return _rest.empty(); }
    [[nodiscard]] std::span<const std::byte> rest() const { return _rest; }

    /// The next `n` bytes, in place. Throws `tooShort` when fewer remain.
    std::span<const std::byte> take(std::size_t n, const char* tooShort = biff::msg::streamEnds) {
        if (n > _rest.size()) throw vlerror(tooShort);
        const auto out = _rest.first(n);
        _rest = _rest.subspan(n);
        return out;
    }

    template <WireValue T>
    T get(const char* tooShort = biff::msg::streamEnds) {
        return loadLe<T>(take(sizeof(T), tooShort).data());
    }

    void skip(std::size_t n, const char* tooShort = biff::msg::streamEnds) { take(n, tooShort); }

private:
    std::span<const std::byte> _rest;
};

}  // namespace vellum
