#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>

#include "tests/support/script_runner.h"
#include "tests/xlsx/book/package.h"

namespace {

struct Outcome {
    int status;
    std::string out, err;
};

/// Runs the command in the folder, where it finds the script "s".
Outcome quillet(const support::TempFolder& folder, const std::string& arguments) {
    const std::string command = "cd '" + folder.path() + "' && " QUILLET_COMMAND " " + arguments + " >.out 2>.err";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, folder.read(".out"), folder.read(".err")};
}

TEST(CliRun, ExitStatus) {
    support::TempFolder folder;
    folder.write("good", "declare x : real = 1.5\nprint x\n");
    folder.write("failing", "declare x : real\nread \"csv:none.csv\" { x from \"[A1]\" }\nprint x\n");
    folder.write("wrong", "declare x : real\nprint y\n");
    const struct {
        const char* arguments;
        int status;
        const char *out, *err;
    } cases[] = {
        {"run good", 0, "x = 1.5\n", ""},
        {"run good --json", 0, "{\"op\":\"print\",\"name\":\"x\",\"value\":1.5}\n", ""},
        {"run - --json <good", 0, "{\"op\":\"print\",\"name\":\"x\",\"value\":1.5}\n", ""},
        {"run failing", 1, "x = 0\n",
         "line 2: cannot open 'none.csv' for reading: No such file or directory\nline 2: 'csv:none.csv' could not be "
         "opened\n"},
        {"run wrong", 2, "", "wrong: line 2, column 7: 'y' is not declared\n"},
        {"explain wrong", 3, "", "wrong: line 2, column 7: 'y' is not declared\n"},
        {"run missing", 2, "", "cannot read 'missing'\n"},
        {"run .", 2, "", "cannot read '.'\n"},
        {"--version", 0, "quillet " QUILLET_VERSION "\n", ""},
        {"dump missing.xls", 1, "", "missing.xls: can't open file for reading: No such file or directory\n"},
        {"info good", 1, "", "good: readHeader: file is corrupt (size < 512 bytes)\n"},
        {"resave missing.xls x.xls", 1, "", "missing.xls: can't open file for reading: No such file or directory\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.arguments);
        const Outcome run = quillet(folder, c.arguments);
        EXPECT_EQ(run.status, c.status);
        EXPECT_EQ(run.out, c.out);
        EXPECT_EQ(run.err, c.err);
    }
    EXPECT_EQ(quillet(folder, "run").status, 2);
    EXPECT_EQ(quillet(folder, "run good >/dev/full 2>.err #").status, 1);
    EXPECT_EQ(folder.read(".err"), "cannot write the results\n");
    EXPECT_EQ(quillet(folder, "").status, 2);
    EXPECT_NE(quillet(folder, "bogus").err.find("bogus"), std::string::npos);
    EXPECT_EQ(quillet(folder, "run good --module none.dso").status, 1);
    EXPECT_EQ(quillet(folder, "run good --module " QUILLET_MODULE).status, 0);
}

TEST(CliRun, TheCatalogueTranslatesAllTextsButTwo) {
    support::TempFolder folder;
    folder.write("texts",
                 "\"SHEET: Range name not found.\\n\" = \"BLATT: Kein \\\"Name\\\".\\n\"\n"
                 "\"failed to load data\" = \"Daten unlesbar\"\n"
                 "\"SHEET: Buffer overflow at line %d.\\n\" = \"never\"\n");
    folder.write("d.csv", "1\n");
    folder.write("long.csv", std::string(3000, 'x'));
    folder.write("s", "declare x : real\nread \"csv:d.csv\" { x from \"name\" }\nopen \"csv:long.csv\"\n");
    const Outcome run = quillet(folder, "run s --json --catalogue texts");
    EXPECT_EQ(
        run.out,
        R"({"op":"read","source":"csv:d.csv","status":1,"counts":[0],"messages":["BLATT: Kein \"Name\".\n","SHEET: Invalid range or name not found.\n"],"driver":[],"close":0}
{"op":"open","source":"csv:long.csv","status":-1,"messages":["SHEET: Buffer overflow at line 1.\n"],"driver":[{"code":5,"text":"Daten unlesbar"}]}
)");
    EXPECT_EQ(quillet(folder, "run s --catalogue none").status, 1);
    for (const char* wrong : {"\"%d [R%dC%d]\" = \"%d [R%sC%d]\"", "\"a\" = \"100%\"", "\"a\" \"b\"", "\"a\" = \"b"}) {
        SCOPED_TRACE(wrong);
        folder.write("bad", "# texts\n\"50%% of %s\" = \"%s: 50%%\"\n" + std::string(wrong) + "\n");
        EXPECT_THAT(quillet(folder, "run s --catalogue bad").err,
                    testing::HasSubstr("cannot load the catalogue 'bad': line 3 is wrong"));
    }
}

// The texts of a Strict package come in the encoding of the process, whatever its environment says.
TEST(CliRun, StrictPackagesKeepTheirLetters) {
    support::TempFolder folder;
    const std::string sheet =
        R"(<worksheet xmlns="http://purl.oclc.org/ooxml/spreadsheetml/main"><sheetData><row r="1">)"
        R"(<c r="A1" t="str"><v>Größe €</v></c></row></sheetData></worksheet>)";
    folder.write("d.xlsx", vellum::samplePackageBytes(1, {{"xl/workbook.xml", vellum::workbookXml(1, "", true)},
                                                          {"xl/worksheets/sheet1.xml", sheet}}));
    folder.write("s", "declare x : text\nread \"xlsx:d.xlsx\" { x from \"[A1]\" }\nprint x\n");
    EXPECT_TRUE(quillet(folder, "run s").out.ends_with("x = Größe €\n"));
}

TEST(CliRun, AWorkbookKeepsItsFormatWhateverItIsCalled) {
    support::TempFolder folder;
    folder.write("s",
                 "declare x : real = 1.5\nwrite \"xlsx:b.xlsx\" { x to \"[A1]\" }\n"
                 "write \"xls:b.xls\" { x to \"[A1]\" }\n");
    EXPECT_EQ(quillet(folder, "run s").status, 0);
    EXPECT_EQ(quillet(folder, "resave b.xlsx c.xls").err,
              "c.xls: 'b.xlsx' is an Open XML workbook and keeps its format; choose another name\n");
    EXPECT_EQ(quillet(folder, "resave b.xls c.XLSM").status, 1);
    EXPECT_EQ(quillet(folder, "resave b.xlsx none/c.xlsx").err, "none/c.xlsx: can't open file for writing\n");
    EXPECT_EQ(quillet(folder, "resave b.xlsx c.tmp").status, 0);
}

TEST(CliRun, TheExamplesRun) {
    support::TempFolder folder;
    std::filesystem::create_directory_symlink(QUILLET_SOURCE_DIR "/examples", folder.path("examples"));
    std::filesystem::create_directory(folder.path("out"));
    for (const auto& entry : std::filesystem::directory_iterator(folder.path("examples"))) {
        if (entry.path().extension() != ".quillet") continue;
        const Outcome run = quillet(folder, "run '" + entry.path().string() + "'");
        EXPECT_EQ(run.status, 0) << entry.path();
        EXPECT_EQ(run.err, "");
    }
    EXPECT_TRUE(folder.read("out/report.csv").starts_with("Hours by plant,2024-06-30,,,steel EUR/t,"));
}

}  // namespace
