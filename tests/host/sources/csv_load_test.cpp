#include "host/sources/csv_load.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "host/interface/host.h"
#include "host/sources/csv_save.h"
#include "tests/host/sources/csv_reference.h"

namespace quillet {
namespace {

// The stream that the host gives and how much of it at a time, what it prints, and the line of the last report.
std::string stream, printed;
std::size_t streamAt, readSize;
int reportedLine;

long readStream(HostContext*, void* buffer, long count) {
    const std::size_t size = std::min({stream.size() - streamAt, static_cast<std::size_t>(count), readSize});
    std::memcpy(buffer, stream.data() + streamAt, size);
    streamAt += size;
    return static_cast<long>(size);
}

void print(HostContext*, const char* format, ...) {
    va_list args;
    va_start(args, format);
    printed += va_arg(args, const char*);
    va_end(args);
}

void error(HostContext*, const char* format, ...) {
    va_list args;
    va_start(args, format);
    reportedLine = std::strchr(format, '%') ? va_arg(args, int) : -1;
    va_end(args);
}

int formatReal(HostContext*, char* buffer, int size, const char* format, double value) {
    return std::snprintf(buffer, static_cast<std::size_t>(size), format, value);
}

const char* language() {
    return "en";
}

struct Settings {
    char fieldSep = ',', decimalSep = '.';
    std::int32_t bufferSize = 64;
    bool allText = false;
};

class CsvLoad : public testing::Test {
protected:
    void SetUp() override {
        static HostApi api = {};
        api.hostLanguage = language;
        api.hostStreamRead = readStream;
        api.hostStreamPrint = print;
        api.hostError = error;
        api.hostFormatReal = formatReal;
        openHost(&api);
    }
    void TearDown() override { closeHost(); }

