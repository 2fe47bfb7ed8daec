#include "xlsx/features/defined_names.h"

#include <algorithm>
#include <limits>

#include "engine/api/enums.h"
#include "engine/facts/sheet_names.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/features/name_text.h"

namespace vellum::xlsx {

template <class Tag>
void DefinedNames<Tag>::changed() {
    if (++_version == 0) _version = 1;
    _indexed = false;
    _byName.clear();
}

template <class Tag>
int DefinedNames<Tag>::scopeOf(const Name& name) {
    constexpr unsigned most = std::numeric_limits<int>::max();  // no sheet has it
    return name.isset_localSheetId() ? static_cast<int>(std::min(name.localSheetId(), most)) : scopeWorkbook;
}

template <class Tag>
auto DefinedNames<Tag>::named(std::wstring_view name) -> const std::vector<Name*>& {
    static const std::vector<Name*> none;
    if (!_indexed) {
        _byName.clear();
        if (auto* const names = _workbook.find_definedNames()) {
            for (Name& known : names->definedName()) _byName[foldedSheetName(known.name())].push_back(&known);
        }
        _indexed = true;
    }
    const auto found = _byName.find(foldedSheetName(name));
    return found == _byName.end() ? none : found->second;
}

template <class Tag>
auto DefinedNames<Tag>::find(std::wstring_view name, int scope) -> Name* {
    const auto& alike = named(name);
    const auto found =
        std::find_if(alike.begin(), alike.end(), [&](const Name* known) { return scopeOf(*known) == scope; });
    return found == alike.end() ? nullptr : *found;
}

template <class Tag>
auto DefinedNames<Tag>::make(std::wstring_view name, int scope) -> Name& {
    Name* chosen = nullptr;
    for (Name* const known : named(name)) {
        if (scopeOf(*known) != scope) continue;
        if (!chosen || known->name() == name) chosen = known;
        if (known->name() == name) break;
    }
    if (++_version == 0) _version = 1;
    if (!chosen) {
        chosen = &_workbook.definedNames().definedName().append();
        if (scope != scopeWorkbook) chosen->localSheetId(static_cast<unsigned>(scope));
        _byName[foldedSheetName(name)].push_back(chosen);
    }
    chosen->name(std::wstring(name));
    return *chosen;
}

template <class Tag>
void DefinedNames<Tag>::remove(const Name& name) {
    auto& list = _workbook.definedNames().definedName();
    const auto at = std::find_if(list.begin(), list.end(), [&](const Name& known) { return &known == &name; });
    if (at == list.end()) return;
    const auto alike = _byName.find(foldedSheetName(name.name()));
    if (alike != _byName.end()) std::erase(alike->second, &name);
    list.erase(static_cast<std::size_t>(at - list.begin()));
    if (++_version == 0) _version = 1;
    dropEmptyList();
}

/// An empty list is against the format.
template <class Tag>
void DefinedNames<Tag>::dropEmptyList() {
    if (_workbook.definedNames().definedName().empty()) _workbook.unset_definedNames();
}

template <class Tag>
void DefinedNames<Tag>::move(std::wstring_view sheet, const CellMove& move) {
    auto* const names = _workbook.find_definedNames();
    if (!names) return;
    names->definedName().eraseIf([&](Name& name) {
        std::wstring moved = movedAreas(name.text(), sheet, move);
        if (moved.empty() && !name.text().empty()) return true;
        if (moved != name.text()) name.text(std::move(moved));
        return false;
    });
    dropEmptyList();
    changed();
}

template <class Tag>
void DefinedNames<Tag>::move(Name& name, std::wstring_view sheet, const CellMove& move) {
    std::wstring moved = movedAreas(name.text(), sheet, move);
    if (moved.empty()) return remove(name);
    name.text(std::move(moved));
    if (++_version == 0) _version = 1;
}

template <class Tag>
void DefinedNames<Tag>::renameSheet(std::wstring_view from, std::wstring_view to) {
    ++_renames;
    auto* const names = _workbook.find_definedNames();
    if (!names) return;
    for (Name& name : names->definedName()) name.text(withSheetRenamed(name.text(), from, to));
    changed();
}

template class DefinedNames<ooxml::excelNormal_tag>;
template class DefinedNames<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
