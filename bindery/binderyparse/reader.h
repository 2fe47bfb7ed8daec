// The pull reader for XML.
#pragma once
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "bindery/binderyparse/names.h"
#include "bindery/binderyparse/read.h"
#include "bindery/values/error.h"

namespace bindery {

/// What a `c_xml_reader` counts, and who is told. Severities: 0 ends the parse, 1 error, 2 warning, 3 remark.
struct c_error_state {
    /// Told of each report; true lets the parse go on. Not asked for severity 0. Without one,
    /// severity 1 ends the parse and the others do not.
    std::function<bool(int severity, int code, std::string_view text, int line)> report;

    int fatal = 0;  // the latch: once up, every further report is dropped and the input is at its end
    int errors = 0;
    int warnings = 0;
    int further = 0;
    int lastSeverity = -1;
    int lastCode = 0;
    int lastLine = 0;
    std::string lastText;
};

/// State of decoding, in the order of detection.
enum class Encoding : int { unknown, singleByte, utf8, utf16be, utf16le, ucs2be, ucs2le };

/// One attribute of the current start tag.
struct RawAttribute {
    std::string_view name;    // as written, with its prefix
    std::string_view prefix;  // "" for none
    std::string_view local;
    std::string_view raw;  // between the quotes, references not yet expanded
    int ns = namespace_none;
    bool plain = true;  // `raw` is the value: nothing in it has to be expanded or normalised
};

/// A declaration in force, or one of the current start tag.
struct NamespaceBinding {
    std::string prefix;
    int ns;  // id of the URI, see `c_xml_reader::uriOf`
};

/// Non-validating pull reader for one document: decodes to UTF-8, expands entities, resolves
/// prefixes. Never throws for bad XML: failures go to the error state, a scan then gives
/// `token_failed`. Belongs to one thread.
class c_xml_reader {
public:
    explicit c_xml_reader(c_read& source);
    virtual ~c_xml_reader();
    c_xml_reader(const c_xml_reader&) = delete;
    c_xml_reader& operator=(const c_xml_reader&) = delete;

    // ---- what generated code and its handlers report -------------------------------------------

    /// Decides on a failure. 0 lets the reader carry on, anything else ends the unmarshal and is its
    /// result. By default nothing is forgiven.
    virtual int userError(int code, std::string_view item, const char* file, int line);

    /// Unknown content whose report was forgiven is kept in the extras of its parent; false skips it.
    virtual bool keepsUnknown() const { return true; }

    /// Stores the record of a failure and gives the code.
    int capture(int code, std::string_view item, const char* file, int line);

    /// `userError` first; what it does not forgive is captured. The result is the code to return, 0 to go on.
    int fail(int code, std::string_view item);

    /// The first failure that was not forgiven.
    const c_error& error() const { return _error; }

    c_error_state& errorState() { return _state; }

    /// Where in generated code the present member is handled; a report names them. Failures of the reader itself are
    /// reported under its own name.
    void sourceFile(const char* file) { _sourceFile = file; }
    void sourceLine(int line) { _sourceLine = line; }
    void sourceAt(const char* file, int line) {
        _sourceFile = file;
        _sourceLine = line;
    }
    const char* sourceFile() const { return _sourceFile; }
    int sourceLine() const { return _sourceLine; }

    // ---- scanning -------------------------------------------------------------------------------

    /// Makes the namespaces of a unit known, before anything is read.
    void bindNamespaces(std::span<const NamespaceEntry> table);

    /// Reads up to the root element's start tag. `token_start_tag`, or `token_failed`.
    int nextRoot();

    /// Next piece of content inside an element: `token_start_tag` (the tag is scanned whole, with its
    /// attributes and declarations), `token_end_tag` (compared with its start tag and passed),
    /// `token_unknown` for character data (`text()` has it), `token_end`, `token_failed`.
    /// After a start tag with `emptyElement()` no end tag follows: `closeElement` instead.
    int nextContent();

    /// As nextContent, but white space between tags is dropped.
    int nextChild();

