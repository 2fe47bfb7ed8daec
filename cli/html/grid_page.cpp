#include "cli/html/grid_page.h"

#include <ostream>

namespace cli::html {
namespace {

// Every pair of text and ground has a contrast above 4.5, in both schemes.
constexpr const char* style = R"(
:root{color-scheme:light dark;--text:#1a1a1a;--page:#ffffff;--line:#8a8a8a;--head:#ececec;--link:#0b4a9e;
--header:#d9e6ff;--index:#dcf2dc;--value:#fff4cc;--passed:#e6e6e6;--cut:#ffd6d6;--warn:#9a3b00;--fail:#a00000}
@media (prefers-color-scheme:dark){:root{--text:#f2f2f2;--page:#161616;--line:#777777;--head:#2b2b2b;--link:#9cc7ff;
--header:#1f3358;--index:#1d3f24;--value:#453a0c;--passed:#363636;--cut:#5c2020;--warn:#ffb37a;--fail:#ff9d9d}}
body{margin:0;display:flex;font:15px/1.4 sans-serif;color:var(--text);background:var(--page)}
nav{position:sticky;top:0;height:100vh;overflow:auto;min-width:16em;max-width:22em;background:var(--head);padding:1em;
box-sizing:border-box}
nav ol{padding-left:1.4em}
main{padding:1em 1.5em 8em;min-width:0;flex:1}
a{color:var(--link)}
.warn{color:var(--warn)}.fail{color:var(--fail)}
.grid{overflow-x:auto;margin:.6em 0}
table{border-collapse:collapse;font:13px/1.3 monospace}
caption{text-align:left;padding:.3em 0;font:14px sans-serif}
th,td{border:1px solid var(--line);padding:.15em .5em;max-width:24em;overflow:hidden;text-overflow:ellipsis;
white-space:pre;color:var(--text)}
th{background:var(--head);font-weight:normal}
td{text-align:left}td.r{text-align:right}
.header{background:var(--header)}.index{background:var(--index)}.value{background:var(--value)}
.passed{background:var(--passed)}.cut{background:var(--cut)}.outside{background:var(--page)}
td.warned{box-shadow:inset 0 0 0 2px var(--warn)}
td:focus{outline:3px solid var(--link);outline-offset:-2px}
td .d{display:none}
td:hover .d,td:focus .d{display:block;position:fixed;left:1em;right:1em;bottom:1em;padding:.8em 1em;white-space:pre-wrap;
text-align:left;background:var(--head);border:1px solid var(--line);font:14px/1.4 sans-serif;z-index:2}
.legend span{display:inline-block;padding:.1em .6em;border:1px solid var(--line);margin-right:.3em}
)";

const char* className(Part part) {
    constexpr const char* names[] = {"outside", "header", "index", "value", "passed", "cut"};
    return names[static_cast<int>(part)];
}

void writeCell(std::ostream& out, const Cell& cell) {
    out << "<td class=\"" << className(cell.part) << (cell.right ? " r" : "") << (cell.warned ? " warned" : "") << '"';
    if (!cell.details.empty()) out << " tabindex=\"0\"";
    out << '>' << escaped(cell.text);
    if (!cell.details.empty()) out << "<span class=\"d\">" << escaped(cell.details) << "</span>";
    out << "</td>";
}

/// The statements, and what the colours of cells mean.
void writeList(std::ostream& out, const std::vector<Entry>& entries) {
    out << "<nav aria-label=\"Statements\">\n<ol>\n";
    for (const Entry& entry : entries) {
        out << "<li><a href=\"#" << escaped(entry.id) << "\">" << escaped(entry.title) << "</a>";
        if (entry.failed) out << " <span class=\"fail\">fails</span>";
        if (entry.warned) out << " <span class=\"warn\">warnings</span>";
        out << "</li>\n";
    }
    out << "</ol>\n<p class=\"legend\"><span class=\"header\">header</span><span class=\"index\">index</span>"
        << "<span class=\"value\">value</span><span class=\"passed\">passed over</span><span class=\"cut\">cut</span>"
        << "<span class=\"outside\">outside</span></p>\n</nav>\n";
}

}  // namespace

std::string escaped(std::string_view text) {
    std::string out;
    for (const char c : text) {
        switch (c) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            case '\'':
                out += "&#39;";
                break;
            default:
                if (static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t') {
                    out += "\xEF\xBF\xBD";
                } else {
                    out += c;
                }
        }
    }
    return out;
}

void beginPage(std::ostream& out, std::string_view title, const std::vector<Entry>& entries) {
    out << "<!doctype html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        << "<meta name=\"viewport\" content=\"width=device-width,initial-scale=1\">\n<title>" << escaped(title)
        << "</title>\n<style>" << style << "</style>\n</head>\n<body>\n";
    if (!entries.empty()) writeList(out, entries);
    out << "<main>\n<h1>" << escaped(title) << "</h1>\n";
}

void endPage(std::ostream& out) {
    out << "</main>\n</body>\n</html>\n";
}

void writeGrid(std::ostream& out, std::string_view caption, const Grid& grid) {
    out << "<div class=\"grid\"><table>\n<caption>" << escaped(caption) << "</caption>\n<thead><tr><th></th>";
    for (const std::string& column : grid.columns) out << "<th scope=\"col\">" << escaped(column) << "</th>";
    out << "</tr></thead>\n<tbody>\n";
    for (const Row& row : grid.rows) {
        if (row.gap) {
            out << "<tr><th>&#8942;</th><td class=\"outside\" colspan=\"" << grid.columns.size()
                << "\">rows left out</td></tr>\n";
        }
        out << "<tr><th scope=\"row\">" << escaped(row.head) << "</th>";
        for (const Cell& cell : row.cells) writeCell(out, cell);
        out << "</tr>\n";
    }
    out << "</tbody>\n</table></div>\n";
}

}  // namespace cli::html
