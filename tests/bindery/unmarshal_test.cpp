#include "bindery/bridges/unmarshal_helper.h"

#include <gtest/gtest.h>

#include "bindery/classes/extras.h"
#include "tests/bindery/sample_classes.h"

namespace bindery {
namespace {

using namespace std::literals;

std::string document(std::string_view attributes, std::string_view body) {
    return "<root xmlns='urn:sample:main' xmlns:r='urn:sample:relations'" + std::string(attributes) + ">" +
           std::string(body) + "</root>";
}

/// `code item` of the first failure of the plain reader, "0" for none.
std::string failure(const std::string& text) {
    c_xml_reader_memory reader(text);
    sample::c_root root;
    const int code = root.unmarshal(reader);
    return code == 0 ? "0" : std::to_string(code) + " " + reader.error().item;
}

constexpr const char* title = "<title>t</title>";

}  // namespace

TEST(Unmarshal, EachKindOfMember) {
    const std::string text = document(
        " count='3' flag='1' size='1.5' refs='A1 B2' level='-0'",
        "<title> two\nlines </title><item id='AB1' mode='Internal' r:id='rId1'>x&amp;<![CDATA[y]]></item><item "
        "id='AB2'/>"
        "<note>1</note><note/><last id='ZZ9'/><square s='1'>q</square><circle id='CC1'/><extLst><e/></extLst>");
    c_xml_reader_memory reader(text);
    sample::c_root root;
    ASSERT_EQ(root.unmarshal(reader), 0);
    EXPECT_EQ(root.count().get(), 3u);
    EXPECT_TRUE(root.flag().get());
    EXPECT_EQ(root.size().get(), 1.5);
    EXPECT_EQ(root.refs().get(), (std::vector<std::string>{"A1", "B2"}));
    EXPECT_EQ(root.level().get(9), 0);
    EXPECT_EQ(root.title().get(), L" two\nlines ");
    ASSERT_EQ(root.item().size(), 2u);
    EXPECT_EQ(root.item()[0].id().get(), "AB1");
    EXPECT_EQ(root.item()[0].mode().get(), "Internal");
    EXPECT_EQ(root.item()[0].rel().get(), "rId1");
    EXPECT_EQ(root.item()[0].value().get(), L"x&y");
    EXPECT_TRUE(root.item()[1].value().isset());
    EXPECT_FALSE(root.item()[1].mode().isset());
    ASSERT_EQ(root.note().size(), 2u);
    EXPECT_EQ(root.note()[1], L"");
    EXPECT_EQ(root.last().get().id().get(), "ZZ9");
    ASSERT_EQ(root.shapes().size(), 2u);
    EXPECT_EQ(root.shapes()[0].option(), sample::c_EG_Shape::square_option);
    EXPECT_EQ(root.shapes()[0].getIf_square()->textContent(), "q");
    EXPECT_EQ(root.shapes()[1].getIf_circle()->id().get(), "CC1");
    EXPECT_EQ(root.extLst().get().children.size(), 1u);
    EXPECT_EQ(root.extras()->decls.size(), 2u);
}

TEST(Unmarshal, ChildrenMayComeInAnyOrder) {
    const std::string text = document("", "<extLst/><last id='AA1'/><item id='AA2'/><title>t</title><item id='AA3'/>");
    c_xml_reader_memory reader(text);
    sample::c_root root;
    ASSERT_EQ(root.unmarshal(reader), 0);
    EXPECT_EQ(root.item().size(), 2u);
    EXPECT_EQ(root.title().get(), L"t");
}

TEST(Unmarshal, PlainReaderForgivesNothing) {
    const struct {
        std::string document;
        const char* failure;
    } cases[] = {
        {document("", title), "0"},
        {"<other xmlns='urn:sample:main'/>", "16 other"},
        {"<root/>", "16 root"},
        {"<root xmlns='urn:sample:main'/>", "32 root"},
        {document(" unknown='1'", title), "39 @unknown"},
        {document(" r:unknown='1'", title), "39 @r:unknown"},
        {document(" count='x'", title), "35 @count"},
        {document(" count='1' count='2'", title), "3 @count"},
        {document(" level='8'", title), "36 @level"},
        {document(" level='-1'", title), "37 @level"},
        {document("", "<item id='AA1'/>"), "21 title"},
        {document("", "<title/><title/>"), "26 title"},
        {document("", "<title/><unknown/>"), "31 unknown"},
        {document("", "<title/>text"), "31 root"},
        {document("", "<title/><item mode='Internal'/>"), "25 @id"},
        {document("", "<title/><item id='AA1' mode='Foo'/>"), "38 @mode"},
        {document("", "<title/><item id='A1'/>"), "22 @id"},
        {document("", "<title/><item id='AA12345'/>"), "19 @id"},
        {document("", "<title/><item id='AA1'/><item id='AA1'/><item id='AA1'/><item id='AA1'/>"), "26 item"},
        {document("", "<title><b/></title>"), "31 b"},
        {document("", "<title a='1' a='2'/>"), "3 @a"},
        {document("", "<title/><extLst><e a='1' b='1' a='2'/></extLst>"), "3 @a"},
        {document("", "<title></b>"), "23 title"},
        {document("", "<title"), "23 root"},
        {"<root xmlns='urn:sample:main'>", "34 root"},
        {"", "6 "},
    };
    for (const auto& c : cases) EXPECT_EQ(failure(c.document), c.failure) << c.document;
}

TEST(Unmarshal, ReportsNameFileAndLines) {
    const std::string text = document("\n", "\n<title/><item id='AA1' mode='Foo'/>");
    c_xml_reader_memory reader(text);
    sample::c_root root;
    EXPECT_EQ(root.unmarshal(reader), 38);
    EXPECT_EQ(reader.error().file, "tests/bindery/sample_classes"sv);
    EXPECT_GT(reader.error().line, 0);
    EXPECT_EQ(reader.error().xmlLine, 3);
}

TEST(Unmarshal, KeepingReaderForgivesWhatFilesGetWrong) {
    const std::string text = document(" unknown='1' level='9'",
                                      "<title>1</title><title>2</title><item mode='Internal'/><item id='long1'/>"
                                      "<item id='AA1'/><item id='AA2'/><new/>text<last><sub/></last>");
    c_keeping_reader<c_xml_reader_memory> reader(text);
    sample::c_root root;
    ASSERT_EQ(root.unmarshal(reader), 0);
    EXPECT_EQ(root.level().get(), 9);
    EXPECT_EQ(root.title().get(), L"2");  // the later replaces the earlier
    EXPECT_EQ(root.item().size(), 4u);
    EXPECT_FALSE(root.item()[0].id().isset());
    EXPECT_EQ(root.item()[1].id().get(), "long1");
    EXPECT_NE(root.extras()->attribute("unknown"), nullptr);
    EXPECT_NE(root.extras()->element("new"), nullptr);
}

TEST(Unmarshal, KeepingReaderStillRefuses) {
    const std::string cases[] = {document(" count='x'", title),
                                 document(" flag='yes'", title),
                                 document("", "<title/><item id='AA1' mode='Foo'/>"),
                                 document(" count='1' count='1'", title),
                                 document(" u='1' u='1'", title),
                                 "<other/>",
                                 document("", "<title></a>")};
    for (const std::string& text : cases) {
        c_keeping_reader<c_xml_reader_memory> reader(text);
        sample::c_root root;
        EXPECT_NE(root.unmarshal(reader), 0) << text;
    }
}

TEST(Unmarshal, CopiesAreDeep) {
    const std::string text =
        document(" u='1'", "<title/><item id='AA1'/><circle id='CC1'/><extLst><e/></extLst><new/>");
    c_keeping_reader<c_xml_reader_memory> reader(text);
    sample::c_root root;
    ASSERT_EQ(root.unmarshal(reader), 0);
    const std::unique_ptr<sample::c_root> copy(root.clone());
    root.item()[0].id().set("changed");
    root.shapes()[0].circle().id().set("changed");
    root.extLst().get().children.clear();
    root.makeExtras().attrs.clear();
    EXPECT_EQ(copy->item()[0].id().get(), "AA1");
    EXPECT_EQ(copy->shapes()[0].circle().id().get(), "CC1");
    EXPECT_EQ(copy->extLst().get().children.size(), 1u);
    EXPECT_NE(copy->extras()->attribute("u"), nullptr);
}

}  // namespace bindery
