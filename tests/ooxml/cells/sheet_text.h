#pragma once

#include <string>
#include <string_view>

#include "bindery/binderyparse/reader.h"
#include "bindery/writer/xml_writer.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"

namespace ooxml {

using Reader = bindery::c_keeping_reader<bindery::c_xml_reader_memory>;

inline std::string sheetText(std::string_view rows, std::string_view uri) {
    return "<worksheet xmlns=\"" + std::string(uri) +
           "\" xmlns:x14ac=\"http://schemas.microsoft.com/office/spreadsheetml/2009/9/ac\" "
           "xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\"><sheetData>" +
           std::string(rows) + "</sheetData></worksheet>";
}
inline std::string sheetText(std::string_view rows) {
    return sheetText(rows, "http://schemas.openxmlformats.org/spreadsheetml/2006/main");
}
inline std::string strictText(std::string_view rows) {
    return sheetText(rows, "http://purl.oclc.org/ooxml/spreadsheetml/main");
}

/// What the rows of a sheet look like when it is written; "!code item" when it cannot be read.
template <class Worksheet = sheet::c_worksheet>
std::string through(const std::string& text) {
    Worksheet root;
    Reader reader(text);
    if (const int code = root.unmarshal(reader)) return "!" + std::to_string(code) + " " + reader.error().item;
    bindery::c_keeping_writer writer;
    if (const int code = root.marshal(writer)) return "!!" + std::to_string(code);
    const std::string& out = writer.buffer();
    const std::size_t first = out.find("<sheetData>"), last = out.find("</sheetData>");
    return first == std::string::npos ? "" : out.substr(first + 11, last - first - 11);
}

inline std::string replaced(std::string text, std::string_view what, std::string_view with) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size())
        text.replace(at, what.size(), with);
    return text;
}

}  // namespace ooxml
