#include "refhost/operations/stream.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>

#include "refhost/values/c_numbers.h"

namespace refhost {
namespace {

constexpr std::size_t inputBuffer = 256 * 1024;
constexpr std::size_t outputBuffer = 1024 * 1024;

constexpr char byteOrderMark[] = {'\xEF', '\xBB', '\xBF'};

bool beginsWithMark(int fd) {
    char first[sizeof byteOrderMark];
    return pread(fd, first, sizeof first, 0) == sizeof first && std::memcmp(first, byteOrderMark, sizeof first) == 0;
}

}  // namespace

bool hasByteOrderMark(const std::string& content) {
    return content.starts_with(std::string_view(byteOrderMark, sizeof byteOrderMark));
}

bool hasByteOrderMark(const char* path) {
    const int fd = ::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0) return false;
    const bool has = beginsWithMark(fd);
    ::close(fd);
    return has;
}

void InputStream::openHeld(const std::string& content, StreamKind kind) {
    _held = &content;
    _heldAt = kind == StreamKind::text && hasByteOrderMark(content) ? sizeof byteOrderMark : 0;
}

bool InputStream::open(const char* path, StreamKind kind) {
    const int fd = ::open(path, O_RDONLY | O_CLOEXEC);
    if (fd < 0) return false;
    struct stat info;
    if (fstat(fd, &info) == 0 && S_ISDIR(info.st_mode)) {
        ::close(fd);
        errno = EISDIR;
        return false;
    }
    if (kind == StreamKind::text && beginsWithMark(fd)) lseek(fd, sizeof byteOrderMark, SEEK_SET);
    _fd = fd;
    _at = _end = 0;
    _given = 0;
    return true;
}

long InputStream::read(void* buffer, long count) {
    if (count < 0) return -1;
    if (_held) {
        const std::size_t taken = _held->copy(static_cast<char*>(buffer), static_cast<std::size_t>(count), _heldAt);
        _heldAt += taken;
        return static_cast<long>(taken);
    }
    if (_fd < 0) return -1;
    if (failAfter >= 0) {
        if (_given >= failAfter) return -1;
        count = std::min(count, failAfter - _given);
    }
    if (_at == _end) {
        const bool direct = static_cast<std::size_t>(count) >= inputBuffer;
        if (!direct) _buffer.resize(inputBuffer);
        ssize_t got;
        do
            got = direct ? ::read(_fd, buffer, static_cast<std::size_t>(count))
                         : ::read(_fd, _buffer.data(), inputBuffer);
        while (got < 0 && errno == EINTR);
        if (got < 0) return -1;
        if (direct) {
            _given += got;
            return got;
        }
        _at = 0;
        _end = static_cast<std::size_t>(got);
    }
    const std::size_t taken = std::min(static_cast<std::size_t>(count), _end - _at);
    std::memcpy(buffer, _buffer.data() + _at, taken);
    _at += taken;
    _given += static_cast<long>(taken);
    return static_cast<long>(taken);
}

bool InputStream::close() {
    if (_held) return _held = nullptr, true;
    if (_fd < 0) return false;
    const bool closed = ::close(_fd) == 0;
    _fd = -1;
    return closed;
}

bool OutputStream::open(const char* path, StreamKind kind) {
    const bool marked = kind == StreamKind::text && hasByteOrderMark(path);
    _fd = ::open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (_fd < 0) return false;
    _failed = false;
    _buffer.clear();
    _buffer.reserve(outputBuffer);
    if (marked) put(byteOrderMark, sizeof byteOrderMark);
    return true;
}

void OutputStream::openHeld(std::string& content, bool marked) {
    _held = &content;
    _failed = false;
    _buffer.clear();
    if (marked) put(byteOrderMark, sizeof byteOrderMark);
}

void OutputStream::put(const char* text, std::size_t size) {
    if (_buffer.size() + size > outputBuffer) flush();
    _buffer.append(text, size);  // a text above the buffer's size makes it grow, once
}

void OutputStream::print(const char* format, std::va_list args) {
    while (*format) {
        const char* percent = std::strchr(format, '%');
        if (!percent) return put(format, std::strlen(format));
        put(format, static_cast<std::size_t>(percent - format));
        switch (percent[1]) {
            case 's': {
                const char* text = va_arg(args, const char*);
                if (!text) text = "(null)";
                put(text, std::strlen(text));
                break;
            }
            case 'c': {
                const char c = static_cast<char>(va_arg(args, int));
                put(&c, 1);
                break;
            }
            case 'd': {
                char digits[12];
                const char* end = std::to_chars(digits, digits + sizeof digits, va_arg(args, int)).ptr;
                put(digits, static_cast<std::size_t>(end - digits));
                break;
            }
            case '%':
                put("%", 1);
                break;
            default: {  // anything else: the rest of the format, with the arguments that are left
                const CNumbers guard;
                char* text = nullptr;
                const int length = vasprintf(&text, percent, args);
                if (length >= 0)
                    put(text, static_cast<std::size_t>(length));
                else
                    _failed = true;
                if (length >= 0) std::free(text);
                return;
            }
        }
        format = percent + 2;
    }
}

void OutputStream::flush() {
    if (_held) {
        _held->append(_buffer);
        _buffer.clear();
        return;
    }
    const char* at = _buffer.data();
    for (std::size_t left = _buffer.size(); left > 0 && !_failed;) {
        const ssize_t written = ::write(_fd, at, left);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) {
            _failed = true;
            break;
        }
        at += written;
        left -= static_cast<std::size_t>(written);
    }
    _buffer.clear();
}

bool OutputStream::close() {
    if (!isOpen()) return false;
    flush();
    if (_held) return _held = nullptr, !_failed;
    const bool closed = ::close(_fd) == 0;
    _fd = -1;
    return closed && !_failed;
}

}  // namespace refhost
