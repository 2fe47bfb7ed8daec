#include "cli/dump/dump_filter.h"

#include "engine/api/enums.h"
#include "engine/api/iautofilter.h"
#include "engine/api/ifiltercolumn.h"

namespace cli {
namespace {

using Filter = vellum::IAutoFilterT<char>;
using Column = vellum::IFilterColumnT<char>;

const char* operatorName(int op) {
    switch (op) {
        case vellum::filterGreaterThan:
            return "greaterThan";
        case vellum::filterGreaterThanOrEqual:
            return "greaterThanOrEqual";
        case vellum::filterLessThan:
            return "lessThan";
        case vellum::filterLessThanOrEqual:
            return "lessThanOrEqual";
        case vellum::filterNotEqual:
            return "notEqual";
        default:
            return "equal";
    }
}

void values(Column& column, JsonLines& out) {
    out.raw(R"("kind":"values","values":[)");
    const int total = column.valueFilterTotal();
    bool blank = false, first = true;
    for (int i = 0; i < total; ++i) {
        const char* const value = column.valueFilterAt(i);
        if (value == nullptr) continue;
        if (*value == '\0') {
            blank = true;  // the interface tells empty cells as an empty text
            continue;
        }
        if (!first) out.raw(",");
        out.text(value);
        first = false;
    }
    out.raw(blank ? R"(],"blank":true)" : R"(],"blank":false)");
}

void custom(Column& column, JsonLines& out) {
    int op1 = 0, op2 = 0;
    const char *value1 = nullptr, *value2 = nullptr;
    bool both = false;
    column.customFilter(&op1, &value1, &op2, &value2, &both);
    out.raw(R"("kind":"custom","rules":[)");
    const auto rule = [&](int op, const char* value) {
        out.raw("[").text(operatorName(op)).raw(",").text(value).raw("]");
    };
    if (value1 != nullptr) rule(op1, value1);
    if (value1 != nullptr && value2 != nullptr) out.raw(",");
    if (value2 != nullptr) rule(op2, value2);
    out.raw(both ? R"(],"and":true)" : R"(],"and":false)");
}

void top10(Column& column, JsonLines& out) {
    double value = 0;
    bool top = true, percent = false;
    column.top10(&value, &top, &percent);
    out.raw(R"("kind":"top10","top":)").raw(top ? "true" : "false");
    out.raw(R"(,"percent":)").raw(percent ? "true" : "false").raw(R"(,"value":)").number(value);
}

void columnOf(Column& column, JsonLines& out) {
    out.raw(R"({"column":)").integer(column.columnId()).raw(",");
    switch (column.filterKind()) {
        case vellum::filterValues:
            values(column, out);
            break;
        case vellum::filterCustom:
            custom(column, out);
            break;
        case vellum::filterTop10:
            top10(column, out);
            break;
        default:
            out.raw(R"("kind":"other")");
            break;
    }
    out.raw("}");
}

void sort(SheetAnswers& answers, Filter& filter, JsonLines& out) {
    int column = 0;
    bool descending = false;
    const auto sorted = answers.ask([&](auto&) { return filter.sortOrder(&column, &descending); });
    out.raw(R"(],"sort":[)");
    if (sorted && *sorted) {
        out.raw(R"({"column":)").integer(column).raw(R"(,"descending":)").raw(descending ? "true}" : "false}");
    }
    out.raw("]}");
}

}  // namespace

void dumpFilter(SheetAnswers& answers, JsonLines& out) {
    // Asked first, because a request for the object makes one.
    const auto has = answers.ask([](auto& sheet) { return sheet.hasFilter(); });
    if (!has || !*has) return answers.null();
    const auto filter = answers.ask([](auto& sheet) { return sheet.filterObject(); });
    if (!filter || *filter == nullptr) return answers.null();
    int rowFirst = 0, rowLast = 0, colFirst = 0, colLast = 0;
    (*filter)->filterRange(&rowFirst, &rowLast, &colFirst, &colLast);
    out.raw(R"({"area":[)").integer(rowFirst).raw(",").integer(colFirst).raw(",").integer(rowLast).raw(",");
    out.integer(colLast).raw(R"(],"columns":[)");
    const int total = (*filter)->filterColumnTotal();
    for (int i = 0; i < total; ++i) {
        if (i > 0) out.raw(",");
        Column* const column = (*filter)->filterColumnAt(i);
        column != nullptr ? columnOf(*column, out) : answers.null();
    }
    sort(answers, **filter, out);
}

}  // namespace cli
