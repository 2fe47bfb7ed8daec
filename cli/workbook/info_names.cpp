#include "cli/workbook/info_names.h"

#include <string_view>

namespace cli {

namespace {

using Names = vellum::IBookNames;

void printOne(vellum::IBookT<char>& book, const Names::Name& name, std::ostream& out) {
    out << "       " << name.text;
    if (name.scope >= 0) {
        const char* const sheet = book.sheetNameAt(name.scope);
        out << "  of " << (sheet ? sheet : "?");
    }
    if (name.hidden) out << "  hidden";
    out << "  " << (name.formula ? std::string_view(*name.formula) : "(no text)") << '\n';
}

void count(std::ostream& out, std::string_view what, int number) {
    if (number > 0) out << what << ": " << number << '\n';
}

}  // namespace

void printNames(vellum::IBookT<char>& book, std::ostream& out) {
    auto* const names = dynamic_cast<Names*>(&book);
    if (!names) return;
    const int total = names->nameTotal();
    if (total > 0) out << "Names: " << total << '\n';
    for (int i = 0; i < total; ++i) {
        Names::Name name;
        if (names->nameAt(i, name)) printOne(book, name, out);
    }
    const Names::Outside outside = names->outside();
    count(out, "Other workbooks referred to", outside.otherBooks);
    count(out, "Add-in functions", outside.addInFunctions);
    count(out, "DDE links", outside.ddeLinks);
    count(out, "Formulas that a save turns into their values", outside.lostFormulas);
}

}  // namespace cli
