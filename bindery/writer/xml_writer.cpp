#include "bindery/writer/xml_writer.h"

#include <algorithm>

#include "bindery/classes/extras.h"

namespace bindery {

namespace {

constexpr std::size_t drainSize = std::size_t{256} << 10;
constexpr std::string_view mcUri = "http://schemas.openxmlformats.org/markup-compatibility/2006";

}  // namespace

c_xml_writer::c_xml_writer() = default;
c_xml_writer::c_xml_writer(WriterSink sink) : _sink(std::move(sink)) {}
c_xml_writer::~c_xml_writer() = default;

int c_xml_writer::userError(int code, std::string_view, const char*, int) {
    return code;
}

int c_xml_writer::capture(int code, std::string_view item, const char* file, int line) {
    _error = {code, std::string(item), file, line, -1};
    return code;
}

int c_xml_writer::fail(int code, std::string_view item, const char* file, int line) {
    const int answer = userError(code, item, file, line);
    if (answer != 0 && _error.code == 0) capture(answer, item, file, line);
    return answer;
}

int c_keeping_writer::userError(int code, std::string_view, const char*, int) {
    return code == wrong_choice || code == occurs_on_marshal ? 0 : code;
}

// ---- namespaces

void c_xml_writer::setNamespaces(std::span<const NamespaceEntry> table) {
    _namespaces = table;
}

const NamespaceEntry* c_xml_writer::entryOf(int ns) const {
    for (const NamespaceEntry& entry : _namespaces)
        if (entry.id == ns) return &entry;
    return nullptr;
}

bool c_xml_writer::isUnitPrefix(std::string_view prefix) const {
    return std::any_of(_namespaces.begin(), _namespaces.end(),
                       [&](const NamespaceEntry& entry) { return entry.prefix == prefix; });
}

const std::string* c_xml_writer::uriOf(std::string_view prefix) const {
    for (auto binding = _bindings.rbegin(); binding != _bindings.rend(); ++binding)
        if (binding->prefix == prefix) return &binding->uri;
    return nullptr;
}

void c_xml_writer::writeDeclaration(std::string_view prefix, std::string_view uri) {
    _out += prefix.empty() ? " xmlns" : " xmlns:";
    _out += prefix;
    _out += "=\"";
    appendEscaped(_out, uri, true);
    _out += '"';
    _bindings.push_back({std::string(prefix), std::string(uri)});
}

bool c_xml_writer::declare(std::string_view prefix, std::string_view uri) {
    if (prefix == "xml") return true;
    const std::string* inForce = uriOf(prefix);
    if (inForce != nullptr ? *inForce == uri : uri.empty()) return true;
    for (std::size_t i = _frames.back().bindings; i < _bindings.size(); ++i)
        if (_bindings[i].prefix == prefix) return false;
    if (uri.empty() && !prefix.empty()) return false;  // a prefix cannot be taken back
    writeDeclaration(prefix, uri);
    return true;
}

void c_xml_writer::keptDeclarations(std::span<const NsDecl> decls) {
    for (const NsDecl& decl : decls)
        if (!decl.prefix.empty() && !isUnitPrefix(decl.prefix)) declare(decl.prefix, decl.uri);
}

void c_xml_writer::keptAttribute(const Attr& attr) {
    const std::size_t colon = attr.name.find(':');
    const std::string_view prefix = std::string_view(attr.name).substr(0, colon == std::string::npos ? 0 : colon);
    if (prefix.empty() || attr.uri.empty()) {
        attribute(attr.name, attr.value);
        return;
    }
    const std::string* inForce = uriOf(prefix);
    const bool holds = inForce != nullptr && *inForce == attr.uri;
    if (holds || prefix == "xml" || (!isUnitPrefix(prefix) && declare(prefix, attr.uri))) {
        attribute(attr.name, attr.value);
        return;
    }
    std::string other;  // the prefix means something else here
    for (int i = 1;; ++i) {
        other = "ns" + std::to_string(i);
        if (!isUnitPrefix(other) && declare(other, attr.uri)) break;
    }
    attribute(other + attr.name.substr(colon), attr.value);
}

// ---- structure

void c_xml_writer::header() {
    _out += "<?xml version=\"1.0\" encoding=\"UTF-8\"";
    if (standalone) _out += " standalone=\"yes\"";
    _out += "?>\n";
}

void c_xml_writer::closeStartTag() {
    if (_frames.empty() || _frames.back().tagClosed) return;
    _out += '>';
    _frames.back().tagClosed = true;
}

/// Closes the parent's start tag and indents.
void c_xml_writer::openFrame() {
    const bool verbatim = !_frames.empty() && _frames.back().verbatim;
    if (!_frames.empty()) {
        if (!_frames.back().tagClosed) {
            closeStartTag();
            if (!verbatim) _out += newlineText;
        }
        _frames.back().hasChildren = true;
    }
    if (!indentText.empty() && !verbatim)
        for (std::size_t i = 0; i < _indentLevel; ++i) _out += indentText;
    ++_indentLevel;
    _frames.push_back({.nameAt = _names.size(), .bindings = _bindings.size(), .verbatim = verbatim});
    _out += '<';
}

void c_xml_writer::startElement(std::string_view name) {
    openFrame();
    _out += name;
    _names += name;
}

void c_xml_writer::startElement(int ns, std::string_view local) {
    openFrame();
    const NamespaceEntry* entry = entryOf(ns);
    const std::size_t nameAt = _out.size();
    if (entry != nullptr && entry->prefix[0] != '\0') (_out += entry->prefix) += ':';
    _out += local;
    _names.append(_out, nameAt);
    // Only an element inside one that declares something can find its prefix bound otherwise.
    if (entry != nullptr && !(entry->onRoot && _bindings.size() == _rootBindings)) declare(entry->prefix, entry->uri);
}

void c_xml_writer::endElement() {
    const Frame frame = _frames.back();
    --_indentLevel;
    if (frame.tagClosed) {
        if (frame.hasChildren && !frame.hasText && !frame.verbatim && !indentText.empty())
            for (std::size_t i = 0; i < _indentLevel; ++i) _out += indentText;
        _out += "</";
        _out.append(_names, frame.nameAt);
        _out += '>';
    } else {
        _out += "/>";
    }
    _names.resize(frame.nameAt);
    _bindings.resize(frame.bindings);
    _frames.pop_back();
    if (_frames.empty() || !_frames.back().verbatim) _out += newlineText;
    drain();
}

void c_xml_writer::text(std::string_view utf8) {
    if (utf8.empty()) return;
    closeStartTag();
    _frames.back().hasText = true;
    appendEscaped(_out, utf8, false);
}

void c_xml_writer::wideText(std::wstring_view text) {
    if (text.empty()) return;
    closeStartTag();
    _frames.back().hasText = true;
    appendEscaped(_out, text, false);
}

void c_xml_writer::attributeStart(int ns, std::string_view local) {
    const NamespaceEntry* entry = entryOf(ns);
    std::string_view prefix = entry != nullptr ? entry->prefix : "";
    if (!prefix.empty()) declare(prefix, entry->uri);
    if (ns == namespace_xml) prefix = "xml";
    _out += ' ';
    if (!prefix.empty()) (_out += prefix) += ':';
    _out += local;
    _out += "=\"";
}

void c_xml_writer::attribute(int ns, std::string_view local, std::string_view utf8) {
    attributeStart(ns, local);
    appendEscaped(_out, utf8, true);
    _out += '"';
}

void c_xml_writer::wideAttribute(int ns, std::string_view local, std::wstring_view value) {
    attributeStart(ns, local);
    appendEscaped(_out, value, true);
    _out += '"';
}

void c_xml_writer::attribute(std::string_view name, std::string_view utf8) {
    (_out += ' ') += name;
    _out += "=\"";
    appendEscaped(_out, utf8, true);
    _out += '"';
}

void c_xml_writer::startRoot(const RootInfo& root, const Extras* extras) {
    setNamespaces(root.namespaces);
    const NamespaceEntry* main = entryOf(root.ns);
    startElement(main != nullptr && main->prefix[0] != '\0' ? std::string(main->prefix) + ':' + root.name : root.name);
    for (const NamespaceEntry& entry : root.namespaces)
        if (entry.onRoot) declare(entry.prefix, entry.uri);
    if (!schemaLocations.empty() || !noNamespaceLocation.empty()) declare("xsi", xsiUri);
    if (extras != nullptr) keptDeclarations(extras->decls);
    for (const NamespaceEntry& entry : root.whenMissing)
        if (uriOf(entry.prefix) == nullptr) declare(entry.prefix, entry.uri);
    _rootBindings = _bindings.size();
    std::string locations;
    for (const auto& [ns, place] : schemaLocations) locations += (locations.empty() ? "" : " ") + ns + ' ' + place;
    if (!locations.empty()) attribute("xsi:schemaLocation", locations);
    if (!noNamespaceLocation.empty()) attribute("xsi:noNamespaceSchemaLocation", noNamespaceLocation);
    if (root.ignorable == nullptr) return;
    if (extras != nullptr)
        for (const Attr& attr : extras->attrs)
            if ((attr.uri == mcUri && attr.name.ends_with(":Ignorable")) || attr.name == "mc:Ignorable") return;
    if (const std::string* mc = uriOf("mc"); mc != nullptr && *mc == mcUri) attribute("mc:Ignorable", root.ignorable);
}

// ---- output

void c_xml_writer::drain() {
    if (_sink && _out.size() >= drainSize) flush();
}

bool c_xml_writer::flush() {
    if (_sink && !_out.empty()) {
        if (!_sinkFailed && !_sink(_out)) _sinkFailed = true;
        _out.clear();
    }
    return !_sinkFailed;
}

}  // namespace bindery
