// What formulas need of a workbook: its sheets, its list of references to sheets, its names and its notation.
#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace vellum::formula {

/// What an index of the list of sheet references (XTI) stands for.
struct SheetSpan {
    enum class Where : std::uint8_t {
        noBooks,  // the workbook has no supporting books at all
        unknown,  // no list is long enough, or the entry belongs to another workbook, an add-in, a DDE link
        ownBook,  // `first` to `last` of this workbook, as the entry has them: negative, or past the sheets, when
                  // broken
    };
    Where where = Where::unknown;
    int first = -1, last = -1;
};

/// The workbook as formulas see it. Texts that it gives live until the workbook changes.
class FormulaContext {
public:
    [[nodiscard]] virtual std::size_t sheetTotal() const = 0;
    [[nodiscard]] virtual std::wstring_view sheetNameOf(std::size_t index) const = 0;

    /// The entry is sought in the first list that is long enough; whose sheets it means is told by its own SupBook
    /// index, not by the block that holds the list.
    [[nodiscard]] virtual SheetSpan sheetSpan(std::uint16_t xti) const = 0;
    /// The index of an entry for these sheets of this workbook; one is added when there is none, and the reference of
    /// the workbook to itself with it. Throws when the list is full. Compiling asks for it last, when nothing else can
    /// fail any more, so that a formula that fails leaves no entry behind.
    virtual std::uint16_t xtiOfSheets(std::size_t first, std::size_t last) = 0;

    /// The text of a name by its place in the list, counted from 0, a built-in one by its published text. Nothing past
    /// the list and for a record that has no text.
    [[nodiscard]] virtual std::optional<std::wstring_view> nameText(std::uint32_t index) const = 0;
    /// The place of the name that a word in a formula of that sheet means, ignoring the case of letters: the sheet's
    /// own, else the one of the whole workbook, never another sheet's.
    [[nodiscard]] virtual std::optional<std::uint32_t> nameIndex(std::wstring_view text, int sheet) const = 0;

    /// Between the arguments of a function: ',' or ';'.
    [[nodiscard]] virtual wchar_t argumentSeparator() const = 0;
    /// Formula text is in R1C1 notation.
    [[nodiscard]] virtual bool usesR1C1Text() const = 0;

protected:
    ~FormulaContext() = default;
};

/// Which layout a token stream has. A workbook that was loaded from the older one may hold streams of both: those that
/// it came with, and those that were written since.
enum class Generation : std::uint8_t { biff5, biff8 };

/// The cell that R1C1 text is relative to.
struct TextOrigin {
    int row = -1, col = -1;
};

}  // namespace vellum::formula
