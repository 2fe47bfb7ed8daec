// What reports tell of a sheet that no operation of ISheetT answers.
#pragma once

namespace vellum {

struct SheetFacts {
    int rowLevels = 0, columnLevels = 0;  // the deepest outline level of its rows and of its columns; 0 without groups
    int validationRules = 0;              // rules about what may be entered into cells
    int rowEnd = 0;                       // behind the last row that the sheet tells of; binary sheets leave it at 0
};

/// Both engines' sheets have it.
class ISheetFacts {
public:
    virtual SheetFacts facts() = 0;

protected:
    ~ISheetFacts() = default;
};

}  // namespace vellum
