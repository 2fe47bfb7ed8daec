// The bytes of an archive that is read: a file or a buffer, of a size known from the start.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace zip {

class ZipSource {
public:
    /// Opens a file read-only. Throws the file error.
    explicit ZipSource(const std::string& path);
    /// A buffer that the caller keeps alive.
    ZipSource(const void* data, std::size_t size);
    ~ZipSource();
    ZipSource(const ZipSource&) = delete;
    ZipSource& operator=(const ZipSource&) = delete;

    std::uint64_t size() const { return _size; }

    /// Reads exactly `to.size()` bytes. Throws "Damaged or not a zip file." when they are not all there.
    void read(std::uint64_t offset, std::span<unsigned char> to) const;

    /// Up to `count` bytes from `offset`, in place where they are in memory, else in `scratch`; never none.
    std::span<const unsigned char> window(std::uint64_t offset, std::uint64_t count,
                                          std::span<unsigned char> scratch) const;

private:
    int _file = -1;
    const unsigned char* _data = nullptr;
    std::uint64_t _size = 0;
};

}  // namespace zip
