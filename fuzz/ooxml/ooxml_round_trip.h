#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "bindery/binderyparse/reader.h"
#include "bindery/writer/xml_writer.h"

/// Reads a part as the engine does; when it loads and can be written, what was written has to load again. The
/// first writing may move declarations; from then on a document has to stay the same.
template <class Root>
void roundTrip(const std::uint8_t* bytes, std::size_t size) {
    const auto rewritten = [](std::string_view text, std::string& out) {
        bindery::c_keeping_reader<bindery::c_xml_reader_memory> reader(text);
        bindery::c_xml_writer writer;
        Root root;
        if (root.unmarshal(reader) != 0 || Root(root).marshal(writer) != 0) return false;
        out = writer.take();
        return true;
    };
    std::string once, twice, thrice;
    if (!rewritten({reinterpret_cast<const char*>(bytes), size}, once)) return;
    if (!rewritten(once, twice) || !rewritten(twice, thrice) || twice != thrice) std::abort();
}
