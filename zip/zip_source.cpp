#include "zip/zip_source.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "zip/messages.h"
#include "zip/zip_error.h"

namespace zip {

ZipSource::ZipSource(const std::string& path) : _file(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
    if (_file < 0) throwFileError(errno);
    struct stat status;
    if (fstat(_file, &status) != 0 || S_ISDIR(status.st_mode)) {
        const int error = S_ISDIR(status.st_mode) ? EISDIR : errno;
        ::close(_file);
        throwFileError(error);
    }
    _size = static_cast<std::uint64_t>(status.st_size);
}

ZipSource::ZipSource(const void* data, std::size_t size)
    : _data(static_cast<const unsigned char*>(data)), _size(size) {}

ZipSource::~ZipSource() {
    if (_file >= 0) ::close(_file);
}

void ZipSource::read(std::uint64_t offset, std::span<unsigned char> to) const {
    if (offset > _size || to.size() > _size - offset) throw ZipError(msg::damaged);
    if (_data) {
        if (!to.empty()) std::memcpy(to.data(), _data + offset, to.size());
        return;
    }
    while (!to.empty()) {
        const ssize_t count = pread(_file, to.data(), to.size(), static_cast<off_t>(offset));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) throwFileError(errno);
        if (count == 0) throw ZipError(msg::damaged);  // the file became shorter
        offset += static_cast<std::uint64_t>(count);
        to = to.subspan(static_cast<std::size_t>(count));
    }
}

std::span<const unsigned char> ZipSource::window(std::uint64_t offset, std::uint64_t count,
                                                 std::span<unsigned char> scratch) const {
    if (offset >= _size || count > _size - offset) throw ZipError(msg::damaged);
    if (_data) return {_data + offset, static_cast<std::size_t>(count)};
    const auto part = scratch.first(static_cast<std::size_t>(std::min<std::uint64_t>(count, scratch.size())));
    read(offset, part);
    return part;
}

}  // namespace zip
