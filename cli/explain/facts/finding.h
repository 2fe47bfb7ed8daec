// What a rule of warnings found.
#pragma once
#include <map>
#include <string>
#include <vector>

namespace cli::explain {

struct Rule;

/// Of one item, or of a statement's source.
class Finding {
public:
    explicit Finding(const Rule& rule_) : rule(&rule_) {}

    /// Rows and columns are absolute and count from 0.
    void at(int row, int col);
    /// What has no cell.
    void note(const std::string& text) { add(text, 1); }
    /// The same, so often.
    void add(const std::string& text, long long times);
    /// A cell, and what is wrong with it: kinds are counted apart.
    void at(int row, int col, const std::string& kind);

    /// Adds what another finding of the same rule has.
    void merge(const Finding& other);

    const Rule* rule;
    long long count = 0;
    std::vector<std::string> cells;            // the first three
    std::map<std::string, long long> details;  // by kind
};

}  // namespace cli::explain
