// The bytes of an image.
#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace vellum {

enum class ByteOrder { little, big };

/// Numbers at places of an image's bytes. What lies outside is no number.
class ImageBytes {
public:
    explicit ImageBytes(std::span<const std::byte> bytes, ByteOrder order = ByteOrder::little)
        : _bytes(bytes), _order(order) {}

    std::size_t size() const { return _bytes.size(); }

    std::optional<std::uint8_t> u8(std::size_t at) const { return read<std::uint8_t>(at); }
    std::optional<std::uint16_t> u16(std::size_t at) const { return read<std::uint16_t>(at); }
    std::optional<std::uint32_t> u32(std::size_t at) const { return read<std::uint32_t>(at); }
    std::optional<std::int16_t> i16(std::size_t at) const { return asSigned<std::int16_t>(u16(at)); }
    std::optional<std::int32_t> i32(std::size_t at) const { return asSigned<std::int32_t>(u32(at)); }

private:
    template <class T>
    std::optional<T> read(std::size_t at) const {
        if (at > _bytes.size() || _bytes.size() - at < sizeof(T)) return std::nullopt;
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < sizeof(T); ++i) {
            const std::size_t place = _order == ByteOrder::big ? i : sizeof(T) - 1 - i;
            value = value << 8 | static_cast<std::uint32_t>(_bytes[at + place]);
        }
        return static_cast<T>(value);
    }
    template <class T, class U>
    static std::optional<T> asSigned(std::optional<U> value) {
        return value ? std::optional<T>(static_cast<T>(*value)) : std::nullopt;
    }

    std::span<const std::byte> _bytes;
    ByteOrder _order;
};

}  // namespace vellum
