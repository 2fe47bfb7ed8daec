#include "bindery/binderyparse/reader.h"

#include <gtest/gtest.h>

#include <string>

#include "bindery/binderyparse/limits.h"
#include "bindery/binderyparse/messages.h"

namespace bindery {
namespace {

using namespace std::literals;

/// A document as one line: `a[x=1 y=2]{text|b[]}`, then `!code:text` of the last report, if any.
class Outline {
public:
    explicit Outline(std::string_view document, bool goOn = false) : _reader(document) {
        if (goOn) _reader.errorState().report = [](int, int, std::string_view, int) { return true; };
        if (_reader.nextRoot() == token_start_tag) element();
        const c_error_state& state = _reader.errorState();
        if (state.lastCode != 0)
            _out +=
                "!" + std::to_string(state.lastSeverity) + ":" + std::to_string(state.lastCode) + ":" + state.lastText;
    }
    const std::string& text() const { return _out; }

private:
    void element() {
        _out += _reader.elementName();
        if (!_reader.attributes().empty()) {
            _out += '[';
            for (const RawAttribute& attribute : _reader.attributes()) {
                if (_out.back() != '[') _out += ' ';
                (_out += attribute.name) += '=';
                _out += _reader.value(attribute);
            }
            _out += ']';
        }
        if (_reader.emptyElement()) return _reader.closeElement();
        _out += '{';
        for (;;) {
            switch (_reader.nextContent()) {
                case token_end_tag:
                    _out += '}';
                    return;
                case token_unknown:
                    _out += _reader.text();
                    break;
                case token_start_tag:
                    element();
                    break;
                default:
                    return;
            }
        }
    }