    /// The text by every scan and by none, in reads of the given size; each must give what the reference gives.
    static void expectAsReference(const std::string& text, const Settings& settings, std::size_t sizeOfReads) {
        std::vector<CsvScan> scans = {nullptr};
        for (const CsvScan* scan = usableScans(); *scan; ++scan) scans.push_back(*scan);
        stream = text;
        readSize = sizeOfReads;
        CsvTable like(nullptr, nullptr, settings.bufferSize);
        like.fieldSep = static_cast<unsigned char>(settings.fieldSep);
        like.decimalSep = settings.decimalSep;
        const ReferenceTable reference = readByReference(text, like, settings.allText);
        for (std::size_t i = 0; i < scans.size(); ++i) {
            SCOPED_TRACE("scan " + std::to_string(i) + " of " + testing::PrintToString(text.substr(0, 500)));
            std::vector<char> lineBuffer(static_cast<std::size_t>(settings.bufferSize));
            CsvTable table(nullptr, lineBuffer.data(), settings.bufferSize);
            table.fieldSep = like.fieldSep;
            table.decimalSep = like.decimalSep;
            streamAt = 0;
            reportedLine = 0;
            ASSERT_EQ(loadCsvBy(scans[i], table, settings.allText), reference.loaded);
            ASSERT_EQ(reportedLine, reference.overflowLine);
            if (reference.loaded) {
                ASSERT_EQ(differenceFrom(reference, table), "");
            }
        }
    }
};

TEST_F(CsvLoad, GivesWhatTheReferenceGives) {
    const std::string longText(70, 'x');
    for (const std::string& text : {
             std::string("a,\"b,c\",d\n1,2,\n\n,,\n7"),
             std::string("\"He said \"\"hi\"\"\",\"\"\"\",\"\",\"\"\"\"\"\"\n"),
             std::string("a\r\n\"b\"\r\n\"c\r\"\n\"d\r\"\r\n\"\"\r\n\r\n\r\r\n"),
             std::string("\"a\"b,\"a\"\"b\"c\"d\",a\"b\"\n\"open,\n"),
             std::string("two\nlines\n\"in\none\",x\n"),
             std::string("a\0b,\0,\"a\0b\",\"\0\"\n1\0,2\n", 21),
             std::string(63, 'y') + ",1\n",
             std::string(64, 'y') + ",1\n",
             "1\n\"" + std::string(63, 'y') + "\"\n",
             "1\n\"" + std::string(63, 'y') + "\"\r\n",
             "1\n\n\"" + std::string(64, 'y') + "\"",
             "\"" + std::string(62, 'y') + "\"\"\"," + "1",
             "\"" + std::string(62, 'y') + "\"\"\"\"\"," + "1",
             std::string(200, ',') + "last\n" + std::string(63, ',') + "x," + "y\n",
         }) {
        for (const std::size_t size : {std::size_t{1}, std::size_t{7}, std::size_t{1} << 20}) {
            expectAsReference(text, {}, size);
        }
    }
}

TEST_F(CsvLoad, RandomTextsGiveWhatTheReferenceGives) {
    const std::vector<std::string> pieces = {",",
                                             ",",
                                             ",",
                                             ",",
                                             ";",
                                             "\n",
                                             "\n",
                                             "\r\n",
                                             "\"",
                                             "\"",
                                             "\"\"",
                                             "\"\"",
                                             "\r",
                                             "-0",
                                             "007",
                                             "-5",
                                             "1.25",
                                             "1,25",
                                             "1e5",
                                             "0x1F",
                                             "TRUE",
                                             "FALSE",
                                             "true",
                                             "2024-",
                                             "12345678",
                                             "a text",
                                             "1234567",
                                             "9007199254740993",
                                             "123456789.123456",
                                             "0.000001",
                                             ".5",
                                             "1.",
                                             "a text that is longer and comes again",
                                             "2024-01-31",
                                             "\xC3\xA9",
                                             std::string(1, '\0'),
                                             "-",
                                             "+",
                                             "e",
                                             "0",
                                             "00",
                                             "."};
    const Settings variants[] = {{},
                                 {},
                                 {',', ',', 16},
                                 {';', ',', 2048},
                                 {'\t', '.', 64, true},
                                 {'"'},
                                 {'\r'},
                                 {'\n'},
                                 {'0'},
                                 {static_cast<char>(0xC3), '.', 64},
                                 {',', 'e'}};
    std::mt19937 random(11);
    for (int i = 0; i < 4000 && !HasFailure(); ++i) {
        std::string text;
        // Some texts repeat a few pieces, as columns do.
        const std::size_t choice = i % 3 ? pieces.size() : 1 + random() % 12, offset = random() % pieces.size();
        for (auto count = random() % (i % 50 == 0 ? 3000 : 60); count > 0; --count) {
            text += pieces[(offset + random() % choice) % pieces.size()];
        }
        expectAsReference(text, variants[random() % std::size(variants)], i % 4 == 0 ? 1 + random() % 40 : 1 << 20);
    }
}

/// Rows over several stream blocks, wider than a block of cells, with texts of which a part repeats.
TEST_F(CsvLoad, ManyRowsGiveWhatTheReferenceGives) {
    std::mt19937 random(3);
    std::string text;
    for (int row = 0; row < 9000; ++row) {
        const int columns = row % 100 == 0 ? 150 : static_cast<int>(random() % 12);
        for (int col = 0; col < columns; ++col) {
            switch (random() % 5) {
                case 0:
                    text += std::to_string(random());
                    break;
                case 1:
                    text += std::to_string(random() % 100000) + "." + std::to_string(random());
                    break;
                case 2:
                    text += "\"again, text " + std::to_string(random() % 50) + "\"";
                    break;
                case 3:
                    text += "only once " + std::to_string(row) + " and \"" + std::to_string(col);
                    break;
                default:
                    break;
            }
            text += ',';
        }
        text += row % 2 ? "\n" : "\r\n";
    }
    expectAsReference(text, {}, std::size_t{1} << 20);
    expectAsReference(text, {}, 40009);
}

/// More texts than are shared, all different, then all alike.
TEST_F(CsvLoad, TextsComeBackHoweverManyThereAre) {
    std::string text;
    for (int i = 0; i < 140000; ++i) text += "text number " + std::to_string(i < 135000 ? i : i % 10) + "\n";
    expectAsReference(text, {}, std::size_t{1} << 20);
}

TEST_F(CsvLoad, WhatIsSavedLoadsBack) {
    stream = "1,-0.0,1e300,\"a,b\",\"say \"\"x\"\"\"\nTRUE,,short\n\n,a text of more characters\n";
    const std::string expected = "1,-0,1e+300,\"a,b\",\"say \"\"x\"\"\"\nTRUE,,short\n\n,a text of more characters\n";
    streamAt = 0;
    readSize = 1000;
    std::vector<char> lineBuffer(2048);
    CsvTable table(nullptr, lineBuffer.data(), 2048);
    table.realFormat = "%.15g";
    ASSERT_TRUE(loadCsv(table, false));
    for (const std::string& longer : {std::string(), std::string(70000, 'z'), "\"" + std::string(140000, '"')}) {
        printed.clear();
        table.storeText(3, 2, longer.c_str());
        std::string quoted;
        for (const char c : longer) quoted += c == '"' ? "\"\"" : std::string(1, c);
        if (longer[0] == '"') quoted = '"' + quoted + '"';
        EXPECT_TRUE(saveCsv(table));
        EXPECT_TRUE(printed == expected.substr(0, expected.size() - 1) + "," + quoted + "\n");
    }
}

}  // namespace
}  // namespace quillet
