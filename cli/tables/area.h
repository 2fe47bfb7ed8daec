// Rectangles of sheets by the labels that people write.
#pragma once
#include <string>
#include <string_view>

#include "engine/api/ibook.h"

namespace cli {

/// A rectangle of a sheet; rows and columns from 0, all included. An empty sheet gives one with last ones below first.
struct SheetArea {
    int sheet = 0;
    int rowFirst = 0, rowLast = -1, colFirst = 0, colLast = -1;

    [[nodiscard]] bool contains(int row, int col) const {
        return row >= rowFirst && row <= rowLast && col >= colFirst && col <= colLast;
    }
};

/// The area that a label means: as in a statement ("[Sales$A1:C5]", "[A:C]", "[]", a defined name), or as in a formula
/// ("Sales!A1:C5", "A1:C5"), or a sheet's name for its used area. Empty: the first worksheet's used area. False, with
/// a text in `error`, when there is no such area.
bool findArea(vellum::IBookT<char>& book, std::string_view label, SheetArea& area, std::string& error);

/// The used area of a sheet.
SheetArea usedArea(vellum::IBookT<char>& book, int sheet);

}  // namespace cli
