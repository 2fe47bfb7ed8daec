// What a sheet answers, as JSON.
#pragma once
#include <optional>
#include <string_view>
#include <tuple>
#include <utility>

#include "cli/workbook/json_lines.h"
#include "engine/api/ibook.h"
#include "engine/api/isheet.h"

namespace cli {

/// Answers of a sheet's operations as JSON values, null for those that fail.
///
/// Plain getters leave the last error alone, so an operation that always succeeds clears it before each question.
class SheetAnswers {
public:
    SheetAnswers(vellum::IBookT<char>& book, vellum::ISheetT<char>& sheet, JsonLines& out)
        : _book(book), _sheet(sheet), _out(out) {}

    /// What `question(sheet)` answers; nothing when the engine then tells of a failure.
    template <class Question>
    auto ask(Question&& question) -> std::optional<decltype(question(std::declval<vellum::ISheetT<char>&>()))> {
        _sheet.sheetName();
        auto answer = question(_sheet);
        const std::string_view told = _book.errorMessage();
        if (told != "ok" && !told.starts_with("warning: ")) return std::nullopt;
        return answer;
    }

    /// For many questions of a kind that did not fail.
    template <class Question>
    auto unchecked(Question&& question) {
        return question(_sheet);
    }

    void null() { _out.raw("null"); }
    void value(bool answer) { _out.raw(answer ? "true" : "false"); }
    void value(int answer) { _out.integer(answer); }
    void value(double answer) { _out.number(answer); }
    void value(const char* answer) {
        if (answer == nullptr) return null();
        _out.text(answer);
    }
    /// The answer as a value.
    template <class Question>
    void give(Question&& question) {
        const auto answer = ask(question);
        answer ? value(*answer) : null();
    }
    /// [..., ...] of several questions, null when one of them fails.
    template <class... Questions>
    void giveAll(Questions&&... questions) {
        const auto answers = std::tuple(ask(questions)...);
        const bool all = std::apply([](const auto&... each) { return (each.has_value() && ...); }, answers);
        if (!all) return null();
        const char* before = "[";
        std::apply([&](const auto&... each) { ((_out.raw(before), before = ",", value(*each)), ...); }, answers);
        _out.raw("]");
    }

private:
    vellum::IBookT<char>& _book;
    vellum::ISheetT<char>& _sheet;
    JsonLines& _out;
};

}  // namespace cli
