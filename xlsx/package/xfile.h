// Parts of a package, as objects.
#pragma once
#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace vellum {

/// One part of a package. Failures are thrown as vlerror.
class XFile {
public:
    /// With a name in `path`, writes the part to that file; with an empty one, puts the part's bytes there.
    virtual void writeToPath(std::string& path) = 0;
    virtual void writeToStream(std::ostream& out) = 0;
    virtual ~XFile() = default;

protected:
    XFile() = default;
    XFile(const XFile&) = default;
    XFile& operator=(const XFile&) = default;

    /// Through `writeToStream`. Throws the texts for a file that cannot be opened, or not be written to its end.
    void writeToFile(const std::string& path);
};

/// A part that is passed through: bytes in, the same bytes out.
class BinaryFile : public XFile {
public:
    explicit BinaryFile(std::string_view bytes) : _bytes(bytes.begin(), bytes.end()) {}
    /// Throws "can't open temporary file for reading".
    static std::vector<char> readWhole(const std::string& path);
    explicit BinaryFile(std::vector<char> bytes) : _bytes(std::move(bytes)) {}

    std::string_view bytes() const { return {_bytes.data(), _bytes.size()}; }

    void writeToPath(std::string& path) override;
    void writeToStream(std::ostream& out) override;

private:
    std::vector<char> _bytes;
};

/// A chart sheet: bytes, told from others by its class.
class XMLChartSheet final : public BinaryFile {
public:
    using BinaryFile::BinaryFile;
};

/// The bytes of one part while it is loaded: in memory, or in a file to be read.
struct PartBytes {
    std::string_view memory;  // empty with `path`
    const std::string* path;  // null with `memory`
};

}  // namespace vellum
