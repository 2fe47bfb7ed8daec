#include "biff/features/page_setup.h"

#include "biff/container/record_codec.h"

namespace vellum {

void Setup::usePrinterSettings() {
    if (hasPrinterSettings()) return;
    flags = static_cast<std::uint16_t>((flags & ~noPrinterSettings) | portrait);
    iScale = 100;
    iPaperSize = iRes = iVRes = iCopies = 0;
}

void Setup::setLandscape(bool landscape) {
    flags = static_cast<std::uint16_t>((flags & ~(portrait | noOrientation)) | (landscape ? 0 : portrait));
}

namespace biff {
namespace {

constexpr std::uint16_t marginIds[] = {record_id::LeftMargin, record_id::RightMargin, record_id::TopMargin,
                                       record_id::BottomMargin};

std::uint16_t readWord(RecordHeader header, Xls& in, const char* record) {
    if (header.size != sizeof(std::uint16_t)) throwBadSize(record);
    return in.readInt16();
}

void writeWord(Xls& out, std::uint16_t id, std::optional<std::uint16_t> value) {
    if (value) out.out().putAll(id, std::uint16_t{sizeof *value}, *value);
}

}  // namespace

PageSetup::PageSetup(Origin origin) : _hasSetup(origin == Origin::made) {
    if (origin == Origin::loaded) return;
    header.set(record_id::Header, {});
    footer.set(record_id::Footer, {});
    _hCenter = _vCenter = 0;
}

bool PageSetup::readMargin(RecordHeader record, Xls& in) {
    for (std::size_t side = 0; side < std::size(marginIds); ++side) {
        if (marginIds[side] != record.id) continue;
        if (record.size != sizeof(double)) throwBadSize("Margin");
        setMargin(static_cast<Margin>(side), in.readDouble());
        return true;
    }
    return false;
}

bool PageSetup::read(RecordHeader record, Xls& in, bool biff5) {
    switch (record.id) {
        case record_id::Header:
            header.read(record, in, biff5);
            return true;
        case record_id::Footer:
            footer.read(record, in, biff5);
            return true;
        case record_id::HCenter:
            _hCenter = readWord(record, in, "HCenter");
            return true;
        case record_id::VCenter:
            _vCenter = readWord(record, in, "VCenter");
            return true;
        case record_id::Setup: {
            Cursor body = in.body(record.size);
            editSetup() = readFixed<Setup>(body, record.size);
            return true;
        }
        default:
            return readMargin(record, in);
    }
}

void PageSetup::writeFront(Xls& out) const {
    header.write(out);
    footer.write(out);
    writeWord(out, record_id::HCenter, _hCenter);
    writeWord(out, record_id::VCenter, _vCenter);
    for (std::size_t side = 0; side < std::size(marginIds); ++side) {
        if ((_marginsSet >> side & 1) != 0) out.out().putAll(marginIds[side], std::uint16_t{8}, _margins[side]);
    }
}

void PageSetup::writeSetup(Xls& out) const {
    if (_hasSetup) writeFixed(out, _setup);
}

double PageSetup::margin(Margin side) const {
    return _margins[static_cast<std::size_t>(side)];
}

void PageSetup::setMargin(Margin side, double inches) {
    const auto number = static_cast<std::size_t>(side);
    _margins[number] = inches;
    _marginsSet = static_cast<std::uint8_t>(_marginsSet | 1U << number);
}

}  // namespace biff
}  // namespace vellum
