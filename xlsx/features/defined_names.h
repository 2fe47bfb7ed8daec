// The defined names of a workbook.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/text/text_hash.h"
#include "ooxml/generated/dialect.h"
#include "xlsx/features/moved_range.h"

namespace vellum::xlsx {

/// A sheet as names know it.
struct NamedSheet {
    int index = 0;  // of the sheet list
    std::wstring_view name;
};

/// Finds, makes and removes the names of one workbook, which has to outlive it. Look-ups by name go by an index that
/// is made when first needed. Names that are alike but for case are one name in a scope: a sheet's index, or
/// `scopeWorkbook`.
template <class Tag>
class DefinedNames {
public:
    using Workbook = typename ooxml::dialect<Tag>::c_workbook;
    using Name = typename ooxml::dialect<Tag>::sml::c_CT_DefinedName;

    explicit DefinedNames(Workbook& workbook) : _workbook(workbook) {}
    DefinedNames(const DefinedNames&) = delete;
    DefinedNames& operator=(const DefinedNames&) = delete;

    /// Another one, never 0, whenever names came, went or changed.
    [[nodiscard]] unsigned version() const { return _version; }
    /// To be called by whoever changes the list otherwise.
    void changed();

    static int scopeOf(const Name& name);
    /// Those of that text, ignoring case, in the list's order. Lives until the next change.
    const std::vector<Name*>& named(std::wstring_view name);
    /// The first one of that scope; null when there is none.
    Name* find(std::wstring_view name, int scope);
    /// The name of that text and scope, or of one that differs by case only, or a new one.
    Name& make(std::wstring_view name, int scope);
    void remove(const Name& name);

    /// After rows or columns of a sheet moved. Names with nothing left go.
    void move(std::wstring_view sheet, const CellMove& move);
    /// The same for one name.
    void move(Name& name, std::wstring_view sheet, const CellMove& move);
    void renameSheet(std::wstring_view from, std::wstring_view to);
    /// How often that was.
    [[nodiscard]] unsigned renames() const { return _renames; }

private:
    void dropEmptyList();

    Workbook& _workbook;
    unsigned _version = 1, _renames = 0;
    bool _indexed = false;
    std::unordered_map<std::wstring, std::vector<Name*>, TextHash> _byName;  // in small letters
};

extern template class DefinedNames<ooxml::excelNormal_tag>;
extern template class DefinedNames<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
