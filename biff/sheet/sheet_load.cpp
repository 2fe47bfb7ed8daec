// Reading of a sheet from the workbook stream. Every cell goes into the store, records that the engine
// knows into members, and all others are kept as bytes with their place in the save order.
#include <algorithm>

#include "biff/cells/formula_read.h"
#include "biff/cells/orphaned_tokens.h"
#include "biff/cells/rk.h"
#include "biff/container/messages.h"
#include "biff/container/record_codec.h"
#include "biff/container/xls.h"
#include "biff/features/tables.h"
#include "biff/records/raw_record.h"
#include "biff/sheet/foreign_sheet.h"
#include "biff/sheet/sheet_parts.h"
#include "biff/strings/str_map.h"

namespace vellum {
namespace {

// A writer of BIFF8 files is known to use the identifier of an older formula record for the layout of the new one.
constexpr std::uint16_t formulaOfBiff4 = 1030;

class SheetReader {
public:
    SheetReader(SheetParts& sheet, const SheetSource& source) : _sheet(sheet), _source(source), _in(source.in) {}

    void read() {
        if (!findBof()) return;
        if (!_sheet.isWorksheet()) {
            readForeign();
            return;
        }
        while (const auto header = _in.nextRecord()) {
            if (header->id == record_id::Eof) {
                _in.skip(header->size);
                break;
            }
            readRecord(*header);
        }
        _leftOut.adopt(_sheet.cells);
        _sheet.drawing.finishLoad();
        _sheet.kept.sort();
        _sheet.rows.rows().shrink_to_fit();
        _sheet.cells.shrink();
        if (_source.biff5) _sheet.index.reset();
    }

private:
    // The stream is read on from where the last sheet ended; what stands between two sheets is skipped.
    bool findBof() {
        while (const auto header = _in.nextRecord()) {
            if (header->id != record_id::Bof) {
                _in.skip(header->size);
                continue;
            }
            _bofWire = takeRaw(_in, *header);
            Cursor body(_bofWire.subspan(recordHeaderSize, header->size));
            _sheet.bof = readPrefix<Bof>(body, header->size);
            return true;
        }
        return false;
    }

    // A chart or macro sheet: all of it, the Bof included, for a save to put back.
    void readForeign() {
        const auto keep = [this](std::span<const std::byte> wire) {
            if (!_source.biff5) _sheet.foreign.insert(_sheet.foreign.end(), wire.begin(), wire.end());
        };
        keep(_bofWire);
        eachOfSubstream(keep);
        // A text that a macro shows must not change when a cell which shows it too is written.
        biff::forEachForeignString(_sheet.foreign, [this](std::uint32_t isst) { _source.strings.noteUse(isst); });
    }

    // From behind a Bof to the EOF that closes it.
    template <class Keep>
    void eachOfSubstream(Keep&& keep) {
        int depth = 1;
        while (const auto header = _in.nextRecord()) {
            keep(takeRaw(_in, *header));
            if (header->id == record_id::Bof) ++depth;
            if (header->id == record_id::Eof && --depth == 0) break;
        }
    }

    // A continuation that is met here has lost the record that it went on with; kept, it would attach to another.
    void readRecord(const RecordHeader& header) {
        if (readCell(header) || readMember(header) || readDrawing(header)) return;
        if (continuesRecord(record_id::Eof, header.id)) {
            _in.skip(header.size);
        } else {
            keep(header);
        }
    }

    // Cells and rows.

    bool readCell(const RecordHeader& header) {
        switch (header.id) {
            case record_id::Formula:
            case formulaOfBiff4:
                readFormula(header);
                return true;
            case record_id::MulRk:
                readMulRk(body(header));
                return true;
            case record_id::MulBlank:
                readMulBlank(body(header));
                return true;
            case record_id::LabelSst:
                readLabelSst(body(header));
                return true;
            case record_id::Blank:
                readBlank(body(header));
                return true;
            case record_id::Number:
                readNumber(body(header));
                return true;
            case record_id::Label:
                readLabel(header, LabelCell::name);
                return true;
            case record_id::BoolErr:
                readBoolErr(body(header));
                return true;
            case record_id::RK:
                readRk(body(header));
                return true;
            case record_id::Row:
                readRow(body(header));
                return true;
            case record_id::DBCell:
                _in.skip(header.size);
                return true;
            case record_id::RString:
                if (!_source.biff5) return false;
                readLabel(header, "RString");
                return true;
            default:
                return false;
        }
    }

