// A queue of bytes at both ends, for the small token blocks of formula records.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "biff/container/cursor.h"
#include "biff/container/messages.h"
#include "engine/failure/vlerror.h"

namespace vellum {

class ByteStream {
public:
    ByteStream() = default;
    explicit ByteStream(std::span<const std::byte> bytes) : _bytes(bytes.begin(), bytes.end()) {}

    [[nodiscard]] std::size_t size() const { return _bytes.size() - _front; }
    [[nodiscard]] bool empty() const { return size() == 0; }
    /// What is left, front to back.
    [[nodiscard]] std::span<const std::byte> bytes() const { return std::span(_bytes).subspan(_front); }

    // From the front.
    std::uint8_t popInt8() { return pop<std::uint8_t>(biff::msg::popInt16); }
    std::uint16_t popInt16() { return pop<std::uint16_t>(biff::msg::popInt16); }
    std::uint32_t popInt32() { return pop<std::uint32_t>(biff::msg::popInt32); }
    double popDouble() { return pop<double>(biff::msg::popDouble); }
    std::span<const std::byte> popBytes(std::size_t n) {
        const auto out = Cursor(bytes()).take(n, biff::msg::popInt16);
        _front += n;
        return out;
    }
    [[nodiscard]] std::uint8_t peekInt8() const { return Cursor(bytes()).get<std::uint8_t>(biff::msg::popInt16); }

    // At the back.
    template <WireValue T>
    void push(T value) {
        write(std::as_bytes(std::span(&value, 1)));
    }
    void write(std::span<const std::byte> more) { _bytes.insert(_bytes.end(), more.begin(), more.end()); }
    /// Takes the last `n` bytes away.
    void dropBack(std::size_t n) {
        if (n > size()) throw vlerror(biff::msg::popInt16);
        _bytes.resize(_bytes.size() - n);
    }

private:
    template <WireValue T>
    T pop(const char* tooShort) {
        const T value = Cursor(bytes()).get<T>(tooShort);
        _front += sizeof value;
        return value;
    }

    std::vector<std::byte> _bytes;
    std::size_t _front = 0;
};

}  // namespace vellum
