// Loading packages: what is refused and how, parts of a book, both dialects.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "engine/api/enums.h"
#include "engine/api/ibook_tries.h"
#include "engine/api/isheet.h"
#include "tests/xlsx/book/package.h"
#include "xlsx/book/book.h"

namespace vellum {
namespace {

using testing::HasSubstr;
using testing::Not;

// Without a second try, whose text would hide the first.
using Transitional = XMLBookImplT<char, excelNormal_tag>;

struct TempFile {
    explicit TempFile(const std::string& bytes, const char* name = "load.xlsx")
        : path(testing::TempDir() + std::to_string(getpid()) + name) {
        std::ofstream(path, std::ios::binary) << bytes;
    }
    ~TempFile() { std::filesystem::remove(path); }
    const std::string path;
};

const std::string strictSheet =
    R"(<worksheet xmlns="http://purl.oclc.org/ooxml/spreadsheetml/main"><sheetData><row r="1"><c r="A1"><v>7</v></c>)"
    R"(</row></sheetData></worksheet>)";

std::string strictPackage() {
    return samplePackageBytes(
        1, {{"xl/workbook.xml", workbookXml(1, "", true)}, {"xl/worksheets/sheet1.xml", strictSheet}});
}

TEST(Load, TextsOfWhatIsMissing) {
    const std::string types = samplePackage(1)[0].second;
    const std::pair<std::string, std::string> rows[] = {
        {"no zip at all", "It is not a xlsx file. Use the vlCreateBook() for a xls file."},
        {samplePackageBytes(1, {{"[Content_Types].xml", ""}}), "load error: workbook content types are not found"},
        {samplePackageBytes(1, {{"xl/workbook.xml", ""}}), "workbook main xml file is not found"},
        {samplePackageBytes(1, {{"xl/_rels/workbook.xml.rels", ""}}), "workbook relationships not found"},
    };
    for (const auto& [bytes, text] : rows) {
        Transitional book;
        EXPECT_FALSE(load(book, bytes));
        EXPECT_EQ(book.errorMessage(), text);
        EXPECT_EQ(book.sheetCount(), 0);
    }
    // A part of another class in the place of the relationships.
    std::string other = types;
    other.insert(other.find("<Override"), R"(<Override PartName="/xl/_rels/workbook.xml.rels" ContentType="x/y"/>)");
    Transitional book;
    EXPECT_FALSE(load(book, samplePackageBytes(1, {{"[Content_Types].xml", other}})));
    EXPECT_STREQ(book.errorMessage(), "load error: workbook relationships are not found");
}

/// Cells and parts that are not what their like name.
TEST(Load, TextsOfWhatCellsDoNotHold) {
    Parts parts = samplePackage(
        1,
        {{"xl/worksheets/sheet1.xml",
          R"(<worksheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" )"
          R"(xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships"><sheetData><row r="1">)"
          R"(<c r="A1"><v>7</v></c><c r="B1" t="s"><v>9</v></c></row></sheetData><tableParts count="1">)"
          R"(<tablePart r:id="rId1"/></tableParts></worksheet>)"},
         {"xl/worksheets/_rels/sheet1.xml.rels",
          R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
          R"(<Relationship Id="rId1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/table")"
          R"( Target="../tables/none.xml"/></Relationships>)"}});
    const BookPtr book = newBook();
    ASSERT_TRUE(load(*book, packed(parts))) << book->errorMessage();
    auto* const sheet = book->getSheet(0);
    ASSERT_TRUE(sheet->writeString(1, 0, "the only one"));
    const auto text = [&](auto&& fails) {
        EXPECT_TRUE(fails());
        return std::string(book->errorMessage());
    };
    int n = 0;
    EXPECT_EQ(text([&] { return !sheet->readRichText(0, 0); }), "this cell doesn't contain a rich string");
    EXPECT_EQ(text([&] { return !sheet->readBlank(0, 0, nullptr); }), "cell is not blank");
    EXPECT_EQ(text([&] { return !sheet->readString(0, 1); }), "index is out of range or no value");
    EXPECT_EQ(text([&] { return !sheet->tableAt(0, &n, &n, &n, &n, &n, &n); }), "table is not found");
    for (auto& [name, bytes] : parts) {
        if (name == "xl/worksheets/sheet1.xml") bytes.clear();
    }
    Transitional empty;
    EXPECT_FALSE(load(empty, packed(parts)));
    EXPECT_STREQ(empty.errorMessage(), "data is empty");
}

TEST(Load, SpellingsOfNames) {
    Parts parts = samplePackage(2);
    for (auto& [name, content] : parts) {
        if (name == "[Content_Types].xml") name = "[CONTENT_TYPES].XML";
        std::replace(name.begin(), name.end(), '/', '\\');
    }
    parts.emplace_back("xl/dropped", "no content type");
    parts.emplace_back("xl/kept.xml", std::string("\0 <kept", 7));
    parts.emplace_back("[Content_Types].xml", "a second one");
    const BookPtr book = newBook();
    ASSERT_TRUE(load(*book, packed(parts))) << book->errorMessage();
    auto saved = savedParts(*book);
    EXPECT_EQ(saved.count("[Content_Types].xml"), 1u);
    EXPECT_EQ(saved.count("[CONTENT_TYPES].XML"), 0u);
    EXPECT_EQ(saved.count("xl/workbook.xml"), 1u);
    EXPECT_EQ(saved.count("xl/dropped"), 0u);
    EXPECT_EQ(saved["xl/kept.xml"], std::string("\0 <kept", 7));
}

