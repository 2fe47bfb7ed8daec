// Large worksheets, which are parsed while they are unpacked, against the same ones read as a whole from a file.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "tests/xlsx/book/package.h"

namespace vellum {
namespace {

const std::string head =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">";

/// Rows of many forms, some longer than a window.
std::string rows(unsigned seed, int count) {
    std::mt19937 random(seed);
    std::string xml;
    for (int row = 1; row <= count; ++row) {
        const std::string number = std::to_string(row);
        if (row % 1000 == 7) xml += "<!-- </row> in a remark -->\r\n";
        xml += row % 50 == 3 ? "<row  r=\"" + number + "\">" : "<row r=\"" + number + "\" spans=\"1:3\">";
        xml += "<c r=\"A" + number + "\"><v>" + std::to_string(random()) + ".5</v></c>";
        if (random() % 3 == 0) {
            const std::size_t length = random() % 400 == 0 ? 300000 : random() % 100;
            xml += "<c r=\"B" + number + "\" t=\"inlineStr\"><is><t>" + std::string(length, 'b') + "&amp;</t></is></c>";
        }
        if (random() % 5 == 0) xml += "<c r=\"C" + number + "\"><f>A" + number + "+1</f><v>2</v></c>";
        xml += row % 70 == 5 ? "</row >" : "</row>";
    }
    return xml;
}

/// What a book makes of the sheet: its saved part, or the text of its error.
std::string outcome(const std::string& archive, const char* tempFile, int firstRow, int lastRow) {
    const auto folder = std::filesystem::temp_directory_path() / ("windows_" + std::to_string(getpid()));
    std::filesystem::create_directory(folder);
    const std::string path = folder / "in.xlsx";
    std::ofstream(path, std::ios::binary) << archive;
    const std::string temporary = tempFile ? (folder / tempFile).string() : std::string();
    const BookPtr book = newBook();
    const bool loaded = book->loadFileRows(path.c_str(), firstRow < 0 ? -1 : 0, firstRow, lastRow,
                                           tempFile ? temporary.c_str() : nullptr);
    std::filesystem::remove_all(folder);
    return loaded ? savedParts(*book)["xl/worksheets/sheet1.xml"] : std::string("! ") + book->errorMessage();
}

TEST(Windows, GiveWhatTheWholePartGives) {
    const std::string many = rows(1, 15000);
    const struct {
        const char* name;
        std::string sheet;
    } cases[] = {
        {"rows", head + "<sheetData>" + many + "</sheetData></worksheet>"},
        {"a long head", head + "<cols>" + std::string(600000, ' ') + "<col min=\"1\" max=\"1\" width=\"9\"/></cols>" +
                            "<sheetData>" + many + "</sheetData></worksheet>"},
        {"a long tail", head + "<sheetData>" + many + "</sheetData><mergeCells><mergeCell ref=\"A1:B2\"/>" +
                            std::string(1500000, ' ') + "</mergeCells></worksheet>"},
        {"no rows", head + "<sheetData/>" + std::string(1500000, ' ') + "</worksheet>"},
        {"a row's end in a text", head + "<sheetData>" + many + "<row><c t=\"inlineStr\"><is><t><![CDATA[" +
                                      std::string(400000, 'x') + "</row>" + std::string(400000, 'y') +
                                      "]]></t></is></c></row>" + many + "</sheetData></worksheet>"},
        {"no end", head + "<sheetData>" + many},
        {"an end too early", head + "<sheetData>" + many + "</sheetDat></worksheet>"},
        {"a wrong tag", head + "<sheetData>" + many + "<row><c></row>" + many + "</sheetData></worksheet>"},
        {"another encoding", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + head.substr(39) + "<sheetData>" +
                                 many + "<row><c t=\"str\"><v>\xE4</v></c></row></sheetData></worksheet>"},
        {"something behind the end",
         head + "<sheetData>" + many + "</sheetData></worksheet>" + std::string(1500000, ' ') + "<again/>"},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        const std::string archive = samplePackageBytes(1, {{"xl/worksheets/sheet1.xml", one.sheet}});
        const std::string whole = outcome(archive, "part.tmp", -1, -1);
        for (const char* const threads : {"1", "4"}) {
            setenv("QUILLET_THREADS", threads, 1);
            EXPECT_TRUE(outcome(archive, nullptr, -1, -1) == whole) << whole.substr(0, 200);
            EXPECT_TRUE(outcome(archive, nullptr, 100, 4000) == outcome(archive, "part.tmp", 100, 4000));
        }
        unsetenv("QUILLET_THREADS");
    }
}

/// Damage anywhere is told as when the part is unpacked as a whole.
TEST(Windows, TellOfDamageLikeTheWholePart) {
    const std::string archive =
        samplePackageBytes(1, {{"xl/worksheets/sheet1.xml", head + "<sheetData>" + rows(2, 20000)}});
    for (std::size_t at = archive.size() / 5; at < archive.size(); at += archive.size() / 13) {
        std::string torn = archive;
        torn[at] = static_cast<char>(torn[at] ^ 0x41);
        EXPECT_EQ(outcome(torn, nullptr, -1, -1), outcome(torn, "part.tmp", -1, -1)) << at;
    }
}

}  // namespace
}  // namespace vellum
