// What the first section of the workbook stream holds, apart from fonts, formats and strings.
#pragma once
#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "biff/globals/bound_sheet.h"
#include "biff/globals/globals_records.h"
#include "biff/globals/palette.h"
#include "biff/globals/style.h"
#include "biff/names/defined_names.h"
#include "biff/records/bof.h"
#include "biff/records/kept_records.h"
#include "biff/records/word_record.h"
#include "drawing/pictures/drawing_group.h"

namespace vellum {

class StringPool;
class Xls;

/// A custom number format, or a built-in one that the file spells out.
struct NumFormat {
    std::uint16_t ifmt = 0;
    XLUnicodeString text;
};

/// Records that the engine acts on are parsed; all others are kept as bytes, each at its place in the save order.
struct Globals {
    /// Records of which one is kept as bytes at a place of its own, with what goes on with it.
    static constexpr std::uint16_t slotIds[] = {
        record_id::ObProj,           record_id::CodeName,      record_id::ObNoMacros, record_id::XFCRC,
        record_id::Compat12,         record_id::TableStyles,   record_id::Theme,      record_id::MTRSettings,
        record_id::CompressPictures, record_id::ForceFullCalc, record_id::ClrtClient,
    };

    Bof bof;
    bool hasBof = false;
    globals::InterfaceHdr interfaceHdr;
    globals::Mms mms;
    globals::WriteAccess writeAccess;
    globals::CodePage codePage;
    globals::DSF dsf;
    bool hasExcel9File = false;  // a mark without content
    std::vector<std::uint16_t> rrTabId{1};
    bool hasRrTabId = false;
    globals::BuiltInFnGroupCount builtInFnGroupCount;
    globals::WinProtect winProtect;
    globals::Protect protect;
    globals::Password password;
    globals::Prot4Rev prot4Rev;
    globals::Prot4RevPass prot4RevPass;
    globals::Window1 window1;
    bool hasWindow1 = false;
    globals::Backup backup;
    globals::HideObj hideObj;
    globals::Date1904 date1904;
    globals::CalcPrecision calcPrecision;
    globals::RefreshAll refreshAll;
    globals::BookBool bookBool;
    globals::UsesELFs usesElfs;
    globals::Country country;
    globals::RecalcId recalcId;
    bool isTemplate = false, isWriteProtected = false;

    std::vector<NumFormat> numFormats;  // in their order; see addNumFormat
    std::vector<Style> styles;
    std::vector<BoundSheet8> boundSheets;
    biff::DefinedNames names;  // with the references to sheets that they and all formulas use
    Palette palette;

    std::array<KeptRecords, std::size(slotIds)> slots;
    KeptRecords xfExts, headerPictures, bookExt, extSst, others;
    drawing::DrawingGroup drawingGroup;

    /// A record that is not a font, a format or the shared strings. Throws "NAME size is incorrect" and its like.
    void read(Xls& in, RecordHeader header, StringPool& pool);
    /// Gives a loaded book what its file left out.
    void finishLoad();

    [[nodiscard]] bool isBiff5() const { return bof.vers < firstVersWithFlags; }

    // The records in the order of saving; fonts, number formats and formats stand between the first two groups, the
    // shared strings before the last. Files from before BIFF8 go out as BIFF8, without what is only kept as bytes.
    void writeFront(Xls& out) const;
    void writeNumFormats(Xls& out) const;
    void writeStyles(Xls& out) const;
    /// The stream position of each entry goes into `positions`, for the sheet's place to be patched in.
    void writeBoundSheets(Xls& out, std::vector<std::uint32_t>& positions) const;
    void writeLinks(Xls& out);
    void writeBack(Xls& out) const;

    /// Null when the id has no text of its own. Of several texts the first counts.
    [[nodiscard]] const NumFormat* findNumFormat(std::uint16_t ifmt) const;
    void addNumFormat(const NumFormat& format);
    /// The id of a text, registered now if it is new. Throws when no id is free, and for a text longer than a record.
    std::uint16_t numFormatId(std::wstring_view text, StringPool& pool);

    [[nodiscard]] const KeptRecords& slot(std::uint16_t id) const;
    /// Size of all that is kept as bytes.
    [[nodiscard]] std::size_t keptBytes() const;

private:
    std::vector<std::uint32_t> _formatAt;  // by ifmt: position in numFormats plus one, 0 for none

    void writeKept(Xls& out, const KeptRecords& records) const;
    void writeSlot(Xls& out, std::uint16_t id) const;
};

}  // namespace vellum
