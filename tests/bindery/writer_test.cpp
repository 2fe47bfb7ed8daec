#include "bindery/writer/xml_writer.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/bindery/sample_classes.h"

namespace bindery {
namespace {

constexpr const char* head = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
constexpr const char* rootTag = "<root xmlns=\"urn:sample:main\" xmlns:r=\"urn:sample:relations\"";

std::string written(const sample::c_root& root) {
    c_xml_writer writer;
    EXPECT_EQ(root.marshal(writer), 0);
    return writer.buffer();
}

}  // namespace

TEST(Writer, SchemaOrderWhateverTheOrderOfSetting) {
    sample::c_root root;
    root.last().get().id().set("ZZ1");
    root.shapes().append().circle().id().set("CC1");
    root.note().push_back(L"a<b");
    root.note().push_back(L"");
    auto& item = root.item().append();
    item.value().set(L"v");
    item.rel().set("rId1");
    item.id().set("AA1");
    item.mode().set("External");
    root.title().set(L" ");
    root.level().set(2);
    root.refs().set({"A1", "B2"});
    root.size().set(std::numeric_limits<double>::infinity());
    root.flag().set(false);
    root.count().set(1);
    EXPECT_EQ(written(root),
              std::string(head) + rootTag +
                  " count=\"1\" flag=\"false\" size=\"INF\" refs=\"A1 B2\" level=\"2\"><title>&#160;</title>"
                  "<item mode=\"External\" id=\"AA1\" r:id=\"rId1\">v</item><note>a&lt;b</note><note/>"
                  "<last id=\"ZZ1\"/><circle id=\"CC1\"/></root>");
}

TEST(Writer, MandatoryMembersAreWrittenOptionalOnesWhenSet) {
    sample::c_root root;
    EXPECT_EQ(written(root), std::string(head) + rootTag + "><title/></root>");
    root.count().set(0);
    root.count().unset();
    EXPECT_EQ(written(root), std::string(head) + rootTag + "><title/></root>");
}

TEST(Writer, Refuses) {
    sample::c_root choice;
    choice.shapes().append();
    c_xml_writer first;
    EXPECT_EQ(choice.marshal(first), 7);
    EXPECT_EQ(first.error().item, "{anonymous compositor}");
    EXPECT_EQ(first.error().xmlLine, -1);

    sample::c_root many;
    for (int i = 0; i < 4; ++i) many.item().append();
    c_xml_writer second;
    EXPECT_EQ(many.marshal(second), 46);
    EXPECT_EQ(second.error().item, "item");
    c_keeping_writer third;
    EXPECT_EQ(many.marshal(third), 0);
}

TEST(Writer, IndentsOutsideOfText) {
    sample::c_root root;
    root.title().set(L"t");
    root.last().get().id().set("AA1");
    c_raw_node& kept = root.extLst().get();
    kept.name = "extLst";
    kept.children.push_back(std::make_unique<c_raw_node>());
    kept.children[0]->name = "e";
    kept.children[0]->children.push_back(std::make_unique<c_raw_node>());
    kept.children[0]->children[0]->name = "f";
    c_xml_writer writer;
    writer.indentText = "  ";
    writer.newlineText = "\n";
    writer.standalone = false;
    writer.schemaLocations = {{"urn:sample:main", "main.xsd"}};
    ASSERT_EQ(root.marshal(writer), 0);
    EXPECT_EQ(writer.buffer(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + std::string(rootTag) +
                                   " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
                                   "xsi:schemaLocation=\"urn:sample:main main.xsd\">\n"
                                   "  <title>t</title>\n  <last id=\"AA1\"/>\n"
                                   "  <extLst><e><f/></e></extLst>\n</root>\n");
}

TEST(Writer, SinkTakesThePiecesInOrder) {
    sample::c_root root;
    for (int i = 0; i < 100000; ++i) root.note().push_back(L"note");
    std::string pieces;
    std::size_t calls = 0;
    c_xml_writer writer([&](std::string_view piece) {
        pieces += piece;
        ++calls;
        return true;
    });
    ASSERT_EQ(root.marshal(writer), 0);
    EXPECT_EQ(pieces, written(root));
    EXPECT_GT(calls, 2u);

    c_xml_writer refused([](std::string_view) { return false; });
    EXPECT_NE(root.marshal(refused), 0);
}

}  // namespace bindery
