#include "cli/backup/safe_copy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <vector>

namespace cli {
namespace {

[[noreturn]] void fail(const std::string& path) {
    throw std::system_error(errno, std::generic_category(), path);
}

class File {
public:
    File(const std::string& path, int flags, mode_t mode = 0) : _path(path), _fd(::open(path.c_str(), flags, mode)) {
        if (_fd < 0) fail(path);
    }
    ~File() { ::close(_fd); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    /// Rights as the other has them; its owner too, where that may be given.
    void ownAs(const File& other) {
        struct stat info;
        if (fstat(other._fd, &info) != 0) fail(other._path);
        const bool given = fchown(_fd, info.st_uid, info.st_gid) == 0 || fchown(_fd, uid_t(-1), info.st_gid) == 0;
        if (fchmod(_fd, info.st_mode & (given ? 07777 : 0777)) != 0) fail(_path);
    }
    std::size_t read(std::vector<char>& buffer) {
        for (;;) {
            const ssize_t got = ::read(_fd, buffer.data(), buffer.size());
            if (got >= 0) return static_cast<std::size_t>(got);
            if (errno != EINTR) fail(_path);
        }
    }
    void write(const char* at, std::size_t left) {
        while (left > 0) {
            const ssize_t written = ::write(_fd, at, left);
            if (written < 0 && errno == EINTR) continue;
            if (written < 0) fail(_path);
            at += written;
            left -= static_cast<std::size_t>(written);
        }
    }
    void flush() {
        if (fsync(_fd) != 0) fail(_path);
    }

private:
    std::string _path;
    int _fd;
};

void flushFolderOf(const std::string& path) {
    const std::string folder = std::filesystem::path(path).parent_path().string();
    File(folder.empty() ? "." : folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC).flush();
}

void renameFlushed(const std::string& from, const std::string& to) {
    if (std::rename(from.c_str(), to.c_str()) != 0) fail(to);
    flushFolderOf(to);
}

void copyBytes(const std::string& from, const std::string& to) {
    File in(from, O_RDONLY | O_CLOEXEC);
    File out(to, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, S_IRUSR | S_IWUSR);
    out.ownAs(in);
    std::vector<char> buffer(std::size_t{1} << 18);
    while (const std::size_t got = in.read(buffer)) out.write(buffer.data(), got);
    out.flush();
}

}  // namespace

void copyFlushed(const std::string& from, const std::string& to) {
    const std::string part = to + ".part";
    try {
        copyBytes(from, part);
        renameFlushed(part, to);
    } catch (...) {
        ::unlink(part.c_str());
        throw;
    }
}

void replaceBy(const std::string& from, const std::string& to) {
    std::error_code missing;
    const std::filesystem::path led = std::filesystem::canonical(to, missing);
    const std::string place = missing ? to : led.string();
    try {
        renameFlushed(from, place);
    } catch (const std::system_error& e) {
        if (e.code().value() != EXDEV) throw;
        copyFlushed(from, place);
        ::unlink(from.c_str());
    }
}

}  // namespace cli
