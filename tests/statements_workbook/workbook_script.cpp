#include "tests/statements_workbook/workbook_script.h"

#include <unistd.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>

#include "engine/factories.h"
#include "refhost/host.h"
#include "refhost/script_run.h"

namespace {

using nlohmann::json;

std::string replaced(std::string text, const std::string& what, const std::string& by) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size()) {
        text.replace(at, what.size(), by);
    }
    return text;
}

std::string summary(const json& line) {
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
    auto* const book = driver == "xls" ? vellum::vlCreateBook<char>() : vellum::vlCreateXMLBook<char>();
    if (book) book->release();
    return book != nullptr;
}

}  // namespace

void WorkbookScript::SetUp() {
    if (!isLinked(GetParam())) GTEST_SKIP() << "this engine is not linked";
    const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
    const auto folder = std::filesystem::path(testing::TempDir()) / "statements" /
                        replaced(std::string(test->test_suite_name()) + '.' + test->name(), "/", "_");
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    std::filesystem::current_path(folder);
}

std::string WorkbookScript::run(std::string script) {
    script = replaced(replaced(std::move(script), "$D", GetParam()), "$E", extension());
    refhost::Host host;
    host.load(QUILLET_MODULE);
    refhost::RunOptions options;
    options.json = true;
    std::ostringstream out, err;
    refhost::runScript(host, script, options, out, err);
    EXPECT_EQ(err.str(), "");
    std::string result, line;
    for (std::istringstream lines(out.str()); std::getline(lines, line);) result += summary(json::parse(line)) + '\n';
    return result;
}

long WorkbookScript::fileSize(const std::string& name) {
    return static_cast<long>(std::filesystem::file_size(name));
}

long long WorkbookScript::fileTime(const std::string& name) {
    return std::filesystem::last_write_time(name).time_since_epoch().count();
}