TEST(Load, AWorkbookThatStandsTwiceIsReadOnce) {
    Parts parts = samplePackage(2);
    parts.emplace_back("xl/workbook.xml", workbookXml(1));
    const BookPtr book = newBook();
    ASSERT_TRUE(load(*book, packed(parts))) << book->errorMessage();
    EXPECT_EQ(book->sheetCount(), 1);
}

TEST(Load, UndeclaredWorksheets) {
    std::string types = samplePackage(1)[0].second;
    types.erase(types.find("<Override PartName=\"/xl/worksheets"));
    const BookPtr book = newBook();
    ASSERT_TRUE(load(*book, samplePackageBytes(1, {{"[Content_Types].xml", types + "</Types>"}})));
    ASSERT_TRUE(book->getSheet(0)) << book->errorMessage();
    EXPECT_EQ(book->getSheet(0)->readNumber(0, 0, nullptr), 1);
}

TEST(Load, EveryXmlDeclaredAsTheWorkbook) {
    std::string types = samplePackage(2)[0].second;
    types.replace(types.find("\"application/xml\""), 17,
                  "\"application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml\"");
    const BookPtr book = newBook();
    ASSERT_TRUE(load(*book, samplePackageBytes(2, {{"[Content_Types].xml", types}, {"docProps/app.xml", "<a/>"}})));
    EXPECT_EQ(book->sheetCount(), 2);
    EXPECT_EQ(savedParts(*book)["docProps/app.xml"], "<a/>");
}

TEST(Load, OfTwoWorkbooksTheDeclaredOne) {
    std::string types = samplePackage(1)[0].second;
    types.insert(types.find("<Override"),
                 R"(<Override PartName="/z.xml" ContentType="application/vnd.openxmlformats-officedocument.)"
                 R"(spreadsheetml.sheet.main+xml"/>)");
    const BookPtr book = newBook();
    ASSERT_TRUE(load(*book, samplePackageBytes(1, {{"[Content_Types].xml", types}, {"z.xml", "<z/>"}})))
        << book->errorMessage();
    EXPECT_STREQ(book->sheetNameAt(0), "S1");
    EXPECT_EQ(savedParts(*book)["z.xml"], "<z/>");
}

TEST(Load, TheWorkbookElsewhere) {
    Parts parts = samplePackage(1);
    for (auto& [name, content] : parts) {
        for (auto* text : {&name, &content}) {
            for (std::size_t at; (at = text->find("xl/")) != std::string::npos;) text->erase(at, 3);
        }
    }
    const BookPtr book = newBook();
    ASSERT_TRUE(load(*book, packed(parts))) << book->errorMessage();
    EXPECT_TRUE(book->getSheet(0)) << book->errorMessage();
    ASSERT_TRUE(book->addSheet("B", nullptr));
    ASSERT_TRUE(book->getSheet(1)->writeString(0, 0, "text", nullptr)) << book->errorMessage();
    auto saved = savedParts(*book);
    EXPECT_EQ(saved.count("worksheets/sheet2.xml"), 1u);
    EXPECT_EQ(saved.count("sharedStrings.xml"), 1u);
    EXPECT_THAT(saved["[Content_Types].xml"], HasSubstr("\"/sharedStrings.xml\""));
}

TEST(Load, OneSheetAlone) {
    const std::string inside =
        "<bookViews><workbookView activeTab=\"2\"/></bookViews><definedNames><definedName "
        "name=\"a\">S1!A1</definedName>"
        "<definedName name=\"b\" localSheetId=\"1\">S2!A1</definedName>"
        "<definedName name=\"c\" localSheetId=\"2\">1</definedName></definedNames>";
    Parts parts = samplePackage(3, {{"xl/workbook.xml", workbookXml(3, inside)}});
    for (const bool relationshipsFirst : {true, false}) {
        if (!relationshipsFirst) std::swap(parts[2], parts.back());  // behind the workbook
        const BookPtr book = newBook();
        const std::string bytes = packed(parts);
        ASSERT_TRUE(book->loadMemory(bytes.data(), bytes.size(), 1, -1, -1)) << book->errorMessage();
        ASSERT_EQ(book->sheetCount(), 1);
        EXPECT_STREQ(book->sheetNameAt(0), "S2");
        EXPECT_EQ(book->activeSheetIndex(), 0);
        EXPECT_EQ(book->getSheet(0)->readNumber(0, 0, nullptr), 2);
        auto saved = savedParts(*book);
        EXPECT_EQ(saved.count("xl/worksheets/sheet1.xml"), 0u);
        EXPECT_EQ(saved.count("xl/worksheets/sheet2.xml"), 1u);
        for (const char* part : {"[Content_Types].xml", "xl/_rels/workbook.xml.rels"}) {
            EXPECT_THAT(saved[part], Not(HasSubstr("sheet3.xml")));
            EXPECT_THAT(saved[part], HasSubstr("sheet2.xml"));
        }
        EXPECT_THAT(saved["xl/workbook.xml"], HasSubstr("<definedName name=\"b\" localSheetId=\"0\">"));
        EXPECT_THAT(saved["xl/workbook.xml"], Not(HasSubstr("name=\"a\"")));
        EXPECT_THAT(saved["xl/workbook.xml"], Not(HasSubstr("name=\"c\"")));
    }
    Transitional book;
    const std::string bytes = packed(parts);
    EXPECT_FALSE(book.loadMemory(bytes.data(), bytes.size(), 3, -1, -1));
    EXPECT_STREQ(book.errorMessage(), "index is out of range");
}

