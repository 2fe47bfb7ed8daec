// What the drawing of a sheet asks of its sheet and book.
#pragma once
#include "biff/sheet/sheet.h"
#include "drawing/objects/drawing_context.h"

namespace vellum {

template <class CharT>
class SheetImplT<CharT>::DrawingSurroundings final : public drawing::DrawingContext {
public:
    explicit DrawingSurroundings(const SheetImplT& sheet) : _sheet(sheet), _book(sheet._book) {}

    drawing::DrawingGroup& group() override { return _book.drawingGroup(); }
    [[nodiscard]] std::uint32_t largestDgid() const override {
        std::uint32_t largest = _sheet.parts().drawing.dgid();
        for (std::size_t i = 0; i < _book.sheetTotal(); ++i) largest = std::max(largest, _book.sheetByIndex(i)->dgid());
        return largest;
    }
    [[nodiscard]] int columnPixels(int col) const override {
        return _sheet.shownColumnPixels(static_cast<std::uint16_t>(col));
    }
    [[nodiscard]] int rowPixels(int row) const override {
        return _sheet.shownRowPixels(static_cast<std::uint16_t>(row));
    }
    // A new book has it, and other programs write comments in it; some books have fewer fonts.
    [[nodiscard]] std::uint16_t noteFont() const override {
        constexpr std::uint16_t wireIndex = 5;
        return _book.fontAtPosition(wireIndex - 1) != nullptr ? wireIndex : 0;
    }

private:
    const SheetImplT& _sheet;
    BookContext<CharT>& _book;
};

}  // namespace vellum
