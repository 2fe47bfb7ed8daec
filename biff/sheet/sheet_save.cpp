// Writing of a sheet. The order of records is fixed; readers of such files rely on parts of it: the dimensions stand in
// front of the rows, the rows in front of their cells, a shared block right behind its formula, the drawings in front
// of the view. A record that the engine does not model goes to the place of its kind in `Place`, in the file's order
// among its like, whatever stood around it in the file; one that no rule names goes near the end, where unknown records
// do no harm.
#include <bitset>

#include "biff/cells/formula_read.h"
#include "biff/container/record_codec.h"
#include "biff/container/xls.h"
#include "biff/records/bof.h"
#include "biff/records/continue_writer.h"
#include "biff/sheet/sheet_parts.h"

namespace vellum {
namespace {

class SheetWriter {
public:
    SheetWriter(SheetParts& sheet, Xls& out) : _sheet(sheet), _out(out) {}

    void write() {
        if (!_sheet.isWorksheet()) {
            writeForeign();
            return;
        }
        _sheet.sharedTokens.settle(_sheet.cells);
        biff::SheetFeatures& features = _sheet.features;
        writeBof();
        settings(SettingPlace::behindBof);
        writeIndex();
        settings(SettingPlace::calculation);
        features.pageBreaks.write(_out);
        features.pageSetup.writeFront(_out);
        kept(Place::printerData);
        features.pageSetup.writeSetup(_out);
        kept(Place::headerFooter);
        features.protection.write(_out);
        settings(SettingPlace::beforeColumns);
        writeColumns();
        kept(Place::sorting);
        kept(Place::dropDowns);
        kept(Place::autoFilter);
        writeDimensions();
        writeRows();
        writeCells();
        kept(Place::formulaExtension);
        _sheet.drawing.write(_out);
        _sheet.notes.write(_out);
        kept(Place::consolidation);
        writeWindow2();
        kept(Place::pageLayoutView);
        features.panes.writeZoom(_out);
        features.panes.writePanes(_out);
        settings(SettingPlace::behindPanes);
        writeMerges();
        kept(Place::phonetic);
        features.hyperlinks.write(_out);
        kept(Place::codeName);
        features.tabColor.write(_out);
        kept(Place::other);
        features.shared.write(_out);
        kept(Place::tables);
        writeEof();
    }

private:
    void writeForeign() {
        if (!_sheet.foreign.empty()) {
            _out.writeBytes(_sheet.foreign);
            return;
        }
        writeBof();
        writeEof();
    }
    void writeBof() {
        Bof bof = _sheet.bof;
        bof.vers = bofVersBiff8;
        writeFixed(_out, bof);
    }
    void writeEof() { _out.writeRecordHeader(record_id::Eof, 0); }

    using SettingPlace = biff::SettingPlace;
    void settings(SettingPlace place) { biff::writeSettings(_sheet.settings, place, _out); }

    void kept(Place place) {
        _sheet.kept.forEach(place, [this](std::span<const std::byte> wire) { _out.writeBytes(wire); });
    }

    // One offset for every 32 rows fits into a record, with some to spare.
    void writeIndex() {
        if (!_sheet.index) return;
        constexpr std::size_t maxOffsets = (maxRecordBody - 16) / 4;
        const Index& index = *_sheet.index;
        const std::size_t count = std::min(index.offsets.size(), maxOffsets);
        Sink& sink = _out.out();
        sink.putAll(Index::id, static_cast<std::uint16_t>(16 + 4 * count), index.reserved, index.rwMic, index.rwMac,
                    index.ibXF);
        for (std::size_t i = 0; i < count; ++i) sink.put(index.offsets[i]);
    }

    void writeColumns() {
        _sheet.columns.sort();
        for (const ColInfo& info : _sheet.columns.records()) writeFixed(_out, info);
    }

    void writeDimensions() {
        _sheet.recountBounds();
        const AreaBounds& used = _sheet.used;
        _out.out().putAll(record_id::Dimensions, std::uint16_t{14}, used.rowFirst, used.rowEnd,
                          static_cast<std::uint16_t>(used.colFirst), static_cast<std::uint16_t>(used.colEnd),
                          std::uint16_t{0});
    }

