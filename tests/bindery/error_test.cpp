#include "bindery/values/error.h"

#include <gtest/gtest.h>

#include <sstream>

namespace bindery {

TEST(Error, ReportNamesEachFieldOnALine) {
    const struct {
        c_error error;
        const char* text;
    } cases[] = {
        {{}, "Error: No Error\n"},
        {{38, "@mode", "unit", 12, 3},
         "Error: Value does not match enumerations\nItem: @mode\nProgram file: unit\nProgram line: 12\nXML line: 3\n"},
        {{7, "{anonymous compositor}", "unit", 4, -1},
         "Error: Inappropriate choice option selected\nItem: {anonymous compositor}\nProgram file: unit\n"
         "Program line: 4\n"},
        {{1003, "x", "", 0, -1}, "Error: User defined error 4\nItem: x\nProgram file: \nProgram line: 0\n"},
        {{99, "x", "", 0, -1}, "Error: \nItem: x\nProgram file: \nProgram line: 0\n"},  // no such code
    };
    for (const auto& c : cases) {
        std::ostringstream out;
        c.error.report(out);
        EXPECT_EQ(out.str(), c.text);
    }
}

}  // namespace bindery
