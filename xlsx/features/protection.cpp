#include "xlsx/features/protection.h"

#include <cstdint>

#include "engine/facts/password_hash.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"

namespace vellum::xlsx {
namespace {

/// One bit of the options. The attribute says that something is forbidden; it is written where that differs from what
/// an absent one says.
template <class Protection>
struct Option {
    int bit;
    void (Protection::*set)(bool);
    void (Protection::*unset)();
    bool forbiddenByDefault;
};

#define VELLUM_OPTION(bit, name, byDefault) \
    { bit, &P::name, &P::unset_##name, byDefault }
template <class P>
constexpr Option<P> options[] = {
    VELLUM_OPTION(1, objects, false),
    VELLUM_OPTION(2, scenarios, false),
    VELLUM_OPTION(4, formatCells, true),
    VELLUM_OPTION(8, formatColumns, true),
    VELLUM_OPTION(16, formatRows, true),
    VELLUM_OPTION(32, insertColumns, true),
    VELLUM_OPTION(64, insertRows, true),
    VELLUM_OPTION(128, insertHyperlinks, true),
    VELLUM_OPTION(256, deleteColumns, true),
    VELLUM_OPTION(512, deleteRows, true),
    VELLUM_OPTION(1024, selectLockedCells, false),
    VELLUM_OPTION(2048, sort, true),
    VELLUM_OPTION(4096, autoFilter, true),
    VELLUM_OPTION(8192, pivotTables, true),
    VELLUM_OPTION(16384, selectUnlockedCells, false),
};
#undef VELLUM_OPTION

/// A bit that is set allows what the attribute is about.
template <class Protection>
void applyOptions(Protection& protection, int bits) {
    for (const auto& option : options<Protection>) {
        const bool forbidden = (bits & option.bit) == 0;
        if (forbidden == option.forbiddenByDefault) {
            (protection.*option.unset)();
        } else {
            (protection.*option.set)(forbidden);
        }
    }
}

/// The newer hash would contradict the old one.
template <class Protection>
void setPassword(Protection& protection, std::wstring_view password) {
    protection.unset_algorithmName();
    protection.unset_hashValue();
    protection.unset_saltValue();
    protection.unset_spinCount();
    protection.unset_password();
    if (password.empty()) return;
    const std::uint16_t hash = passwordHash(password);
    protection.password({{static_cast<std::uint8_t>(hash >> 8), static_cast<std::uint8_t>(hash & 0xFF)}});
}

}  // namespace

template <class Worksheet>
bool isProtected(const Worksheet& worksheet) {
    const auto* const protection = worksheet.find_sheetProtection();
    return protection && protection->sheet();
}

template <class Worksheet>
void setProtected(Worksheet& worksheet, bool enable, std::optional<std::wstring_view> password, int options) {
    auto& protection = worksheet.sheetProtection();
    protection.sheet(enable);
    protection.objects(enable);
    protection.scenarios(enable);
    if (password) setPassword(protection, *password);
    if (options >= 0) applyOptions(protection, options);
}

template bool isProtected(const sheet::c_worksheet&);
template bool isProtected(const strict::c_worksheet&);
template void setProtected(sheet::c_worksheet&, bool, std::optional<std::wstring_view>, int);
template void setProtected(strict::c_worksheet&, bool, std::optional<std::wstring_view>, int);

}  // namespace vellum::xlsx
