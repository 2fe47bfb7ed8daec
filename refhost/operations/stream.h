// A context's streams on files.
#pragma once
#include <cstdarg>
#include <cstdint>
#include <string>
#include <vector>

namespace refhost {

/// A stream of text drops a byte order mark in front of it, and one that is written over a file with a mark keeps the
/// mark: it is the file's coding, not its content.
enum class StreamKind { text, binary };

class InputStream {
public:
    ~InputStream() { close(); }
    /// False when the file cannot be opened, or is a folder; errno tells why.
    bool open(const char* path, StreamKind kind = StreamKind::binary);
    /// Reads a content that is kept in memory; it must stay as it is until the close.
    void openHeld(const std::string& content, StreamKind kind);
    bool isOpen() const { return _fd >= 0 || _held; }
    /// Bytes read, 0 at the end, -1 on error. Large counts go straight to the file.
    long read(void* buffer, long count);
    bool close();
    /// The read that would go beyond so many bytes fails; -1 never.
    long failAfter = -1;

private:
    int _fd = -1;
    const std::string* _held = nullptr;
    std::size_t _heldAt = 0;
    std::vector<char> _buffer;
    std::size_t _at = 0, _end = 0;
    long _given = 0;
};

class OutputStream {
public:
    ~OutputStream() { close(); }
    /// Makes the file, or empties it.
    bool open(const char* path, StreamKind kind = StreamKind::binary);
    /// Writes into memory instead, with the mark if the file before had one.
    void openHeld(std::string& content, bool marked);
    bool isOpen() const { return _fd >= 0 || _held; }
    /// printf. "%s", "%c" and "%d" cost no more than the copy of their text. An error is kept until the close.
    void print(const char* format, std::va_list args);
    void put(const char* text, std::size_t size);
    /// False when anything could not be written.
    bool close();

private:
    void flush();

    int _fd = -1;
    std::string* _held = nullptr;
    bool _failed = false;
    std::string _buffer;
};

/// Whether a file, or a content in memory, begins with a byte order mark.
bool hasByteOrderMark(const char* path);
bool hasByteOrderMark(const std::string& content);

}  // namespace refhost
