#include "cli/diff/feature_differences.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <sstream>

#include "cli/diff/json_members.h"
#include "cli/dump/dump_features.h"
#include "cli/dump/dump_objects.h"
#include "cli/workbook/cell_name.h"
#include "engine/api/iobjects.h"

namespace cli {
namespace {

using Book = vellum::IBookT<char>;
using Sheet = vellum::ISheetT<char>;
using Texts = std::map<std::string, std::string>;

/// Adds what two maps do not share: "WHAT added", "WHAT removed", "WHAT changed".
void addChanges(const Texts& before, const Texts& after, const std::string& sheet, const std::string& what,
                Differences& out) {
    for (const auto& [place, text] : before) {
        const auto found = after.find(place);
        if (found == after.end()) {
            out.push_back({sheet, place, what + " removed", 1, text, ""});
        } else if (found->second != text) {
            out.push_back({sheet, place, what + " changed", 1, text, found->second});
        }
    }
    for (const auto& [place, text] : after) {
        if (!before.contains(place)) out.push_back({sheet, place, what + " added", 1, "", text});
    }
}

/// A formula as both formats tell it: without blanks, with commas between arguments.
std::string inOneNotation(const std::string& formula) {
    std::string out;
    char quote = 0;
    int braces = 0;
    for (const char c : formula) {
        if (quote != 0) {
            if (c == quote) quote = 0;
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == ' ') {
            continue;
        } else {
            braces += (c == '{') - (c == '}');
        }
        out += c == ';' && quote == 0 && braces == 0 ? ',' : c;
    }
    return out;
}

/// `together`: with a workbook of the other format.
Texts namesOf(Book& book, bool together) {
    Texts found;
    auto* const names = dynamic_cast<vellum::IBookNames*>(&book);
    const int total = names != nullptr ? names->nameTotal() : 0;
    for (int i = 0; i < total; ++i) {
        vellum::IBookNames::Name name;
        if (!names->nameAt(i, name)) continue;
        const char* const scope = name.scope >= 0 ? book.sheetNameAt(name.scope) : nullptr;
        std::string& text = found[(scope != nullptr ? std::string(scope) + "!" : std::string()) + name.text];
        text = "(no text)";
        if (name.formula) text.assign(1, '=').append(together ? inOneNotation(*name.formula) : *name.formula);
        if (name.hidden) text += " hidden";
    }
    return found;
}

Texts settingsOf(Book& book) {
    Texts found;
    found["dates from"] = book.isDate1904() ? "1904" : "1900";
    found["calculation"] = std::to_string(book.calculationMode());
    found["active sheet"] = std::to_string(book.activeSheetIndex() + 1);
    found["reference style"] = book.usesR1C1() ? "R1C1" : "A1";
    return found;
}

/// Objects of a sheet by what they are and where; equal ones at one place are numbered.
struct SheetObjects {
    Texts comments, pictures, controls, shapes;
};

void addNumbered(Texts& texts, const std::string& place, std::string text) {
    std::string name = place;
    for (int i = 2; texts.contains(name); ++i) name = place + " (" + std::to_string(i) + ")";
    texts[name] = std::move(text);
}

std::string member(const Texts& members, const char* name) {
    const auto found = members.find(name);
    return found == members.end() ? "null" : found->second;
}

/// Digests of the book's pictures by their ids: the ids of equal pictures may differ.
std::map<std::string, std::string> digestsOf(Book& book) {
    std::ostringstream text;
    {
        JsonLines lines(text);
        dumpImages(book, lines);
    }
    std::map<std::string, std::string> found;
    std::istringstream in(text.str());
    for (std::string line; std::getline(in, line);) {
        const Texts image = jsonMembers(line);
        found[member(image, "id")] = member(image, "format") + " " + member(image, "md5");
    }
    return found;
}

SheetObjects objectsOf(Book& book, Sheet& sheet) {
    std::ostringstream text;
    {
        JsonLines lines(text);
        dumpObjects(sheet, lines);
    }
    SheetObjects found;
    const auto digests = sheet.pictureTotalOnSheet() > 0 ? digestsOf(book) : Texts();
    std::istringstream in(text.str());
    for (std::string line; std::getline(in, line);) {
        const Texts object = jsonMembers(line);
        const auto place = [&](const char* row, const char* col) {
            const int r = std::atoi(member(object, row).c_str()), c = std::atoi(member(object, col).c_str());
            return r < 0 || c < 0 ? std::string("nowhere") : cellName(r, c);
        };
        if (line.starts_with(R"({"comment")")) {
            addNumbered(found.comments, place("r", "c"), member(object, "text") + " by " + member(object, "author"));
        } else if (line.starts_with(R"({"picture")")) {
            const auto digest = digests.find(member(object, "id"));
            addNumbered(found.pictures, place("row", "col"),
                        (digest != digests.end() ? digest->second : "linked " + member(object, "link")) + " " +
                            member(object, "width") + "x" + member(object, "height") + " at " + member(object, "x") +
                            "," + member(object, "y"));
        } else if (line.starts_with(R"({"control")")) {
            found.controls[member(object, "index")] = line;
        } else {
            addNumbered(found.shapes, place("row", "col"),
                        member(object, "type") + " to " + place("rowBottom", "colRight"));
        }
    }
    return found;
}

/// Numbers with a fraction cut to 12 digits: a save rounds sizes and margins.
std::string rounded(const std::string& text) {
    constexpr int digits = 12;
    std::string out;
    for (const char *at = text.data(), *const end = at + text.size(); at < end;) {
        double value = 0;
        const auto read = std::from_chars(at, end, value);
        if (read.ec != std::errc() || std::find(at, read.ptr, '.') == read.ptr) {
            const char* const next = std::max(read.ptr, at + 1);
            out.append(at, next);
            at = next;
            continue;
        }
        char shown[40];
        out.append(shown, std::to_chars(shown, shown + sizeof shown, value, std::chars_format::general, digits).ptr);
        at = read.ptr;
    }
    return out;
}

/// A list whose order says nothing, in one order.
std::string sorted(const std::string& list) {
    std::vector<std::string> elements = jsonElements(list);
    if (elements.empty()) return list;
    std::sort(elements.begin(), elements.end());
    std::string out;
    for (const std::string& element : elements) out.append(out.empty() ? "[" : ",").append(element);
    return out.append("]");
}

Texts featuresOf(Book& book, Sheet& sheet) {
    std::ostringstream text;
    {
        JsonLines lines(text);
        dumpFeatures(book, sheet, lines);
    }
    Texts members = jsonMembers(text.str());
    for (const char* const sizes : {"margins", "rows", "columns"}) {
        if (const auto found = members.find(sizes); found != members.end()) found->second = rounded(found->second);
    }
    for (const char* const places : {"merges", "links"}) {
        if (const auto found = members.find(places); found != members.end()) found->second = sorted(found->second);
    }
    return members;
}

}  // namespace

void addNameDifferences(Book& first, Book& second, Differences& out) {
    const bool together = (first.binaryVersion() == 0) != (second.binaryVersion() == 0);
    addChanges(namesOf(first, together), namesOf(second, together), "", "name", out);
    addChanges(settingsOf(first), settingsOf(second), "", "setting", out);
}

void addFeatureDifferences(Book& firstBook, Sheet& first, Book& secondBook, Sheet& second, const std::string& name,
                           Differences& out) {
    addChanges(featuresOf(firstBook, first), featuresOf(secondBook, second), name, "feature", out);
    const SheetObjects before = objectsOf(firstBook, first), after = objectsOf(secondBook, second);
    addChanges(before.comments, after.comments, name, "comment", out);
    addChanges(before.pictures, after.pictures, name, "picture", out);
    addChanges(before.controls, after.controls, name, "control", out);
    addChanges(before.shapes, after.shapes, name, "shape", out);
}

}  // namespace cli
