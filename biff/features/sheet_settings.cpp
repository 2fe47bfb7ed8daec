#include "biff/features/sheet_settings.h"

#include <algorithm>

#include "biff/container/record_codec.h"

namespace vellum::biff {
namespace {

template <class T>
struct SettingCodec {
    static constexpr std::size_t size = sizeof(T);
    static void read(Cursor& in, T& value) { value = in.get<T>(); }
    static void write(Xls& out, std::uint16_t id, T value) { out.out().putAll(id, std::uint16_t{size}, value); }
};

template <class T>
struct SettingCodec<std::optional<T>> {
    static constexpr std::size_t size = sizeof(T);
    static void read(Cursor& in, std::optional<T>& value) { value = in.get<T>(); }
    static void write(Xls& out, std::uint16_t id, const std::optional<T>& value) {
        if (value) SettingCodec<T>::write(out, id, *value);
    }
};

template <class Record>
requires requires {
    Record::id;
}
struct SettingCodec<Record> {
    static constexpr std::size_t size = wireSize<Record>();
    static void read(Cursor& in, Record& record) { readFields(in, record); }
    static void write(Xls& out, std::uint16_t, const Record& record) { writeFixed(out, record); }
};

/// Which sizes of a body are let through; the value stands in front.
enum class Sizes : std::uint8_t { exact, orLonger, orTwice };

struct Setting {
    std::uint16_t id;
    const char* name;
    SettingPlace place;
    Sizes sizes;
    std::size_t size;
    void (*read)(SheetSettings&, Cursor&);
    void (*write)(const SheetSettings&, std::uint16_t id, Xls&);

    [[nodiscard]] bool accepts(std::size_t found) const {
        if (found == size) return true;
        return sizes == Sizes::orLonger ? found > size : sizes == Sizes::orTwice && found == 2 * size;
    }
};

template <auto Member>
constexpr Setting setting(std::uint16_t id, const char* name, SettingPlace place, Sizes sizes = Sizes::exact) {
    using Codec = SettingCodec<std::remove_cvref_t<decltype(SheetSettings().*Member)>>;
    return {id,
            name,
            place,
            sizes,
            Codec::size,
            [](SheetSettings& settings, Cursor& in) { Codec::read(in, settings.*Member); },
            [](const SheetSettings& settings, std::uint16_t record, Xls& out) {
                Codec::write(out, record, settings.*Member);
            }};
}

using S = SheetSettings;
using enum SettingPlace;

// In the order of writing.
constexpr Setting all[] = {
    setting<&S::uncalced>(record_id::Uncalced, "Uncalced", behindBof),
    setting<&S::calcMode>(record_id::CalcMode, "CalcMode", calculation, Sizes::orLonger),
    setting<&S::calcCount>(record_id::CalcCount, "CalcCount", calculation),
    setting<&S::calcRefMode>(record_id::CalcRefMode, "CalcRefMode", calculation),
    setting<&S::calcIter>(record_id::CalcIter, "CalcIter", calculation),
    setting<&S::calcDelta>(record_id::CalcDelta, "CalcDelta", calculation),
    setting<&S::calcSaveRecalc>(record_id::CalcSaveRecalc, "CalcSaveRecalc", calculation),
    setting<&S::printRowCol>(record_id::PrintRowCol, "PrintRowCol", calculation),
    setting<&S::printGrid>(record_id::PrintGrid, "PrintGrid", calculation),
    setting<&S::gridSet>(record_id::GridSet, "GridSet", calculation),
    setting<&S::guts>(record_id::Guts, Guts::name, calculation),
    setting<&S::defaultRowHeight>(record_id::DefaultRowHeight, DefaultRowHeight::name, calculation),
    setting<&S::wsBool>(record_id::WsBool, "WsBool", calculation),
    setting<&S::defColWidth>(record_id::DefColWidth, "DefColWidth", beforeColumns, Sizes::orTwice),
    setting<&S::dxGCol>(record_id::DxGCol, "DxGCol", behindPanes),
};

}  // namespace

bool readSetting(SheetSettings& settings, RecordHeader header, Xls& in) {
    const auto* const rule = std::ranges::find(all, header.id, &Setting::id);
    if (rule == std::end(all)) return false;
    if (!rule->accepts(header.size)) throwBadSize(rule->name);
    Cursor body = in.body(header.size);
    rule->read(settings, body);
    return true;
}

void writeSettings(const SheetSettings& settings, SettingPlace place, Xls& out) {
    for (const Setting& each : all) {
        if (each.place == place) each.write(settings, each.id, out);
    }
}

}  // namespace vellum::biff
