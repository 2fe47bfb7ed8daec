#include "cli/dump/dump_runs.h"

#include <algorithm>

namespace cli {
namespace {

using Sheet = vellum::ISheetT<char>;

/// A row or a column as far as the lines tell.
struct Line {
    double size = 0;
    bool hidden = false;

    bool operator==(const Line&) const = default;
};

/// Gathers equal neighbours; `usual` ones are left out.
template <class LineAt>
void runs(int count, const Line& usual, LineAt&& lineAt, JsonLines& out) {
    bool none = true;
    out.raw("[");
    for (int first = 0; first < count;) {
        const Line line = lineAt(first);
        int end = first + 1;
        while (end < count && lineAt(end) == line) ++end;
        if (line != usual) {
            out.raw(none ? "[" : ",[").integer(first).raw(",").integer(end - 1).raw(",").number(line.size);
            out.raw(line.hidden ? ",true]" : ",false]");
            none = false;
        }
        first = end;
    }
    out.raw("]");
}

}  // namespace

void dumpRows(SheetAnswers& answers, bool package, int rowEnd, JsonLines& out) {
    constexpr int binaryRows = 65536, packageRows = 1048576;
    const auto height = [&](int row) { return answers.ask([=](Sheet& s) { return s.rowHeight(row); }); };
    const auto usual = height((package ? packageRows : binaryRows) - 1);
    const auto used = answers.ask([](Sheet& s) { return s.lastRow(); });
    if (!usual || !used || !answers.ask([](Sheet& s) { return s.isRowHidden(0); })) return answers.null();
    const auto lineAt = [&](int row) {
        return answers.unchecked([=](Sheet& s) { return Line{s.rowHeight(row), s.isRowHidden(row)}; });
    };
    runs(package ? std::max(*used, rowEnd) : binaryRows, {*usual, false}, lineAt, out);
}

void dumpColumns(SheetAnswers& answers, bool package, JsonLines& out) {
    const int count = package ? 16384 : 256;
    const auto usual = answers.ask([=](Sheet& s) { return s.columnWidth(count - 1); });
    if (!usual || !answers.ask([](Sheet& s) { return s.isColumnHidden(0); })) return answers.null();
    const auto lineAt = [&](int col) {
        return answers.unchecked([=](Sheet& s) { return Line{s.columnWidth(col), s.isColumnHidden(col)}; });
    };
    runs(count, {*usual, false}, lineAt, out);
}

}  // namespace cli
