// What cells show to filters and sorts.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vellum::xlsx {

/// What a filter asks of the workbook.
class FilterBook {
public:
    /// Lives until the next call. Only for positions below `sharedTotal`.
    virtual std::wstring_view sharedText(std::size_t position) = 0;
    virtual std::size_t sharedTotal() = 0;
    /// Whether numbers in cells of this style are dates.
    virtual bool isDateStyle(std::uint32_t style) = 0;
    virtual bool dates1904() = 0;

protected:
    ~FilterBook() = default;
};

/// In the order in which a sort has them.
enum class ValueKind : std::uint8_t { number, text, boolean, error, blank };

/// The value of one cell. Lives as long as the cell stays as it is.
struct FilterValue {
    static constexpr std::size_t notShared = static_cast<std::size_t>(-1);

    ValueKind kind = ValueKind::blank;
    bool isIsoDate = false;  // a date or time written as such
    double number = 0;       // of a number; 0 or 1 of a boolean
    std::uint32_t style = 0;
    std::size_t shared = notShared;  // position of a text in the string table
    std::string raw;                 // another text, or that of an error, UTF-8
    const void* inlineString = nullptr;

    [[nodiscard]] bool isBlank() const { return kind == ValueKind::blank; }
};

/// Reads cells of one dialect. A formula counts by its cached value; without one it is blank.
template <class Cell>
class ValueReader {
public:
    explicit ValueReader(FilterBook& book) : _book(book) {}

    [[nodiscard]] FilterValue read(const Cell* cell);
    /// The text that a filter compares: a number has up to 16 digits. Lives until the next call.
    std::wstring_view textOf(const FilterValue& value);
    FilterBook& book() { return _book; }

private:
    FilterBook& _book;
    std::wstring _text;
};

}  // namespace vellum::xlsx
