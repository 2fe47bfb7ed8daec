// The save order of the globals.
#include <algorithm>

#include "biff/container/record_codec.h"
#include "biff/globals/globals.h"
#include "biff/records/bof.h"
#include "biff/records/continue_writer.h"

namespace vellum {

void Globals::writeFront(Xls& out) const {
    Bof first = bof;
    first.vers = bofVersBiff8;
    writeFixed(out, first);
    if (isWriteProtected) out.writeRecord(record_id::WriteProtect, {});
    if (isTemplate) out.writeRecord(record_id::Template, {});
    writeFixed(out, isBiff5() ? globals::InterfaceHdr{} : interfaceHdr);
    writeFixed(out, mms);
    out.writeRecord(record_id::InterfaceEnd, {});
    writeFixed(out, isBiff5() ? globals::WriteAccess{} : writeAccess);
    writeFixed(out, isBiff5() ? globals::CodePage{} : codePage);
    writeFixed(out, dsf);
    if (hasExcel9File && !isBiff5()) out.writeRecord(record_id::Excel9File, {});
    writeSplit(out, record_id::RRTabId, std::as_bytes(std::span(rrTabId)));
    for (const std::uint16_t id : {record_id::ObProj, record_id::ObNoMacros, record_id::CodeName}) writeSlot(out, id);

    writeFixed(out, builtInFnGroupCount);
    writeFixed(out, winProtect);
    writeFixed(out, protect);
    writeFixed(out, password);
    writeFixed(out, prot4Rev);
    writeFixed(out, prot4RevPass);
    writeFixed(out, window1);
    writeFixed(out, backup);
    writeFixed(out, hideObj);
    writeFixed(out, date1904);
    writeFixed(out, calcPrecision);
    writeFixed(out, refreshAll);
    writeFixed(out, bookBool);
}

void Globals::writeNumFormats(Xls& out) const {
    for (const NumFormat& format : numFormats) {
        Sink& sink = out.out();
        sink.putAll(record_id::Format, static_cast<std::uint16_t>(2 + format.text.wireSize()), format.ifmt);
        format.text.write(sink);
    }
}

void Globals::writeStyles(Xls& out) const {
    writeSlot(out, record_id::XFCRC);
    writeKept(out, xfExts);
    for (const Style& style : styles) style.write(out, !isBiff5());
    writeSlot(out, record_id::TableStyles);
    palette.write(out);
    writeSlot(out, record_id::ClrtClient);
    writeFixed(out, usesElfs);
}

void Globals::writeBoundSheets(Xls& out, std::vector<std::uint32_t>& positions) const {
    positions.clear();
    // Programs do not open a workbook of hidden sheets, which is left when the others are removed.
    const auto isVisible = [](const BoundSheet8& sheet) { return sheet.state() == 0; };
    const bool noneVisible = std::ranges::none_of(boundSheets, isVisible);
    for (BoundSheet8 sheet : boundSheets) {
        if (noneVisible && positions.size() == window1.itabCur) sheet.setState(0);
        positions.push_back(out.currentWritePosition());
        sheet.write(out);
    }
    writeSlot(out, record_id::MTRSettings);
    writeSlot(out, record_id::ForceFullCalc);
}

void Globals::writeLinks(Xls& out) {
    writeFixed(out, country);
    names.links.write(out, boundSheets.size());
    names.write(out);
    // The engine calculates nothing: a reader must, also where the file came from a newer program.
    globals::RecalcId saved = recalcId;
    saved.dwBuild = std::min(saved.dwBuild, globals::RecalcId().dwBuild);
    writeFixed(out, saved);
    writeKept(out, headerPictures);
    drawingGroup.write(out);
}

void Globals::writeBack(Xls& out) const {
    if (extSst.empty() || isBiff5()) {
        constexpr std::uint16_t stringsPerEntry = 8;
        out.out().putAll(record_id::ExtSST, std::uint16_t{2}, stringsPerEntry);
    } else {
        extSst.write(out);
    }
    writeKept(out, bookExt);
    writeSlot(out, record_id::Theme);
    writeSlot(out, record_id::CompressPictures);
    writeSlot(out, record_id::Compat12);
    writeKept(out, others);
    out.writeRecord(record_id::Eof, {});
}

// Bytes of an older file may mean something else under the newer version.
void Globals::writeKept(Xls& out, const KeptRecords& records) const {
    if (!isBiff5()) records.write(out);
}

void Globals::writeSlot(Xls& out, std::uint16_t id) const {
    writeKept(out, slot(id));
}

}  // namespace vellum
