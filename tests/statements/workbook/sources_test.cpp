#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>

#include "tests/statements/workbook/workbook_script.h"

namespace {

using Sources = WorkbookScript;
INSTANTIATE_FOR_DRIVERS(Sources);

TEST_P(Sources, SheetsAreAddedOnUpdateAlone) {
    EXPECT_EQ(run(R"s(
        declare x : real = 1
        declare y : real
        write "$D:grow;t.$E" { x to "[New$A1]" }
        write "$D:grow;t.$E" { x to "[3$B2]" }
        read "$D:t.$E" { y from "[new$A1]" }
        read "$D:t.$E" { y from "[Sheet3$B2]" }
        read "$D:t.$E" { y from "[Sheet2$A1]" }
        read "$D:t.$E" { y from "[Other$A1]" }
        write "$D:grow;t.$E" { x to "[a*b$A1]" })s"),
              R"s(write
write
read [1]
read [1]
read [1]
read 1 [0] "SHEET: Sheet not found.\n" "SHEET: Invalid range or name not found.\n"
write 1 "SHEET: A new sheet cannot be added.\n" "SHEET: Invalid range or name not found.\n"
)s");
}

// The workbook cuts such a name: the first statement makes the sheet, and no later one finds it by the long name.
TEST_P(Sources, ASheetNameThatIsTooLongWritesOnce) {
    EXPECT_EQ(run(R"s(
        declare x : real = 1
        write "$D:t.$E" { x to "[A_name_of_more_than_31_characters$A1]" }
        write "$D:t.$E" { x to "[A_name_of_more_than_31_characters$A1]" }
        read "$D:t.$E" { x from "[A_name_of_more_than_31_characters$A1]" }
        read "$D:t.$E" { x from "[A_name_of_more_than_31_characte$A1]" })s"),
              R"s(write
write 1 "SHEET: A new sheet cannot be added.\n" "SHEET: Invalid range or name not found.\n"
read 1 [0] "SHEET: Sheet not found.\n" "SHEET: Invalid range or name not found.\n"
read [1]
)s");
}

// What a write whose close failed leaves behind.
TEST_P(Sources, AnEmptyFileIsANewOne) {
    EXPECT_EQ(
        run(R"s(
        declare x : real = 5
        declare y : real
        write "$D:t.$E" { x to "A1" }
        write "$D:t.$E" { x to "[S$A1]" }
        read "$D:t.$E" { y from "[S$A1]" }
        print y)s"),
        isXls()
            ? R"s(write 1 "SHEET: Range name not found.\n" "SHEET: Invalid range or name not found.\n"
write
read [1]
y 5
)s"
            : R"s(write 1 "SHEET: Range name not found.\n" "SHEET: Invalid range or name not found.\n" 8:"min/max occurs error on marshaling"
write
read [1]
y 5
)s");
}

// A chart sheet is kept as bytes: what a label wrote there would be gone with the save.
TEST_P(Sources, ALabelFindsWorksheetsOnly) {
    if (!isXls()) return;
    EXPECT_EQ(run(R"s(declare x : real = 5
        write "xls:grow;c.xls" { x to "[Data$A1]", x to "[Chart1$A1]" })s"),
              "write\n");
    std::string file = folder().read("c.xls");
    const std::string name("\x06\1C\0h\0a", 7);  // length, wide, text; the sheet's kind stands in front
    const auto listed = file.find(name);
    ASSERT_NE(listed, std::string::npos);
    file[listed - 1] = 2;
    const std::string worksheet("\x09\x08\x10\0\0\6\x10\0", 8);
    file[file.rfind(worksheet) + 6] = 0x20;
    folder().write("c.xls", file);
    EXPECT_EQ(run(R"s(
        declare x : real = 7
        read "xls:c.xls" { x from "[Chart1$A1]" }
        read "xls:c.xls" { x from "[2$A1]" }
        write "xls:c.xls" { x to "[Chart1$A1]" }
        read "xls:c.xls" { x from "[Data$A1]" })s"),
              R"s(read 1 [0] "SHEET: Sheet not found.\n" "SHEET: Invalid range or name not found.\n"
read 1 [0] "SHEET: Sheet not found.\n" "SHEET: Invalid range or name not found.\n"
write 1 "SHEET: A new sheet cannot be added.\n" "SHEET: Invalid range or name not found.\n"
read [1]
)s");
}