    /// Reads the text up to the end tag of the current element; comments and instructions in it are
    /// dropped. `token_end_tag` when that was all, `token_start_tag` when a child stops it, else `token_failed`.
    /// The view lives until the next scan.
    int readText(std::string_view& text);
    /// As above, behind a child: what follows is appended to the text so far, which is given.
    int readMoreText(std::string_view& text);

    /// The token of the last scan, and whether a `token_unknown` is character data.
    int token() const { return _token; }
    bool isText() const { return _isText; }
    std::string_view text() const { return _text; }

    /// Looks the current element, or an attribute, up in a table.
    int tokenise(const NameEntry* table) const { return findToken(table, _elementNs, _elementLocal); }
    int tokenise(const NameEntry* table, const RawAttribute& attribute) const;

    /// Of the start tag just read; valid until the next scan.
    std::string_view elementName() const { return _elementName; }  // as written
    std::string_view elementLocal() const { return _elementLocal; }
    int elementNamespace() const { return _elementNs; }
    std::span<const RawAttribute> attributes() const { return _attributes; }
    bool emptyElement() const { return _emptyElement; }
    /// An attribute that has the name of an earlier one, null when there is none.
    const RawAttribute* repeatedAttribute() const;
    /// Declarations of the start tag just read, in document order; prefix "" for the default one.
    std::span<const NamespaceBinding> declarations() const;

    /// Value of an attribute: references expanded, white space normalised to blanks. The view lives
    /// until the next call or scan. `failed()` tells when an entity in it broke a rule.
    std::string_view value(const RawAttribute& attribute);

    /// Ends an empty element: closes its scope.
    void closeElement();

    /// Whether the last end tag had the name of its start tag. When it had not, that has been reported, and
    /// the report function let the parse go on.
    bool endTagMatched() const { return _endTagMatched; }

    /// Passes over the rest of the current element and its end tag. 0, or a code.
    int skipElement();

    bool failed() const { return _failed != 0; }
    /// The code that a failed scan stands for.
    int failure() const { return _failed; }

    /// Elements open now, the current one included.
    std::size_t depth() const { return _open.size(); }

    // ---- namespaces -----------------------------------------------------------------------------

    /// Id of the namespace that a prefix stands for here; `namespace_unresolved` for none.
    int resolve(std::string_view prefix) const;
    std::string_view uriOf(int ns) const;

    // ---- places ---------------------------------------------------------------------------------

    /// Line of the document, from 1. Counts newlines, so for reports only.
    int currentLine() const;
    Encoding encoding() const { return _encoding; }

    /// Whether the item of this index, of a list that is read by hand, is wanted at all. A reader of a part of a
    /// document answers for its own.
    virtual bool wantsItem(std::int64_t) const { return true; }

    /// In front of an item of such a list: a source that gives its document window by window goes on until the item
    /// is there as a whole, to the last byte of `itemEnd`, the item's end tag. A document that has these bytes inside
    /// of an item, or is not UTF-8, may fail for want of an end; it is then read as a whole, as is one that fails
    /// otherwise.
    void needItem(std::string_view itemEnd) {
        if (_cur >= _itemsEnd && !_wholeDocument) nextWindow(itemEnd);
    }

    /// Reports to the error state, as the caller's line of the reader's own sources. True when the parse may go on.
    bool report(int severity, int code, std::string_view text, int ownLine = __builtin_LINE());

private:
    friend class Prolog;
    friend class c_plain_bytes;

    struct Entity {
        std::string name, value;
    };
    struct Frame {  // the text that goes on behind an entity's value
        const char* cur;
        const char* end;
    };
    struct OpenElement {
        std::size_t nameOffset;  // in _names
        std::size_t bindings;    // in force outside
    };

    void start();
    void takeSource();
    void nextWindow(std::string_view itemEnd);
    void detectEncoding();
    void decode(std::size_t from);
    void changeEncoding(Encoding to);
    void endParse(int code, int line);

