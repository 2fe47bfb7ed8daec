#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>

#include "engine/api/isheet.h"
#include "tests/xlsx/book/package.h"

namespace vellum {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string content(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// A folder that is empty at first, and gone at the end.
class Save : public testing::Test {
protected:
    Save() : folder(testing::TempDir() + "xlsx_save_" + std::to_string(getpid()) + "/") {
        std::filesystem::remove_all(folder);
        std::filesystem::create_directory(folder);
    }
    ~Save() override { std::filesystem::remove_all(folder); }

    const std::string folder;
    const BookPtr book = newBook();
};

TEST_F(Save, TheExtensionGivesTheType) {
    const std::pair<const char*, const char*> rows[] = {{"a.XLSM", "sheet.macroEnabled.main+xml"},
                                                        {"a.xltx", "template.main+xml"},
                                                        {"a.xltm", "template.macroEnabled.main+xml"},
                                                        {"a.other", "template.macroEnabled.main+xml"},
                                                        {"a.xlsx", "spreadsheetml.sheet.main+xml"}};
    ASSERT_TRUE(book->addSheet("A", nullptr));
    for (const auto& [name, type] : rows) {
        ASSERT_TRUE(book->saveFile((folder + name).c_str(), false)) << book->errorMessage();
        EXPECT_THAT(unpacked(content(folder + name))["[Content_Types].xml"], HasSubstr(type)) << name;
    }
    EXPECT_FALSE(book->isTemplateFile());
    EXPECT_TRUE(book->setTemplateFile(true));
    EXPECT_TRUE(book->isTemplateFile());
    EXPECT_THAT(savedParts(*book)["[Content_Types].xml"], HasSubstr("template.main+xml"));
}

TEST_F(Save, TheChainOfCalculationIsDropped) {
    Parts parts = samplePackage(1, {{"xl/calcChain.xml", "<calcChain/>"}, {"xl/other/chain.xml", "<calcChain/>"}});
    const auto insert = [](std::string& xml, const std::string& what) { xml.insert(xml.rfind("</"), what); };
    insert(parts[0].second, R"(<Override PartName="/xl/calcChain.xml" ContentType="c/c"/>)"
                            R"(<Override PartName="/xl/other/chain.xml" ContentType="c/c"/>)");
    for (const char* target : {"calcChain.xml", "/xl/other/chain.xml"}) {
        insert(parts[2].second, "<Relationship Id=\"" + std::string(target) +
                                    "\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/"
                                    "calcChain\" Target=\"" +
                                    target + "\"/>");
    }
    ASSERT_TRUE(load(*book, packed(parts))) << book->errorMessage();
    auto saved = savedParts(*book);
    EXPECT_EQ(saved.size(), 5u);
    EXPECT_THAT(saved["[Content_Types].xml"], Not(HasSubstr("hain.xml")));
    EXPECT_THAT(saved["xl/_rels/workbook.xml.rels"], Not(HasSubstr("hain.xml")));
    EXPECT_THAT(saved["xl/workbook.xml"], HasSubstr("fullCalcOnLoad=\"true\""));
}

TEST_F(Save, PartsByAnotherSpellingKeepWhatNamesThem) {
    Parts parts = samplePackage(1);
    const auto respell = [](std::string& text, const std::string& from, const std::string& to) {
        text.replace(text.find(from), from.size(), to);
    };
    respell(parts[0].second, "/xl/worksheets/sheet1.xml", "/xl/Worksheets/SHEET1.xml");
    respell(parts[0].second, "<Override", R"(<Override PartName="/xl/none.xml" ContentType="a/b"/><Override)");
    respell(parts[2].second, "worksheets/sheet1.xml", "/XL/worksheets/../worksheets/%73heet1.xml");
    ASSERT_TRUE(load(*book, packed(parts))) << book->errorMessage();
    auto saved = savedParts(*book);
    EXPECT_THAT(saved["[Content_Types].xml"], HasSubstr("/xl/Worksheets/SHEET1.xml"));
    EXPECT_THAT(saved["[Content_Types].xml"], Not(HasSubstr("none.xml")));
    EXPECT_THAT(saved["xl/_rels/workbook.xml.rels"], HasSubstr("%73heet1.xml"));
}

TEST_F(Save, StringsByAnotherSpellingAreNotHidden) {
    Parts parts = samplePackage(1, {{"xl/SharedStrings.xml",
                                     "<sst xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">"
                                     "<si><t>old</t></si></sst>"}});
    const auto insert = [](std::string& xml, const std::string& what) { xml.insert(xml.rfind("</"), what); };
    insert(parts[0].second, R"(<Override PartName="/xl/sharedStrings.xml" ContentType="application/vnd.)"
                            R"(openxmlformats-officedocument.spreadsheetml.sharedStrings+xml"/>)");
    insert(parts[2].second, R"(<Relationship Id="s" Target="sharedStrings.xml" Type="http://schemas.openxmlformats.)"
                            R"(org/officeDocument/2006/relationships/sharedStrings"/>)");
    ASSERT_TRUE(load(*book, packed(parts))) << book->errorMessage();
    ASSERT_TRUE(book->getSheet(0)->writeString(0, 0, "new", nullptr)) << book->errorMessage();
    auto saved = savedParts(*book);
    EXPECT_THAT(saved["xl/SharedStrings.xml"], HasSubstr("old</t></si><si><t>new"));
    EXPECT_EQ(saved.count("xl/sharedStrings.xml"), 0u);
    const std::string& rels = saved["xl/_rels/workbook.xml.rels"];
    EXPECT_EQ(rels.find("haredStrings.xml"), rels.rfind("haredStrings.xml"));
}

TEST_F(Save, NothingIsTruncatedForABookWithoutSheets) {
    const std::string path = folder + "a.xlsx";
    std::ofstream(path) << "old";
    EXPECT_FALSE(book->saveFile(path.c_str(), false));
    EXPECT_STREQ(book->errorMessage(), "min/max occurs error on marshaling");
    EXPECT_EQ(content(path), "old");
    EXPECT_FALSE(load(*book, "no book"));
    EXPECT_FALSE(book->saveFile(path.c_str(), false));
    EXPECT_STREQ(book->errorMessage(), "workbook content types are not found");
    EXPECT_EQ(content(path), "old");
}

TEST_F(Save, ByWayOfATemporaryFileIsTheSame) {
    ASSERT_TRUE(load(*book, samplePackageBytes(2, {{"xl/kept.xml", "kept"}})));
    ASSERT_TRUE(book->saveFile((folder + "a.xlsx").c_str(), false)) << book->errorMessage();
    ASSERT_TRUE(book->saveFile((folder + "b.xlsx").c_str(), true)) << book->errorMessage();
    EXPECT_EQ(unpacked(content(folder + "a.xlsx")), unpacked(content(folder + "b.xlsx")));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 2);
    EXPECT_FALSE(book->saveFile((folder + "none/a.xlsx").c_str(), false));
    EXPECT_STREQ(book->errorMessage(), "can't open file for writing");
    EXPECT_FALSE(book->saveFile(nullptr, false));
}

