#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/engine/both/engines.h"

namespace vellum {
namespace {

class Failures : public EachEngine {
protected:
    std::string path(const char* name) { return testing::TempDir() + "failures_" + name; }
};
INSTANTIATE_FOR_EACH_ENGINE(Failures);

TEST_P(Failures, TheTextStaysUntilTheNextSuccess) {
    EXPECT_EQ(error(), "ok");
    book->addSheet("S");
    EXPECT_EQ(book->getSheet(99), nullptr);
    EXPECT_EQ(error(), "index is out of range");
    EXPECT_NE(book->getSheet(0), nullptr);
    EXPECT_EQ(error(), "ok");
}

TEST_P(Failures, OfLocaleAndText) {
    auto* sheet = book->addSheet("S");
    EXPECT_FALSE(book->setLocale(nullptr));
    EXPECT_EQ(error(), "setlocale error (1)");
    EXPECT_FALSE(sheet->writeString(0, 0, "a\xFFz"));
    EXPECT_EQ(error(), "Invalid UTF-8");
    EXPECT_FALSE(sheet->writeString(0, 0, std::string(32768, 'x').c_str()));
    EXPECT_EQ(error(), "string is too long");
    EXPECT_TRUE(sheet->writeString(0, 0, std::string(32767, 'x').c_str()));
    EXPECT_EQ(error(), "ok");
}

TEST_P(Failures, OutsideTheSheet) {
    auto* sheet = book->addSheet("S");
    EXPECT_TRUE(sheet->writeNumber(lastPossibleRow(), lastPossibleCol(), 1));
    const std::string row = "row must be in range 0-" + std::to_string(lastPossibleRow());
    const std::string col = "col must be in range 0-" + std::to_string(lastPossibleCol());
    EXPECT_FALSE(sheet->writeNumber(lastPossibleRow() + 1, 0, 1));
    EXPECT_EQ(error(), row);
    EXPECT_FALSE(sheet->writeString(0, lastPossibleCol() + 1, "x"));
    EXPECT_EQ(error(), col);
    EXPECT_FALSE(sheet->writeBool(-1, 0, true));
    EXPECT_FALSE(sheet->writeBlank(0, -1, nullptr));
}

// A limit on the size of files stands for a disk without room.
TEST_P(Failures, AFullDiskLeavesTheOldFile) {
    std::signal(SIGXFSZ, SIG_IGN);
    const std::string name = path(isBinary() ? "full.xls" : "full.xlsx");
    const auto content = [&] {
        std::ifstream file(name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    std::ofstream(name, std::ios::binary) << "the old file";
    auto* sheet = book->addSheet("S");
    for (int i = 0; i < 2000; ++i) sheet->writeNumber(i, i % 7, i * 0.37);
    std::size_t size = 0;
    const char* data = nullptr;
    ASSERT_TRUE(book->saveMemory(&data, &size));
    rlimit before;
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    for (rlim_t room = 12; room < size; room += size / 40) {
        const rlimit low{room, before.rlim_max};
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &low), 0);
        const bool saved = book->saveFile(name.c_str());
        const std::string text = error();
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
        EXPECT_FALSE(saved) << room;
        EXPECT_EQ(text, "disk is full");
        EXPECT_EQ(content(), "the old file");
    }
    EXPECT_FALSE(book->saveFile("/dev/full"));  // refuses the write itself
    EXPECT_NE(error(), "ok");

    std::ofstream(name, std::ios::binary) << std::string(1000000, 'x');  // a longer file is cut
    EXPECT_TRUE(book->saveFile(name.c_str())) << error();
    const auto loaded = createBook(GetParam());
    EXPECT_TRUE(loaded->loadFile(name.c_str())) << loaded->errorMessage();
    EXPECT_LT(content().size(), 900000u);
    std::remove(name.c_str());
}

TEST_P(Failures, OfFilesLeaveTheBookEmpty) {
    book->addSheet("S");
    EXPECT_FALSE(book->loadFile(nullptr));
    EXPECT_FALSE(book->loadFile(path("that is not there").c_str()));
    EXPECT_NE(error(), "ok");
    EXPECT_EQ(book->sheetCount(), 0);

    std::ofstream(path("garbage"), std::ios::binary) << "this is no workbook at all, but long enough to look at";
    book->addSheet("S");
    EXPECT_FALSE(book->loadFile(path("garbage").c_str()));
    EXPECT_NE(error(), "ok");
    EXPECT_EQ(book->sheetCount(), 0);
    EXPECT_FALSE(book->loadMemory(nullptr, 0));
    EXPECT_NE(error(), "ok");

    book->addSheet("S");
    EXPECT_FALSE(book->saveFile(nullptr));
    EXPECT_NE(error(), "ok");
    EXPECT_FALSE(book->saveFile("/no such folder/x"));
    EXPECT_NE(error(), "ok");
}

TEST_P(Failures, ADamagedFileNeverLeavesHalfABook) {
    auto* sheet = book->addSheet("S");
    for (int i = 0; i < 50; ++i) sheet->writeString(i, 0, std::to_string(i).c_str());
    const char* data = nullptr;
    std::size_t size = 0;
    ASSERT_TRUE(book->saveMemory(&data, &size));
    std::vector<char> bytes(data, data + size);
    const auto broken = createBook(GetParam());
    for (std::size_t cut = 0; cut < size; cut += 61) {
        if (broken->loadMemory(bytes.data(), cut)) continue;  // what is cut was padding
        EXPECT_EQ(broken->sheetCount(), 0) << cut;
        EXPECT_STRNE(broken->errorMessage(), "ok") << cut;
    }
}

// Limits that are far off, and books that do not fit together.
TEST(BinaryFailures, OfLimitsAndOtherFormats) {
    const BookPtr<char> book = createBook(Engine::binary), other = createBook(Engine::openXml);
    auto* const sheet = book->addSheet("S");
    for (const int percent : {0, -1, 65536}) {
        EXPECT_FALSE(sheet->setZoomPercent(percent));
        EXPECT_STREQ(book->errorMessage(), "zoom must be in range 1-65535");
    }
    EXPECT_EQ(book->addSheet("copy", other->addSheet("S")), nullptr);
    EXPECT_STREQ(book->errorMessage(), "can't copy a sheet of a workbook of another format");
    int names = 0;
    while (names < 70000 && sheet->setNamedRangeByName(("name" + std::to_string(names)).c_str(), 0, 0, 0, 0)) ++names;
    EXPECT_EQ(names, 65535);
    EXPECT_STREQ(book->errorMessage(), "too many names");

    const std::string name = testing::TempDir() + std::to_string(getpid()) + "large.xls";
    std::ofstream(name, std::ios::binary) << "x";
    std::filesystem::resize_file(name, std::uintmax_t{1} << 32);  // it has no blocks on the disk
    EXPECT_FALSE(book->loadFile(name.c_str()));
    EXPECT_STREQ(book->errorMessage(), "Xls::measure(): a xls file can't be 4 GB or more");
    std::remove(name.c_str());
}

TEST_P(Failures, WhatTheFormatDoesNotHave) {
    auto* sheet = book->addSheet("S");
    if (isBinary()) {
        EXPECT_EQ(book->addPictureLink("x.png", false), -1);
        EXPECT_EQ(error(), "function is not supported for xls files");
        EXPECT_EQ(sheet->filterObject(), nullptr);
        EXPECT_EQ(error(), "AutoFilter is not supported for xls format");
        EXPECT_FALSE(sheet->removeValidationRules());
        EXPECT_EQ(error(), "function is not supported for xls files");
        EXPECT_EQ(sheet->formControlTotal(), 0);
        EXPECT_EQ(sheet->formControlAt(0), nullptr);
    } else {
        EXPECT_FALSE(book->loadWithoutEmptyCells("x.xlsx"));
        EXPECT_EQ(error(), "Book::loadWithoutEmptyCells() is not supported for xlsx files");
    }
    EXPECT_EQ(book->engineVersion(), 0x4000301);
}

}  // namespace
}  // namespace vellum
