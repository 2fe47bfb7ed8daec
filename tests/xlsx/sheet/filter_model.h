// Tables of random cells, and a second opinion about which of their rows a filter shows.
#pragma once
#include <cstdio>
#include <cstdlib>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "engine/facts/date.h"

namespace vellum::test {

/// What one cell holds.
struct ModelCell {
    enum Kind { number, text, boolean, error, blank } kind = blank;
    double value = 0;
    std::string words;
    std::optional<DateTime> date;

    [[nodiscard]] std::string shown() const {
        char digits[40];
        switch (kind) {
            case number:
                std::snprintf(digits, sizeof digits, "%.16g", value);
                return digits;
            case boolean:
                return value != 0 ? "TRUE" : "FALSE";
            case blank:
                return "";
            default:
                return words;
        }
    }
};

/// Rows of cells; a row that is not there has none.
using ModelTable = std::vector<std::vector<ModelCell>>;

/// One column's filter.
struct ModelFilter {
    enum Kind { values, top, custom, notJudged, nothing } kind = nothing;
    std::vector<std::string> texts;
    bool blank = false;
    std::vector<std::vector<int>> dates;  // year, month ... as far as they go
    double count = 1;
    bool greatest = true, percent = false;
    struct Rule {
        int op;
        std::string value;
    };
    std::vector<Rule> rules;
    bool both = false;
};

inline std::optional<double> wholeNumber(const std::string& text) {
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    return text.empty() || *end != '\0' ? std::nullopt : std::optional<double>(value);
}

inline bool likePattern(const char* text, const char* pattern) {
    if (*pattern == '\0') return *text == '\0';
    if (*pattern == '*') return likePattern(text, pattern + 1) || (*text != '\0' && likePattern(text + 1, pattern));
    if (*pattern == '?') return *text != '\0' && likePattern(text + 1, pattern + 1);
    if (*pattern == '~' && pattern[1] != '\0' && std::string("*?~").find(pattern[1]) != std::string::npos) ++pattern;
    return *text == *pattern && likePattern(text + 1, pattern + 1);
}

template <class T>
bool holds(int op, const T& a, const T& b) {
    const bool answers[] = {a == b, a > b, a >= b, a < b, a <= b, a != b};
    return answers[op];
}

inline bool passesRule(const ModelFilter::Rule& rule, const ModelCell& cell) {
    const auto number = wholeNumber(rule.value);
    if (number && cell.kind == ModelCell::number) return holds(rule.op, cell.value, *number);
    const std::string text = cell.shown();
    if (rule.op == 0 || rule.op == 5) {
        const bool same = likePattern(text.c_str(), rule.value.c_str()) || (rule.value == " " && text.empty());
        return same == (rule.op == 0);
    }
    return holds(rule.op, text, rule.value == " " ? std::string() : rule.value);
}

inline bool passesValues(const ModelFilter& filter, const ModelCell& cell) {
    if (cell.kind == ModelCell::blank) return filter.blank;
    if (cell.date) {
        const int fields[] = {cell.date->year, cell.date->month, cell.date->day,
                              cell.date->hour, cell.date->min,   cell.date->sec};
        for (const auto& group : filter.dates) {
            if (std::equal(group.begin(), group.end(), fields)) return true;
        }
    }
    for (const std::string& text : filter.texts) {
        if (text == cell.shown()) return true;
        if (cell.kind == ModelCell::number && wholeNumber(text) == cell.value) return true;
    }
    return false;
}

inline bool passesTop(const ModelFilter& filter, const ModelTable& table, std::size_t column, const ModelCell& cell) {
    if (cell.kind != ModelCell::number) return false;
    std::multimap<double, int> sorted;
    int counted = 0, before = 0;
    for (const auto& row : table) {
        if (row.empty()) continue;
        const ModelCell& other = row[column];
        counted += other.kind == ModelCell::number || other.kind == ModelCell::text;
        const bool stands = filter.greatest ? other.value > cell.value : other.value < cell.value;
        before += other.kind == ModelCell::number && stands;
    }
    int wanted = static_cast<int>(filter.percent ? counted * filter.count / 100 : filter.count);
    if (wanted < 1) wanted = 1;
    return before < wanted;
}

inline bool passes(const ModelFilter& filter, const ModelTable& table, std::size_t column, const ModelCell& cell) {
    switch (filter.kind) {
        case ModelFilter::values:
            return passesValues(filter, cell);
        case ModelFilter::top:
            return passesTop(filter, table, column, cell);
        case ModelFilter::custom: {
            bool any = false, all = true;
            for (const auto& rule : filter.rules) (passesRule(rule, cell) ? any : all) = passesRule(rule, cell);
            return filter.both ? all : any;
        }
        default:
            return true;
    }
}

/// Below 0 when `a` stands in front of `b`.
inline int inOrder(const ModelCell& a, const ModelCell& b, bool descending) {
    if (a.kind == ModelCell::blank || b.kind == ModelCell::blank)
        return (a.kind == ModelCell::blank) - (b.kind == ModelCell::blank);
    int order = a.kind - b.kind;
    if (order == 0 && a.kind == ModelCell::text) order = a.words.compare(b.words);
    if (order == 0 && a.kind != ModelCell::text && a.kind != ModelCell::error)
        order = (a.value > b.value) - (a.value < b.value);
    return descending ? -order : order;
}

/// Swaps neighbours until nothing is left to swap.
inline void bubbleSort(ModelTable& table, const std::vector<std::pair<std::size_t, bool>>& keys) {
    static const std::vector<ModelCell> none(8);
    for (bool swapped = true; swapped;) {
        swapped = false;
        for (std::size_t i = 0; i + 1 < table.size(); ++i) {
            const auto& a = table[i].empty() ? none : table[i];
            const auto& b = table[i + 1].empty() ? none : table[i + 1];
            int order = 0;
            for (const auto& [column, descending] : keys) {
                if (order == 0) order = inOrder(a[column], b[column], descending);
            }
            if (order <= 0) continue;
            std::swap(table[i], table[i + 1]);
            swapped = true;
        }
    }
}

/// Random things of which many are alike.
class ModelSource {
public:
    explicit ModelSource(unsigned seed) : _random(seed) {}

