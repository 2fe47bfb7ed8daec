// Results made anew by another program: a script of that name stands in for it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>

#include "cli/workbook/book_file.h"
#include "engine/api/enums.h"
#include "engine/api/iformula_results.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"
#include "tests/support/script_runner.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;

/// A1 = 1, B1 = A1*60 with that result, B2 a text's formula, B3 one that the other program may not know.
void makeWorkbook(const std::string& path, double number, const char* text, bool known) {
    const cli::BookPtr book(path.ends_with(".xls") ? vellum::vlCreateBook<char>() : vellum::vlCreateXMLBook<char>());
    auto* const sheet = book->addSheet("Plan");
    sheet->writeNumber(0, 0, 1);
    sheet->writeFormulaNumber(0, 1, "A1*60", number);
    sheet->writeFormulaText(1, 1, "A1&\"x\"", text);
    sheet->writeFormulaNumber(2, 1, "A1+2", 3);
    vellum::FormulaResult unknown;
    unknown.kind = vellum::cellError;
    unknown.error = vellum::errorName;
    ASSERT_TRUE(known || dynamic_cast<vellum::IFormulaResults&>(*sheet).setResult(2, 1, unknown));
    ASSERT_TRUE(book->saveFile(path.c_str())) << book->errorMessage();
}

class Recalc : public testing::TestWithParam<const char*> {
protected:
    Recalc() {
        std::filesystem::create_directories(folder.path("bin"));
        std::filesystem::create_directories(folder.path("tmp dir%"));
        makeWorkbook(file(), 60, "1x", true);
        before = folder.read(GetParam());
    }
    /// What the program does instead of calculating; $6 is the folder for what it makes.
    void fake(const std::string& commands) {
        folder.write("bin/soffice", "#!/bin/sh\nmkdir -p \"$6\"\n" + commands + "\n");
        std::filesystem::permissions(folder.path("bin/soffice"), std::filesystem::perms::owner_all);
    }
    void fakeResults(double number, const char* text, bool known) {
        makeWorkbook(folder.path("calculated.xlsx"), number, text, known);
        fake("cp calculated.xlsx \"$6/book.xlsx\"");
    }
    /// Exit status; output is in `.out` and `.err`.
    int quillet(const std::string& arguments, const std::string& path = "\"$PWD/bin:$PATH\"") {
        const std::string command = "cd '" + folder.path() + "' && TMPDIR=\"$PWD/tmp dir%\" PATH=" + path +
                                    " " QUILLET_COMMAND " " + arguments + " >.out 2>.err";
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    int recalc(const std::string& options = "") { return quillet("recalc " + options + GetParam()); }
    int run(const std::string& options) {
        const std::string source = driver() + ":" + GetParam();
        folder.write("s", "declare x : real = 2\ndeclare y : real\nwrite \"" + source +
                              "\" { x to \"[A1]\" }\nread \"" + source + "\" { y from \"[B1]\" }\nprint y\n");
        return quillet("run " + options + " s");
    }
    std::string driver() const { return std::string(GetParam()).substr(2); }
    std::string file() const { return folder.path(GetParam()); }
    std::string errors() const { return folder.read(".err"); }
    std::string told() const { return folder.read(".out"); }
    /// Nothing is left beside the file, nor where the copy was calculated.
    bool isClean() const {
        return !std::filesystem::exists(file() + ".before") && std::filesystem::is_empty(folder.path("tmp dir%"));
    }

    support::TempFolder folder;
    std::string before;
};
INSTANTIATE_TEST_SUITE_P(Kinds, Recalc, testing::Values("t.xls", "t.xlsx"));

TEST_P(Recalc, ReplacesResultsAndNothingElse) {
    fakeResults(120, "2x", false);
    ASSERT_EQ(recalc(), 0) << errors();
    EXPECT_EQ(told(), std::string(GetParam()) + ": 3 formulas, 2 results changed\nnot calculated: Plan!B3\n");
    EXPECT_TRUE(isClean());
    std::string error;
    const cli::BookPtr book = cli::loadBook(file(), error);
    ASSERT_TRUE(book) << error;
    auto* const sheet = book->getSheet(0);
    EXPECT_EQ(sheet->readNumber(0, 1), 120);
    EXPECT_STREQ(sheet->readString(1, 1), "2x");
    EXPECT_EQ(sheet->readNumber(2, 1), 3);
    EXPECT_EQ(sheet->readNumber(0, 0), 1);
    EXPECT_STREQ(sheet->readFormula(0, 1), "A1*60");

    fakeResults(120, "\ax_x00_", true);
    ASSERT_EQ(recalc(), 0) << errors();
    const cli::BookPtr belled = cli::loadBook(file(), error);
    ASSERT_TRUE(belled) << error;
    EXPECT_STREQ(belled->getSheet(0)->readString(1, 1), driver() == "xls" ? "\ax_x00_" : "_x0007_x_x00_");

    fakeResults(120, "2x", true);
    ASSERT_EQ(recalc(), 0) << errors();
    const std::string fresh = folder.read(GetParam());
    ASSERT_EQ(recalc(), 0) << errors();
    EXPECT_EQ(folder.read(GetParam()), fresh);  // nothing changed, nothing saved
}

TEST_P(Recalc, FailuresLeaveTheFile) {
    const std::string name = GetParam();
    const std::string failed = ": LibreOffice could not calculate the workbook: it ";
    const std::pair<std::string, std::string> cases[] = {
        {"exit 3", failed + "ended with status 3\n"},
        {"kill -9 $$", failed + "was ended by signal 9\n"},
        {"exit 0", failed + "made no file\n"},
        {"(sleep 60; echo > outlived) & sleep 60", failed + "did not end within 1 seconds\n"},
        {"echo garbage > \"$6/book.xlsx\"", ": what LibreOffice calculated cannot be read: "},
        {"head -c 700 \"$7\" > \"$6/book.xlsx\"", ": what LibreOffice calculated cannot be read: "},
        {"cp calculated.xlsx \"$6/book.xlsx\"; echo more >> " + name,
         ": another program changed the file while its copy was calculated; nothing is saved\n"},
    };
    makeWorkbook(folder.path("calculated.xlsx"), 120, "2x", true);
    for (const auto& [commands, message] : cases) {
        folder.write(GetParam(), before);
        fake(commands);
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(recalc(commands.find("sleep") != commands.npos ? "--time-limit 1 " : ""), 2) << commands;
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30)) << commands;
        EXPECT_THAT(errors(), HasSubstr(name + message)) << commands;
        EXPECT_EQ(folder.read(GetParam()).substr(0, before.size()), before) << commands;
        EXPECT_TRUE(isClean()) << commands;
    }
}

