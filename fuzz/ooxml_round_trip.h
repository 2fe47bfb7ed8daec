#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "bindery/reader.h"
#include "bindery/xml_writer.h"

/// Reads a part as the engine does; when it loads and can be written, what was written has to load again and
/// give the same bytes.
template <class Root>
void roundTrip(const std::uint8_t* bytes, std::size_t size) {
    using Reader = bindery::c_keeping_reader<bindery::c_xml_reader_memory>;
    const auto read = [](Root& root, std::string_view text) {
        Reader reader(text);
        return root.unmarshal(reader);
    };
    const auto write = [](const Root& root, std::string& text) {
        bindery::c_xml_writer writer;
        const int code = root.marshal(writer);
        text = writer.take();
        return code;
    };
    Root first, second;
    std::string once, twice;
    if (read(first, {reinterpret_cast<const char*>(bytes), size}) != 0) return;
    const Root copy(first);
    if (write(copy, once) != 0) return;
    if (read(second, once) != 0 || write(second, twice) != 0 || once != twice) std::abort();
}
