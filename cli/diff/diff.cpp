#include "cli/diff/diff.h"

#include <climits>

#include "cli/diff/kept_differences.h"
#include "cli/diff/print_differences.h"
#include "cli/tables/area.h"
#include "cli/tables/table_file.h"

namespace cli {
namespace {

constexpr int equal = 0, different = 1, trouble = 2;

bool load(const std::string& name, const std::string& label, TableFile& file, SheetArea& area, std::ostream& errors) {
    std::string error;
    file = loadTable(name, error);
    if (file.book && findArea(*file.book, label, area, error)) return true;
    errors << name << ": " << error << '\n';
    return false;
}

/// Areas without a label: whole sheets, for a csv file has one, under a name of our own.
SheetArea wholeSheet(const SheetArea& area) {
    return {area.sheet, 0, INT_MAX, 0, INT_MAX};
}

}  // namespace

int diff(const DiffOptions& options, std::ostream& out, std::ostream& errors) {
    TableFile first, second;
    SheetArea firstArea, secondArea;
    if (!load(options.first, options.label, first, firstArea, errors) ||
        !load(options.second, options.label, second, secondArea, errors))
        return trouble;
    const bool csv = first.isCsv || second.isCsv, whole = options.label.empty();
    const bool more = !options.values && !csv;
    const Aspects aspects{more, more, more && options.all};
    Differences list;
    if (whole && !csv) {
        list = bookDifferences(*first.book, *second.book, aspects);
    } else {
        list = areaDifferences(*first.book, whole ? wholeSheet(firstArea) : firstArea, *second.book,
                               whole ? wholeSheet(secondArea) : secondArea, aspects);
    }
    if (options.all && !csv) addKeptDifferences(options.first, *first.book, options.second, *second.book, list);
    (options.json ? printDifferencesJson : printDifferences)(list, out);
    if (!out.flush()) {
        errors << "can't write the differences\n";
        return trouble;
    }
    return list.empty() ? equal : different;
}

}  // namespace cli
