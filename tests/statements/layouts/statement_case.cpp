#include "tests/statements/layouts/statement_case.h"

namespace {

std::string lineOf(const support::Json& line) {
    const std::string op = line.at("op");
    if (op == "print") return line.at("name").get<std::string>() + ' ' + line.at("value").dump();
    std::string text = op;
    if (line.contains("counts")) text += ' ' + line.at("counts").dump();
    if (const int status = line.at("status"); status != 0) text += ' ' + std::to_string(status);
    for (const auto& message : line.at("messages")) text += ' ' + message.dump();
    for (const auto& report : line.at("driver")) text += " driver " + report.dump();
    return text;
}

/// With each statement on a line of its own.
std::string splitStatements(std::string script) {
    for (std::size_t at = 0; (at = script.find(" | ", at)) != std::string::npos;) script[at + 1] = '\n';
    return script;
}

/// Without the indentation that cases have in their tables.
std::string trimmedLines(const std::string& text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        const std::size_t start = std::min(text.find_first_not_of(' ', at), end);
        if (start < end) result += text.substr(start, end - start) + '\n';
        at = end + 1;
    }
    return result;
}

}  // namespace

std::string transcriptOf(support::ScriptRunner& runner, const std::string& script) {
    const support::ScriptResult result = runner.run(splitStatements(script));
    std::string transcript = result.errors;
    for (const auto& line : result.lines) transcript += lineOf(line) + '\n';
    if (const auto out = result.files.find("out.csv"); out != result.files.end()) {
        std::string content = out->second;
        for (char& c : content) {
            if (c == '\n') c = '|';
        }
        transcript += "out.csv: " + content + '\n';
    }
    return transcript;
}

void checkStatements(std::span<const StatementCase> cases) {
    for (const StatementCase& c : cases) {
        SCOPED_TRACE(c.name);
        support::ScriptRunner runner(support::Files{{"in.csv", c.csv}});
        EXPECT_EQ(transcriptOf(runner, c.script), trimmedLines(c.transcript));
        EXPECT_TRUE(runner.host().counts.balanced());
    }
}
