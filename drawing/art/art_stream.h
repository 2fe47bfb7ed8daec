// Bytes that drawing records are read from and written to.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "biff/container/cursor.h"

namespace vellum::drawing {

/// The bytes of one drawing, or of the drawing group: the bodies of all records that hold them, put together. Knows
/// where it stands in them, so that a shape can tell where it lies.
class ArtInput {
public:
    explicit ArtInput(std::span<const std::byte> bytes) : _bytes(bytes) {}

    [[nodiscard]] std::size_t position() const { return _at; }
    /// Goes back, or on to the end of a record that was read.
    void seek(std::size_t position) { _at = position; }
    [[nodiscard]] std::size_t left() const { return _bytes.size() - _at; }
    /// The next `n` bytes in place; the caller knows that they are there.
    std::span<const std::byte> take(std::size_t n) {
        const auto taken = _bytes.subspan(_at, n);
        _at += n;
        return taken;
    }

private:
    std::span<const std::byte> _bytes;
    std::size_t _at = 0;
};

/// Where records go, cut or not.
class ArtOutput {
public:
    virtual void write(std::span<const std::byte> bytes) = 0;

    template <WireValue T>
    void put(T value) {
        write(std::as_bytes(std::span(&value, 1)));
    }

protected:
    ~ArtOutput() = default;
};

/// All of it in one piece.
class ArtBuffer final : public ArtOutput {
public:
    void write(std::span<const std::byte> bytes) override { _bytes.insert(_bytes.end(), bytes.begin(), bytes.end()); }

    [[nodiscard]] const std::vector<std::byte>& bytes() const { return _bytes; }
    std::vector<std::byte> take() { return std::move(_bytes); }

private:
    std::vector<std::byte> _bytes;
};

}  // namespace vellum::drawing
