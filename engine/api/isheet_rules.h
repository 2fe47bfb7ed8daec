// The rules that say what may be entered into cells, for those who report on them.
#pragma once
#include <string>
#include <vector>

namespace vellum {

/// Codes and formulas count as those of ISheetT::addValidationRule. A rule that only warns is one too.
struct EntryRule {
    struct Area {
        int rowFirst = 0, rowLast = 0, colFirst = 0, colLast = 0;
    };
    int type = 0, op = 0;
    bool allowBlank = false;
    std::vector<Area> areas;
    std::string formula1, formula2;  // UTF-8, empty where there is none
};

/// Open XML sheets have it.
class ISheetRules {
public:
    /// In the order of the file. After a failure none, and the book's last error tells why.
    virtual std::vector<EntryRule> entryRules() = 0;

protected:
    ~ISheetRules() = default;
};

}  // namespace vellum
