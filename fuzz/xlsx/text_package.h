// Packages for fuzzing that mutations do not break.
#pragma once
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "zip/zip_reader.h"

namespace fuzz {

inline constexpr std::size_t maxEntries = 64;

/// The archive that a text stands for: "=name" begins a line and an entry, the lines below are its content.
inline std::string archiveOf(std::string_view text) {
    zip::ZipReader archive;
    archive.createInMemory();
    for (std::size_t count = 0; count < maxEntries && text.starts_with('='); ++count) {
        const std::size_t line = text.find('\n');
        if (line == std::string_view::npos) break;
        const std::string name(text.substr(1, line - 1));
        const std::size_t next = text.find("\n=", line);
        const std::size_t end = next == std::string_view::npos ? text.size() : next;
        const std::string_view content = end > line ? text.substr(line + 1, end - line - 1) : std::string_view();
        if (name.size() < 256) archive.addEntry(name, content.data(), content.size());
        text = next == std::string_view::npos ? std::string_view() : text.substr(next + 1);
    }
    archive.finish();
    char* data = nullptr;
    std::size_t size = 0;
    archive.takeBuffer(&data, &size);
    std::string bytes(data, size);
    std::free(data);
    return bytes;
}

/// An input is an archive or such a text.
inline std::string packageOf(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    return input.starts_with('=') ? archiveOf(input) : std::string(input);
}

}  // namespace fuzz
