// What a sheet's drawing asks of the book and the sheet that it belongs to.
#pragma once
#include <cstdint>

namespace vellum::drawing {

class DrawingGroup;

class DrawingContext {
public:
    /// The group of the book.
    virtual DrawingGroup& group() = 0;
    /// The largest drawing number on the book's sheets, 0 when there is no drawing.
    [[nodiscard]] virtual std::uint32_t largestDgid() const = 0;
    /// As they are shown, 0 for hidden ones.
    [[nodiscard]] virtual int columnPixels(int col) const = 0;
    [[nodiscard]] virtual int rowPixels(int row) const = 0;
    /// Index of the font of comments.
    [[nodiscard]] virtual std::uint16_t noteFont() const = 0;

protected:
    ~DrawingContext() = default;
};

}  // namespace vellum::drawing
