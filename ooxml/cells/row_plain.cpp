// The fast path: rows as nearly all are, straight over the bytes.
#include "bindery/binderyparse/plain_bytes.h"
#include "bindery/values/chars.h"
#include "ooxml/cells/row.h"
#include "ooxml/cells/row_forms.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"

namespace ooxml {

template <class Family>
const char* c_CT_Row<Family>::readPlainTag(const char* at, const char* end, bool dyDescent, bool& empty) {
    for (;;) {
        if (end - at < 2) return nullptr;
        if (*at == '>' || *at == '/') {
            empty = *at == '/';
            if (!empty) return at + 1;
            return at[1] == '>' ? at + 2 : nullptr;
        }
        if (*at != ' ') return nullptr;
        const char* name = ++at;
        at = bindery::skipName(at, end);
        const std::string_view nameText(name, static_cast<std::size_t>(at - name));
        if (!startsWith(at, end, "=\"")) return nullptr;
        const char* value = at += 2;
        while (at != end && !bindery::is(*at, bindery::char_value_stop) && static_cast<unsigned char>(*at) < 128) ++at;
        if (at == end || *at != '"') return nullptr;
        const std::string_view valueText(value, static_cast<std::size_t>(at - value));
        ++at;
        if (nameText == dyDescentName) {
            if (!dyDescent || (_present & has_dyDescent) != 0) return nullptr;
            _dyDescent = valueText;
            _present |= has_dyDescent;
        } else if (valueText.find(' ') != std::string_view::npos || takeAttribute(nameText, valueText) != 0) {
            return nullptr;
        }
    }
}

/// Cells of the usual form, as far as they go. True when the row's end tag came behind them.
template <class Family>
bool c_CT_Row<Family>::readPlainCells(bindery::c_xml_reader& reader, std::vector<Cell>& cells) {
    bindery::c_plain_bytes bytes(reader);
    const std::string_view rest = bytes.rest();
    if (rest.empty()) return false;
    const char* at = rest.data();
    const char* end = at + rest.size();
    for (;;) {
        at = bindery::skipSpace(at, end);
        if (end - at < 3 || at[0] != '<' || at[1] != 'c') break;
        cells.emplace_back();
        const char* behind = cells.back().readPlain(at + 2, end);
        if (behind == nullptr) {
            cells.pop_back();
            break;
        }
        at = behind;
    }
    const bool ended = startsWith(at, end, "</row>");
    bytes.passed(ended ? at + 6 : at);
    if (ended) bytes.left();
    return ended;
}

}  // namespace ooxml
