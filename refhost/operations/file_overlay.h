// Files of a run that must change none.
#pragma once
#include <map>
#include <string>
#include <string_view>

namespace refhost {

/// What would be written is kept in memory, and read from there later in the same run; all other files are read where
/// they lie. Paths are full and normal, as Context::fullPath gives them.
class FileOverlay {
public:
    /// The content of a file that was written, null for any other.
    const std::string* find(const std::string& path) const;
    /// The empty content of a file that is about to be written, or null with errno set where the disk would refuse
    /// one.
    std::string* make(const std::string& path);

private:
    std::map<std::string, std::string, std::less<>> _files;
};

/// Whether a file could be made, or written over, at this path; errno tells why not.
bool canWrite(const std::string& path);

}  // namespace refhost
