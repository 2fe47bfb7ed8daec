#include "cli/diff/sheet_pairs.h"

#include <algorithm>
#include <string>

#include "cli/diff/align.h"
#include "cli/diff/sheet_lines.h"
#include "engine/api/enums.h"

namespace cli {
namespace {

using Book = vellum::IBookT<char>;

std::string nameOf(Book& book, int index) {
    const char* const name = book.sheetNameAt(index);
    return name != nullptr ? name : "";
}

/// Rows of a sheet as hashes, sorted, without those that are empty.
std::vector<std::uint64_t> rowSet(Book& book, int index) {
    std::vector<std::uint64_t> rows;
    auto* const sheet = book.sheetKindAt(index) == vellum::sheetWorksheet ? book.getSheet(index) : nullptr;
    if (sheet == nullptr) return rows;
    CellReader reader(book, {});
    for (const RowHash& row : rowHashes(reader, *sheet, {})) {
        if (row.loose != 0) rows.push_back(row.loose);
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

bool areAlike(const std::vector<std::uint64_t>& a, const std::vector<std::uint64_t>& b) {
    std::vector<std::uint64_t> common;
    std::set_intersection(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(common));
    return !common.empty() && 2 * common.size() >= std::max(a.size(), b.size());
}

/// Of the sheets that are left, those of a kind with most rows in common.
void matchRenamed(Book& first, Book& second, std::vector<SheetMatch>& matches, std::vector<int>& left,
                  Differences& out) {
    if (left.empty()) return;
    for (SheetMatch& match : matches) {
        if (match.first >= 0) continue;
        const auto rows = rowSet(second, match.second);
        const auto found = std::find_if(left.begin(), left.end(), [&](int index) {
            return first.sheetKindAt(index) == second.sheetKindAt(match.second) && areAlike(rowSet(first, index), rows);
        });
        if (found == left.end()) continue;
        match.first = *found;
        left.erase(found);
        out.push_back({nameOf(second, match.second), "", "sheet renamed", 1, nameOf(first, match.first),
                       nameOf(second, match.second)});
    }
}

/// Sheets that changed their order: those outside of the longest order that both share.
void findMoved(Book& second, const std::vector<SheetMatch>& matches, Differences& out) {
    std::vector<std::uint64_t> before, after;
    for (const SheetMatch& match : matches) {
        if (match.first >= 0) after.push_back(static_cast<std::uint64_t>(match.first));
    }
    before = after;
    std::sort(before.begin(), before.end());
    const std::vector<int> places = alignEqual(after, before);
    std::size_t at = 0;
    for (const SheetMatch& match : matches) {
        if (match.first < 0 || places[at++] >= 0) continue;
        out.push_back({nameOf(second, match.second), "", "sheet moved", 1, std::to_string(match.first + 1),
                       std::to_string(match.second + 1)});
    }
}

}  // namespace

std::vector<SheetMatch> matchSheets(Book& first, Book& second, Differences& out) {
    std::vector<SheetMatch> matches;
    std::vector<int> left;
    for (int i = 0; i < first.sheetCount(); ++i) left.push_back(i);
    for (int i = 0; i < second.sheetCount(); ++i) {
        const auto same = std::find_if(left.begin(), left.end(),
                                       [&](int index) { return nameOf(first, index) == nameOf(second, i); });
        matches.push_back({same != left.end() ? *same : -1, i});
        if (same != left.end()) left.erase(same);
    }
    matchRenamed(first, second, matches, left, out);
    for (const SheetMatch& match : matches) {
        if (match.first < 0) out.push_back({nameOf(second, match.second), "", "sheet added", 1, "", ""});
    }
    for (const int index : left) out.push_back({nameOf(first, index), "", "sheet removed", 1, "", ""});
    findMoved(second, matches, out);
    return matches;
}

}  // namespace cli