TEST(Load, Outline) {
    const TempFile file(samplePackageBytes(2, {{"xl/worksheets/_rels/sheet1.xml.rels", "<not read"}}));
    const BookPtr book = newBook();
    ASSERT_TRUE(book->loadFileOutline(file.path.c_str())) << book->errorMessage();
    EXPECT_EQ(book->sheetCount(), 2);
    EXPECT_STREQ(book->sheetNameAt(1), "S2");
    EXPECT_FALSE(book->getSheet(0));
    EXPECT_FALSE(book->saveFile(file.path.c_str(), false)) << "the sheets would be gone";
    EXPECT_STREQ(book->errorMessage(), "a workbook of which only the outline was loaded can't be saved");
    EXPECT_FALSE(book->loadWithoutEmptyCells(file.path.c_str()));
}

TEST(Load, ThroughATemporaryFile) {
    const std::string temporary = testing::TempDir() + std::to_string(getpid()) + "load.part";
    const TempFile good(samplePackageBytes(2)), bad(samplePackageBytes(1, {{"xl/workbook.xml", "<oops"}}), "bad.xlsx");
    const BookPtr book = newBook();
    ASSERT_TRUE(book->loadFile(good.path.c_str(), temporary.c_str())) << book->errorMessage();
    EXPECT_EQ(book->getSheet(1)->readNumber(0, 0, nullptr), 2);
    EXPECT_FALSE(std::filesystem::exists(temporary));
    EXPECT_FALSE(book->loadFile(bad.path.c_str(), temporary.c_str()));
    EXPECT_FALSE(std::filesystem::exists(temporary));
}

TEST(Dialects, StrictFromMemoryAndFromPath) {
    const TempFile file(strictPackage());
    for (const bool fromPath : {false, true}) {
        const BookPtr book = newBook();
        const bool loaded = fromPath ? book->loadFile(file.path.c_str(), nullptr) : load(*book, strictPackage());
        ASSERT_TRUE(loaded) << book->errorMessage();
        ASSERT_EQ(book->sheetCount(), 1);
        EXPECT_EQ(book->getSheet(0)->readNumber(0, 0, nullptr), 7);
        ASSERT_TRUE(book->addSheet("New", nullptr));
        auto saved = savedParts(*book);
        EXPECT_THAT(saved["xl/workbook.xml"], HasSubstr("purl.oclc.org/ooxml/spreadsheetml/main"));
        EXPECT_THAT(saved["xl/worksheets/sheet2.xml"], HasSubstr("purl.oclc.org/ooxml/spreadsheetml/main"));
        EXPECT_TRUE(load(*book, samplePackageBytes(2)));  // and back
        EXPECT_EQ(book->sheetCount(), 2);
    }
}

TEST(Dialects, ABadFileThenAGoodOne) {
    const TempFile bad(samplePackageBytes(1, {{"xl/workbook.xml", "<workbook/>"}}), "bad.xlsx");
    const TempFile good(samplePackageBytes(1));
    const BookPtr book = newBook();
    EXPECT_FALSE(book->loadFile(bad.path.c_str(), nullptr));
    EXPECT_STRNE(book->errorMessage(), "ok");
    auto& tries = dynamic_cast<IBookTries&>(*book);
    EXPECT_STREQ(tries.firstTryText(), "Element not found");
    EXPECT_EQ(book->sheetCount(), 0);
    EXPECT_FALSE(book->loadFile((good.path + ".missing").c_str(), nullptr));
    EXPECT_THAT(book->errorMessage(), HasSubstr("No such file"));
    EXPECT_TRUE(book->addSheet("fresh", nullptr)) << book->errorMessage();
    EXPECT_FALSE(load(*book, "PK"));
    ASSERT_TRUE(book->loadFile(good.path.c_str(), nullptr)) << book->errorMessage();
    EXPECT_STREQ(book->errorMessage(), "ok");
    EXPECT_STREQ(tries.firstTryText(), "");
    EXPECT_EQ(book->sheetCount(), 1);
}

}  // namespace
}  // namespace vellum
