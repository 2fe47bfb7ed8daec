// Runs that can be undone.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>

#include "tests/support/script_runner.h"

namespace {

using testing::HasSubstr;

class Backup : public testing::Test {
protected:
    /// Runs a script with these options; the exit status.
    int run(const std::string& script, const std::string& options = "--backup") {
        folder.write("s", script);
        const std::string command =
            "cd '" + folder.path() + "' && " QUILLET_COMMAND " run " + options + " s >.out 2>.err";
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    std::string errors() { return folder.read(".err"); }
    bool exists(const std::string& name) { return std::filesystem::exists(folder.path(name)); }

    support::TempFolder folder;
    const std::string good = "declare x : real = 2\nwrite \"csv:t.csv\" { x to \"[A1]\" }\n";
    const std::string bad = good + "read \"csv:none.csv\" { x from \"[A1]\" }\n";
};

TEST_F(Backup, GoesAfterAGoodRunAndComesBackAfterABadOne) {
    folder.write("t.csv", "1\n");
    EXPECT_EQ(run(good), 0) << errors();
    EXPECT_EQ(folder.read("t.csv"), "2\n");
    EXPECT_FALSE(exists("t.csv.before"));

    folder.write("t.csv", "1\n");
    EXPECT_EQ(run(bad, ""), 1);
    EXPECT_EQ(folder.read("t.csv"), "2\n");

    folder.write("t.csv", "1\n");
    EXPECT_EQ(run(bad), 1);
    EXPECT_EQ(folder.read("t.csv"), "1\n");
    EXPECT_FALSE(exists("t.csv.before"));
    EXPECT_THAT(errors(), HasSubstr("t.csv: put back as it was before the run\n"));
}

TEST_F(Backup, WorkbooksThatTwoStatementsChangeAreCopiedOnce) {
    for (const std::string driver : {"xls", "xlsx"}) {
        const std::string target = "t." + driver;
        const std::string write = "write \"" + driver + ":" + target + "\" { x to \"[A1]\" }\n";
        ASSERT_EQ(run("declare x : real = 1\n" + write), 0) << errors();
        EXPECT_FALSE(exists(target + ".before"));
        const std::string before = folder.read(target);
        EXPECT_EQ(run("declare x : real = 7\n" + write + write + "read \"csv:none.csv\" { x from \"[A1]\" }\n"), 1);
        EXPECT_EQ(folder.read(target), before);
        EXPECT_EQ(run("declare x : real = 7\n" + write + write, "--backup --keep"), 0) << errors();
        EXPECT_NE(folder.read(target), before);
        EXPECT_EQ(folder.read(target + ".before"), before);
    }
}

TEST_F(Backup, ACopyThatIsThereIsNotLost) {
    folder.write("t.csv", "half");
    folder.write("t.csv.before", "whole\n");
    EXPECT_EQ(run(good), 1);
    EXPECT_EQ(folder.read("t.csv"), "half");
    EXPECT_EQ(folder.read("t.csv.before"), "whole\n");
    EXPECT_THAT(errors(), HasSubstr("t.csv.before is there already"));
    EXPECT_EQ(run("declare x : real\n", "--keep"), 2);  // says nothing without --backup
}

TEST_F(Backup, WhatComesBackIsTheFileOfALinkWithItsRights) {
    std::filesystem::create_directory(folder.path("real"));
    folder.write("real/t.csv", "1\n");
    using std::filesystem::perms;
    const perms rights = perms::owner_read | perms::owner_write | perms::group_read | perms::group_write;
    std::filesystem::permissions(folder.path("real/t.csv"), rights);
    std::filesystem::create_symlink("real/t.csv", folder.path("t.csv"));
    EXPECT_EQ(run(bad), 1);
    EXPECT_EQ(folder.read("real/t.csv"), "1\n");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("t.csv")));
    EXPECT_EQ(std::filesystem::status(folder.path("real/t.csv")).permissions(), rights);
}

TEST_F(Backup, WithoutACopyNothingChanges) {
    folder.write("t.csv", "1\n");
    std::filesystem::create_directory(folder.path("t.csv.before.part"));
    EXPECT_EQ(run(good), 1);
    EXPECT_EQ(folder.read("t.csv"), "1\n");
    EXPECT_THAT(errors(), HasSubstr("no copy could be made"));
}

}  // namespace
