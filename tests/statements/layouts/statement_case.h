// Tables of scripts over csv files, each with what the script has to tell.
#pragma once
#include <gtest/gtest.h>

#include <span>
#include <string>

#include "tests/support/script_runner.h"

/// A script with the file in.csv beside it (" | " between statements stands for a newline), and its transcript, in
/// which each statement has a line:
///
///     read [2,0] 1 "SHEET: ...\n"     a read with its counts, the items not done, the messages in JSON
///     write                           a write that had nothing to tell
///     S ["a","b"]                     a printed variable
///     out.csv: 1,2|3,4|               the file out.csv at the end, if the script made one; "|" for each newline
struct StatementCase {
    const char* name;
    const char* csv;
    const char* script;
    const char* transcript;
};

std::string transcriptOf(support::ScriptRunner& runner, const std::string& script);

/// Runs the cases, each on a host of its own, and checks that the module gave back all that it took.
void checkStatements(std::span<const StatementCase> cases);
