// The format of cells and of styles as a record.
#pragma once
#include <cstdint>

#include "biff/container/cursor.h"
#include "biff/container/record_ids.h"

namespace vellum {

/// A run of bits in a word of a record.
struct Bits {
    int shift, width;

    [[nodiscard]] constexpr std::uint32_t mask() const { return ((1U << width) - 1U) << shift; }
    template <class Word>
    [[nodiscard]] constexpr int get(Word word) const {
        return static_cast<int>((word & mask()) >> shift);
    }
    /// A value that the field cannot hold is cut.
    template <class Word>
    constexpr void set(Word& word, int value) const {
        word = static_cast<Word>((word & ~mask()) | ((static_cast<std::uint32_t>(value) << shift) & mask()));
    }
};

struct Xf {
    static constexpr std::uint16_t id = record_id::XF;
    static constexpr const char* name = "XF";

    // Protection word.
    static constexpr Bits locked{0, 1}, formulaHidden{1, 1}, isStyle{2, 1}, parent{4, 12};
    // Alignment word. The used bits say what a cell format does not take from its style.
    static constexpr Bits horizontal{0, 3}, wrap{3, 1}, vertical{4, 3}, rotation{8, 8}, indent{16, 4}, shrink{20, 1};
    static constexpr Bits usesNumber{26, 1}, usesFont{27, 1}, usesAlignment{28, 1}, usesBorder{29, 1},
        usesPattern{30, 1}, usesProtection{31, 1};
    // Border word.
    static constexpr Bits left{0, 4}, right{4, 4}, top{8, 4}, bottom{12, 4}, leftColor{16, 7}, rightColor{23, 7},
        diagonals{30, 2};
    // Colour word.
    static constexpr Bits topColor{0, 7}, bottomColor{7, 7}, diagonalColor{14, 7}, diagonalStyle{21, 4},
        fillPattern{26, 6};
    // Pattern word.
    static constexpr Bits foreColor{0, 7}, backColor{7, 7};

    std::uint16_t ifnt = 0;  // wire index: 4 is left out
    std::uint16_t ifmt = 0;
    std::uint16_t protection = 0xFFF5;  // locked, a style without parent
    std::uint32_t alignment = 32;       // bottom
    std::uint32_t border = 64U << 16 | 64U << 23;
    std::uint32_t colors = 64U | 64U << 7;
    std::uint16_t pattern = 8384;  // 64 on 65: the system's text and window colours

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("ifnt", r.ifnt);
        visit("ifmt", r.ifmt);
        visit("protection", r.protection);
        visit("alignment", r.alignment);
        visit("border", r.border);
        visit("colors", r.colors);
        visit("pattern", r.pattern);
    }

    // The setters behind the interface: they keep the used bits.
    void setNumFormat(int value);
    void setFont(std::uint16_t wireIndex);
    void setAlignment(Bits field, int value);
    void setBorder(std::uint32_t Xf::*word, Bits field, int value);
    void setFillPattern(int value);
    void setPatternColor(Bits field, int value);
    void setProtection(Bits field, int value);
};

/// Reads a body that may end behind any field. Throws "XF size is incorrect".
Xf readXf(Cursor& in, std::uint16_t size);
/// The older body of 16 bytes, brought into the newer fields.
Xf readXfBiff5(Cursor& in, std::uint16_t size);

}  // namespace vellum
