// The page for a browser: what its cells are, that it needs nothing else, and that it can be read.
#include <gtest/gtest.h>

#include <cmath>
#include <regex>
#include <sstream>

#include "cli/explain/explain.h"
#include "tests/cli/explain/explain_runner.h"

namespace support {
namespace {

std::string pageOf(const std::string& script, const Files& files) {
    TempFolder folder;
    for (const auto& [name, content] : files) folder.write(name, content);
    cli::explain::ExplainOptions options;
    options.directory = folder.path();
    options.htmlFile = folder.path("page.html");
    std::ostringstream out, err;
    cli::explain::explainScript(script, options, out, err);
    EXPECT_EQ(err.str(), "");
    return folder.read("page.html");
}

std::size_t count(const std::string& text, const std::string& part) {
    std::size_t found = 0;
    for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++found;
    return found;
}

TEST(ExplainPage, ColoursCellsByTheirPartAndShortensBigRanges) {
    std::string rows = "key,value,note\n";
    for (int i = 0; i < 100; ++i) {
        rows.append("k").append(std::to_string(i)).append(i == 50 ? ",12 kg,x\n" : ",1,<b>\n");
    }
    const std::string page = pageOf(R"q(
declare A : dynamic array(text) of real
read "csv:skiph;big.csv" { A from "[A:B]" })q",
                                    {{"big.csv", rows}});
    EXPECT_EQ(count(page, "<td class=\"index\" tabindex=\"0\">"), 11U);  // 5 first rows, 5 last ones, the warned one
    EXPECT_EQ(count(page, "rows left out"), 2U);
    EXPECT_EQ(count(page, "<td class=\"value warned\" tabindex=\"0\">12 kg"), 1U);
    EXPECT_NE(page.find("text-read-as-number: a text is read"), page.npos);
    EXPECT_NE(page.find("<td class=\"header\" tabindex=\"0\">key<span class=\"d\">A1: header\nkey</span></td>"),
              page.npos);
    EXPECT_NE(
        page.find("<td class=\"outside\" tabindex=\"0\">&lt;b&gt;<span class=\"d\">C2: outside\n&lt;b&gt;</span>"),
        page.npos);
}

TEST(ExplainPage, NeedsNothingFromElsewhere) {
    const std::string page =
        pageOf("declare t : text\nread \"csv:a.csv\" { t from \"[A1]\" }\n", {{"a.csv", "<script>\n"}});
    EXPECT_EQ(page.find("http"), page.npos);
    EXPECT_EQ(page.find("src="), page.npos);
    EXPECT_EQ(page.find("<script"), page.npos);
    EXPECT_NE(page.find("prefers-color-scheme:dark"), page.npos);
}

double luminance(const std::string& colour) {
    const auto channel = [&](std::size_t at) {
        const double c = std::stoi(colour.substr(at, 2), nullptr, 16) / 255.0;
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(0) + 0.7152 * channel(2) + 0.0722 * channel(4);
}

double contrast(const std::string& a, const std::string& b) {
    const double x = luminance(a), y = luminance(b);
    return (std::max(x, y) + 0.05) / (std::min(x, y) + 0.05);
}

TEST(ExplainPage, TextsStandOutFromTheirGroundInBothSchemes) {
    const std::string page = pageOf("declare t : text\n", {});
    std::vector<std::map<std::string, std::string>> schemes;
    const std::regex colour("--([a-z]+):#([0-9a-f]{6})");
    for (std::sregex_iterator at(page.begin(), page.end(), colour), end; at != end; ++at) {
        if ((*at)[1] == "text") schemes.emplace_back();
        schemes.back()[(*at)[1]] = (*at)[2];
    }
    ASSERT_EQ(schemes.size(), 2U);
    for (auto& scheme : schemes) {
        for (const char* ground : {"page", "head", "header", "index", "value", "passed", "cut"}) {
            EXPECT_GE(contrast(scheme["text"], scheme[ground]), 4.5) << ground;
        }
        for (const char* text : {"link", "warn", "fail"}) {
            EXPECT_GE(contrast(scheme[text], scheme["page"]), 4.5) << text;
            EXPECT_GE(contrast(scheme[text], scheme["head"]), 4.5) << text;
        }
    }
}

}  // namespace
}  // namespace support
