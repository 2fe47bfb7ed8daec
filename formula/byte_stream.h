// The bytes of tokens as a queue that is worked from the front.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>

#include "biff/container/cursor.h"
#include "formula/messages.h"

namespace vellum::formula {

/// Pops values and never more than there is. The bytes stay where they are, and must outlive the queue.
class ByteStream {
public:
    ByteStream() = default;
    explicit ByteStream(std::span<const std::byte> bytes) : _in(bytes) {}

    [[nodiscard]] std::size_t size() const { return _in.left(); }
    [[nodiscard]] bool empty() const { return _in.empty(); }
    [[nodiscard]] std::span<const std::byte> bytes() const { return _in.rest(); }

    std::uint8_t popInt8() { return _in.get<std::uint8_t>(msg::popInt16); }
    std::uint16_t popInt16() { return _in.get<std::uint16_t>(msg::popInt16); }
    std::uint32_t popInt32() { return _in.get<std::uint32_t>(msg::popInt32); }
    double popDouble() { return _in.get<double>(msg::popDouble); }
    std::span<const std::byte> popBytes(std::size_t n) { return _in.take(n, msg::popInt16); }

private:
    Cursor _in;
};

}  // namespace vellum::formula
