// Where the bytes of a document come from.
#pragma once
#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace bindery {

/// A source of the bytes of one document.
class c_read {
public:
    virtual ~c_read() = default;

    /// The next byte, 0 to 255, or -1 at the end.
    virtual int get() = 0;

    /// Why nothing could be read: a code of error.h, 0 when all is well.
    virtual int errorCode() const { return 0; }

    /// What a report names as its item: the file's name, or "".
    virtual std::string_view item() const { return {}; }

    /// All remaining bytes in place when the source is memory, so that the reader need not copy
    /// them; null otherwise. The bytes live as long as the source's memory.
    virtual const std::string_view* window() { return nullptr; }

    /// Whether the window ends where the document ends. A source that gives a document window by window says so when
    /// it has come to the end.
    virtual bool isWhole() const { return true; }

    /// A window that begins at `keep`, a place in the present one, and goes on behind its end. The present one is gone.
    virtual std::string_view extend(const char* keep) { return {keep, 0}; }
};

/// Bytes that stay where they are; not owned.
class c_read_memory : public c_read {
public:
    c_read_memory(const void* bytes, std::size_t size) : _rest(static_cast<const char*>(bytes), size) {}

    int get() override;
    const std::string_view* window() override { return &_rest; }

private:
    std::string_view _rest;
};

/// The bytes of a file.
class c_read_file : public c_read {
public:
    explicit c_read_file(std::string path);
    ~c_read_file() override;

    int get() override;
    int errorCode() const override;
    std::string_view item() const override { return _path; }

private:
    std::string _path;
    std::FILE* _file;
};

}  // namespace bindery
