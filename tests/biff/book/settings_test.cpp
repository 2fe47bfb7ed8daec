// Dates, modes and the texts of loading and saving.
#include "tests/biff/book/fixture.h"

namespace vellum::test {
namespace {

TEST(Settings, TimesWithoutADateAreZero) {
    const Book book = newBook();
    EXPECT_EQ(book->datePack(0, 0, 0, 12), 0.0);
    EXPECT_EQ(book->datePack(1900, 1, 1, 12), 1.5);
    book->setDate1904(true);
    EXPECT_EQ(book->datePack(1904, 1, 2), 1.0);
    EXPECT_FALSE(book->dateUnpack(2958466.0, nullptr, nullptr, nullptr));
    EXPECT_TRUE(book->dateUnpack(1.0, nullptr, nullptr, nullptr));
}

TEST(Settings, ModesGoToEverySheet) {
    const Book book = newBook();
    EXPECT_EQ(book->calculationMode(), 1);
    EXPECT_FALSE(book->usesR1C1());
    book->addSheet("A");
    book->setUsesR1C1(true);
    book->addSheet("B");
    EXPECT_TRUE(book->setCalculationMode(0));
    const Book again = loaded(saved(*book));
    EXPECT_TRUE(again->usesR1C1());
    EXPECT_EQ(again->calculationMode(), 0);
    again->addSheet("C");
    EXPECT_TRUE(again->usesR1C1()) << "a new sheet is like the others of its file";
    for (const Record& r : only(recordsOf(saved(*book)), 15)) EXPECT_EQ(r.body, hex("0000"));
    EXPECT_EQ(book->addPictureLink("x.png", false), -1);
    EXPECT_STREQ(book->errorMessage(), "function is not supported for xls files");
}

TEST(Settings, FilesThatCannotBeOpened) {
    const Book book = newBook();
    book->addSheet("A");
    EXPECT_FALSE(book->saveFile(nullptr));
    EXPECT_STREQ(book->errorMessage(), "file name can't be 0");
    EXPECT_FALSE(book->saveFile("/no/such/folder/a.xls"));
    EXPECT_STREQ(book->errorMessage(), "can't open file for writing");
    for (int row = 0; row < 1000; ++row) book->getSheet(0)->writeNumber(row, 0, row + 0.1);
    EXPECT_FALSE(book->saveFile("/dev/full"));
    EXPECT_STREQ(book->errorMessage(), "stream error, perhaps it's too small writing buffer");
    EXPECT_EQ(book->sheetCount(), 1);
    EXPECT_FALSE(book->loadFile(nullptr));
    EXPECT_STREQ(book->errorMessage(), "file name name can't be 0");
    EXPECT_FALSE(book->loadFile("/no/such/file.xls"));
    EXPECT_STREQ(book->errorMessage(), "can't open file for reading");
    EXPECT_FALSE(book->loadFile("/"));
    EXPECT_STREQ(book->errorMessage(), "can't open file for reading");
    EXPECT_EQ(book->sheetCount(), 0) << "a failed load leaves an empty book";
    EXPECT_NE(book->addSheet("A"), nullptr);
    EXPECT_FALSE(book->loadMemory(nullptr, 0));
    EXPECT_FALSE(book->loadMemory("PK", 2));
}

TEST(Settings, WideInterface) {
    std::unique_ptr<IBookT<wchar_t>, Release<wchar_t>> book(vlCreateBook<wchar_t>());
    ISheetT<wchar_t>* const sheet = book->addSheet(L"\x0416");
    ASSERT_NE(sheet, nullptr);
    sheet->writeString(0, 0, L"\x4E2D");
    const char* data = nullptr;
    std::size_t size = 0;
    ASSERT_TRUE(book->saveMemory(&data, &size));
    const std::vector<char> file(data, data + size);
    ASSERT_TRUE(book->loadMemory(file.data(), file.size())) << book->errorMessage();
    EXPECT_STREQ(book->sheetNameAt(0), L"\x0416");
    EXPECT_STREQ(book->getSheet(0)->readString(0, 0), L"\x4E2D");
    EXPECT_EQ(book->addSheet(L"\x0436"), nullptr) << "the same name in small letters";
}

}  // namespace
}  // namespace vellum::test
