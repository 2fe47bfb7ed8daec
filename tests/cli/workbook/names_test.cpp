// How names are shown to programs and to people.
#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "cli/dump/dump_names.h"
#include "cli/workbook/info_names.h"
#include "tests/support/absent_book.h"

namespace cli {
namespace {

struct NamedBook final : vellum::AbsentBook {
    std::vector<vellum::IBookNames::Name> names;
    vellum::IBookNames::Outside refers;

    const char* sheetNameAt(int index) override { return index == 1 ? "Two" : "One"; }
    int nameTotal() override { return static_cast<int>(names.size()); }
    bool nameAt(int index, vellum::IBookNames::Name& name) override {
        name = names[static_cast<std::size_t>(index)];
        return name.text != "broken";
    }
    vellum::IBookNames::Outside outside() override { return refers; }
};

vellum::IBookNames::Name named(const char* text, int scope = -1) {
    vellum::IBookNames::Name name;
    name.text = text;
    name.scope = scope;
    return name;
}

void fill(NamedBook& book) {
    book.names = {named("Rates"), named("Print_Area", 1), named("broken"), named("f(\"x\")")};
    book.names[0].sheet = 0;
    book.names[0].rowFirst = 1;
    book.names[0].rowLast = 5;
    book.names[0].colLast = 2;
    book.names[0].formula = "One!$A$2:$C$6";
    book.names[1].hidden = book.names[1].builtIn = true;
}

TEST(NameLines, ForPrograms) {
    NamedBook book;
    fill(book);
    std::ostringstream out;
    {
        JsonLines lines(out);
        dumpNames(book, lines);
    }
    EXPECT_EQ(
        out.str(),
        R"s({"name":{"text":"Rates","scope":null,"hidden":false,"builtIn":false,"area":{"sheet":0,"cells":[1,0,5,2]},"formula":"One!$A$2:$C$6"}}
{"name":{"text":"Print_Area","scope":1,"hidden":true,"builtIn":true,"area":null,"formula":null}}
{"name":{"text":"f(\"x\")","scope":null,"hidden":false,"builtIn":false,"area":null,"formula":null}}
)s");
}

TEST(NameLines, ForPeople) {
    NamedBook book;
    fill(book);
    book.refers = {.otherBooks = 1, .addInFunctions = 2, .ddeLinks = 0, .lostFormulas = 3};
    std::ostringstream out;
    printNames(book, out);
    EXPECT_EQ(out.str(), R"s(Names: 4
       Rates  One!$A$2:$C$6
       Print_Area  of Two  hidden  (no text)
       f("x")  (no text)
Other workbooks referred to: 1
Add-in functions: 2
Formulas that a save turns into their values: 3
)s");
    NamedBook empty;
    std::ostringstream none;
    printNames(empty, none);
    EXPECT_EQ(none.str(), "");
}

}  // namespace
}  // namespace cli
