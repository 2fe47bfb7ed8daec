#pragma once

#include <string>
#include <string_view>

#include "bindery/binderyparse/reader.h"
#include "bindery/values/error.h"
#include "bindery/writer/xml_writer.h"

/// Small drivers: a document in, a bound tree or the document written back out.
namespace ooxml_test {

inline constexpr std::string_view mainUri = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
inline constexpr std::string_view relationshipsUri =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
inline constexpr std::string_view mcUri = "http://schemas.openxmlformats.org/markup-compatibility/2006";
inline constexpr std::string_view x14acUri = "http://schemas.microsoft.com/office/spreadsheetml/2009/9/ac";

using ForgivingReader = bindery::c_keeping_reader<bindery::c_xml_reader_memory>;

/// A bound document; the text has to outlive only the construction.
template <class Root>
struct Bound {
    explicit Bound(std::string_view document) {
        ForgivingReader reader(document);
        code = root.unmarshal(reader);
        error = reader.error();
    }
    /// The document written anew, or "failed: " and the text of the code.
    std::string written() const {
        if (code != 0) return std::string("failed: ") + bindery::errorText(code) + " at " + error.item;
        bindery::c_xml_writer writer;
        if (const int failure = root.marshal(writer)) return std::string("failed: ") + bindery::errorText(failure);
        return writer.take();
    }
    Root root;
    int code = 0;
    bindery::c_error error;
};

/// What stands between the root's tags of the document written anew.
template <class Root>
std::string bodyAfterRoundTrip(std::string_view document) {
    std::string text = Bound<Root>(document).written();
    if (text.starts_with("failed")) return text;
    const std::size_t root = text.find('<', text.find("?>"));
    const std::size_t from = text.find('>', root) + 1;
    const std::size_t to = text.rfind("</");
    return to >= from && to != std::string::npos ? text.substr(from, to - from) : "";
}

/// A worksheet around a body; declares the prefixes that current applications use.
inline std::string worksheet(std::string_view body, std::string_view rootAttributes = "") {
    std::string out = "<worksheet xmlns=\"";
    out.append(mainUri).append("\" xmlns:r=\"").append(relationshipsUri).append("\" xmlns:mc=\"").append(mcUri);
    out.append("\" xmlns:x14ac=\"").append(x14acUri);
    out.append("\" xmlns:x14=\"http://schemas.microsoft.com/office/spreadsheetml/2009/9/main\" mc:Ignorable=\"x14ac\"");
    return out.append(rootAttributes).append(">").append(body).append("</worksheet>");
}

/// Any document whose root has the spreadsheet's namespace as the default one.
inline std::string document(std::string_view root, std::string_view body, std::string_view rootAttributes = "") {
    std::string out = "<";
    out.append(root).append(" xmlns=\"").append(mainUri).append("\" xmlns:r=\"").append(relationshipsUri);
    out.append("\" xmlns:mc=\"").append(mcUri).append("\"").append(rootAttributes).append(">");
    return out.append(body).append("</").append(root).append(">");
}

}  // namespace ooxml_test
