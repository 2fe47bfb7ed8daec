#include "tests/statements/workbook/workbook_script.h"

#include "engine/factories/factories.h"

namespace {

using support::Json;

std::string replaced(std::string text, const std::string& what, const std::string& by) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size()) {
        text.replace(at, what.size(), by);
    }
    return text;
}

std::string summary(const Json& line) {
    const std::string op = line.at("op");
    if (op == "print") return line.at("name").get<std::string>() + ' ' + line.at("value").dump();
    std::string text = op;
    if (const int status = line.at("status"); status != 0) text += ' ' + std::to_string(status);
    if (op == "read") text += ' ' + line.at("counts").dump();
    for (const auto& message : line.at("messages")) text += ' ' + message.dump();
    for (const auto& report : line.at("driver"))
        text += ' ' + report.at("code").dump() + ':' + report.at("text").dump();
    return text;
}

bool isLinked(const std::string& driver) {
    if (driver == "csv") return true;
    auto* const book = driver == "xls" ? vellum::vlCreateBook<char>() : vellum::vlCreateXMLBook<char>();
    if (book) book->release();
    return book != nullptr;
}

}  // namespace

void WorkbookScript::SetUp() {
    if (!isLinked(GetParam())) FAIL() << "this engine is not linked";
}

std::string WorkbookHost::run(std::string script) {
    script = replaced(replaced(std::move(script), "$D", _driver), "$E", _driver);
    const support::ScriptResult result = _runner.run(script);
    EXPECT_EQ(result.errors, "");
    std::string text;
    for (const Json& line : result.lines) text += summary(line) + '\n';
    return text;
}