    Cursor body(const RecordHeader& header) { return _in.body(header.size); }

    /// Row, column and format of a cell record.
    template <class Cell>
    static Cell head(Cursor& in) {
        Cell cell{};
        cell.row = in.get<std::uint16_t>();
        cell.col = in.get<std::uint16_t>();
        cell.ixfe = in.get<std::uint16_t>();
        return cell;
    }
    [[nodiscard]] TextForm textForm() const { return _source.biff5 ? TextForm::noFlags : TextForm::withFlags; }
    [[nodiscard]] bool accepts(std::uint16_t row) const { return _source.what.accepts(row); }

    template <class Cell>
    void put(Cell cell) {
        const std::uint16_t row = cell.row, col = cell.col;
        const bool overOther = _sheet.cells.put(std::move(cell));
        _sheet.used.grow(row, col);
        if constexpr (Cell::kind != SlotKind::blank) {
            _sheet.filled.grow(row, col);
        } else if (overOther) {
            _sheet.boundsDirty = true;
        }
    }

    void readRk(Cursor in) {
        if (in.left() != 10) throwBadSize(RkCell::name);
        auto cell = head<RkCell>(in);
        cell.rk = in.get<std::uint32_t>();
        if (accepts(cell.row)) put(cell);
    }

    // A row, a first column, and format and value for each column up to the last, which stands at the end.
    void readMulRk(Cursor in) {
        if (in.left() < 6 || in.left() % 6 != 0) throwBadSize("MulRk");
        RkCell cell{};
        cell.row = in.get<std::uint16_t>();
        cell.col = in.get<std::uint16_t>();
        if (!accepts(cell.row)) return;
        for (; in.left() > 2; ++cell.col) {
            cell.ixfe = in.get<std::uint16_t>();
            cell.rk = in.get<std::uint32_t>();
            put(cell);
        }
    }

    void readMulBlank(Cursor in) {
        if (in.left() < 6 || in.left() % 2 != 0) throwBadSize("MulBlank");
        BlankCell cell{};
        cell.row = in.get<std::uint16_t>();
        cell.col = in.get<std::uint16_t>();
        if (_source.what.noBlanks || !accepts(cell.row)) return;
        for (; in.left() > 2; ++cell.col) {
            cell.ixfe = in.get<std::uint16_t>();
            put(cell);
        }
    }

    void readLabelSst(Cursor in) {
        if (in.left() != 10) throwBadSize(LabelSstCell::name);
        auto cell = head<LabelSstCell>(in);
        cell.isst = in.get<std::uint32_t>();
        if (accepts(cell.row)) putLabelSst(cell);
    }

    // Elements are counted per string; an element written over gives its old string back.
    void putLabelSst(const LabelSstCell& cell) {
        if (cell.col < SheetIndex::colLimit) {
            const CellSlot old = _sheet.cells.at(cell.row, cell.col);
            if (_source.countsStrings && old.occupied() && old.kind() == SlotKind::labelSst) {
                _source.strings.dropUse(_sheet.cells.get<LabelSstCell>(old).isst);
            }
        }
        put(cell);
        if (_source.countsStrings) _source.strings.noteUse(cell.isst);
    }

    void readBlank(Cursor in) {
        if (in.left() != 6) throwBadSize(BlankCell::name);
        const auto cell = head<BlankCell>(in);
        if (!_source.what.noBlanks && accepts(cell.row)) put(cell);
    }