TEST_P(Recalc, WhatCannotBeSavedIsPutBack) {
    fakeResults(120, "2x", true);
    folder.write(std::string(GetParam()) + ".before", "whole");
    EXPECT_EQ(recalc(), 2);
    EXPECT_THAT(errors(), HasSubstr(".before is there already"));
    EXPECT_EQ(folder.read(std::string(GetParam()) + ".before"), "whole");
    EXPECT_EQ(folder.read(GetParam()), before);
    EXPECT_EQ(quillet("recalc none." + driver()), 2);
    EXPECT_THAT(errors(), HasSubstr("none." + driver() + ": "));
}

TEST_P(Recalc, WithoutTheProgramNothingIsDone) {
    const std::string missing = "LibreOffice is not installed: there is no program 'soffice'";
    folder.write("bin/soffice", "not to be run");
    EXPECT_EQ(quillet(std::string("recalc ") + GetParam(), "\"$PWD/bin\""), 2);
    EXPECT_EQ(errors(), std::string(GetParam()).append(": ").append(missing).append("\n"));
    folder.write("s", "declare x : real = 2\nwrite \"" + driver() + ":" + GetParam() + "\" { x to \"[A1]\" }\n");
    EXPECT_EQ(quillet("run --recalc s", "\"$PWD/bin\""), 1);
    EXPECT_EQ(errors(), missing + "; nothing was run\n");
    EXPECT_EQ(folder.read(GetParam()), before);
}

TEST_P(Recalc, OfARunGivesFreshResultsToTheNextStatement) {
    fakeResults(120, "2x", false);
    for (const std::string options : {"--recalc", "--recalc --backup"}) {
        folder.write(GetParam(), before);
        ASSERT_EQ(run(options), 0) << errors();
        EXPECT_THAT(told(), HasSubstr(": 3 formulas, 2 results changed\n")) << options;
        EXPECT_THAT(told(), EndsWith("y = 120\n")) << options;
        EXPECT_EQ(errors(), "line 3: 1 formulas were not calculated: Plan!B3\n") << options;
        EXPECT_TRUE(isClean()) << options;
    }
    folder.write(GetParam(), before);
    ASSERT_EQ(run("--recalc --json"), 0) << errors();
    EXPECT_THAT(told(), HasSubstr(R"("recalc":{"formulas":3,"changed":2,"notCalculated":["Plan!B3"]},"close":0})"));

    // A source that stays open is saved by its close, or at the end of the script.
    const std::string source = std::string("\"").append(driver()).append(":").append(GetParam()).append("\"");
    for (const std::string& close : {"close " + source + "\n", std::string()}) {
        folder.write(GetParam(), before);
        folder.write("s", "open " + source + " update\n" + close);
        EXPECT_EQ(quillet("run --recalc --json s"), 0) << errors();
        EXPECT_THAT(told(), HasSubstr(R"({"op":"close")"));
        EXPECT_THAT(told(), HasSubstr(R"("recalc":{"formulas":3,"changed":2)"));
    }
}

TEST_P(Recalc, ThatFailsFailsTheStatement) {
    fake("exit 3");
    EXPECT_EQ(run("--recalc"), 1);
    EXPECT_THAT(errors(), HasSubstr("keeps old results: LibreOffice could not calculate the workbook: it ended with"));
    EXPECT_THAT(told(), EndsWith("y = 60\n"));
    folder.write(GetParam(), before);
    EXPECT_EQ(run("--recalc --backup"), 1);
    EXPECT_EQ(folder.read(GetParam()), before);
    EXPECT_THAT(errors(), HasSubstr("put back as it was before the run"));
    EXPECT_TRUE(isClean());
    EXPECT_EQ(run("--recalc --stale"), 2);  // with fresh results nothing is stale
}

}  // namespace