    unsigned below(unsigned n) { return static_cast<unsigned>(_random() % n); }

    ModelCell cell() {
        ModelCell made;
        made.kind = static_cast<ModelCell::Kind>(std::min(below(8), 4u));
        if (below(3) == 0) made.kind = ModelCell::number;
        if (made.kind == ModelCell::number) made.value = number();
        if (made.kind == ModelCell::text) made.words = words();
        if (made.kind == ModelCell::boolean) made.value = below(2);
        if (made.kind == ModelCell::error) made.words = below(2) ? "#N/A" : "#DIV/0!";
        if (made.kind == ModelCell::number && below(4) == 0) {
            made.date = DateTime{2020 + static_cast<int>(below(2)), 1 + static_cast<int>(below(2)),
                                 1 + static_cast<int>(below(3)),    static_cast<int>(below(2)),
                                 static_cast<int>(below(2)),        static_cast<int>(below(2))};
            made.value = packDate(*made.date, false);
        }
        return made;
    }
    double number() {
        constexpr double numbers[] = {0, 1, -1, 2.5, 0.1, 1.0 / 3, 1e15 + 0.3, 100, 99, 5};
        return numbers[below(std::size(numbers))];
    }
    std::string words() {
        constexpr const char* texts[] = {"a", "ab", "b", "A", "5", "a*", "TRUE", "x y", "aab", "~", "0.1", " "};
        return texts[below(std::size(texts))];
    }
    std::string value() {
        constexpr const char* patterns[] = {
            "a*", "*b", "?", "~*", "a~*", "*", "", " ", "5", "2.50", "0.3333333333333333", "1e2", "#N/A", "a?b"};
        return below(2) ? patterns[below(std::size(patterns))] : ModelCell(cell()).shown();
    }
    ModelFilter filter() {
        ModelFilter made;
        made.kind = static_cast<ModelFilter::Kind>(below(5));
        for (unsigned n = below(4); n > 0; --n) made.texts.push_back(value());
        made.blank = below(2) == 0;
        for (unsigned n = below(2); n > 0; --n) {
            const std::vector<int> whole = {2020 + static_cast<int>(below(2)),
                                            1 + static_cast<int>(below(2)),
                                            1 + static_cast<int>(below(3)),
                                            0,
                                            1,
                                            1};
            made.dates.emplace_back(whole.begin(), whole.begin() + 1 + static_cast<int>(below(6)));
        }
        made.count = 1 + below(below(2) ? 4 : 100);
        made.greatest = below(2) == 0;
        made.percent = below(2) == 0;
        for (unsigned n = 1 + below(2); n > 0; --n) made.rules.push_back({static_cast<int>(below(6)), value()});
        made.both = below(2) == 0;
        return made;
    }

private:
    std::mt19937 _random;
};

}  // namespace vellum::test