    // Some writers append two or four bytes.
    void readNumber(Cursor in) {
        if (in.left() != 14 && in.left() != 16 && in.left() != 18) throwBadSize(NumberCell::name);
        auto cell = head<NumberCell>(in);
        cell.value = in.get<double>();
        if (accepts(cell.row)) put(cell);
    }

    void readBoolErr(Cursor in) {
        if (in.left() != 8) throwBadSize(BoolErrCell::name);
        auto cell = head<BoolErrCell>(in);
        cell.value = in.get<std::uint8_t>();
        cell.isError = in.get<std::uint8_t>();
        if (accepts(cell.row)) put(cell);
    }

    // A text of the cell's own. In an RString the fonts of its pieces follow; they are dropped.
    void readLabel(const RecordHeader& header, const char* record) {
        if (header.size < 8) throwBadSize(record);
        Cursor in = _in.body(6);
        auto cell = head<LabelCell>(in);
        auto budget = static_cast<std::uint16_t>(header.size - 6);
        cell.text = XLUnicodeString::read(_in, _source.pool, textForm(), false, budget);
        _in.skip(budget);
        if (accepts(cell.row)) put(cell);
    }

    void readFormula(const RecordHeader& header) {
        FormulaCell cell;
        vellum::readFormula(cell, header, _in, _source.pool, _source.biff5);
        if (accepts(cell.row)) {
            put(std::move(cell));
        } else {
            _leftOut.leaveOut(std::move(cell));
        }
    }

    void readRow(Cursor in) {
        const Row row = readFixed<Row>(in, in.left());
        if (!accepts(row.rw)) return;
        _sheet.rows.append(row);
        _sheet.rows.rows().back().miyRw &= Row::heightMask;
    }

    // Records that become members.

    bool readMember(const RecordHeader& header) {
        switch (header.id) {
            case record_id::ColInfo:
                readColInfo(body(header));
                return true;
            case record_id::Index:
                readIndex(body(header));
                return true;
            case record_id::Dimensions:
                readDimensions(header);
                return true;
            case record_id::Window2:
                readWindow2(header);
                return true;
            case record_id::MergeCells:
                readMergeCells(body(header));
                return true;
            default:
                return biff::readSetting(_sheet.settings, header, _in) ||
                       (!isOfLaterWindow(header.id) && _sheet.features.read(header, _in, _source.biff5));
        }
    }

    // The last field is missing, or cut to one byte, in files of some writers.
    void readColInfo(Cursor in) {
        const std::size_t size = in.left();
        if (size < 10 || size > 12) throwBadSize(ColInfo::name);
        ColInfo info;
        info.colFirst = in.get<std::uint16_t>();
        info.colLast = in.get<std::uint16_t>();
        info.coldx = in.get<std::uint16_t>();
        info.ixfe = in.get<std::uint16_t>();
        info.flags = in.get<std::uint16_t>();
        if (size == 12) info.reserved = in.get<std::uint16_t>();
        if (size == 11) info.reserved = in.get<std::uint8_t>();
        _sheet.columns.append(info);
    }

    // BIFF5 rows have 16 bits here; its index is checked and left.
    void readIndex(Cursor in) {
        const std::size_t fixedSize = _source.biff5 ? 12 : 16;
        if (in.left() < fixedSize || in.left() % 4 != 0) throwBadSize(Index::name);
        if (_source.biff5) return;
        Index index;
        index.reserved = in.get<std::uint32_t>();
        index.rwMic = in.get<std::uint32_t>();
        index.rwMac = in.get<std::uint32_t>();
        index.ibXF = in.get<std::uint32_t>();
        index.offsets.resize(in.left() / 4);
        for (auto& offset : index.offsets) offset = in.get<std::uint32_t>();
        _sheet.index = std::move(index);
    }

    // Other writers get it wrong often enough; the cells themselves tell the bounds.
    void readDimensions(const RecordHeader& header) {
        if (header.size != 14 && !(_source.biff5 && header.size == 10)) throwBadSize("Dimensions");
        _in.skip(header.size);
    }