    int scanFailed() { return _token = token_failed; }
    int malformed();
    bool startsWith(std::string_view text) const {
        return std::string_view(_cur, static_cast<std::size_t>(_end - _cur)).starts_with(text);
    }
    int endOfInput(bool inTag);
    int scanStartTag();
    int scanEndTag();
    bool scanAttributes();
    bool scanAttribute();
    bool declareNamespace(const RawAttribute& attribute);
    void resolveNames();
    bool passComment();
    bool passInstruction();
    bool scanCdata();
    bool scanText();
    void closeScope();
    int intern(std::string_view uri);
    void nameUri(std::string_view uri, int id);
    int boundTo(std::string_view prefix) const;

    bool enterEntity(std::size_t index);
    void leaveEntity();
    std::size_t findEntity(std::string_view name) const;
    std::size_t expandReference(std::string& out, const char*& at, const char* end);
    void expandValue(std::string& out, std::string_view raw);

    c_read& _source;
    c_error_state _state;
    c_error _error;
    Encoding _encoding = Encoding::unknown;

    const char* _cur = nullptr;
    const char* _end = nullptr;
    const char* _begin = nullptr;  // of the document's text
    bool _wholeDocument = true;
    const char* _itemsEnd = nullptr;        // items that begin before it end before it: see `needItem`
    const char* _failedAt = nullptr;        // where the parse ended, for the line
    mutable const char* _lineAt = nullptr;  // place and number of the line asked for last
    mutable int _line = 1;
    std::string_view _bytes;     // as the source gave them
    std::string _gathered;       // of a source that is not memory
    std::string _decoded;        // of a document that is not UTF-8
    std::size_t _bytesFrom = 0;  // behind the byte order mark
    bool _brokenEnd = false;     // the text ends at a character that could not be decoded

    std::vector<Frame> _frames;
    std::vector<std::size_t> _active;  // entities being expanded
    std::vector<Entity> _entities;     // general, in the order of their definition
    std::map<std::string, std::size_t, std::less<>> _entityIndex;
    std::size_t _expanded = 0;  // bytes of entity values read so far

    bool _started = false;
    bool _contentRead = false;  // anything but white space: no XML declaration may follow
    bool _rootRead = false;
    bool _doctypeRead = false;

    int _token = 0;
    bool _isText = false;
    bool _emptyElement = false;
    bool _endTagMatched = true;
    int _failed = 0;
    int _failedLine = 0;  // of the program
    std::string_view _text;
    std::string _textScratch;
    std::string _bodyScratch;
    std::string _valueScratch;
    std::string_view _elementName;
    std::string_view _elementLocal;
    int _elementNs = 0;
    std::vector<RawAttribute> _attributes;

    std::vector<OpenElement> _open;
    std::string _names;  // of the open elements, one behind the other
    std::vector<NamespaceBinding> _bindings;
    int _defaultNs = namespace_none;                // what the empty prefix stands for here
    std::map<std::string, int, std::less<>> _uris;  // ids of namespaces
    std::vector<std::string_view> _uriOfId;         // the keys of `_uris` by id

    const char* _sourceFile = "";
    int _sourceLine = 0;
};

/// A document in memory; the bytes must outlive the reader.
class c_xml_reader_memory : private c_read_memory, public c_xml_reader {
public:
    c_xml_reader_memory(const void* bytes, std::size_t size)
        : c_read_memory(bytes, size), c_xml_reader(static_cast<c_read_memory&>(*this)) {}
    explicit c_xml_reader_memory(std::string_view bytes) : c_xml_reader_memory(bytes.data(), bytes.size()) {}
};

/// A document in a file, read when the first scan asks for it.
class c_xml_reader_file : private c_read_file, public c_xml_reader {
public:
    explicit c_xml_reader_file(std::string path)
        : c_read_file(std::move(path)), c_xml_reader(static_cast<c_read_file&>(*this)) {}
};

/// What reports call an attribute: "@" and its name.
std::string attributeItem(std::string_view name);

/// True for the codes that a reader of real files lives with: values outside their facets, missing or
/// surplus content, names that the schema does not know.
bool forgivable(int code);

/// A reader that keeps real files loading: forgives the `forgivable` codes, keeps unknown content.
template <class Reader>
class c_keeping_reader : public Reader {
public:
    using Reader::Reader;
    int userError(int code, std::string_view, const char*, int) override { return forgivable(code) ? 0 : code; }
};

}  // namespace bindery
