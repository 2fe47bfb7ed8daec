// What reports tell of a sheet that no operation of ISheetT answers.
#pragma once

namespace vellum {

struct SheetFacts {
    int rowLevels = 0, columnLevels = 0;  // the deepest outline level of its rows and of its columns; 0 without groups
    int validationRules = 0;              // rules about what may be entered into cells
};

/// Both engines' sheets have it.
class ISheetFacts {
public:
    virtual SheetFacts facts() = 0;

protected:
    ~ISheetFacts() = default;
};

}  // namespace vellum
