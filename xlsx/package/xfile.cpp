#include "xlsx/package/xfile.h"

#include <fstream>
#include <ostream>

#include "engine/failure/vlerror.h"
#include "xlsx/package/messages.h"

namespace vellum {

void XFile::writeToFile(const std::string& path) {
    std::ofstream out(path, std::ios::binary);
    if (!out) throw vlerror(xlsx::msg::cannotOpenZipStream);
    writeToStream(out);
    out.close();
    if (!out) throw vlerror(xlsx::msg::cannotWriteZipStream);
}

std::vector<char> BinaryFile::readWhole(const std::string& path) {
    std::ifstream in(path, std::ios::binary | std::ios::ate);
    if (!in) throw vlerror(xlsx::msg::cannotReadTemporary);
    const std::streamoff size = in.tellg();
    std::vector<char> bytes(size > 0 ? static_cast<std::size_t>(size) : 0);
    in.seekg(0);
    if (!bytes.empty() && !in.read(bytes.data(), size)) throw vlerror(xlsx::msg::cannotReadTemporary);
    return bytes;
}

void BinaryFile::writeToStream(std::ostream& out) {
    out.write(_bytes.data(), static_cast<std::streamsize>(_bytes.size()));
}

void BinaryFile::writeToPath(std::string& path) {
    if (path.empty()) {
        path.assign(_bytes.data(), _bytes.size());
        return;
    }
    writeToFile(path);
}

}  // namespace vellum
