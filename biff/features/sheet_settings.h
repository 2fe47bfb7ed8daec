// The settings that every worksheet has, each in a small record of its own.
#pragma once
#include <cstdint>
#include <optional>

#include "biff/cells/sheet_records.h"
#include "biff/container/record_ids.h"

namespace vellum {

class Xls;

/// With the values of a new sheet.
struct SheetSettings {
    static constexpr std::uint16_t summaryBelow = 0x0040, summaryRight = 0x0080, fitToPage = 0x0100;  // of wsBool

    std::optional<std::uint16_t> uncalced;  // there when the sheet was saved without being calculated
    std::int16_t calcMode = 1;
    std::uint16_t calcCount = 100;
    std::uint16_t calcRefMode = 1;  // 0: R1C1
    std::uint16_t calcIter = 0;
    double calcDelta = 0.001;
    std::uint16_t calcSaveRecalc = 1;
    std::uint16_t printRowCol = 0, printGrid = 0, gridSet = 1;
    Guts guts;
    DefaultRowHeight defaultRowHeight;
    std::uint16_t wsBool = 0x04C1;
    std::uint16_t defColWidth = 8;        // characters
    std::optional<std::uint16_t> dxGCol;  // 1/256 character; counts before defColWidth when below 65535
};

namespace biff {

/// Where a save writes a setting.
enum class SettingPlace : std::uint8_t { behindBof, calculation, beforeColumns, behindPanes };

/// Takes the record if it is one of the settings. Throws "CalcCount size is incorrect" and its like.
bool readSetting(SheetSettings& settings, RecordHeader header, Xls& in);
/// The settings of a place in their order.
void writeSettings(const SheetSettings& settings, SettingPlace place, Xls& out);

}  // namespace biff
}  // namespace vellum
