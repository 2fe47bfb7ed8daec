// The fast path: the cell as nearly all are, straight over the bytes.
#include <cstring>

#include "ooxml/cells/cell.h"
#include "ooxml/cells/cell_text.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"

namespace ooxml {

namespace {

constexpr std::ptrdiff_t plainRoom = 48;  // the longest plain attribute, and the shortest body, fit into it

/// Bytes that a plain text may have: ASCII, nothing that has to be expanded or joined.
constexpr auto plainTable = [] {
    struct {
        bool of[256];
    } table{};
    for (unsigned c = 0; c < 128; ++c) table.of[c] = c != '<' && c != '&' && c != '\r';
    return table;
}();

bool isPlain(char c) {
    return plainTable.of[static_cast<unsigned char>(c)];
}

}  // namespace

/// Behind the "<f", in the room that is there for a body. Few forms: a text, and a member of a group.
template <class Family>
const char* c_CT_Cell<Family>::readPlainFormula(const char* at, const char* end) {
    if (isRare()) return nullptr;
    constexpr std::string_view member = " t=\"shared\" si=\"", acaOfNone = " aca=\"false\">";
    if (std::memcmp(at, member.data(), member.size()) == 0) {
        const char* first = at += member.size();
        std::uint32_t group = 0;
        for (; *at >= '0' && *at <= '9' && at - first < 9; ++at)
            group = group * 10 + static_cast<std::uint32_t>(*at - '0');
        if (at == first || std::memcmp(at, "\"/>", 3) != 0) return nullptr;
        setMember(group, {});
        return at + 3;
    }
    const bool withAca = std::memcmp(at, acaOfNone.data(), acaOfNone.size()) == 0;
    if (!withAca && *at != '>') return nullptr;
    const char* first = at += withAca ? acaOfNone.size() : 1;
    while (at != end && isPlain(*at)) ++at;
    if (end - at < 8 || std::memcmp(at, "</f>", 4) != 0) return nullptr;
    setFormulaText({first, static_cast<std::size_t>(at - first)}, withAca);
    return at + 4;
}

template <class Family>
const char* c_CT_Cell<Family>::readPlain(const char* at, const char* end) {
    for (;;) {
        if (end - at < plainRoom) return nullptr;
        if (*at == '>') {
            ++at;
            break;
        }
        if (*at == '/') return at[1] == '>' ? at + 2 : nullptr;
        if (at[0] != ' ' || at[2] != '=' || at[3] != '"') return nullptr;
        const char name = at[1];
        at += 4;
        if (name == 'r') {
            std::uint32_t row = 0, column = 0;
            if (hasReference() || (at = readAddress(at, end, row, column)) == nullptr) return nullptr;
            setReference(row, column);
        } else if (name == 's') {
            if (hasStyle()) return nullptr;
            const char* first = at;
            std::uint32_t style = 0;
            for (; *at >= '0' && *at <= '9' && at - first < 9; ++at)
                style = style * 10 + static_cast<std::uint32_t>(*at - '0');
            if (at == first) return nullptr;
            setStyle(style);
        } else if (name == 't') {
            const char* first = at;
            while (*at != '"' && at - first < 4) ++at;
            if (type() != CellType::absent || !readType({first, static_cast<std::size_t>(at - first)})) return nullptr;
        } else {
            return nullptr;
        }
        if (*at++ != '"') return nullptr;
    }
    if (std::memcmp(at, "<f", 2) == 0 && (at = readPlainFormula(at + 2, end)) == nullptr) return nullptr;
    if (std::memcmp(at, "<v>", 3) == 0) {
        const char* first = at += 3;
        while (at != end && isPlain(*at)) ++at;
        if (end - at < 8 || std::memcmp(at, "</v></c>", 8) != 0) return nullptr;
        takeText({first, static_cast<std::size_t>(at - first)});
        return at + 8;
    }
    return std::memcmp(at, "</c>", 4) == 0 ? at + 4 : nullptr;
}

}  // namespace ooxml