TEST_F(Save, TemporaryFilesHaveNamesThatNobodyElseHas) {
    ASSERT_TRUE(load(*book, samplePackageBytes(2)));
    const int watch = inotify_init1(IN_NONBLOCK);
    ASSERT_GE(inotify_add_watch(watch, folder.c_str(), IN_CREATE), 0);
    ASSERT_TRUE(book->saveFile((folder + "a.xlsx").c_str(), true)) << book->errorMessage();
    alignas(inotify_event) char events[1 << 16];
    const ssize_t size = read(watch, events, sizeof events);
    close(watch);
    std::set<std::string> names;
    std::size_t made = 0;
    for (ssize_t at = 0; at < size; ++made) {
        const auto* const event = reinterpret_cast<const inotify_event*>(events + at);
        names.insert(event->name);
        at += static_cast<ssize_t>(sizeof *event + event->len);
    }
    EXPECT_EQ(names.erase("a.xlsx"), 1u);
    EXPECT_EQ(names.size(), made - 1);
    EXPECT_EQ(names.size(), savedParts(*book).size());
    EXPECT_THAT(names, testing::Each(testing::MatchesRegex("vellum-[a-z]{16}\\.tmp")));
}

TEST_F(Save, SaysWhatFailed) {
    std::string noise(1 << 20, '\0');
    std::mt19937 random;
    for (char& byte : noise) byte = static_cast<char>(random());
    const std::pair<const char*, std::string> rows[] = {{"opaque", noise}, {"xml", ""}};
    for (const auto& [what, bytes] : rows) {
        ASSERT_TRUE(load(*book, samplePackageBytes(1, {{"a.xml", noise}})));
        if (bytes.empty()) {  // a sheet of as many bytes
            ASSERT_TRUE(load(*book, samplePackageBytes(1)));
            for (int i = 0; i < 40000; ++i) book->getSheet(0)->writeNumber(i, 0, double(random()) / 3, nullptr);
        }
        EXPECT_FALSE(book->saveFile("/dev/full", false));
        EXPECT_STREQ(book->errorMessage(), "can't write to zip stream") << what;
    }
    // A folder that takes no temporary file.
    std::ofstream(folder + "a.xlsx") << "old";
    const int file = open((folder + "a.xlsx").c_str(), O_RDWR);
    EXPECT_FALSE(book->saveFile(("/proc/self/fd/" + std::to_string(file)).c_str(), true));
    EXPECT_STREQ(book->errorMessage(), "can't open zip stream for writing");
    close(file);
}

TEST_F(Save, MemoryAndFileHoldTheSame) {
    ASSERT_TRUE(load(*book, samplePackageBytes(1)));
    ASSERT_TRUE(book->saveFile((folder + "a.xlsx").c_str(), false));
    EXPECT_EQ(unpacked(content(folder + "a.xlsx")), savedParts(*book));
    EXPECT_EQ(content(folder + "a.xlsx").find("[Content_Types].xml"), 30u);  // behind the first local header
}

}  // namespace
}  // namespace vellum
