#include "bindery/classes/extras.h"

#include <gtest/gtest.h>

#include "tests/bindery/sample_classes.h"

namespace bindery {
namespace {

constexpr const char* head = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
const std::string opening = "<root xmlns=\"urn:sample:main\" xmlns:r=\"urn:sample:relations\"";

std::string through(const std::string& text) {
    c_keeping_reader<c_xml_reader_memory> reader(text);
    sample::c_root root;
    if (const int code = root.unmarshal(reader)) return "!" + std::to_string(code);
    c_keeping_writer writer;
    if (const int code = root.marshal(writer)) return "!!" + std::to_string(code);
    return writer.take().substr(std::string_view(head).size());
}

/// A body goes through as it is, or becomes `expected`.
void expectKept(const std::string& attributes, const std::string& body, const std::string& expected = "") {
    const std::string text = opening + attributes + ">" + body + "</root>";
    EXPECT_EQ(through(text), expected.empty() ? text : expected) << text;
}

}  // namespace

TEST(Extras, UnknownAttributesAndDeclarationsStay) {
    expectKept(" xmlns:x=\"urn:x\" x:a=\"1 &lt; 2\" plain=\"p\"", "<title/>");
    expectKept(
        "", "<title xml:space=\"preserve\"> t </title><note/><note xml:space=\"preserve\"> </note>",
        opening + "><title xml:space=\"preserve\"> t </title><note/><note xml:space=\"preserve\">&#160;</note></root>");
    expectKept("", "<title xml:space=\"preserve\"> 1</title><title xml:lang=\"en\">2</title>",
               opening + "><title xml:lang=\"en\">2</title></root>");  // the later one, with what stands on it
    expectKept("", "<title/><item id=\"AA1\" xmlns:x=\"urn:x\" x:a=\"1\"/>",
               opening + "><title/><item xmlns:x=\"urn:x\" id=\"AA1\" x:a=\"1\"/></root>");
}

TEST(Extras, UnknownElementsKeepTheirPlace) {
    expectKept("", "<n0/><title/><n1/><item id=\"AA1\"/><n2/><n3/><item id=\"AA2\"/><n4/><last id=\"AA3\"/><n5/>");
    expectKept("", "<title/><circle id=\"AA1\"/><n1/><square/><n2/><extLst/>");
    // Children out of order go where the schema wants them; the unknown one follows the child it stood behind.
    expectKept("", "<item id=\"AA1\"/><n1/><title/><n2/>", opening + "><title/><n2/><item id=\"AA1\"/><n1/></root>");
}

TEST(Extras, PlaceBehindTheLastRepeatWhenThereAreFewer) {
    const std::string text = opening + "><title/><item id='AA1'/><item id='AA2'/><n/><last id='AA3'/></root>";
    c_keeping_reader<c_xml_reader_memory> reader(text);
    sample::c_root root;
    ASSERT_EQ(root.unmarshal(reader), 0);
    root.item().erase(1);
    c_xml_writer one;
    ASSERT_EQ(root.marshal(one), 0);
    EXPECT_NE(one.buffer().find("<item id=\"AA1\"/><n/><last"), std::string::npos);
    root.item().clear();
    c_xml_writer none;
    ASSERT_EQ(root.marshal(none), 0);
    EXPECT_NE(none.buffer().find("<title/><n/><last"), std::string::npos);
}

TEST(Extras, RawSubtreesKeepTextAndBlanks) {
    expectKept("", "<title/><extLst uri=\"{1}\"> <e a=\"&#10;\"> x &amp; y </e>\n</extLst>");
    expectKept("", "<title/><extLst><!-- c --><e><![CDATA[<]]></e></extLst>",
               opening + "><title/><extLst><e>&lt;</e></extLst></root>");
}

TEST(Extras, PrefixesOfKeptSubtreesResolveAgain) {
    // A prefix of the root that the subtree uses comes back with the root's declaration.
    expectKept(" xmlns:x=\"urn:x\"", "<title/><extLst><x:e x:a=\"1\"/></extLst>");
    // The unit's own prefix meant something else in the file: the subtree declares it.
    EXPECT_EQ(
        through("<m:root xmlns:m='urn:sample:main' xmlns:r='urn:other'><m:title/><m:extLst><r:e/></m:extLst></m:root>"),
        "<root xmlns=\"urn:sample:main\" xmlns:r=\"urn:sample:relations\" xmlns:m=\"urn:sample:main\"><title/>"
        "<m:extLst xmlns:r=\"urn:other\"><r:e/></m:extLst></root>");
    // So does the empty prefix.
    EXPECT_EQ(through("<m:root xmlns:m='urn:sample:main' xmlns='urn:other'><m:title/><new/></m:root>"),
              opening + " xmlns:m=\"urn:sample:main\"><title/><new xmlns=\"urn:other\"/></root>");
    EXPECT_EQ(through("<m:root xmlns:m='urn:sample:main'><m:title/><new/></m:root>"),
              opening + " xmlns:m=\"urn:sample:main\"><title/><new xmlns=\"\"/></root>");
    // A prefix declared on an inner known element, used deeper.
    expectKept("", "<title/><item xmlns:x=\"urn:x\" id=\"AA1\"/><extLst xmlns:x=\"urn:y\"><x:e/></extLst>");
}

TEST(Extras, PrefixesInValuesCountAsUsed) {
    for (const char* name : {"Requires", "Ignorable", "ProcessContent", "MustUnderstand"}) {
        const std::string list = std::string(name) == "ProcessContent" ? "r:p" : "r";
        const std::string text = "<root xmlns='urn:sample:main' xmlns:r='urn:other'><title/><new " + std::string(name) +
                                 "=\"" + list + "\"/></root>";
        EXPECT_EQ(through(text),
                  opening + "><title/><new xmlns:r=\"urn:other\" " + name + "=\"" + list + "\"/></root>");
    }
    // Each prefix of a list.
    EXPECT_EQ(through("<m:root xmlns:m='urn:sample:main' xmlns:q='urn:q' xmlns:r='urn:other'><m:title/>"
                      "<m:extLst Ignorable='q r'/></m:root>"),
              opening +
                  " xmlns:m=\"urn:sample:main\" xmlns:q=\"urn:q\"><title/>"
                  "<m:extLst xmlns:r=\"urn:other\" Ignorable=\"q r\"/></root>");
}

TEST(Extras, AttributeWhosePrefixMeansSomethingElseIsRenamed) {
    EXPECT_EQ(through("<m:root xmlns:m='urn:sample:main' xmlns:r='urn:other' r:a='1'><m:title/></m:root>"),
              opening + " xmlns:m=\"urn:sample:main\" xmlns:ns1=\"urn:other\" ns1:a=\"1\"><title/></root>");
}

TEST(Extras, EngineAsksByTheNameAsWritten) {
    Extras extras;
    extras.setAttribute("x14ac:dyDescent", "urn:x", "0.25");
    extras.setAttribute("x14ac:dyDescent", "urn:x", "0.3");
    ASSERT_NE(extras.attribute("x14ac:dyDescent"), nullptr);
    EXPECT_EQ(*extras.attribute("x14ac:dyDescent"), "0.3");
    EXPECT_TRUE(extras.removeAttribute("x14ac:dyDescent"));
    EXPECT_FALSE(extras.removeAttribute("x14ac:dyDescent"));
    EXPECT_TRUE(extras.empty());
}

}  // namespace bindery
