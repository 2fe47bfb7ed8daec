// The compiler of formulas: from postfix text to tokens.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "biff/container/sink.h"
#include "formula/cell_location.h"
#include "formula/compiling/sheet_spec.h"
#include "formula/formula_context.h"
#include "formula/function_word.h"

namespace vellum::formula {

/// Makes a few kinds of token in fixed classes, and leaves the rest to the program that calculates. There are none for
/// unions, intersections, arrays, missing arguments and names of other workbooks. Its buffers are reused.
class TokenMaker {
public:
    /// The tokens, alive until the next call. `sheet` is the one whose own names are seen. What fails leaves the
    /// workbook as it was: references to sheets are added to its list when all else is done.
    std::span<const std::byte> compileFormula(std::wstring_view postfix, FormulaContext& book, int sheet);

private:
    /// A reference to sheets, whose index is not known yet.
    struct SheetUse {
        std::size_t place;  // of the index among the bytes
        SheetPair sheets;
    };

    void word(std::wstring_view word);
    bool operatorWord(std::wstring_view word);
    bool numberWord(std::wstring_view word);
    void functionCall(const FunctionWord& call);
    bool locationWord(std::wstring_view word);
    bool sheetWord(std::wstring_view word, std::size_t mark);
    bool sheetRangeWord(const SheetPair& first, std::wstring_view rest);
    void stringWord(std::wstring_view word);
    void nameWord(std::wstring_view word);

    void code(std::uint8_t code) { _out.put(code); }
    void sheetIndex(const SheetPair& sheets);
    void areasToArrayClass();

    const FormulaContext* _book = nullptr;
    int _sheet = -1;
    Sink _out;
    std::vector<std::size_t> _areas;  // places of the PtgArea tokens since the last function
    std::vector<SheetUse> _uses;
    bool _unknownCall = false;
};

}  // namespace vellum::formula