    c_xml_reader_memory _reader;
    std::string _out;
};

struct Case {
    std::string document;
    std::string outline;
};

void expectAll(std::initializer_list<Case> cases, bool goOn = false) {
    for (const Case& c : cases) EXPECT_EQ(Outline(c.document, goOn).text(), c.outline) << c.document;
}

std::string utf16(std::string_view ascii, bool big) {
    std::string out;
    for (const char c : ascii) {
        if (big) out += '\0';
        out += c;
        if (!big) out += '\0';
    }
    return out;
}

}  // namespace

TEST(Reader, TagsAttributesAndText) {
    expectAll({
        {"<a/>", "a"},
        {"<a></a>", "a{}"},
        {"  \n<a x='1' y = \"2\" ><b z='&quot;'/>t</a >", "a[x=1 y=2]{b[z=\"]t}"},
        {"<a>x<!-- c -->y<?p q?>z</a>", "a{xyz}"},
        {"<a>1<![CDATA[<&]]]>2</a>", "a{1<&]2}"},
        {"<?xml version=\"1.0\"?><!-- c --><?p?><a/>", "a"},
        {"<x:a xmlns:x='u' x:b='1'/>", "x:a[x:b=1]"},
        {"<a b='>'/>", "a[b=>]"},
        {"<a b=''/>", "a[b=]"},
    });
}

TEST(Reader, EndsOfLine) {
    expectAll({
        {"<a>1\r\n2\r3\n4\xC2\x85"
         "5\xE2\x80\xA8"
         "6</a>",
         "a{1\n2\n3\n4\n5\n6}"},
        {"<a>\xC2\x86\xE2\x80\xA9</a>", "a{\xC2\x86\xE2\x80\xA9}"},
        {"<a>&#13;&#10;&#133;&#8232;</a>", "a{\r\n\n\n}"},  // references are not joined
        {"<a b='1\r\n2\t3\n4&#9;&#10;'/>", "a[b=1 2 3 4\t\n]"},
        {"<a b='&lt;' c='1&gt;'/>", "a[b=< c=1>]"},
        {"<a><![CDATA[1\r\n2\r]]></a>", "a{1\n2\n}"},
    });
}

TEST(Reader, References) {
    expectAll({
        {"<a>&lt;&gt;&amp;&apos;&quot;</a>", "a{<>&'\"}"},
        {"<a>&#65;&#x42;&#x1F600;</a>", "a{AB\xF0\x9F\x98\x80}"},
        {"<a>&#65 &#x42</a>", "a{A B}"},                      // without ";" it still counts
        {"<a>&#0;&#x0;</a>", "a{\xEF\xBF\xBD\xEF\xBF\xBD}"},  // no character of XML
        {"<a>&#xFFFFF;</a>", "a{\xF3\xBF\xBF\xBF}"},
        {"<a>&#x10FFFF;&#x110000;&#;&#x;&#99999999999999;</a>", "a{&#x10FFFF;&#x110000;&#;&#x;&#99999999999999;}"},
        {"<a b='&unknown;'>&unknown; & &amp</a>", "a[b=&unknown;]{&unknown; & &amp}"},
    });
}

TEST(Reader, Entities) {
    expectAll({
        {"<!DOCTYPE a [<!ENTITY e 'v'>]><a b='&e;'>&e;&e;</a>", "a[b=v]{vv}"},
        {"<!DOCTYPE a [<!ENTITY e '<b/>&#60;c/>'>]><a>&e;</a>", "a{bc}"},
        {"<!DOCTYPE a [<!ENTITY e '1'><!ENTITY f '&e;2'>]><a>&f;</a>", "a{12}"},
        {"<!DOCTYPE a [<!ENTITY e '1'><!ENTITY e '2'>]><a>&e;</a>", "a{1}"},
        {"<!DOCTYPE a [<!ENTITY % p '<!ENTITY e \"v\">'> %p; ]><a>&e;</a>", "a{v}"},
        {"<!DOCTYPE a SYSTEM 'x.dtd' [ <!-- c --> <?i?> ] ><a/>", "a"},
        {"<!DOCTYPE a PUBLIC 'x' \"y\"><a/>", "a"},
        {"<!DOCTYPE a [<!ENTITY e SYSTEM 'x'>]><a>&e;</a>", "a{&e;}!2:17:External Entity definitions not supported"},
        {"<!DOCTYPE a [<!ENTITY e '&e;'>]><a>&e;</a>", "a{!1:24:Recursive entity definition for: e"},
        {"<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f '&e;'>]><a b='&e;'/>",
         "a[b=]!1:24:Recursive entity definition for: e"},
        {"<!DOCTYPE a [<!ENTITY % p '%p;'>%p;]><a/>", "!1:24:Recursive entity definition for: p"},
        {"<!DOCTYPE a [%q;]><a/>", "!1:41:Entity '%q' not found"},
        {"<!DOCTYPE a [<!ENTITY e v>]><a/>", "!1:33:Unexpected value in Entity definition: v"},
        {"<!DOCTYPE a [<!ELEMENT b ANY>]><a/>", "!0:9:DTD not Well Formed (got L)"},
        {"<!DOCTYPE a []x><a/>", "!0:9:DTD not Well Formed (expected '>', got x)"},
        {"<!DOCTYPE a><!DOCTYPE a><a/>", "!0:9:Document Type Declaration already read"},
        {"<a><!DOCTYPE a></a>", "a{!0:9:Document Type Declaration not at start of document"},
    });
}

TEST(Reader, NestedEntitiesAreBounded) {
    std::string document = "<!DOCTYPE a [<!ENTITY e0 'lol'>";
    for (int i = 1; i < 20; ++i) {
        const std::string inner = "&e" + std::to_string(i - 1) + ";";
        document += "<!ENTITY e" + std::to_string(i) + " '";
        for (int k = 0; k < 10; ++k) document += inner;
        document += "'>";
    }
    for (const char* use : {"]><a>&e19;</a>", "]><a b='&e19;'/>"}) {
        const std::string whole = document + use;
        c_xml_reader_memory reader(whole);
        std::size_t length = 0;
        if (reader.nextRoot() == token_start_tag) {
            for (const RawAttribute& attribute : reader.attributes()) length += reader.value(attribute).size();
            while (!reader.failed() && reader.nextContent() == token_unknown) length += reader.text().size();
        }
        EXPECT_EQ(reader.failure(), 24) << use;
        EXPECT_LT(length, std::size_t{16} << 20);
    }
}

TEST(Reader, EncodingsByTheirBytes) {
    const std::string document = "<a>x</a>";
    expectAll({
        {document, "a{x}"},
        {"\xEF\xBB\xBF" + document, "a{x}"},
        {"\xFF\xFE" + utf16(document, false), "a{x}"},
        {"\xFE\xFF" + utf16(document, true), "a{x}"},
        {utf16(document, false), "a{x}"},
        {utf16(document, true), "a{x}"},
        {utf16("<a>", false) + "\x3D\xD8\x00\xDE"s + utf16("</a>", false), "a{\xF0\x9F\x98\x80}"},
        {utf16("<a>", false) + "\x3D\xD8"s + utf16("</a>", false), "a{!0:6:Unrecognised character encoding"},
        {"x", "!0:6:Unrecognised character encoding"},
        {"", "!0:6:Unrecognised character encoding"},
        {"\xFF\xFE<", "!0:6:Unrecognised character encoding"},
        {"<", "!0:34:Unexpected end of file"},
    });
}

TEST(Reader, Declaration) {
    const auto declared = [](const char* name) {
        return "<?xml version=\"1.0\" encoding=\""s + name + "\"?><a>\xE9</a>";
    };
    const std::string latin = "a{\xC3\xA9}";
    const std::string mismatch = "!0:15:Mis-match between specfied encoding and byte format";
    const std::string ucs2 =
        utf16("<?xml version='1.0' encoding='ISO-10646-UCS-2'?><a>", false) + "\x3D\xD8"s + utf16("</a>", false);
    expectAll({
        {declared("ISO-8859-1"), latin},
        {declared("windows-1252"), latin},
        {declared("CP-1252"), latin},
        {declared("US-ASCII"), latin},
        {declared("UTF-8"), "a{\xE9}"},  // passes as it is
        {declared("UTF-16"), mismatch},
        {declared("ISO-10646-UCS-2"), mismatch},
        {declared("utf8"), "!0:6:Unknown character encoding specified"},
        {"\xFF\xFE" + utf16("<?xml version='1.0' encoding='ISO-8859-1'?><a/>", false), mismatch},
        {"\xFF\xFE" + utf16("<?xml version='1.0' encoding='utf-16' standalone='yes' ?><a/>", false), "a"},
        {utf16("<?xml version='1.0' encoding='ISO-10646-UCS-2' standalone='", true) + "\x4E\x2D\x4E\x2D"s +
             utf16("'?><a>x</a>", true),
         "a{x}"},
        {ucs2, "a{\xEF\xBF\xBD}"},  // surrogates are not joined; one alone is no character
        {"<?xml version='1.1'?><a/>", "a"},
        {" <?xml version='1.0'?><a/>", "a"},
        {"<?xml version='1.2'?><a/>", "!1:14:XML version 1.2 not understood"},
        {"<?xml encoding='UTF-8'?><a/>", "!1:13:Version not present in XML Decl"},
        {"<?xml version='1.0' standalone='yes' encoding='UTF-8'?><a/>", "!0:13:XML not well-formed"},
        {"<!-- c --><?xml version='1.0'?><a/>", "!0:13:XML declaration not at start of document"},
        {"<a><?xml version='1.0'?></a>", "a{!0:13:XML declaration not at start of document"},
        {"<?xml-style x?><a/>", "a"},
    });
}

TEST(Reader, Faults) {
    expectAll({
        {"<a></b>", "a{!1:23:Element start tag (a) and end tag (b) do not match"},
        {"<a>", "a{!0:34:Premature end of file encountered"},
        {"<a b", "!0:34:Unexpected end of file"},
        {"<a b='", "!0:34:Unexpected end of file"},
        {"<a b>", "!0:23:Schema is not Well Formed (expected '=', got '>')"},
        {"<a b=c>", "!0:23:Schema is not Well Formed (expected '\"' or ''', got c)"},
        {"<a/b>", "!1:23:Illegal character(s) after / at end of tag - b"},
        {"<a><![X[]]></a>", "a{!1:23:XML not Well-Formed"},
        {"<a><!x></a>", "a{!0:23:XML not well-formed"},
        {"<a b='1'c='2'/>", "!0:23:XML not well-formed"},
        {"<1/>", "!0:23:XML not well-formed"},
        {"text", "!0:6:Unrecognised character encoding"},
        {" text", "!0:23:XML not well-formed"},
        {"<a><!-- ", "a{!0:34:Premature end of file encountered"},
        {"<a><!-- x -- y --></a>", "a{}!2:8:End of comment not Well-Formed"},
        {"<a><!---></a>", "a{!0:34:Premature end of file encountered"},
        {"<a><!----></a>", "a{}"},
    });
}

TEST(Reader, SeverityOneGoesOnWhenTheReportFunctionSaysSo) {
    expectAll(
        {
            {"<a></b>", "a{}!1:23:Element start tag (a) and end tag (b) do not match"},
            {"<a/b>", "a!1:23:Illegal character(s) after / at end of tag - b"},
            {"<?xml version='2.0'?><a/>", "a!1:14:XML version 2.0 not understood"},
            {"<!DOCTYPE a [<!ENTITY e '&e;x'>]><a>&e;</a>", "a{x}!1:24:Recursive entity definition for: e"},
            {"<!DOCTYPE a [%q;]><a/>", "a!1:41:Entity '%q' not found"},
            {"<a b", "!0:34:Unexpected end of file"},  // but not severity 0
        },
        true);
}

TEST(Reader, CountsReportsAndDropsThoseBehindAFatalOne) {
    c_xml_reader_memory reader("<!DOCTYPE a [<!ENTITY e SYSTEM 'x'><!-- a -- b -->]><a\n b>"sv);
    EXPECT_EQ(reader.nextRoot(), token_failed);
    reader.report(1, 5, "dropped");
    EXPECT_EQ(reader.errorState().fatal, 1);
    EXPECT_EQ(reader.errorState().errors, 1);
    EXPECT_EQ(reader.errorState().warnings, 2);
    EXPECT_EQ(reader.errorState().lastCode, 23);
    EXPECT_EQ(reader.errorState().lastLine, 2);
}

TEST(Reader, PrefixesAreScoped) {
    const NamespaceEntry unit[] = {{2, "", "urn:one", true}, {7, "x", xmlUri, false}};
    c_xml_reader_memory reader(
        "<p:a xmlns:p='urn:one' xmlns:q='urn:two'><b p:c='' xml:d='' e=''/><b xmlns='urn:two'/><r:b/></p:a>"sv);
    reader.bindNamespaces(unit);
    ASSERT_EQ(reader.nextRoot(), token_start_tag);
    EXPECT_EQ(reader.elementNamespace(), 2);
    EXPECT_EQ(reader.elementLocal(), "a");
    const int two = reader.resolve("q");
    EXPECT_GE(two, namespace_first_unknown);
    EXPECT_EQ(reader.uriOf(two), "urn:two");

    ASSERT_EQ(reader.nextContent(), token_start_tag);
    EXPECT_EQ(reader.elementNamespace(), namespace_none);
    EXPECT_EQ(reader.attributes()[0].ns, 2);
    EXPECT_EQ(reader.attributes()[1].ns, 7);
    EXPECT_EQ(reader.attributes()[2].ns, namespace_none);
    reader.closeElement();

    ASSERT_EQ(reader.nextContent(), token_start_tag);
    EXPECT_EQ(reader.elementNamespace(), two);
    ASSERT_EQ(reader.declarations().size(), 1u);
    reader.closeElement();
    EXPECT_EQ(reader.resolve(""), namespace_none);

    ASSERT_EQ(reader.nextContent(), token_start_tag);
    EXPECT_EQ(reader.elementNamespace(), namespace_unresolved);
    EXPECT_EQ(reader.elementName(), "r:b");
}

TEST(Reader, TokensOfNames) {
    const NameEntry table[] = {entry(1, "ab", 13), entry(2, "ab", 14), entry(1, "type", 15), entry(1, "ab", 16),
                               endOfNames};
    const NamespaceEntry unit[] = {{2, "", "u", true}};
    c_xml_reader_memory reader(
        "<ab xmlns='u' xmlns:u='u' xmlns:i='http://www.w3.org/2001/XMLSchema-instance' ab='' u:ab='' abc='' i:type='' "
        "i:nil='' i:schemaLocation='' i:noNamespaceSchemaLocation='' type='' i:other=''/>"sv);
    reader.bindNamespaces(unit);
    ASSERT_EQ(reader.nextRoot(), token_start_tag);
    EXPECT_EQ(reader.tokenise(table), 14);
    std::vector<int> tokens;
    for (const RawAttribute& attribute : reader.attributes()) tokens.push_back(reader.tokenise(table, attribute));
    EXPECT_EQ(tokens, (std::vector<int>{13, 14, 1, 8, 9, 10, 11, 15, 1}));
}

TEST(Reader, DepthIsBounded) {
    std::string document;
    for (int i = 0; i < 100000; ++i) document += "<a>";
    c_xml_reader_memory reader(document);
    ASSERT_EQ(reader.nextRoot(), token_start_tag);
    while (reader.nextContent() == token_start_tag) {
    }
    EXPECT_EQ(reader.failure(), 5);
    EXPECT_EQ(reader.errorState().lastText, msg::tooDeep);
    c_xml_reader_file none("no such file");
    EXPECT_NE(none.nextRoot(), token_start_tag);
    EXPECT_EQ(none.errorState().lastText, msg::cannotOpen);
}

/// As many declarations as may be in force, and one more.
TEST(Reader, DeclarationsAreBounded) {
    const auto declaring = [](int total) {
        std::string document = "<a>";
        int open = 0;
        for (int i = 0; i < total; ++i) {
            if (i % 200 == 0) document += (i == 0 ? "" : ">") + "<b"s, ++open;
            document += " xmlns:p" + std::to_string(i) + "='u'";
        }
        document += ">";
        for (int i = 0; i < open; ++i) document += "</b>";
        return Outline(document + "</a>").text();
    };
    const int room = static_cast<int>(maxBindings);
    EXPECT_EQ(declaring(room).find('!'), std::string::npos);
    EXPECT_NE(declaring(room + 1).find("!0:23:"), std::string::npos);
}

/// A source that is neither memory nor a file: its bytes come one by one.
class OneByOne final : public c_read {
public:
    explicit OneByOne(std::string bytes) : _bytes(std::move(bytes)) {}
    int get() override { return _at < _bytes.size() ? static_cast<unsigned char>(_bytes[_at++]) : -1; }

private:
    std::string _bytes;
    std::size_t _at = 0;
};

TEST(Reader, AnySourceOfBytes) {
    for (const std::string& document : {"<a b='1'>t</a>"s, "\xFF\xFE" + utf16("<a b='1'>t</a>", false)}) {
        OneByOne source(document);
        c_xml_reader reader(source);
        ASSERT_EQ(reader.nextRoot(), token_start_tag);
        EXPECT_EQ(reader.value(reader.attributes()[0]), "1");
        std::string_view text;
        EXPECT_EQ(reader.readText(text), token_end_tag);
        EXPECT_EQ(text, "t");
        EXPECT_EQ(reader.nextContent(), token_end);
    }
}

TEST(Reader, TextOfSeveralPieces) {
    c_xml_reader_memory reader(
        "<!DOCTYPE a [<!ENTITY e 'v&#38;amp;'>]><a>1&e;<!-- c -->2<![CDATA[3]]><b/>4<c><d/>5</c></a>"sv);
    ASSERT_EQ(reader.nextRoot(), token_start_tag);
    std::string_view text;
    ASSERT_EQ(reader.readText(text), token_start_tag);  // stopped by the child
    EXPECT_EQ(text, "1v&23");
    reader.closeElement();
    ASSERT_EQ(reader.readMoreText(text), token_start_tag);
    EXPECT_EQ(text, "1v&234");
    ASSERT_EQ(reader.readText(text), token_start_tag);  // nothing is left of the outer element's text
    EXPECT_EQ(text, "");
    reader.closeElement();
    ASSERT_EQ(reader.readMoreText(text), token_end_tag);
    EXPECT_EQ(text, "5");
}

TEST(Reader, MissingFile) {
    c_xml_reader_file reader("/nonexistent/file.xml");
    EXPECT_EQ(reader.nextRoot(), token_failed);
    EXPECT_EQ(reader.failure(), 1);
}

}  // namespace bindery
