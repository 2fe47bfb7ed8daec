#include "engine/text/file_save.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "engine/failure/messages.h"
#include "engine/failure/vlerror.h"

namespace vellum {

FileToSave::FileToSave(const std::string& path) : _file(::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666)) {}

FileToSave::~FileToSave() {
    if (_file >= 0) ::close(_file);
}

// Pipes and devices have no room to reserve, some file systems no way to: these are written as they are.
void FileToSave::reserve(std::size_t size) const {
    struct stat before;
    if (fstat(_file, &before) != 0 || !S_ISREG(before.st_mode) || size == 0) return;
    const int failure = posix_fallocate(_file, 0, static_cast<off_t>(size));
    if (failure != ENOSPC && failure != EDQUOT && failure != EFBIG) return;
    if (ftruncate(_file, before.st_size) != 0) throw vlerror(msg::diskFull);
    throw vlerror(msg::diskFull);
}

bool FileToSave::write(std::span<const char> bytes) {
    reserve(bytes.size());
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t written = ::write(_file, bytes.data() + done, bytes.size() - done);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        done += static_cast<std::size_t>(written);
    }
    struct stat now;
    const bool regular = fstat(_file, &now) == 0 && S_ISREG(now.st_mode);
    const bool cut = !regular || ftruncate(_file, static_cast<off_t>(bytes.size())) == 0;
    const bool closed = ::close(_file) == 0;
    _file = -1;
    return cut && closed;
}

}  // namespace vellum
