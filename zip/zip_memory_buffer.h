// A file in memory.
#pragma once
#include <cstddef>

namespace zip {

/// Bytes with a position. Grows in steps of 1024 bytes at the least. An owning buffer is released with `free`; one over
/// foreign bytes cannot be written.
class ZipMemoryBuffer {
public:
    ZipMemoryBuffer() = default;  // empty and owning
    ZipMemoryBuffer(const void* data, std::size_t size);
    ~ZipMemoryBuffer();
    ZipMemoryBuffer(ZipMemoryBuffer&& other) noexcept;
    ZipMemoryBuffer& operator=(ZipMemoryBuffer&& other) noexcept;

    const char* data() const { return _data; }
    std::size_t size() const { return _size; }
    std::size_t position() const { return _position; }
    void seek(std::size_t position) { _position = position; }

    /// Room for `capacity` bytes in all. False when memory is short; nothing has changed then.
    bool reserve(std::size_t capacity);

    /// Space for `count` bytes behind the present end, to be filled by the caller and then made part of the content by
    /// `extend`. Null when memory is short.
    char* spaceAtEnd(std::size_t count);
    void extend(std::size_t count) { _size += count; }

    /// Empties the buffer and keeps its room.
    void truncate() { _position = _size = 0; }

    /// Both move the position. The number of bytes read; false when memory is short.
    std::size_t read(void* to, std::size_t count);
    bool write(const void* from, std::size_t count);

    /// Gives the bytes, from malloc, to the caller; the buffer is empty afterwards.
    char* release(std::size_t* size);

private:
    char* _data = nullptr;
    std::size_t _position = 0;
    std::size_t _size = 0;
    std::size_t _capacity = 0;
    bool _owns = true;
};

}  // namespace zip