    void writeRows() {
        const SheetIndex& index = _sheet.cells.index();
        std::bitset<SheetIndex::rowLimit> known;
        for (const Row& row : _sheet.rows.rows()) known.set(row.rw);
        for (auto rw = index.nextRow(0); rw < SheetIndex::rowLimit; rw = index.nextRow(rw + 1)) {
            if (known.test(rw)) continue;
            Row row;
            row.rw = static_cast<std::uint16_t>(rw);
            row.miyRw = _sheet.settings.defaultRowHeight.miyRw;
            _sheet.rows.append(row);
        }
        for (Row& row : _sheet.rows.rows()) {
            row.colMic = row.colMac = 0;
            index.forEachInRow(row.rw, [&row](std::uint32_t col, CellSlot) {
                if (row.colMac == 0) row.colMic = static_cast<std::uint16_t>(col);
                row.colMac = static_cast<std::uint16_t>(col + 1);
            });
            writeFixed(_out, row);
        }
    }

    void writeCells() {
        const CellStore& cells = _sheet.cells;
        cells.index().forEach([&](std::uint32_t, std::uint32_t, CellSlot slot) {
            cells.visit(slot, [this](const auto& cell) { write(cell); });
        });
    }

    template <class Cell, class... Values>
    void writeCell(std::uint16_t id, const Cell& cell, Values... values) {
        constexpr auto size = static_cast<std::uint16_t>(6 + (std::size_t{0} + ... + sizeof(Values)));
        _out.out().putAll(id, size, cell.row, cell.col, cell.ixfe, values...);
    }

    void write(const RkCell& cell) { writeCell(record_id::RK, cell, cell.rk); }
    void write(const NumberCell& cell) { writeCell(record_id::Number, cell, cell.value); }
    void write(const LabelSstCell& cell) { writeCell(record_id::LabelSst, cell, cell.isst); }
    void write(const BlankCell& cell) { writeCell(record_id::Blank, cell); }
    void write(const BoolErrCell& cell) { writeCell(record_id::BoolErr, cell, cell.value, cell.isError); }
    void write(const LabelCell& cell) { writeLabel(cell, cell.text); }
    void write(const FormulaCell& cell) {
        if (cell.generation == formula::Generation::biff5) {
            writeResult(cell);
        } else {
            writeFormula(cell, _out);
        }
    }

    template <class Cell>
    void writeLabel(const Cell& cell, const XLUnicodeString& text) {
        ContinueWriter record(_out, record_id::Label);
        record.put(cell.row);
        record.put(cell.col);
        record.put(cell.ixfe);
        text.write(record);
        record.finish();
    }

    // Tokens of the older layout mean something else in this one; the value stays.
    void writeResult(const FormulaCell& cell) {
        const CachedValue& value = cell.value;
        switch (value.kind()) {
            case cellNumber:
                writeCell(record_id::Number, cell, value.number());
                break;
            case cellString:
                writeLabel(cell, cell.text);
                break;
            case cellBoolean:
                writeCell(record_id::BoolErr, cell, static_cast<std::uint8_t>(value.boolean()), std::uint8_t{0});
                break;
            case cellError:
                writeCell(record_id::BoolErr, cell, static_cast<std::uint8_t>(value.error()), std::uint8_t{1});
                break;
            default:
                writeCell(record_id::Blank, cell);
                break;
        }
    }

    // Without a pane nothing is frozen.
    void writeWindow2() {
        Window2 window = _sheet.window2;
        const auto& panes = _sheet.features.panes;
        if (panes.pane() != nullptr && !panes.paneIsWritten()) {
            window.flags &= static_cast<std::uint16_t>(~Window2::frozen);
        }
        writeFixed(_out, window);
    }

    void writeMerges() {
        const auto& merges = _sheet.merges;
        for (std::size_t first = 0; first < merges.size(); first += MergeCells::maxRanges) {
            const std::size_t count = std::min(MergeCells::maxRanges, merges.size() - first);
            Sink& sink = _out.out();
            sink.putAll(MergeCells::id, static_cast<std::uint16_t>(2 + 8 * count), static_cast<std::uint16_t>(count));
            for (std::size_t i = first; i < first + count; ++i) {
                sink.putAll(merges[i].rowFirst, merges[i].rowLast, merges[i].colFirst, merges[i].colLast);
            }
        }
    }

    SheetParts& _sheet;
    Xls& _out;
};

}  // namespace

void saveSheet(SheetParts& sheet, Xls& out) {
    SheetWriter(sheet, out).write();
}

}  // namespace vellum
