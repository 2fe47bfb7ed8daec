// The writer for XML.
#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "bindery/classes/class_info.h"
#include "bindery/classes/raw_node.h"
#include "bindery/values/error.h"

namespace bindery {

struct Extras;

/// Takes the finished pieces of a document; false stops the writing.
using WriterSink = std::function<bool(std::string_view)>;

/// Writes one document as UTF-8. The output grows in one contiguous buffer, or goes to a sink in large pieces.
class c_xml_writer {
public:
    c_xml_writer();
    explicit c_xml_writer(WriterSink sink);
    virtual ~c_xml_writer();
    c_xml_writer(const c_xml_writer&) = delete;
    c_xml_writer& operator=(const c_xml_writer&) = delete;

    // ---- data of the document -------------------------------------------------------------------
    std::string indentText;  // once for each level; both are empty in packages
    std::string newlineText;
    bool standalone = true;
    std::vector<std::pair<std::string, std::string>> schemaLocations;  // namespace and place
    std::string noNamespaceLocation;

    /// The namespaces that names may use, and the prefixes that they get.
    void setNamespaces(std::span<const NamespaceEntry> table);

    // ---- errors ---------------------------------------------------------------------------------
    virtual int userError(int code, std::string_view item, const char* file, int line);
    int capture(int code, std::string_view item, const char* file, int line);
    int fail(int code, std::string_view item, const char* file, int line);
    const c_error& error() const { return _error; }

    // ---- structure ------------------------------------------------------------------------------
    /// The XML declaration and a newline.
    void header();
    /// Opens an element. Declarations for what its name needs are written where they are missing.
    void startElement(int ns, std::string_view local);
    /// A name as it is, with its prefix.
    void startElement(std::string_view name);
    void endElement();
    /// No indents and newlines inside of the element: its blanks are content.
    void keepContent() { _frames.back().verbatim = true; }
    /// Closes the start tag: text or prepared children follow.
    void closeStartTag();
    /// Text of the element, escaped. An empty one writes nothing.
    void text(std::string_view utf8);
    void wideText(std::wstring_view text);
    /// Bytes that are XML already; the start tag has to be closed.
    std::string& raw() { return _out; }

    void attribute(int ns, std::string_view local, std::string_view utf8);
    void wideAttribute(int ns, std::string_view local, std::wstring_view value);
    void attribute(std::string_view name, std::string_view utf8);  // a name as it is

    /// Opens the root: the unit's declarations, then the kept ones.
    void startRoot(const RootInfo& root, const Extras* extras);
    /// Declarations that an element kept and that are not in force; those that would hide a prefix of the unit
    /// are left out.
    void keptDeclarations(std::span<const NsDecl> decls);
    /// An attribute that no class knows; its prefix is declared, or renamed, where it does not hold.
    void keptAttribute(const Attr& attr);
    /// Declares a prefix on the element whose start tag is open, unless it is in force with that URI. False when
    /// the element has declared it otherwise.
    bool declare(std::string_view prefix, std::string_view uri);
    /// URI in force for a prefix; null for none.
    const std::string* uriOf(std::string_view prefix) const;

    // ---- output ---------------------------------------------------------------------------------
    /// What was written and has not gone to the sink.
    const std::string& buffer() const { return _out; }
    std::string take() { return std::move(_out); }
    /// Gives the rest to the sink. False when the sink refused any piece.
    bool flush();
    /// Gives what there is to the sink when it is a large piece. Called at the end of each element.
    void drain();
    bool sinkFailed() const { return _sinkFailed; }

private:
    struct Frame {
        std::size_t nameAt;    // of its start tag, in _names
        std::size_t bindings;  // in force outside
        bool tagClosed = false;
        bool hasChildren = false;
        bool hasText = false;
        bool verbatim = false;
    };
    struct Binding {
        std::string prefix, uri;
    };

    void openFrame();
    const NamespaceEntry* entryOf(int ns) const;
    void attributeStart(int ns, std::string_view local);
    void writeDeclaration(std::string_view prefix, std::string_view uri);
    bool isUnitPrefix(std::string_view prefix) const;

    std::string _out;
    WriterSink _sink;
    bool _sinkFailed = false;
    std::size_t _indentLevel = 0;
    std::span<const NamespaceEntry> _namespaces;
    std::size_t _rootBindings = 0;
    std::vector<Frame> _frames;
    std::vector<Binding> _bindings;
    std::string _names;
    c_error _error;
};

// Escapes, appended to `out`. Attribute values also escape tab, newline and carriage return, texts the last.
void appendEscaped(std::string& out, std::string_view utf8, bool attribute);
/// A wide value of exactly one blank goes out as "&#160;".
void appendEscaped(std::string& out, std::wstring_view wide, bool attribute);

/// Writes an object as the element that `member` names. 0 or a code.
int marshalObject(c_xml_writer& writer, const c_node& object, const ClassInfo& info, const MemberInfo& member);

/// As above, under a name as it is.
int marshalObject(c_xml_writer& writer, const c_node& object, const ClassInfo& info, std::string_view name);

/// A writer for what was read from real files: it forgives a choice without an option and counts out of their
/// bounds (codes 7 and 46), because reading does.
class c_keeping_writer : public c_xml_writer {
public:
    using c_xml_writer::c_xml_writer;
    int userError(int code, std::string_view item, const char* file, int line) override;
};

/// Writes a document: header, root element, newline at the end of the header only.
int marshalRoot(c_xml_writer& writer, const c_node& object, const RootInfo& root);

}  // namespace bindery
