// The example of docs/engine.md, compiled and run, and held against the page.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "engine/api/isheet.h"
#include "engine/factories/factories.h"

namespace {

// clang-format off
void example() {
vellum::IBookT<char>* book = vellum::vlCreateBook<char>();
book->setLocale("UTF-8");
if (auto* sheet = book->addSheet("Sales")) {
    sheet->writeString(0, 0, "Total");
    sheet->writeNumber(0, 1, 1234.5);
}
if (!book->saveFile("sales.xls")) std::fprintf(stderr, "%s\n", book->errorMessage());
book->release();
}
// clang-format on

std::string contentOf(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path).rdbuf();
    return content.str();
}

std::string between(const std::string& text, const std::string& before, const std::string& after) {
    const auto from = text.find(before) + before.size();
    return text.substr(from, text.find(after, from) - from);
}

TEST(EngineDocs, TheExampleRunsAsItIsPrinted) {
    const std::string root = QUILLET_SOURCE_DIR;
    EXPECT_EQ(between(contentOf(root + "/docs/engine.md"), "```cpp\n", "```"),
              between(contentOf(root + "/tests/engine/both/docs_test.cpp"), "void example() {\n", "}\n// clang"));

    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(testing::TempDir());
    example();
    auto* const book = vellum::vlCreateBook<char>();
    EXPECT_TRUE(book->loadFile("sales.xls")) << book->errorMessage();
    EXPECT_EQ(book->getSheet(0)->readNumber(0, 1), 1234.5);
    book->release();
    std::filesystem::remove("sales.xls");
    std::filesystem::current_path(before);
}

}  // namespace