TEST_P(Sources, TwoOpensSaveOnce) {
    EXPECT_EQ(run(R"s(
        declare x : real = 1
        declare y : real = 7
        write "$D:grow;t.$E" { x to "[S$A1]" }
        open "$D:t.$E" update
        write "$D:t.$E" { y to "[S$A1]" }
        context 2
        read "$D:t.$E" { x from "[S$A1]" }
        print x
        context 1
        close "$D:t.$E"
        context 2
        read "$D:t.$E" { x from "[S$A1]" }
        print x)s"),
              R"s(write
open
write
read [1]
x 1
close
read [1]
x 7
)s");
}

TEST_P(Sources, OpenForReadingFirst) {
    EXPECT_EQ(run(R"s(
        declare x : real = 1
        write "$D:grow;t.$E" { x to "[S$A1]" }
        open "$D:t.$E"
        write "$D:t.$E" { x to "[S$A1]" }
        close "$D:t.$E")s"),
              R"s(write
open
write -1 2:"file already open for reading only"
close
)s");
}

TEST_P(Sources, FilesThatCannotBeRead) {
    folder().write("short.bin", "too short");
    folder().write("zip.bin", "PK\3\4" + std::string(700, 'x'));
    folder().write("text.bin", std::string(700, 'x'));
    const std::string missing = isXls() ? R"s(read -1 [0] 7:"can't open file for reading")s" : "";
    const std::string zip =
        isXls() ? R"s(read -1 [0] 7:"It is not a xls file. Use the vlCreateXMLBook() for a xlsx file.")s" : "";
    const std::string text =
        isXls() ? zip : R"s(read -1 [0] 7:"It is not a xlsx file. Use the vlCreateBook() for a xls file.")s";
    const std::string result = run(R"s(
        declare x : real
        read "$D:missing.$E" { x from "[A1]" }
        read "$D:zip.bin" { x from "[A1]" }
        read "$D:text.bin" { x from "[A1]" }
        read "$D:short.bin" { x from "[A1]" }
        param deny "denied.$E"
        read "$D:denied.$E" { x from "[A1]" }
        read "$D:" { x from "[A1]" })s");
    EXPECT_THAT(result, testing::HasSubstr(missing));
    EXPECT_THAT(result, testing::HasSubstr(zip));
    EXPECT_THAT(result, testing::HasSubstr(text));
    EXPECT_THAT(result, testing::EndsWith(R"s(read -1 [0] 1:"access denied"
read -1 [0] 1:"access denied"
)s"));
}

TEST_P(Sources, AnUpdateOfGarbageIsRefusedAndLeavesIt) {
    folder().write("g.bin", std::string(700, 'x'));
    const std::string result = run(R"s(
        declare x : real = 1
        write "$D:grow;g.bin" { x to "[S$A1]" })s");
    EXPECT_THAT(result, testing::StartsWith("write -1 6:\"It is not"));
    EXPECT_EQ(folder().read("g.bin"), std::string(700, 'x'));
}

TEST_P(Sources, AFileThatCannotBeWritten) {
    if (geteuid() == 0) GTEST_SKIP() << "every file is writable to root";
    run(R"s(
        declare x : real = 1
        write "$D:grow;t.$E" { x to "[S$A1]" })s");
    chmod(folder().path("t." + extension()).c_str(), 0444);
    EXPECT_THAT(run(R"s(
        declare x : real = 2
        write "$D:t.$E" { x to "[S$A1]" })s"),
                testing::HasSubstr("8:\"can't open file for writing\""));
}

TEST_P(Sources, AReadNeverWrites) {
    run(R"s(
        declare x : real = 1
        write "$D:grow;t.$E" { x to "[S$A1]" })s");
    const std::filesystem::path file = folder().path("t." + extension());
    const auto longAgo = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
    std::filesystem::last_write_time(file, longAgo);
    EXPECT_EQ(run(R"s(
        declare y : real
        read "$D:t.$E" { y from "[S$A1]" }
        print y)s"),
              "read [1]\ny 1\n");
    EXPECT_EQ(std::filesystem::last_write_time(file), longAgo);
}

}  // namespace