    // One group of view records per window of the workbook; the first counts.
    void readWindow2(const RecordHeader& header) {
        Cursor in = body(header);
        if (header.size != 18 && header.size != 10) throwBadSize(Window2::name);
        if (_windows++ > 0) return;
        _sheet.window2 = readPrefix<Window2>(in, header.size);
        if (!_source.biff5) return;
        _sheet.window2.icvHdr = Window2().icvHdr;  // a colour of 32 bits in the older layout
        _sheet.window2.reserved = 0;
    }

    void readMergeCells(Cursor in) {
        if (in.left() < 2) throwBadSize(MergeCells::name);
        const std::size_t count = in.get<std::uint16_t>();
        if (in.left() != count * 8) throwBadSize(MergeCells::name);
        for (std::size_t i = 0; i < count; ++i) {
            biff::CellRange range;
            range.rowFirst = in.get<std::uint16_t>();
            range.rowLast = in.get<std::uint16_t>();
            range.colFirst = in.get<std::uint16_t>();
            range.colLast = in.get<std::uint16_t>();
            _sheet.merges.push_back(range);
        }
    }

    // Drawings. Those of the older layout are another matter.

    bool readDrawing(const RecordHeader& header) {
        if (_source.biff5) return readOlderNote(header);
        if (header.id == record_id::Note) {
            _sheet.drawing.nameObject(_sheet.notes.read(body(header).rest()));
            return true;
        }
        if (!drawing::SheetDrawing::isPart(header.id)) return false;
        _sheet.drawing.readBlock(_in, header);
        return true;
    }

    // The older note has its text itself; long ones go on in records of row 65535.
    bool readOlderNote(const RecordHeader& header) {
        constexpr std::uint16_t goesOn = 0xFFFF;
        if (header.id != record_id::Note) return false;
        Cursor in = body(header);
        if (in.left() < 6) return true;
        const auto row = in.get<std::uint16_t>(), col = in.get<std::uint16_t>();
        in.skip(sizeof(std::uint16_t));
        auto& notes = _source.olderNotes;
        if (row != goesOn) {
            notes.push_back({row, col, {}});
        } else if (notes.empty()) {
            return true;
        }
        for (const std::byte c : in.rest()) notes.back().text += std::to_integer<wchar_t>(c);
        return true;
    }

    // Records of which the bytes are kept.

    void keep(const RecordHeader& header) {
        const KeptRule rule = keptRule(header.id);
        PlacedRecords dropped;
        PlacedRecords& kept = _source.biff5 || isOfLaterWindow(header.id) ? dropped : _sheet.kept;
        biff::checkListRecord(header.id, header.size);
        kept.add(rule, header.id, takeRaw(_in, header));
        if (header.id == record_id::Bof) {
            eachOfSubstream([&](std::span<const std::byte> wire) { kept.append(wire); });
        }
        if (header.id == record_id::UserSViewBegin) keepCustomView(kept);
    }

    // A custom view has page breaks, panes and print settings of its own, which are not the sheet's.
    void keepCustomView(PlacedRecords& kept) {
        while (const auto next = _in.peekHeader()) {
            if (next->id == 0 || next->id == record_id::Eof) return;
            const RecordHeader header = _in.readHeader();
            kept.append(takeRaw(_in, header));
            if (header.id == record_id::UserSViewEnd) return;
        }
    }

    [[nodiscard]] bool isOfLaterWindow(std::uint16_t id) const {
        return _windows > 1 && (id == record_id::Pane || id == record_id::Selection || id == record_id::Scl);
    }

    SheetParts& _sheet;
    OrphanedTokens _leftOut;
    const SheetSource& _source;
    Xls& _in;
    std::span<const std::byte> _bofWire;
    int _windows = 0;
};

}  // namespace

void loadSheet(SheetParts& sheet, const SheetSource& source) {
    SheetReader(sheet, source).read();
}

}  // namespace vellum
