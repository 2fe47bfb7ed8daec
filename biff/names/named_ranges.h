// Names for cells and areas of a sheet: finding, setting, removing them.
#pragma once
#include <string_view>

#include "biff/names/defined_names.h"

namespace vellum {
class StringPool;
}

namespace vellum::biff {

/// Throws the texts for a cell that is off the sheet, for both corners, and those for corners in the wrong order.
void checkArea(const NameArea& area);

struct FoundRange {
    NameArea area;
    bool isHidden = false;
};

/// The first name of that text and scope. Throws "named range is not found" when there is none, and when it is no
/// cell or area of this workbook.
FoundRange findNamedRange(const DefinedNames& names, std::wstring_view text, Scope scope);

/// Makes the name stand for cells of `sheet`. A name of that text and scope is changed, else a new one is made, for
/// the calling sheet when any scope would do. Nothing is changed on a failure.
struct NamedRange {
    std::wstring_view text;
    NameArea area;
    Scope scope;
    bool isHidden = false;
};
void setNamedRange(DefinedNames& names, StringPool& pool, int sheet, int sheetCount, const NamedRange& range);

/// For any scope: the first name of that text which reaches `sheet`. Throws "named range is not found".
void removeNamedRange(DefinedNames& names, int sheet, std::wstring_view text, Scope scope);

}  // namespace vellum::biff
