// Any bytes as a document: read into a tree, written, and read again to the same tree.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "bindery/binderyparse/reader.h"
#include "bindery/classes/raw_node.h"
#include "bindery/writer/xml_writer.h"

namespace {

bool read(std::string_view bytes, bindery::c_raw_node& root) {
    bindery::c_xml_reader_memory reader(bytes);
    if (reader.nextRoot() != bindery::token_start_tag) return false;
    return root.unmarshal(reader) == 0 && !reader.failed();
}

/// Ends of line of other codings: this reader makes line feeds of them in UTF-8, so that they do not come back.
bool hasForeignLineEnds(std::string_view utf8) {
    return utf8.find("\xC2\x85") != utf8.npos || utf8.find("\xE2\x80\xA8") != utf8.npos;
}

std::string written(const bindery::c_raw_node& root) {
    bindery::c_xml_writer writer;
    root.marshal(writer);
    return writer.take();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    bindery::c_raw_node root;
    if (!read({reinterpret_cast<const char*>(data), size}, root)) return 0;
    const std::string once = written(root);
    if (hasForeignLineEnds(once)) return 0;
    bindery::c_raw_node again;
    if (!read(once, again)) return 0;  // names that are no names elsewhere
    if (written(again) != once) std::abort();
    return 0;
}
