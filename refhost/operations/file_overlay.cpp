#include "refhost/operations/file_overlay.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

namespace refhost {

const std::string* FileOverlay::find(const std::string& path) const {
    const auto found = _files.find(path);
    return found == _files.end() ? nullptr : &found->second;
}

std::string* FileOverlay::make(const std::string& path) {
    if (!find(path) && !canWrite(path)) return nullptr;
    std::string& content = _files[path];
    content.clear();
    return &content;
}

bool canWrite(const std::string& path) {
    struct stat info;
    if (::stat(path.c_str(), &info) == 0) {
        if (S_ISDIR(info.st_mode)) return errno = EISDIR, false;
        return ::access(path.c_str(), W_OK) == 0;
    }
    if (errno != ENOENT) return false;
    if (path.ends_with('/')) return errno = EISDIR, false;
    const std::string folder = std::filesystem::path(path).parent_path().string();
    if (::stat(folder.c_str(), &info) != 0) return false;
    if (!S_ISDIR(info.st_mode)) return errno = ENOTDIR, false;
    return ::access(folder.c_str(), W_OK | X_OK) == 0;
}

}  // namespace refhost
