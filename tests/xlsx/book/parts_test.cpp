// Content types, relationships, names of parts and of sheets.
#include <gtest/gtest.h>

#include "engine/facts/sheet_names.h"
#include "engine/failure/vlerror.h"
#include "xlsx/package/content_types.h"
#include "xlsx/package/part_map.h"
#include "xlsx/package/part_path.h"
#include "xlsx/package/relationships.h"

namespace vellum {
namespace {

template <class Part>
Part parsed(const std::string& xml) {
    return Part(PartBytes{xml, nullptr});
}

std::string text(XFile& part) {
    std::string bytes;
    part.writeToPath(bytes);
    return bytes;
}

TEST(ContentTypes, LookUpByNameThenByExtension) {
    auto types = parsed<ContentTypes>(R"(<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">
        <Default Extension="PNG" ContentType="image/png"/><Default Extension="xml" ContentType="first"/>
        <Default Extension="XML" ContentType="second"/><Override PartName="/xl/A.xml" ContentType="a"/></Types>)");
    const std::pair<const char*, const char*> rows[] = {
        {"/xl/A.xml", "a"}, {"xl\\a.XML", "a"}, {"/xl/b.xml", "second"}, {"/m/1.png", "image/png"},
        {"/a.xml/c", ""},   {"/xl/", ""},       {"/noextension", ""},    {"/x.unknown", ""}};
    for (const auto& [path, type] : rows) EXPECT_EQ(types.typeOf(path), type) << path;

    types.setOverride("/xl/a.xml", "changed");
    types.setOverride("/new", "n");
    types.setDefault("png", "other");
    EXPECT_EQ(types.typeOf("/xl/A.xml"), "changed");
    EXPECT_EQ(types.typeOf("/m/1.png"), "other");
    types.removeOverride("/xl/a.xml");
    EXPECT_EQ(types.typeOf("/xl/A.xml"), "second");
    EXPECT_EQ(types.typeOf("/new"), "n");
    types.removeOverridesBut([](const std::string& name) { return name != "/new"; });
    EXPECT_EQ(types.typeOf("/new"), "");
    EXPECT_EQ(types.typeOf("/m/1.png"), "other");
    types.removeOverridesBut([](const std::string&) { return false; });
    EXPECT_EQ(text(types).find("Override"), std::string::npos);
}

TEST(Relationships, IdsGoOnFromTheGreatest) {
    auto relationships = parsed<Relationships>(
        R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">
        <Relationship Id="rId900" Type="t" Target="a"/><Relationship Id="99" Type="t" Target="b"/>
        <Relationship Id="1234" Type="u" Target="c"/></Relationships>)");
    EXPECT_EQ(relationships.add("t", "my file.xml"), "rId901");
    EXPECT_EQ(relationships.targetById("rId901"), "my file.xml");
    EXPECT_NE(text(relationships).find("Target=\"my%20file.xml\""), std::string::npos);
    EXPECT_EQ(relationships.addUnique("t", "a"), "rId900");
    EXPECT_EQ(relationships.addUnique("t", "new"), "rId902");

    EXPECT_EQ(relationships.firstTargetOfType("t"), "a");
    EXPECT_EQ(relationships.nextTargetOfType(), "b");
    EXPECT_EQ(relationships.nthTargetOfType(2, "t"), "my file.xml");
    EXPECT_EQ(relationships.nthTargetOfType(0, "none"), "");
    EXPECT_EQ(relationships.countOfTarget("a"), 1u);

    relationships.removeByTarget("my file.xml");
    relationships.removeById("rId902");
    EXPECT_EQ(relationships.targetById("rId901"), "");
    EXPECT_EQ(relationships.add("t", "x"), "rId903");
    relationships.removeIf([](const auto& element) { return element.Type() == "t" && element.Target() != "b"; });
    EXPECT_EQ(relationships.firstTargetOfType("t"), "b");
    EXPECT_EQ(relationships.nextTargetOfType(), "");
    EXPECT_EQ(relationships.targetById("1234"), "c");
    EXPECT_EQ(relationships.add("t", "x"), "rId904");
    auto noTarget = parsed<Relationships>(
        R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">
        <Relationship Id="rId7" Type="t"/></Relationships>)");
    EXPECT_EQ(noTarget.add("t", "x"), "rId8");
}

TEST(Relationships, LinksLeadOutside) {
    Relationships relationships;
    relationships.add(std::string(rel::transitional) + "hyperlink", "http://a/");
    relationships.add("t", "out", true);
    relationships.add("t", "in");
    const std::string xml = text(relationships);
    std::size_t count = 0;
    for (std::size_t at = 0; (at = xml.find("TargetMode=\"External\"", at)) != std::string::npos; ++at) ++count;
    EXPECT_EQ(count, 2u);
}

TEST(Relationships, NoBytesAreNoPart) {
    EXPECT_THROW(parsed<Relationships>(""), vlerror);
    EXPECT_THROW(parsed<Relationships>("<Types/>"), vlerror);
}

TEST(PartPath, Targets) {
    EXPECT_EQ(partPath("xl\\worksheets\\sheet1.xml"), "/xl/worksheets/sheet1.xml");
    EXPECT_EQ(relsPathOf("/xl/workbook.xml"), "/xl/_rels/workbook.xml.rels");
    EXPECT_EQ(relsPathOf("/workbook.xml"), "/_rels/workbook.xml.rels");
    const struct {
        const char *folder, *target, *path;
    } rows[] = {{"/xl", "styles.xml", "/xl/styles.xml"},
                {"/xl", "/xl/styles.xml", "/xl/styles.xml"},
                {"/xl", "./styles.xml", "/xl/styles.xml"},
                {"/xl", "../styles.xml", "/styles.xml"},
                {"", "styles.xml", "/styles.xml"},
                {"", "/styles.xml", "/styles.xml"},
                {"/xl", "../../../a", "/a"},
                {"/xl", "/other/a", "/xl//other/a"}};
    for (const auto& row : rows) EXPECT_EQ(absoluteTarget(row.folder, row.target), row.path) << row.target;
}

TEST(PartPath, NamesInOneForm) {
    const struct {
        const char *folder, *target, *path;
    } rows[] = {{"/XL", "Sheet%201.xml", "/xl/sheet 1.xml"},
                {"/xl", "/a//./B.xml", "/a/b.xml"},
                {"/xl", "a/../../b\\c", "/b/c"},
                {"", "../../a", "/a"},
                {"/xl", "100%/a%2", "/xl/100%/a%2"}};
    for (const auto& row : rows) EXPECT_EQ(comparablePath(row.folder, row.target), row.path) << row.target;
}

TEST(SheetNames, WhatIsAllowed) {
    for (const wchar_t* name : {L"A", L"it's", L"a b", L"1", L"\x4e2d"}) EXPECT_NO_THROW(checkSheetName(name)) << name;
    for (const wchar_t* name : {L"", L"'a", L"a'", L"a*", L"a/b", L"a:", L"a?", L"[a", L"a\\", L"a]"}) {
        EXPECT_THROW(checkSheetName(name), vlerror) << name;
    }
    EXPECT_TRUE(sameSheetName(L"Sheet1", L"SHEET1"));
    EXPECT_TRUE(sameSheetName(L"\u00dcBER", L"\u00fcber"));  // in any locale of the process
    EXPECT_FALSE(sameSheetName(L"Sheet1", L"Sheet11"));
}

TEST(SheetNames, InReferences) {
    EXPECT_EQ(sheetOfReference(L"S1!$A$1"), L"S1");
    EXPECT_EQ(sheetOfReference(L"'it''s ! x'!$A$1"), L"it's ! x");
    EXPECT_EQ(sheetOfReference(L"$A$1"), L"");
    EXPECT_EQ(sheetOfReference(L"'open!A1"), L"");
    EXPECT_EQ(withSheetRenamed(L"S1!A1+'S1'!B2+XS1!C3&\"S1!\"", L"S1", L"New"), L"New!A1+New!B2+XS1!C3&\"S1!\"");
    EXPECT_EQ(withSheetRenamed(L"[1]S1!A1+S1!A1", L"S1", L"New"), L"[1]S1!A1+New!A1");
    EXPECT_EQ(withSheetRenamed(L"'it''s'!A1", L"it's", L"a b's"), L"'a b''s'!A1");
    EXPECT_EQ(withSheetRenamed(L"S1!A1+[1]S1!A1", L"S1", L"FY24"), L"'FY24'!A1+[1]S1!A1");
    EXPECT_EQ(withSheetRenamed(L"S1!A1", L"S1", L"r1c1"), L"'r1c1'!A1");
    EXPECT_EQ(withSheetRenamed(L"S1!A1", L"S1", L"Year24"), L"Year24!A1");
}

TEST(PartMap, FindsPathsOfOtherCase) {
    xlsx::PartMap parts;
    for (const char* const path : {"/xl/b.xml", "/xl/A.xml", "/xl/a.xml"}) parts.insert_or_assign(path, nullptr);
    parts.insert_or_assign("/xl/a.xml", nullptr);
    const auto found = [&](const char* path) {
        const auto part = parts.findIgnoringCase(path);
        return part == parts.end() ? std::string() : part->first;
    };
    EXPECT_EQ(found("/XL/a.XML"), "/xl/A.xml") << "the first by its bytes";
    EXPECT_EQ(found("/xl/c.xml"), "");
    parts.erase("/xl/A.xml");
    EXPECT_EQ(found("/xl/A.xml"), "/xl/a.xml");
    EXPECT_EQ(parts.erase(parts.find("/xl/a.xml"))->first, "/xl/b.xml");
    EXPECT_EQ(found("/xl/a.xml"), "");
    EXPECT_EQ(found("/xl/B.xml"), "/xl/b.xml");
    parts.clear();
    EXPECT_EQ(found("/xl/B.xml"), "");
}

}  // namespace
}  // namespace vellum
