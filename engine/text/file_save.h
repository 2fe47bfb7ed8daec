// Bytes into a file, so that a full disk leaves the old file as it was.
#pragma once
#include <cstddef>
#include <span>
#include <string>

namespace vellum {

/// A file that is about to get new content. Nothing of it is changed before `write`.
class FileToSave {
public:
    /// Opens the file, or makes it. Whether that worked is asked with `isOpen`.
    explicit FileToSave(const std::string& path);
    FileToSave(const FileToSave&) = delete;
    FileToSave& operator=(const FileToSave&) = delete;
    ~FileToSave();

    [[nodiscard]] bool isOpen() const { return _file >= 0; }

    /// Makes `bytes` the content. Room is reserved before a byte is changed: when the disk or a quota has none, a
    /// `vlerror` with "disk is full" comes and the old content stands, with its length. Other failures answer false,
    /// and the content is then undefined.
    [[nodiscard]] bool write(std::span<const char> bytes);

private:
    void reserve(std::size_t size) const;

    int _file = -1;
};

}  // namespace vellum
